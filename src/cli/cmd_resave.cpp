// vkmstep-cli resave FILE.gsp OUT.gsp: what opening a program in the editor and saving it
// writes (the checks, the sheet back into a program, its step image, its transfer text).
#include "clicontext.h"
#include "command.h"

#include "document/programfile.h"
#include "sheet/sheetexit.h"
#include "sheet/stepsheeteditor.h"

namespace vkm::cli {
namespace {

int runResave(const QStringList& args, CliContext& ctx) {
    if (args.size() != 2)
        return ctx.usageError(QStringLiteral("resave FILE.gsp OUT.gsp"));
    CSteps program;
    if (!ctx.readProgram(args[0], program))
        return 1;
    // The console prompter prints a failing check's message as the editor would show it.
    StepSheetEditor editor(ctx.selout(), ctx.selinp(), ctx.prompter(), false, false);
    editor.conversion().PasteData(program);
    CSteps saved;
    if (!ProgramCanLeave(editor, program, ctx.prompter(), saved) ||
        !SaveProgramFile(saved, args[1], true, ctx.selout(), ctx.selinp(), ctx.prompter()))
        return 1;
    return 0;
}

const CommandRegistration reg(
    {QStringLiteral("resave"),
     QStringLiteral("resave FILE.gsp OUT.gsp  open a program as the editor does and save it"), runResave});

} // namespace
} // namespace vkm::cli
