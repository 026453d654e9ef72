#include "model/stepnumberentry.h"

#include "base/number.h"
#include "model/codes.h"

namespace vkm {

QString stepNumberPrompt() {
    return QStringLiteral("Input step number.\n\nmin = 1\nmax = %1").arg(kMaxTargetStep);
}

StepNumberAnswer checkStepNumber(const QString& answer, const QString& nodeCategory) {
    StepNumberAnswer result;
    if (answer.isEmpty())
        return result;
    if (!isNumeric(answer)) {
        result.message = QStringLiteral("Input step number.");
        return result;
    }
    if (answer.size() > 4) {
        result.message = QStringLiteral("Input value is too large.");
        return result;
    }
    const double n = roundHalfEven(leadingNumber(answer));
    if (n < 1 || n > kMaxTargetStep) {
        result.message = QStringLiteral("Value is out of range.\n\nMIN = 1\n\nMAX = %1").arg(kMaxTargetStep);
        return result;
    }
    result.accepted = true;
    result.value = nodeCategory == cat::CALL ? callTarget(int(n)) : jumpTarget(int(n));
    return result;
}

} // namespace vkm
