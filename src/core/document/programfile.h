#pragma once

#include "model/csteps.h"

#include <QString>

namespace vkm {

class CSelections;
class Prompter;

// Writes a program that may leave the editor (ProgramCanLeave said so) to a step program
// file, as the editor's save does: the step image goes to the user editor's temporary
// image file first (message 50 when it cannot), the destination's folder must be ready
// (BeReadyDrive, which asks with message 69), and the transfer text then replaces the file
// in one piece (CopyFiles; message 79 when it cannot). On any failure the file at path is
// as it was. newName: the path was just chosen, so an old temporary image is removed first.
bool SaveProgramFile(const CSteps& program, const QString& path, bool newName, const CSelections& selout,
                     const CSelections& selinp, Prompter& prompter, const Clock& clock = systemClock());

} // namespace vkm
