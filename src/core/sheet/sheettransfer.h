#pragma once

#include "model/csteps.h"

#include <QString>

namespace vkm {

class Prompter;
class StepSheetEditor;

// GetFileNameToTransfer: the program the editor shows, made ready for sending. The sheet
// becomes a fresh program (message 80 when a row cannot be saved), then its step image
// and its transfer text go to new temporary files. Returns the transfer text's path, or
// "" after the message.
QString GetFileNameToTransfer(const StepSheetEditor& editor, const CSteps& current, Prompter& prompter,
                              const Clock& clock = systemClock());

} // namespace vkm
