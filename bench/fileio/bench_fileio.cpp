// Opening and saving a full 32-step program file, each against a plain file copy of the
// same file in the same run: open = copy to the temporary folder, parse the transfer
// text, read the image; save = write the image, convert it to text, replace the file.
#include "../../tests/core/model/programs.h"
#include "../benchtime.h"

#include "base/scriptedprompter.h"
#include "base/tempfolder.h"
#include "link/machinefiles.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

using namespace vkm;

using bench::medianMicros;

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int iterations = argc > 1 ? std::atoi(argv[1]) : 2000;
    const test::Catalogues c = test::testCatalogues();
    const CSteps program = test::buildProgram(test::Shape::Full, c);
    ScriptedPrompter prompter;
    TempFolder& tmp = TempFolder::instance();
    const QString image = CreateTempName(1, eUSR);
    const QString gsp = tmp.filePath("bench.gsp");
    const QString copy = tmp.filePath("copy.gsp");
    if (!program.SaveData(image, true, c.selout, c.selinp) || !CopyFiles(image, gsp, prompter))
        return 1;

    const double base = medianMicros(iterations, [&] {
        QFile::remove(copy);
        return QFile::copy(gsp, copy);
    });
    const double open = medianMicros(iterations, [&] {
        CSteps p;
        return ReadStepData(eUSR, gsp, p, c.selout, c.selinp, prompter) && p.Count() == 32;
    });
    const double save = medianMicros(iterations, [&] {
        return program.SaveData(image, true, c.selout, c.selinp) && CopyFiles(image, copy, prompter);
    });
    std::printf("file copy %.1f us, open %.1f us (ratio %.2f), save %.1f us (ratio %.2f)\n", base, open,
                open / base, save, save / base);
    return 0;
}
