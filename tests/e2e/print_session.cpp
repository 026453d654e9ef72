// Printing as a user does it, through the window system: starts the editor the way vkmstep
// does (vkm::Startup with the archive and the program of the command line), clicks the
// Print button of the user editor, looks at the print preview, ticks "Print Note", clicks
// "Create Excel file", names the workbook in the save dialog, answers No to opening it and
// closes the main window.
//
//   e2e_print_session [--archive PATH] [--shots DIR] --workbook OUT.xlsx FILE.gsp
//
// --shots DIR saves pictures of the print dialog and of the preview there.
// Exit code 0: every step happened and the application closed by itself; a step that did
// not happen prints "FAIL: ..." and gives a non-zero code.
#include "fprint.h"
#include "mainwindow.h"
#include "startup.h"
#include "stepeditorwindow.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCommandLineParser>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <cstdio>

namespace {

constexpr int kFailed = 3;
constexpr int kTimedOut = 4;

struct Arguments {
    QString archive;
    QString shots;
    QString workbook;
    QString file;
};

class Session {
public:
    Session(vkm::Startup& startup, Arguments args) : m_startup(startup), m_args(std::move(args)) {}

    // Every modal window is answered from here as it appears, in the order a user meets them.
    void watchModals() {
        auto* timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, qApp, [this] { serviceModal(); });
        timer->start(20);
    }

    void run() {
        QAction* print = m_startup.userEditorWindow()->findChild<QAction*>(QStringLiteral("keyPRINT"));
        auto* bar = print ? qobject_cast<QToolBar*>(print->parent()) : nullptr;
        QWidget* button = bar ? bar->widgetForAction(print) : nullptr;
        if (!button || !button->isEnabled())
            return fail("no enabled Print button on the editor's toolbar");
        QTest::mouseClick(button, Qt::LeftButton);
        // The dialog ran modally inside the click; it is closed now.
        if (m_result != 0)
            return;
        if (m_step != Step::Done)
            return fail(QStringLiteral("the print dialog closed at step %1").arg(int(m_step)));
        m_startup.mainWindow()->close();
    }

    int result() const { return m_result; }

private:
    enum class Step { Dialog, Preview, SaveDialog, OpenQuestion, Done };

    void shot(QWidget* w, const QString& name) {
        if (!m_args.shots.isEmpty())
            w->grab().save(QDir(m_args.shots).filePath(name));
    }

    void serviceModal() {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || m_inModal)
            return;
        m_inModal = true;
        handle(modal);
        m_inModal = false;
    }

    void handle(QWidget* modal) {
        if (m_step != Step::Dialog && qobject_cast<vkm::fPrint*>(modal))
            return; // the print dialog between its own windows
        switch (m_step) {
        case Step::Dialog: {
            auto* dialog = qobject_cast<vkm::fPrint*>(modal);
            if (!dialog)
                return unexpected(modal);
            shot(dialog, QStringLiteral("print-dialog.png"));
            m_step = Step::Preview;
            // The buttons open modal windows of their own: pressed from the event loop, so
            // that those windows are answered here in turn.
            QTimer::singleShot(0, dialog, [this, dialog] {
                dialog->button(4)->click(); // Preview
                if (m_step != Step::SaveDialog)
                    return fail("the preview did not show");
                dialog->chkPrintMemo()->setChecked(true);
                dialog->button(2)->click(); // Create Excel file
            });
            return;
        }
        case Step::Preview: {
            auto* preview = qobject_cast<QPrintPreviewDialog*>(modal);
            if (!preview)
                return unexpected(modal);
            preview->resize(1200, 900);
            auto* widget = preview->findChild<QPrintPreviewWidget*>();
            if (!widget)
                return fail("the preview has no pages");
            widget->updatePreview();
            widget->fitInView();
            QCoreApplication::processEvents();
            if (widget->pageCount() < 1 || widget->orientation() != QPageLayout::Landscape)
                return fail(QStringLiteral("the preview shows %1 pages, orientation %2")
                                .arg(widget->pageCount())
                                .arg(int(widget->orientation())));
            shot(preview, QStringLiteral("print-preview.png"));
            m_step = Step::SaveDialog;
            preview->reject();
            return;
        }
        case Step::SaveDialog: {
            auto* files = qobject_cast<QFileDialog*>(modal);
            if (!files)
                return unexpected(modal);
            if (files->windowTitle() != QLatin1String("Specify excel file name"))
                return fail(QStringLiteral("the save dialog is titled '%1'").arg(files->windowTitle()));
            files->selectFile(m_args.workbook);
            m_step = Step::OpenQuestion;
            static_cast<QDialog*>(files)->accept(); // as the Save button does
            return;
        }
        case Step::OpenQuestion: {
            auto* box = qobject_cast<QMessageBox*>(modal);
            if (!box ||
                !box->text().startsWith(QLatin1String("Excel file is created in the following folder.")))
                return unexpected(modal);
            if (!box->text().contains(m_args.workbook))
                return fail(QStringLiteral("the question does not name the workbook: %1").arg(box->text()));
            if (box->defaultButton() != box->button(QMessageBox::No))
                return fail("No is not the default answer of the question");
            m_step = Step::Done;
            box->button(QMessageBox::No)->click();
            return;
        }
        case Step::Done:
            return unexpected(modal);
        }
    }

    void unexpected(QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        fail(QStringLiteral("unexpected window at step %1: %2")
                 .arg(int(m_step))
                 .arg(box ? box->text() : modal->windowTitle()));
        modal->close();
    }

    void fail(const QString& what) {
        std::fprintf(stderr, "FAIL: %s\n", qPrintable(what));
        m_result = kFailed;
        QCoreApplication::exit(kFailed);
    }
    void fail(const char* what) { fail(QString::fromUtf8(what)); }

    vkm::Startup& m_startup;
    Arguments m_args;
    Step m_step = Step::Dialog;
    int m_result = 0;
    bool m_inModal = false;
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption archive(QStringLiteral("archive"), QStringLiteral("Setting archive."),
                                     QStringLiteral("PATH"));
    const QCommandLineOption shots(QStringLiteral("shots"), QStringLiteral("Folder for pictures."),
                                   QStringLiteral("DIR"));
    const QCommandLineOption workbook(QStringLiteral("workbook"), QStringLiteral("Workbook to create."),
                                      QStringLiteral("OUT.xlsx"));
    parser.addOptions({archive, shots, workbook});
    parser.process(app);
    Arguments args{parser.value(archive), parser.value(shots), parser.value(workbook),
                   parser.positionalArguments().join(u' ')};
    if (args.workbook.isEmpty() || args.file.isEmpty()) {
        std::fprintf(stderr, "usage: %s [--archive PATH] [--shots DIR] --workbook OUT.xlsx FILE.gsp\n",
                     argv[0]);
        return 2;
    }
    vkm::StartupOptions options;
    options.archiveOverride = args.archive;
    options.commandLine = args.file.contains(u' ') ? u'"' + args.file + u'"' : args.file;
    vkm::Startup startup(options);
    Session session(startup, args);
    session.watchModals();
    QTimer::singleShot(30000, &app, [] {
        std::fprintf(stderr, "FAIL: the session did not end within 30 s\n");
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
