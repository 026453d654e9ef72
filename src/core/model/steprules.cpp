#include "model/steprules.h"

#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/cstepinps.h"

namespace vkm {

namespace {
const char* const kCounterPatterns[] = {"01", "00", "011", "001", "010", "000"};
constexpr int kCounterPatternCount = 6;
} // namespace

bool isFlowCategory(const QString& category) {
    return category == cat::JMP || category == cat::SUB || category == cat::CALL || category == cat::RETURN;
}

bool isBranchCategory(const QString& category) {
    return category == cat::JMP || category == cat::CALL || category == cat::RETURN;
}

int flowLogic(const QString& category) {
    if (category == cat::SUB)
        return LogicSub;
    if (category == cat::JMP)
        return LogicJmp;
    if (category == cat::CALL)
        return LogicCall;
    if (category == cat::RETURN)
        return LogicRet;
    return -1;
}

bool isStepTargetCategory(const QString& category) {
    return category == cat::STEP || category == cat::JMP || category == cat::CALL;
}

bool isCounterStep(qint16 firstInputKino, const CSelections& selinp) {
    return selinp.CategoryByValue(firstInputKino) == cat::COUNT;
}

bool isCounterStep(const CStepInps& inps, const CSelections& selinp) {
    const auto first = inps.Item(QStringLiteral("1"));
    return first && isCounterStep(qint16(first->Kino), selinp);
}

bool isSwitchedCategory(const QString& category) {
    return category == cat::IN || category == cat::OUT || category == cat::RGST;
}

bool delayIsHalved(const QString& category, int delayKind) {
    return delayKind == DelayTimer && isSwitchedCategory(category);
}

qint64 shownDelay(qint64 stored, const QString& category, int delayKind) {
    return delayIsHalved(category, delayKind) ? stored * 2 : stored;
}

qint64 storedDelay(qint64 shown, const QString& category, int delayKind) {
    return delayIsHalved(category, delayKind) ? shown / 2 : shown;
}

int counterIdForPattern(const QString& pattern) {
    for (int id = 0; id < kCounterPatternCount; ++id)
        if (pattern == QLatin1String(kCounterPatterns[id]))
            return id;
    return 0;
}

bool MustJyosu(int counterId, int group) {
    if (counterId < 0 || counterId >= kCounterPatternCount || group < 1)
        return false;
    const QLatin1String pattern(kCounterPatterns[counterId]);
    return group <= pattern.size() && pattern[group - 1] == QLatin1Char('1');
}

} // namespace vkm
