// A user's session with the editor, played through the window system: starts the editor the
// way vkmstep does (vkm::Startup with the archive and the program of the command line), then
// types on the keyboard, clicks the Save button, answers the close question and closes the
// main window. Every key goes to the main window's QWindow, so Qt delivers it to whatever
// widget has the focus, through the shortcut map and event filters, as a real key would.
//
//   e2e_editor_session [--archive PATH] --scenario edit-save|close-unsaved
//                      --row R --col C --value TEXT FILE.gsp
//
// edit-save:      types TEXT on cell (R, C), saves with the toolbar's Save button, closes.
// close-unsaved:  types TEXT on cell (R, C), closes: Cancel on the question keeps the editor
//                 open, No on the second question closes it without saving.
// refuse-entry:   types TEXT, which the cell must refuse with one "Value is out of range."
//                 box: OK, the cell editor stays open with the cell's value, Escape ends the
//                 edit, the cell keeps its value, and the editor closes without a question.
// Exit code 0: the scenario went as described and the application closed by itself; any
// step that did not happen prints "FAIL: ..." and gives a non-zero code.
#include "documentcontroller.h"
#include "finpmemo.h"
#include "sessiondriver.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <functional>

namespace {

constexpr char kCloseQuestion[] = "Data is chaneged. Do you save changes ?";

struct Arguments {
    QString archive;
    QString scenario;
    int row = -1;
    int col = -1;
    QString value;
    QString file;
};

class Session : public vkm::e2e::SessionBase {
public:
    Session(vkm::Startup& startup, Arguments args) : SessionBase(startup), m_args(std::move(args)) {}

    void run() override {
        if (!activateMainWindow())
            return;
        QTableView* grid = m_startup.userEditorWindow()->grid();
        if (QApplication::focusWidget() != grid)
            return fail("after start-up the keyboard focus is not on the user grid");
        if (!moveTo(grid))
            return;
        if (m_args.scenario == QLatin1String("refuse-entry"))
            return refuseEntry(grid);
        if (!typeValue(grid))
            return;
        if (m_args.scenario == QLatin1String("edit-save"))
            saveAndClose();
        else
            closeWithoutSaving();
    }

private:
    // Ctrl+Home to the top-left cell, then arrows: the grid's own keyboard navigation.
    bool moveTo(QTableView* grid) {
        key(Qt::Key_Home, Qt::ControlModifier);
        for (int r = grid->currentIndex().row(); r < m_args.row; ++r)
            key(Qt::Key_Down);
        for (int c = grid->currentIndex().column(); c < m_args.col; ++c)
            key(Qt::Key_Right);
        const QModelIndex cur = grid->currentIndex();
        if (cur.row() != m_args.row || cur.column() != m_args.col) {
            fail(QStringLiteral("the arrow keys led to cell %1,%2").arg(cur.row()).arg(cur.column()));
            return false;
        }
        return true;
    }

    // The first character opens the cell editor, the rest goes into it, Enter ends the edit.
    bool typeValue(QTableView* grid) {
        for (const QChar ch : m_args.value)
            QTest::keyClick(window(), ch.toLatin1());
        if (QApplication::focusWidget() == grid) {
            fail("typing did not open a cell editor");
            return false;
        }
        key(Qt::Key_Return);
        QCoreApplication::processEvents(); // the cell editor commits through a queued call
        const QString shown = grid->currentIndex().data().toString();
        if (shown != m_args.value) {
            fail(QStringLiteral("the cell shows '%1' after Enter").arg(shown));
            return false;
        }
        return true;
    }

