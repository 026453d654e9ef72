// Printing a full 32-step program with its memo, each stage against saving the same
// program as a program file in the same run: laying the sheet out, writing it as a
// workbook, drawing it into a PDF file.
#include "../../tests/core/model/programs.h"
#include "../benchtime.h"

#include "base/scriptedprompter.h"
#include "base/tempfolder.h"
#include "link/machinefiles.h"
#include "print/painter/sheetpainter.h"
#include "print/printlayout.h"
#include "print/workbookwriter.h"

#include <QGuiApplication>
#include <algorithm>
#include <cstdio>

using namespace vkm;

using bench::medianMicros;

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const int iterations = argc > 1 ? std::atoi(argv[1]) : 200;
    const test::Catalogues c = test::testCatalogues();
    const CSteps program = test::buildProgram(test::Shape::Full, c);
    ScriptedPrompter prompter;
    TempFolder& tmp = TempFolder::instance();
    const QString image = CreateTempName(1, eUSR);
    const QString gsp = tmp.filePath("bench.gsp");
    PrintOptions options;
    options.fileToPrint = gsp;
    options.printMemo = true;
    options.toFile = true;
    const StepPrintLayout layout(c.selout, c.selinp, options);
    const PrintSheet sheet = layout.build(program);

    const double save = medianMicros(iterations, [&] {
        return program.SaveData(image, true, c.selout, c.selinp) && CopyFiles(image, gsp, prompter);
    });
    const double lay = medianMicros(iterations, [&] { return layout.build(program).rowCount() > 30; });
    const double xlsx =
        medianMicros(iterations, [&] { return WriteWorkbook(sheet, tmp.filePath("bench.xlsx")); });
    const double pdf = medianMicros(std::max(1, iterations / 4), [&] {
        PdfTarget target(tmp.filePath("bench.pdf"));
        return target.output(sheet);
    });
    std::printf("save %.1f us; layout %.1f us (ratio %.2f), workbook %.1f us (ratio %.2f), PDF %.1f us "
                "(ratio %.2f)\n",
                save, lay, lay / save, xlsx, xlsx / save, pdf, pdf / save);
    return 0;
}
