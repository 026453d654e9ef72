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
#include "sessiondriver.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPushButton>

namespace {

struct Arguments {
    QString archive;
    QString shots;
    QString workbook;
    QString file;
};

class Session : public vkm::e2e::SessionBase {
public:
    Session(vkm::Startup& startup, Arguments args) : SessionBase(startup), m_args(std::move(args)) {}

    void run() override {
        QWidget* button = vkm::e2e::toolButton(m_startup.userEditorWindow(), QStringLiteral("keyPRINT"));
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

private:
    enum class Step { Dialog, Preview, SaveDialog, OpenQuestion, Done };

    void shot(QWidget* w, const QString& name) {
        if (!m_args.shots.isEmpty())
            w->grab().save(QDir(m_args.shots).filePath(name));
    }

    // Every modal window, in the order a user meets them.
    void handleModal(QWidget* modal) override {
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

    Arguments m_args;
    Step m_step = Step::Dialog;
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const vkm::e2e::CommandLine line = vkm::e2e::parseCommandLine(app, {"archive", "shots", "workbook"});
    const Arguments args{line.value("archive"), line.value("shots"), line.value("workbook"), line.file()};
    if (args.workbook.isEmpty() || args.file.isEmpty())
        return vkm::e2e::usage(argv[0], "[--archive PATH] [--shots DIR] --workbook OUT.xlsx FILE.gsp");
    return vkm::e2e::runSession<Session>(app, args, 30);
}
