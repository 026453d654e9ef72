#include "appcontext.h"

#include "catalogue/cselections.h"

namespace vkm {

const CSelections& catalogueOrEmpty(const CSelections* catalogue) {
    static const CSelections none;
    return catalogue ? *catalogue : none;
}

} // namespace vkm
