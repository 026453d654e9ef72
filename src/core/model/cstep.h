#pragma once

#include "model/cstepinps.h"
#include "model/cstepouts.h"

#include <QString>
#include <memory>

namespace vkm {

// One step: one editor row. A copy of a step has copies of its outputs and inputs.
struct CStep {
    CStep() = default;
    CStep(const CStep& other) { *this = other; }
    CStep& operator=(const CStep& other) {
        if (this == &other)
            return *this;
        Row = other.Row;
        outs = other.outs ? std::make_shared<CStepOuts>(*other.outs) : nullptr;
        inps = other.inps ? std::make_shared<CStepInps>(*other.inps) : nullptr;
        Remark = other.Remark;
        NOP = other.NOP;
        GyoMuko = other.GyoMuko;
        return *this;
    }
    CStep(CStep&&) noexcept = default;
    CStep& operator=(CStep&&) noexcept = default;
    ~CStep() = default;

    qint32 Row = 0;                  // 1-based
    std::shared_ptr<CStepOuts> outs; // absent (nullptr) or the outputs
    std::shared_ptr<CStepInps> inps; // absent (nullptr) or the inputs
    QString Remark;
    bool NOP = false;     // empty row
    bool GyoMuko = false; // row disabled
};

} // namespace vkm
