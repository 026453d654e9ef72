// vkmstep-cli check FILE.gsp: the checks the editor runs before a program is saved.
#include "clicontext.h"
#include "command.h"

#include "base/messages.h"
#include "sheet/sheetexit.h"
#include "sheet/stepsheeteditor.h"

namespace vkm::cli {
namespace {

int runCheck(const QStringList& args, CliContext& ctx) {
    if (args.size() != 1)
        return ctx.usageError(QStringLiteral("check FILE.gsp"));
    CSteps program;
    if (!ctx.readProgram(args[0], program))
        return 1;
    ScriptedPrompter recorder;
    StepSheetEditor editor(ctx.selout(), ctx.selinp(), recorder, false, false);
    editor.conversion().PasteData(program);
    ctx.out().setEncoding(QStringConverter::Utf8);
    CSteps saved;
    if (ProgramCanLeave(editor, program, recorder, saved)) {
        ctx.out() << "OK\n";
        return 0;
    }
    const CheckFailure fail = editor.lastCheckFailure();
    const auto& shown = recorder.shown();
    const QString text =
        shown.empty() ? messageText(fail.message)
                      : messageText(shown.back().number, shown.back().a1, shown.back().a2, shown.back().a3);
    ctx.out() << text << '\n';
    if (fail.row < 0)
        ctx.out() << "row - column -\n";
    else
        ctx.out() << "row " << fail.row << " column " << fail.col << '\n';
    return 1;
}

const CommandRegistration
    reg({QStringLiteral("check"),
         QStringLiteral("check FILE.gsp           run the editor's checks over a program file"), runCheck});

} // namespace
} // namespace vkm::cli
