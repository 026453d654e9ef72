#include "model/csteps.h"

#include "catalogue/cselections.h"
#include "model/codes.h"

namespace vkm {

Clock systemClock() {
    return [] { return QDateTime::currentDateTime(); };
}

CSteps::Ptr CSteps::Add(std::shared_ptr<CStepOuts> outs, std::shared_ptr<CStepInps> inps,
                        const QString& Remark, bool NOP, bool GyoMuko) {
    auto step = std::make_shared<CStep>();
    step->Row = Count() + 1;
    step->outs = std::move(outs);
    step->inps = std::move(inps);
    step->Remark = Remark;
    step->NOP = NOP;
    step->GyoMuko = GyoMuko;
    // Keys come from the count, so a step can never collide with an earlier one.
    add(QString::number(step->Row), step);
    return step;
}

void GetValueRange(const QString& category, const QString& digital, int side, int logic, int delayKind,
                   const CSelections& selout, const CSelections& selinp, qint32& lMin, qint32& lMax) {
    // A counter has limits of its own, kept with its catalogue entry.
    if (category == cat::COUNT) {
        const CSelections& sels = side == 2 ? selout : selinp;
        sels.MinMaxByDigital(category, digital, lMin, lMax);
        return;
    }
    switch (logic) {
    case LogicLow:
    case LogicHigh:
    case LogicNot:
        switch (delayKind) {
        case DelayTimer:
            lMin = 0;
            lMax = 130000;
            break;
        case DelayStc:
            lMin = 0;
            lMax = 9999;
            break;
        case DelayAngle1:
        case DelayAngle2:
        case DelayAngle3:
            lMin = 0;
            lMax = 3600;
            break;
        default:
            break;
        }
        break;
    case LogicSet:
    case LogicAdd:
    case LogicSub:
        lMin = 0;
        lMax = 65000;
        break;
    default:
        break;
    }
}

} // namespace vkm
