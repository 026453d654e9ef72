#include "document/programfile.h"

#include "base/prompter.h"
#include "link/machinefiles.h"

namespace vkm {

bool SaveProgramFile(const CSteps& program, const QString& path, bool newName, const CSelections& selout,
                     const CSelections& selinp, Prompter& prompter, const Clock& clock) {
    const QString image = CreateTempName(1, eUSR);
    if (!program.SaveData(image, newName, selout, selinp, clock)) {
        prompter.showMessage(50, 1); // "Failed to save data..."
        return false;
    }
    if (!BeReadyDrive(path, prompter))
        return false;
    if (!CopyFiles(image, path, prompter)) {
        prompter.showMessage(79, 1); // "Failed to copy temporary files. Data is not saved."
        return false;
    }
    return true;
}

} // namespace vkm
