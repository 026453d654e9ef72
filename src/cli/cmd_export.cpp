// vkmstep-cli export FILE.gsp OUT.xlsx|OUT.pdf [--memo] [--inputs-first]: the printed
// sheet of a program as a workbook or as a PDF file, after the checks a save runs.
#include "clicontext.h"
#include "command.h"

#include "print/painter/sheetpainter.h"
#include "print/printjob.h"
#include "print/workbookwriter.h"
#include "sheet/stepsheeteditor.h"

#include <QFileInfo>
#include <memory>

namespace vkm::cli {
namespace {

const QString kSynopsis = QStringLiteral("export FILE.gsp OUT.xlsx|OUT.pdf [--memo] [--inputs-first]");

int runExport(const QStringList& args, CliContext& ctx) {
    QStringList files;
    PrintOptions options;
    for (const QString& a : args) {
        if (a == QLatin1String("--memo"))
            options.printMemo = true;
        else if (a == QLatin1String("--inputs-first"))
            options.locateInpFirst = true;
        else if (a.startsWith(QLatin1String("--")))
            return ctx.usageError(kSynopsis);
        else
            files << a;
    }
    if (files.size() != 2)
        return ctx.usageError(kSynopsis);
    const QString suffix = QFileInfo(files[1]).suffix().toLower();
    if (suffix != QLatin1String("xlsx") && suffix != QLatin1String("pdf")) {
        ctx.err() << files[1] << ": the output must be a workbook (.xlsx) or a PDF file (.pdf)\n";
        return 2;
    }
    CSteps program;
    if (!ctx.readProgram(files[0], program))
        return 1;
    // What is printed is what a save would write; the console prompter prints why not.
    StepSheetEditor editor(ctx.selout(), ctx.selinp(), ctx.prompter(), false, options.locateInpFirst);
    editor.conversion().PasteData(program);
    CSteps printed;
    if (!ProgramForPrint(editor, program, ctx.prompter(), printed) ||
        !HasStepsToPrint(printed, ctx.prompter()))
        return 1;

    options.fileToPrint = QFileInfo(files[0]).absoluteFilePath();
    options.toFile = suffix == QLatin1String("xlsx"); // a PDF is a printout
    options.symbolFontAvailable = symbolFontAvailable();
    std::unique_ptr<SheetTarget> target;
    if (options.toFile)
        target = std::make_unique<WorkbookTarget>(files[1]);
    else
        target = std::make_unique<PdfTarget>(files[1]);
    if (!PrintToExcelStep(printed, ctx.selout(), ctx.selinp(), options, *target)) {
        // The reason has gone to the error report (stderr here).
        ctx.prompter().showMessage(123, 2); // "Failed to create excel file."
        return 1;
    }
    return 0;
}

const CommandRegistration
    reg({QStringLiteral("export"),
         kSynopsis + QStringLiteral("\n      print a program to a workbook or a PDF file"), runExport});
const GuiCommandRegistration gui(QStringLiteral("export")); // draws pages: fonts need a GUI application

} // namespace
} // namespace vkm::cli
