#pragma once

#include "model/cstepinps.h"
#include "model/cstepouts.h"

#include <QString>
#include <memory>

namespace vkm {

// One step: one editor row.
struct CStep {
    qint32 Row = 0;                  // 1-based
    std::shared_ptr<CStepOuts> outs; // absent (nullptr) or the outputs
    std::shared_ptr<CStepInps> inps; // absent (nullptr) or the inputs
    QString Remark;
    bool NOP = false;     // empty row
    bool GyoMuko = false; // row disabled
};

} // namespace vkm
