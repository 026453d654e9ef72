#include "document/machinesend.h"

#include "base/prompter.h"
#include "link/machinefiles.h"
#include "sheet/sheetexit.h"
#include "sheet/stepsheeteditor.h"

namespace vkm {

QString ProgramFileToSend(StepSheetEditor& editor, const CSteps& current, Prompter& prompter,
                          const Clock& clock) {
    // The machine takes a new program only after a restart: the user is told first.
    if (prompter.showMessage(160, 10) != Answer::Ok)
        return {};
    CSteps program;
    if (!ProgramCanLeave(editor, current, prompter, program))
        return {};
    return transferFileForProgram(program, editor.selout(), editor.selinp(), prompter, clock);
}

} // namespace vkm
