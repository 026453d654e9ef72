#include "sheet/sheettransfer.h"

#include "base/prompter.h"
#include "link/machinefiles.h"
#include "sheet/stepsheeteditor.h"

namespace vkm {

QString GetFileNameToTransfer(const StepSheetEditor& editor, const CSteps& current, Prompter& prompter,
                              const Clock& clock) {
    CSteps program;
    if (!editor.Update_step(current, program)) {
        prompter.showMessage(80, 2); // "Make sure that all the information are set."
        return {};
    }
    return transferFileForProgram(program, editor.selout(), editor.selinp(), prompter, clock);
}

} // namespace vkm
