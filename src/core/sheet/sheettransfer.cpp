#include "sheet/sheettransfer.h"

#include "base/prompter.h"
#include "link/machinefiles.h"
#include "sheet/sheetexit.h"
#include "sheet/stepsheeteditor.h"

namespace vkm {

QString GetFileNameToTransfer(const StepSheetEditor& editor, const CSteps& current, Prompter& prompter,
                              const Clock& clock) {
    CSteps program;
    if (!ProgramFromSheet(editor, current, prompter, program))
        return {};
    return transferFileForProgram(program, editor.selout(), editor.selinp(), prompter, clock);
}

} // namespace vkm
