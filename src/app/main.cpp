#include "applicationrestart.h"
#include "mainwindow.h"
#include "startup.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QPixmap>
#include <QTimer>
#include <chrono>
#include <cstdio>

namespace {

struct Arguments {
    QString archive;
    QString screenshot;
    QString commandLine;
    bool version = false;
    bool exitWhenShown = false;
};

Arguments parseArguments(const QApplication& app) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Step program editor for VKM sewing machines"));
    parser.addHelpOption();
    const QCommandLineOption archive(QStringLiteral("archive"), QStringLiteral("Setting archive to load."),
                                     QStringLiteral("PATH"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save the main window as PNG once shown, then quit."),
                                        QStringLiteral("PNG"));
    const QCommandLineOption version(QStringLiteral("version"),
                                     QStringLiteral("Print the version and quit."));
    const QCommandLineOption exitWhenShown(
        QStringLiteral("exit-when-shown"),
        QStringLiteral("Print \"shown\" and the steady clock in ns once the main window has been shown and "
                       "painted, then quit (start-up timing)."));
    parser.addOption(archive);
    parser.addOption(screenshot);
    parser.addOption(version);
    parser.addOption(exitWhenShown);
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("Step program (.gsp) to open."));
    parser.process(app);
    // The rest is the command line as one text: a quoted path keeps its blanks.
    QStringList rest;
    for (const QString& a : parser.positionalArguments())
        rest << (a.contains(u' ') ? u'"' + a + u'"' : a);
    return {parser.value(archive), parser.value(screenshot), rest.join(u' '), parser.isSet(version),
            parser.isSet(exitWhenShown)};
}

} // namespace

int main(int argc, char** argv) {
    // Answered before the application object exists: it needs no display.
    for (int i = 1; i < argc; ++i) {
        if (qstrcmp(argv[i], "--version") == 0 || qstrcmp(argv[i], "-version") == 0) {
            std::printf("vkmstep %s\n", VKM_VERSION);
            return 0;
        }
    }
    QApplication app(argc, argv);
    const Arguments args = parseArguments(app);

    vkm::StartupOptions options;
    options.archiveOverride = args.archive;
    options.commandLine = args.commandLine;
    int rc = 0;
    {
        vkm::Startup startup(options);
        if (!startup.run())
            return 1;

        if (!args.screenshot.isEmpty()) {
            QTimer::singleShot(0, &app, [&] {
                QApplication::processEvents();
                const bool saved = startup.mainWindow()->grab().save(args.screenshot, "PNG");
                if (!saved)
                    std::fprintf(stderr, "Cannot write %s\n", qPrintable(args.screenshot));
                app.exit(saved ? 0 : 1);
            });
        }
        if (args.exitWhenShown) {
            QTimer::singleShot(0, &app, [&] {
                QApplication::processEvents(); // the shown window's first paint
                const auto now = std::chrono::steady_clock::now().time_since_epoch();
                std::printf("shown %lld\n",
                            static_cast<long long>(
                                std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()));
                std::fflush(stdout);
                app.exit(0);
            });
        }
        rc = app.exec();
    }
    // The run has shut down and released everything, its instance lock among it: an
    // option that takes effect only at a start starts the editor again.
    if (vkm::ApplicationRestart::requested() && !vkm::ApplicationRestart::startAgain()) {
        std::fprintf(stderr, "Cannot start %s again\n", qPrintable(QCoreApplication::applicationFilePath()));
        return 1;
    }
    return rc;
}
