#pragma once

#include <QString>
#include <QtGlobal>

namespace vkm {

class CSelections;
class CStepInps;

// Rules of the machine that tie a function's category to the rest of its step. They are
// asked by the sheet, the step image, the checks, the listing and the windows alike.

// Outputs that change the flow of the program (jump, subroutine, call, return): the
// category fixes their logic and they take no delay.
bool isFlowCategory(const QString& category);
// The flow outputs a step can hold only once, in either output group: the machine takes
// one next step per step.
bool isBranchCategory(const QString& category);
// The logic a flow output must carry (the machine reads it from the logic nibble):
// SUB 9, JMP 3, CALL 10, RETURN 11; -1 for every other category.
int flowLogic(const QString& category);

// Inputs, outputs and registers: the functions a step switches on and off (logic LOW,
// HIGH or NOT), which alone can be driven as a pulse.
bool isSwitchedCategory(const QString& category);

// The machine counts the TIMER delay of a plain output or register in units of two: the
// step keeps half of the value the user sees and types.
bool delayIsHalved(const QString& category, int delayKind);
qint64 shownDelay(qint64 stored, const QString& category, int delayKind);
qint64 storedDelay(qint64 shown, const QString& category, int delayKind);

// Functions that name a step by its number (jump, call and step targets): the selection
// dialog takes their step number rather than listing them.
bool isStepTargetCategory(const QString& category);

// A counter step: its first input's function is a counter (category "COUNT"); the later
// inputs hold its operands and the state bits of every input carry the counter identifier.
bool isCounterStep(qint16 firstInputKino, const CSelections& selinp);
bool isCounterStep(const CStepInps& inps, const CSelections& selinp);

// Counter steps: input group 1 is a counter, groups 2 and 3 its operands, each a counter
// or a number typed in. The counter identifier says which are numbers: a pattern of '0'
// for group 1, then '1' (number) or '0' (counter) for group 2 and, when there is one, for
// group 3; the identifier is the pattern's place in the machine's table.
int counterIdForPattern(const QString& pattern); // 0 for a pattern the table lacks
// True when the operand of input group `group` (1..4) is a number under that identifier.
bool MustJyosu(int counterId, int group);

} // namespace vkm
