#pragma once

#include <QString>
#include <QtGlobal>

namespace vkm {

// The step numbers a jump, call or step target names: 1 to 32.
constexpr int kMaxTargetStep = 32;

// What a step number typed at a step node of the function selection dialog gives.
struct StepNumberAnswer {
    bool accepted = false;
    qint16 value = 0; // accepted: the function value of the target
    QString message;  // refused: the dialog's message ("" to ask again without one)
};

// The prompt of the step number box.
QString stepNumberPrompt();
// Checks an answer typed at the step node under a category node: a number of at most four
// characters, rounded, from 1 to 32, becomes the target of that category (a call target
// under "CALL", a jump or step target under any other).
StepNumberAnswer checkStepNumber(const QString& answer, const QString& nodeCategory);

} // namespace vkm
