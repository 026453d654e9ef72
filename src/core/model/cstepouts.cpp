#include "model/cstepouts.h"

#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/steprules.h"

namespace vkm {

CStepOuts::Ptr CStepOuts::Add(qint32 Block, qint32 Kino, qint32 Logic, qint32 DelayKind, qint32 DelayEtc,
                              const CSelections& sels) {
    auto out = std::make_shared<CStepOut>();
    out->Block = Block;
    out->Kino = qint16(Kino); // the machine stores 16 bits; -1 marks an empty output
    out->DelayKind = DelayKind;
    out->DelayEtc = DelayEtc;
    // Flow-control functions carry their logic in the function itself: the machine
    // decides jump, call, return or subtract from the logic nibble, so it must match.
    const int forced = flowLogic(sels.CategoryByValue(out->Kino));
    out->Logic = forced >= 0 ? forced : Logic;
    if (!add(QString::number(Block), out))
        return nullptr;
    return out;
}

bool CStepOuts::ExistRet(const CSelections& sels) const {
    for (const auto& out : *this)
        if (sels.CategoryByValue(out->Kino) == cat::RETURN)
            return true;
    return false;
}

QString CStepOuts::DelayKindJ(int code) {
    switch (code) {
    case DelayTimer:
        return QStringLiteral("TIMER");
    case DelayStc:
        return QStringLiteral("STC");
    case DelayAngle1:
        return QStringLiteral("ANGLE1");
    case DelayAngle2:
        return QStringLiteral("ANGLE2");
    case DelayAngle3:
        return QStringLiteral("ANGLE3");
    default:
        return {};
    }
}

namespace {
const char* const kLogicNames[] = {"LOW", "HIGH", "NOT", "JMP", "INC",  "DEC",
                                   "SET", "CLR",  "ADD", "SUB", "CALL", "RET"};
}

QString CStepOuts::LogicJ(int code) {
    if (code < 0 || code > LogicRet)
        return {};
    return QString::fromLatin1(kLogicNames[code]);
}

int CStepOuts::LogicByName(const QString& text) {
    // The return logic is displayed "RET" but named "RETURN" in the editor's lists.
    if (text == QLatin1String("RETURN"))
        return LogicRet;
    for (int code = 0; code < LogicRet; ++code)
        if (text == QLatin1String(kLogicNames[code]))
            return code;
    return 0;
}

} // namespace vkm
