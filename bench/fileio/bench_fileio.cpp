// Opening and saving a full 32-step program file, each against a plain file copy of the
// same file in the same run: open = copy to the temporary folder, parse the transfer
// text, read the image; save = write the image, convert it to text, replace the file.
#include "../../tests/core/model/programs.h"

#include "base/scriptedprompter.h"
#include "base/tempfolder.h"
#include "link/machinefiles.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace vkm;

namespace {

double medianMicros(int iterations, const std::function<bool()>& op) {
    std::vector<double> times;
    times.reserve(std::size_t(iterations));
    QElapsedTimer t;
    for (int i = 0; i < iterations; ++i) {
        t.start();
        if (!op()) {
            std::fprintf(stderr, "operation failed\n");
            std::exit(1);
        }
        times.push_back(double(t.nsecsElapsed()) / 1000.0);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

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
