// The restart of option 3 ("Locate input groups first"), as the editor does it: starts the
// way vkmstep does (vkm::Startup, the user's settings store, the instance lock), chooses
// the option in the main window's option menu, answers the notice that a restart is needed
// with Enter, and lets the application close and start itself again, as vkmstep's main does.
//
//   e2e_restart_session [--archive PATH] --marker FILE [ARGUMENT...]
//
// A run that finds the option off chooses it; a run that finds it on is the restarted one:
// it writes to FILE the arguments it was given (one a line, after "restarted") and the
// column of the first input group, and quits. Exit code 0 for a run that did its part.
#include "applicationrestart.h"
#include "sessiondriver.h"

#include "base/settings.h"

#include <QFile>
#include <QMessageBox>

namespace {

// Presses Enter on each message box as it comes up.
void answerBoxes() {
    QTimer::singleShot(10, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            QTest::keyClick(box, Qt::Key_Return);
        answerBoxes();
    });
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    const vkm::e2e::CommandLine line = vkm::e2e::parseCommandLine(app, {"archive", "marker"});
    const QString marker = line.value("marker");
    if (marker.isEmpty())
        return vkm::e2e::usage(argv[0], "[--archive PATH] --marker FILE [ARGUMENT...]");
    vkm::StartupOptions options;
    options.archiveOverride = line.value("archive");
    int code = 0;
    {
        vkm::Startup startup(options);
        QTimer::singleShot(20000, &app, [] {
            std::fprintf(stderr, "FAIL: the run did not end within 20 s\n");
            QCoreApplication::exit(4);
        });
        answerBoxes();
        if (!startup.run()) {
            std::fprintf(stderr, "FAIL: the start was refused\n");
            return 1;
        }
        if (startup.context().settings->value(vkm::keys::DoesLocateInpFirst)) {
            QFile out(marker);
            if (!out.open(QIODevice::WriteOnly))
                return 3;
            out.write("restarted\n" + args.join(u'\n').toUtf8() + '\n');
            out.write("input group 1 in column " +
                      QByteArray::number(startup.userEditorWindow()->editor().sheet().inputGroupCol(1)) +
                      '\n');
            return 0;
        }
        QTimer::singleShot(0, &app, [&startup] { startup.mainWindow()->optionItem(3)->trigger(); });
        code = app.exec();
        if (startup.mainWindow()->isVisible()) {
            std::fprintf(stderr, "FAIL: the main window stayed open\n");
            return 3;
        }
    }
    if (vkm::ApplicationRestart::requested() && !vkm::ApplicationRestart::startAgain())
        return 3;
    return code;
}
