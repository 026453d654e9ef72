// A technician's session with the pulse window, the find window and whole rows, played
// through the window system: the editor starts as vkmstep does with a program of pulses,
// the arrow keys walk over its rows (the pulse window follows by itself), Ctrl+F opens the
// find window and Next finds, the step numbers select two rows that Ctrl+C and Ctrl+V copy
// further down, and the editor is closed without saving.
//
//   e2e_rows_session [--archive PATH] [--screenshot FILE.png] FILE.gsp
//
// The program's steps 1 and 2 must be pulses of Y001 (HIGH then LOW, TIMER 10, length 50)
// and Y002 (STC 20, length 25), step 3 empty. With --screenshot the screen is saved while
// the find and pulse windows are open. Exit code 0: everything went as described.
#include "documentcontroller.h"
#include "editorcommands.h"
#include "ffind.h"
#include "finpmemo.h"
#include "fpulse.h"
#include "sessiondriver.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTableView>

namespace {

struct Arguments {
    QString archive;
    QString screenshot;
    QString file;
};

class Session : public vkm::e2e::SessionBase {
public:
    Session(vkm::Startup& startup, Arguments args) : SessionBase(startup), m_args(std::move(args)) {}

    void run() override {
        if (!activateMainWindow())
            return;
        QWidget* main = m_startup.mainWindow();
        vkm::StepEditorWindow* editor = m_startup.userEditorWindow();
        QTableView* grid = editor->grid();
        key(Qt::Key_Home, Qt::ControlModifier);
        key(Qt::Key_Right); // the first output function of step 1
        vkm::fPulse* pulse = editor->commands()->pulseWindow();
        if (!pulse || !pulse->IsLoaded())
            return fail("the pulse window did not open on the pulse of step 1");
        expectPulse(pulse, {"Line 1", "Y001", "ON PULSE", "TIMER", "10", "50"});
        // A window system keeps the keys where they are when the pulse window shows itself
        // (the offscreen platform activates every window it shows).
        QTest::qWait(50);
        if (QGuiApplication::platformName() != QLatin1String("offscreen") &&
            QApplication::focusWidget() != grid)
            return fail("the pulse window took the keys from the grid");
        if (QApplication::focusWidget() != grid) {
            main->activateWindow();
            grid->setFocus();
        }
        key(Qt::Key_Down);
        expectPulse(pulse, {"Line 2", "Y002", "ON PULSE", "STC", "20", "25"});
        key(Qt::Key_Down);
        expectPulse(pulse, {"Line 3", "", "", "", "", ""});

        key(Qt::Key_Up);
        key(Qt::Key_F, Qt::ControlModifier);
        vkm::fFind* find = editor->commands()->findWindow();
        if (!find || !find->isVisible())
            return fail("Ctrl+F opened no find window");
        if (find->lblDigi(1) != QLatin1String("Y002"))
            return fail(QStringLiteral("the find window looks for '%1', not Y002").arg(find->lblDigi(1)));
        QTest::mouseClick(find->BTN(1), Qt::LeftButton);
        if (grid->currentIndex() != grid->model()->index(2, 2))
            return fail("Next did not find Y002 in step 2");
        // Both tool windows are up beside the grid.
        if (!m_args.screenshot.isEmpty()) {
            QTest::qWait(300);
            QScreen* screen = QGuiApplication::primaryScreen();
            if (!screen || !screen->grabWindow(0).save(m_args.screenshot))
                return fail("the screenshot could not be saved");
        }
        QTest::mouseClick(find->BTN(2), Qt::LeftButton);
        if (find->isVisible())
            return fail("Cancel left the find window open");

        // Steps 1 and 2 copied by their numbers and pasted at step 5.
        main->activateWindow();
        grid->setFocus();
        QHeaderView* steps = grid->verticalHeader();
        const auto stepPoint = [steps](int row) {
            return QPoint(steps->width() / 2,
                          steps->sectionViewportPosition(row) + steps->sectionSize(row) / 2);
        };
        QTest::mouseClick(steps->viewport(), Qt::LeftButton, {}, stepPoint(1));
        QTest::mouseClick(steps->viewport(), Qt::LeftButton, Qt::ShiftModifier, stepPoint(2));
        key(Qt::Key_C, Qt::ControlModifier);
        QTest::mouseClick(steps->viewport(), Qt::LeftButton, {}, stepPoint(5));
        key(Qt::Key_V, Qt::ControlModifier);
        vkm::StepSheet& sheet = editor->editor().sheet();
        for (int c = 1; c < vkm::StepSheet::kCols; ++c)
            if (sheet.text(5, c) != sheet.text(1, c) || sheet.text(6, c) != sheet.text(2, c))
                return fail(QStringLiteral("the pasted rows differ in column %1").arg(c));
        if (!m_startup.documents()->documents().user().IsChanged())
            return fail("the paste did not mark the program changed");

        // Closed without saving: No to the question.
        m_answer = QMessageBox::No;
        main->close();
        if (m_asked != 1)
            fail(QStringLiteral("closing asked %1 questions").arg(m_asked));
    }

private:
    void handleModal(QWidget* modal) override {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (!box || m_answer == QMessageBox::NoButton) {
            fail(QStringLiteral("unexpected window: %1").arg(box ? box->text() : modal->windowTitle()));
            modal->close();
            return;
        }
        ++m_asked;
        if (QAbstractButton* b = box->button(m_answer))
            QTest::mouseClick(b, Qt::LeftButton);
        else
            box->reject();
    }

    void expectPulse(vkm::fPulse* pulse, const QStringList& wanted) {
        const QStringList shown = {pulse->lineText(),
                                   pulse->txtKino()->text(),
                                   pulse->cboLogic()->currentText(),
                                   pulse->cboDelayKind()->currentText(),
                                   pulse->txtDelay(1)->text(),
                                   pulse->txtDelay(2)->text()};
        if (shown != wanted)
            fail(QStringLiteral("the pulse window shows [%1], not [%2]")
                     .arg(shown.join(u'|'), wanted.join(u'|')));
    }

    void key(Qt::Key k, Qt::KeyboardModifiers mods = Qt::NoModifier) {
        QTest::keyClick(m_startup.mainWindow()->windowHandle(), k, mods);
    }

    Arguments m_args;
    QMessageBox::StandardButton m_answer = QMessageBox::NoButton;
    int m_asked = 0;
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const vkm::e2e::CommandLine line = vkm::e2e::parseCommandLine(app, {"archive", "screenshot"});
    const Arguments args{line.value("archive"), line.value("screenshot"), line.file()};
    if (args.file.isEmpty())
        return vkm::e2e::usage(argv[0], "[--archive PATH] [--screenshot FILE.png] FILE.gsp");
    return vkm::e2e::runSession<Session>(app, args, 50);
}
