#pragma once

#include "model/csteps.h"

namespace vkm {

class Prompter;
class StepSheetEditor;

// The one way a program leaves a step editor, for saving, checking, sending, printing
// and exporting alike.
//
// ProgramFromSheet turns the sheet back into a program that keeps the password, author,
// memo and memo file of `current`; a row that cannot be turned into a step (a function
// value no catalogue knows, say) shows message 80 and gives false.
bool ProgramFromSheet(const StepSheetEditor& editor, const CSteps& current, Prompter& prompter, CSteps& out,
                      int style = 1);

// ProgramCanLeave runs the program checks (the failing one selects its cell and shows its
// message) and then ProgramFromSheet. True means `out` is what a save would write.
bool ProgramCanLeave(StepSheetEditor& editor, const CSteps& current, Prompter& prompter, CSteps& out,
                     int style = 1);

} // namespace vkm
