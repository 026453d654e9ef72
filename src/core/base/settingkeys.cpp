#include "base/settingkeys.h"

#include <cmath>

namespace vkm {

QString sectionName(Section section) {
    switch (section) {
    case Section::FileInfo:
        return QStringLiteral("FileInfo");
    case Section::General:
        return QStringLiteral("General");
    case Section::Location:
        return QStringLiteral("Location");
    }
    return {};
}

namespace {
double usableDpi(double dpi) {
    return dpi > 0 ? dpi : 96.0;
}
} // namespace

int twipsToPixels(int twips, double dpi) {
    return int(std::lround(double(twips) * usableDpi(dpi) / 1440.0));
}

int pixelsToTwips(int pixels, double dpi) {
    return int(std::lround(double(pixels) * 1440.0 / usableDpi(dpi)));
}

} // namespace vkm
