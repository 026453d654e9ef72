#pragma once

// What the editor's session drivers share: their command line, the editor started the way
// vkmstep's main starts it, every modal window answered from a timer as it appears, a failed
// step reported with "FAIL: ..." and its exit code, and a check that the application closed
// by itself.
#include "mainwindow.h"
#include "startup.h"
#include "stepeditorwindow.h"
#include "steptoolbar.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMap>
#include <QTest>
#include <QTimer>
#include <cstdio>

namespace vkm::e2e {

constexpr int kFailed = 3;
constexpr int kTimedOut = 4;

// A driver's command line: options that each take a value, then the files.
struct CommandLine {
    QMap<QString, QString> values;
    QStringList files;
    QString value(const char* name) const { return values.value(QLatin1String(name)); }
    bool isSet(const char* name) const { return values.contains(QLatin1String(name)); }
    QString file() const { return files.join(u' '); }
};

inline CommandLine parseCommandLine(const QApplication& app, std::initializer_list<const char*> names) {
    QCommandLineParser parser;
    for (const char* name : names)
        parser.addOption(QCommandLineOption(QLatin1String(name), QString(), QStringLiteral("VALUE")));
    parser.process(app);
    CommandLine line;
    for (const char* name : names)
        if (parser.isSet(QLatin1String(name)))
            line.values.insert(QLatin1String(name), parser.value(QLatin1String(name)));
    line.files = parser.positionalArguments();
    return line;
}

inline int usage(const char* driver, const char* arguments) {
    std::fprintf(stderr, "usage: %s %s\n", driver, arguments);
    return 2;
}

// The toolbar button of an editor window's command (null when it has none).
inline QWidget* toolButton(vkm::StepEditorWindow* window, const QString& key) {
    QAction* action = window ? window->action(key) : nullptr;
    return action ? window->toolBar()->widgetForAction(action) : nullptr;
}

class SessionBase {
public:
    explicit SessionBase(vkm::Startup& startup) : m_startup(startup) {}
    virtual ~SessionBase() = default;

    // Watches for modal windows from the first moment, one at a time: one that nobody expects
    // (a start-up warning, a save error) fails the session instead of hanging it.
    void watchModals() {
        auto* timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, qApp, [this] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal || m_inModal)
                return;
            m_inModal = true;
            handleModal(modal);
            m_inModal = false;
        });
        timer->start(20);
    }
    virtual void run() = 0;
    int result() const { return m_result; }

protected:
    virtual void handleModal(QWidget* modal) = 0;
    void fail(const QString& what) {
        std::fprintf(stderr, "FAIL: %s\n", qPrintable(what));
        m_result = kFailed;
        QCoreApplication::exit(kFailed);
    }
    void fail(const char* what) { fail(QString::fromUtf8(what)); }
    // The main window made the active one, as a user's click on it does.
    bool activateMainWindow() {
        QWidget* main = m_startup.mainWindow();
        main->activateWindow();
        if (QTest::qWaitForWindowActive(main, 5000))
            return true;
        fail("the main window never became active");
        return false;
    }

    vkm::Startup& m_startup;
    int m_result = 0;

private:
    bool m_inModal = false;
};

// Starts the editor on args.file with args.archive exactly as vkmstep's main does, plays a
// Session (a SessionBase made of the start-up and args) and gives the driver's exit code.
template <class Session, class Arguments>
int runSession(QApplication& app, const Arguments& args, int seconds) {
    vkm::StartupOptions options;
    options.archiveOverride = args.archive;
    options.commandLine = args.file.contains(u' ') ? u'"' + args.file + u'"' : args.file;
    vkm::Startup startup(options);
    Session session(startup, args);
    session.watchModals();
    QTimer::singleShot(seconds * 1000, &app, [seconds] {
        std::fprintf(stderr, "FAIL: the session did not end within %d s\n", seconds);
        QCoreApplication::exit(kTimedOut);
    });
    if (!startup.run())
        return 1;
    QTimer::singleShot(0, &app, [&session] { session.run(); });
    const int code = app.exec();
    if (code == 0 && startup.mainWindow()->isVisible()) {
        std::fprintf(stderr, "FAIL: the event loop ended with the main window still open\n");
        return kFailed;
    }
    return code != 0 ? code : session.result();
}

} // namespace vkm::e2e
