#pragma once

// What the editor's session drivers share: the editor started the way vkmstep's main starts
// it, every modal window answered from a timer as it appears, a failed step reported with
// "FAIL: ..." and its exit code, and a check that the application closed by itself.
#include "mainwindow.h"
#include "startup.h"

#include <QApplication>
#include <QTimer>
#include <cstdio>

namespace vkm::e2e {

constexpr int kFailed = 3;
constexpr int kTimedOut = 4;

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
