#include "catalogue/choosecategory.h"

namespace vkm {

QString ChooseCategory(const CSelections& sels, const QString& digital, const CategoryChooser& chooser) {
    const int n = sels.CountByDigital(digital);
    if (n == 0)
        return {};
    if (n == 1 || !chooser)
        return sels.CategoryByDigitalOnly(digital);
    return chooser(sels, digital);
}

} // namespace vkm