    // An out-of-range value: one message box, OK, the old value stays, nothing changed.
    void refuseEntry(QTableView* grid) {
        const QString before = grid->currentIndex().data().toString();
        m_question = QStringLiteral("Value is out of range.");
        m_expect = [this](QMessageBox*) {
            key(Qt::Key_Return); // OK
            return QString();
        };
        for (const QChar ch : m_args.value)
            QTest::keyClick(window(), ch.toLatin1());
        key(Qt::Key_Return);
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents(); // the cell editor commits through a queued call
        if (m_result != 0)
            return;
        if (m_asked != 1)
            return fail(QStringLiteral("the refused value showed %1 message boxes").arg(m_asked));
        // The cell editor stays open with the cell's own value, ready for a correction.
        auto* editor = qobject_cast<QLineEdit*>(grid->indexWidget(grid->currentIndex()));
        if (!editor || !editor->hasFocus() || editor->text() != before)
            return fail(
                QStringLiteral("after the refusal the cell editor is %1 and shows '%2' (expected '%3')")
                    .arg(!editor              ? QStringLiteral("closed")
                         : editor->hasFocus() ? QStringLiteral("open")
                                              : QStringLiteral("without focus"),
                         editor ? editor->text() : QString(), before));
        key(Qt::Key_Escape);
        if (QApplication::focusWidget() != grid)
            return fail("Escape did not end the cell edit");
        const QString shown = grid->currentIndex().data().toString();
        if (shown != before)
            return fail(QStringLiteral("the cell shows '%1' instead of '%2'").arg(shown, before));
        if (m_startup.documents()->documents().user().IsChanged())
            return fail("a refused value marked the program changed");
        m_expect = nullptr;
        closeMainWindow();
    }

    void saveAndClose() {
        QWidget* button = vkm::e2e::toolButton(m_startup.userEditorWindow(), QStringLiteral("keySAVE"));
        if (!button)
            return fail("no Save button on the editor's toolbar");
        // The left part of the button runs its first item; the right part opens the menu.
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(button->width() / 4, button->height() / 2));
        if (m_startup.documents()->documents().user().IsChanged())
            return fail("the program is still marked changed after Save");
        closeMainWindow();
    }

    void closeWithoutSaving() {
        m_expect = [this](QMessageBox* box) {
            key(Qt::Key_Escape); // the box's escape button is Cancel
            return box->isVisible() ? QStringLiteral("Escape did not cancel the question") : QString();
        };
        closeMainWindow();
        if (m_result != 0)
            return;
        if (m_asked != 1)
            return fail(QStringLiteral("closing with changes asked %1 questions").arg(m_asked));
        if (!m_startup.mainWindow()->isVisible())
            return fail("Cancel on the close question closed the editor");
        m_expect = [](QMessageBox* box) {
            QAbstractButton* no = box->button(QMessageBox::No);
            if (!no)
                return QStringLiteral("the close question has no No button");
            QTest::mouseClick(no, Qt::LeftButton);
            return QString();
        };
        closeMainWindow();
        if (m_result == 0 && m_asked != 2)
            fail("the second close did not ask again");
    }

    // The title bar's close button: a close event the main window may refuse.
    void closeMainWindow() { m_startup.mainWindow()->close(); }

    void handleModal(QWidget* modal) override {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (!box || !m_expect) {
            fail(QStringLiteral("unexpected dialog: %1").arg(box ? box->text() : modal->windowTitle()));
            modal->close();
        } else if (!box->text().startsWith(m_question)) {
            fail(QStringLiteral("the box reads '%1', not '%2'").arg(box->text(), m_question));
            box->reject();
        } else {
            ++m_asked;
            const QString error = m_expect(box);
            if (!error.isEmpty()) {
                fail(error);
                box->reject();
            }
        }
    }

    void key(Qt::Key k, Qt::KeyboardModifiers mods = Qt::NoModifier) { QTest::keyClick(window(), k, mods); }
    QWindow* window() {
        QWidget* target = QApplication::activeModalWidget();
        return (target ? target : m_startup.mainWindow())->windowHandle();
    }

    Arguments m_args;
    std::function<QString(QMessageBox*)> m_expect;
    QString m_question = QLatin1String(kCloseQuestion); // the start of the box expected next
    int m_asked = 0;
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const vkm::e2e::CommandLine line =
        vkm::e2e::parseCommandLine(app, {"archive", "scenario", "row", "col", "value"});
    const Arguments args{line.value("archive"),     line.value("scenario"), line.value("row").toInt(),
                         line.value("col").toInt(), line.value("value"),    line.file()};
    if (!QStringList{"edit-save", "close-unsaved", "refuse-entry"}.contains(args.scenario) || args.row <= 0 ||
        args.col <= 0 || args.value.isEmpty() || args.file.isEmpty())
        return vkm::e2e::usage(argv[0], "[--archive PATH] --scenario edit-save|close-unsaved|refuse-entry "
                                        "--row R --col C --value TEXT FILE.gsp");
    // Exactly what vkmstep's main hands to the start-up.
    return vkm::e2e::runSession<Session>(app, args, 20);
}
