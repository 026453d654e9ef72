#include "sheet/sheetexit.h"

#include "base/prompter.h"
#include "sheet/stepsheeteditor.h"

namespace vkm {

bool ProgramFromSheet(const StepSheetEditor& editor, const CSteps& current, Prompter& prompter, CSteps& out,
                      int style) {
    if (editor.conversion().Update_step(current, out))
        return true;
    prompter.showMessage(80, style); // "Make sure that all the information are set."
    return false;
}

bool ProgramCanLeave(StepSheetEditor& editor, const CSteps& current, Prompter& prompter, CSteps& out,
                     int style) {
    return editor.ExactInput() && ProgramFromSheet(editor, current, prompter, out, style);
}

} // namespace vkm
