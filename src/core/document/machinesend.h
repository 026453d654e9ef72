#pragma once

#include "model/csteps.h"

#include <QString>

namespace vkm {

class Prompter;
class StepSheetEditor;

// Sending the program of an editor to the machine, up to the transfer: message 160 ("Do
// you turn off and on the power of VKM ?", OK and Cancel), then the checks and the sheet
// turned into a program as a save does it, then its transfer text in a new file of the
// temporary folder. Returns that file, or "" when the user cancelled or the program
// cannot leave the editor (its message has been shown).
QString ProgramFileToSend(StepSheetEditor& editor, const CSteps& current, Prompter& prompter,
                          const Clock& clock = systemClock());

} // namespace vkm
