#include "print/printjob.h"

#include "base/errorreporter.h"
#include "base/prompter.h"
#include "model/csteps.h"
#include "sheet/sheetexit.h"
#include "sheet/stepsheeteditor.h"

namespace vkm {

bool ProgramForPrint(StepSheetEditor& editor, const CSteps& current, Prompter& prompter, CSteps& out) {
    if (ProgramCanLeave(editor, current, prompter, out))
        return true;
    if (editor.lastCheckFailure().message != 0)
        prompter.showMessage(150, 2); // "Unable to print step."
    else
        prompter.showMessage(50, 1); // "Failed to save data..."
    return false;
}

bool HasStepsToPrint(const CSteps& program, Prompter& prompter) {
    if (StepPrintLayout::lastUsedStep(program) > 0)
        return true;
    prompter.showMessage(77, 2); // "No data to print!"
    return false;
}

bool PrintToExcelStep(const CSteps& program, const CSelections& selout, const CSelections& selinp,
                      const PrintOptions& options, SheetTarget& target, const StatusSink& status) {
    auto say = [&](const QString& text) {
        if (status)
            status(text);
    };
    say(QStringLiteral("Creating excel object..."));
    if (!target.open()) {
        say(QStringLiteral("Microsoft Excel is not installed!"));
        return false;
    }
    const StepPrintLayout layout(selout, selinp, options, status);
    const PrintSheet sheet = layout.build(program);
    if (!target.output(sheet)) {
        reportError(ErrIO, QStringLiteral("PrintToExcelStep"), target.errorString());
        return false;
    }
    say(QStringLiteral("Success to print to excel."));
    return true;
}

} // namespace vkm
