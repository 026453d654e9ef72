// The editor driven from the keyboard, as a new user tries it: the standard keys of the
// toolbar's commands, undo and redo of cell edits, the unsaved-changes mark in the title
// and the status bar after a save.
#include "documentcontroller.h"
#include "finpmemo.h"
#include "guitestsupport.h"
#include "mainwindow.h"
#include "sheet/stepsheeteditor.h"
#include "startuprig.h"
#include "stepeditorwindow.h"
#include "steptablemodel.h"
#include "steptoolbar.h"

#include <QApplication>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPainter>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTableView>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

// Warnings Qt gives while the keys are pressed (an ambiguous shortcut among them).
QStringList g_warnings;
void captureWarnings(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtWarningMsg)
        g_warnings << text;
}

class Keys : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(startup.run());
        win = startup.userEditorWindow();
        ASSERT_NE(win, nullptr);
        focusGrid(win);
        g_warnings.clear();
        m_previousHandler = qInstallMessageHandler(captureWarnings);
    }
    void TearDown() override {
        qInstallMessageHandler(m_previousHandler);
        EXPECT_TRUE(g_warnings.filter(QStringLiteral("Ambiguous")).isEmpty())
            << qPrintable(g_warnings.join(QLatin1Char('\n')));
    }

    // The main window active (a closed dialog may leave none) and the grid focused.
    void focusGrid(StepEditorWindow* w) {
        QApplication::setActiveWindow(startup.mainWindow());
        w->grid()->setFocus();
        ASSERT_TRUE(QTest::qWaitFor([w] { return QApplication::focusWidget() == w->grid(); }));
    }
    // A key pressed where the focus is, as the keyboard delivers it.
    static void press(const QKeySequence& keys) {
        QWidget* target = QApplication::focusWidget();
        ASSERT_NE(target, nullptr);
        QTest::keySequence(target, keys);
        QCoreApplication::processEvents();
    }
    StepSheet& sheet() { return win->editor().sheet(); }
    void go(int row, int col) { win->grid()->setCurrentIndex(win->model()->index(row, col)); }
    // Types on a cell: the first character opens its editor, the rest goes into it.
    QLineEdit* startTyping(int row, int col, const QString& text) {
        go(row, col);
        QTest::keyClicks(win->grid(), text.left(1));
        auto* line = qobject_cast<QLineEdit*>(win->grid()->indexWidget(win->model()->index(row, col)));
        if (line)
            QTest::keyClicks(line, text.mid(1));
        return line;
    }
    void type(int row, int col, const QString& text) {
        QLineEdit* line = startTyping(row, col, text);
        ASSERT_NE(line, nullptr);
        QTest::keyClick(line, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    QString remark(int row) { return sheet().text(row, StepSheet::GetcolRemark()); }
    QMdiSubWindow* frame() { return qobject_cast<QMdiSubWindow*>(win->parentWidget()); }

    StartupRig rig;
    Startup startup{rig.options};
    StepEditorWindow* win = nullptr;

private:
    QtMessageHandler m_previousHandler = nullptr;
};

TEST_F(Keys, TypedCellsAreUndoneAndRedoneAndCtrlSSavesAndClearsTheMark) {
    EXPECT_EQ(win->windowTitle(), QStringLiteral("STEP[*]"));
    EXPECT_FALSE(win->isWindowModified());

    type(1, StepSheet::GetcolRemark(), QStringLiteral("first"));
    type(2, StepSheet::GetcolRemark(), QStringLiteral("second"));
    EXPECT_EQ(remark(2), QStringLiteral("second"));
    EXPECT_TRUE(win->isWindowModified());
    EXPECT_TRUE(frame()->isWindowModified()) << "the frame shows the mark";

    rig.prompter.queueAnswer(Answer::Yes);
    press(QKeySequence(Qt::CTRL | Qt::Key_Z));
    EXPECT_EQ(rig.prompter.numbers(), std::vector<int>({96}));
    EXPECT_TRUE(remark(2).isEmpty());
    EXPECT_EQ(remark(1), QStringLiteral("first"));
    EXPECT_TRUE(win->action(QStringLiteral("keyREDO"))->isEnabled());

    rig.prompter.clear();
    press(QKeySequence(Qt::CTRL | Qt::Key_Y));
    EXPECT_EQ(remark(2), QStringLiteral("second"));
    EXPECT_TRUE(rig.prompter.numbers().empty()) << "redo asks nothing";
    EXPECT_FALSE(win->action(QStringLiteral("keyREDO"))->isEnabled());
    rig.prompter.queueAnswer(Answer::Yes);
    press(QKeySequence(Qt::CTRL | Qt::Key_Z));
    press(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    EXPECT_EQ(remark(2), QStringLiteral("second"));

    const QString path = rig.store.scratch.file(QStringLiteral("KEYS.gsp"));
    rig.prompter.clear();
    rig.prompter.queueFileName(path);
    press(QKeySequence(Qt::CTRL | Qt::Key_S));
    ASSERT_EQ(rig.prompter.fileRequests().size(), 1u);
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_FALSE(win->isWindowModified());
    EXPECT_EQ(win->windowTitle(), QStringLiteral("KEYS.gsp[*]"));
    EXPECT_EQ(startup.mainWindow()->statusBar()->currentMessage(),
              QStringLiteral("Saved to ") + QDir::toNativeSeparators(path));

    // The next Ctrl+S writes to the same file without asking; an edit marks the title again.
    type(3, StepSheet::GetcolRemark(), QStringLiteral("third"));
    EXPECT_TRUE(win->isWindowModified());
    press(QKeySequence(Qt::CTRL | Qt::Key_S));
    EXPECT_EQ(rig.prompter.fileRequests().size(), 1u);
    EXPECT_FALSE(win->isWindowModified());
}

TEST_F(Keys, NewOpenSaveAsPrintInsertAndHelpReachTheirCommands) {
    type(2, StepSheet::GetcolRemark(), QStringLiteral("two"));

    // Ctrl+N: New asks about the unsaved change first (cancelled here).
    rig.prompter.queueAnswer(Answer::Cancel);
    press(QKeySequence(Qt::CTRL | Qt::Key_N));
    EXPECT_EQ(rig.prompter.numbers(), std::vector<int>({13}));
    EXPECT_EQ(remark(2), QStringLiteral("two"));

    // Ctrl+O: the same question (Cancel opens no dialog), then the open dialog for a user program.
    rig.prompter.clear();
    rig.prompter.queueAnswer(Answer::Cancel);
    press(QKeySequence(Qt::CTRL | Qt::Key_O));
    EXPECT_EQ(rig.prompter.numbers(), std::vector<int>({13}));
    EXPECT_TRUE(rig.prompter.fileRequests().empty());
    rig.prompter.clear();
    rig.prompter.queueAnswer(Answer::No);
    rig.prompter.queueFileName(QString());
    press(QKeySequence(Qt::CTRL | Qt::Key_O));
    ASSERT_EQ(rig.prompter.fileRequests().size(), 1u);
    EXPECT_EQ(rig.prompter.fileRequests()[0].title, QStringLiteral("Open user file."));

    // Ctrl+Shift+S: the save dialog even with no question of a file name.
    rig.prompter.queueFileName(QString());
    press(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    ASSERT_EQ(rig.prompter.fileRequests().size(), 2u);
    EXPECT_EQ(rig.prompter.fileRequests()[1].title, QStringLiteral("Specify saving filename"));

    // Ctrl+P: the print dialog.
    QString printDialog;
    const auto printWindow = whenModal([&](QWidget* dialog) {
        printDialog = dialog->objectName();
        dialog->close();
    });
    press(QKeySequence(Qt::CTRL | Qt::Key_P));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !printDialog.isEmpty(); }));
    EXPECT_EQ(printDialog, QStringLiteral("fPrint"));

    // Ins inserts a row before the current one.
    go(2, StepSheet::GetcolRemark());
    focusGrid(win);
    press(QKeySequence(Qt::Key_Insert));
    EXPECT_TRUE(remark(2).isEmpty());
    EXPECT_EQ(remark(3), QStringLiteral("two"));

    // F1 runs the Help command, which the window offers as it stands, and the guide opens
    // (in the desktop's viewer, here a stand-in).
    QAction* help = win->action(QStringLiteral("keyHelp"));
    EXPECT_TRUE(help->isEnabled());
    QStringList opened;
    startup.documents()->setOpener([&opened](const QString& path) {
        opened << path;
        return true;
    });
    QSignalSpy commands(win, &StepEditorWindow::commandTriggered);
    focusGrid(win);
    press(QKeySequence(Qt::Key_F1));
    ASSERT_EQ(commands.size(), 1);
    EXPECT_EQ(commands[0][0].toString(), QStringLiteral("keyHelp"));
    ASSERT_EQ(opened.size(), 1);
    EXPECT_TRUE(opened[0].endsWith(QStringLiteral("/Help/Eng/Index.html"))) << qPrintable(opened[0]);
}

TEST_F(Keys, AnOpenCellEditorKeepsItsOwnUndoAndIsEndedBeforeASave) {
    type(1, StepSheet::GetcolRemark(), QStringLiteral("kept"));
    rig.prompter.clear();

    // Ctrl+Z in the cell editor undoes the typing there, not the grid.
    QLineEdit* line = startTyping(2, StepSheet::GetcolRemark(), QStringLiteral("abc"));
    ASSERT_NE(line, nullptr);
    QTest::keyClicks(line, QStringLiteral("de"));
    QTest::keySequence(line, QKeySequence(Qt::CTRL | Qt::Key_Z));
    EXPECT_NE(line->text(), QStringLiteral("abcde"));
    EXPECT_TRUE(rig.prompter.numbers().empty());
    EXPECT_EQ(remark(1), QStringLiteral("kept"));

    // Ctrl+S ends the edit as leaving the cell does, then saves what it holds.
    line->setText(QStringLiteral("typed"));
    const QString path = rig.store.scratch.file(QStringLiteral("OPEN.gsp"));
    rig.prompter.queueFileName(path);
    QTest::keySequence(line, QKeySequence(Qt::CTRL | Qt::Key_S));
    QCoreApplication::processEvents();
    EXPECT_EQ(remark(2), QStringLiteral("typed"));
    ASSERT_EQ(rig.prompter.fileRequests().size(), 1u);
    EXPECT_FALSE(win->isWindowModified());

    // A text the cell refuses keeps its editor open and nothing is saved.
    const int out1 = sheet().GetcolOutKino1();
    line = startTyping(3, out1, QStringLiteral("NOSUCH"));
    ASSERT_NE(line, nullptr);
    QTest::keySequence(line, QKeySequence(Qt::CTRL | Qt::Key_S));
    QCoreApplication::processEvents();
    EXPECT_EQ(rig.prompter.numbers(), std::vector<int>({67}));
    EXPECT_EQ(rig.prompter.fileRequests().size(), 1u);
    EXPECT_NE(win->grid()->indexWidget(win->model()->index(3, out1)), nullptr);
}

TEST_F(Keys, TheComparisonWindowIgnoresTheKeysOfCommandsItCannotRun) {
    type(1, StepSheet::GetcolRemark(), QStringLiteral("mine"));
    rig.prompter.queueFileName(testData(QStringLiteral("gsp/flow.gsp")));
    ASSERT_TRUE(startup.documents()->handleKey(0, QStringLiteral("keyREAD_HIKAKU1"), true));
    StepEditorWindow* cmp = startup.comparisonEditorWindow();
    ASSERT_NE(cmp, nullptr);
    EXPECT_EQ(cmp->windowTitle(), QStringLiteral("Refer:flow.gsp[*]"));
    const QByteArray before = cmp->editor().sheet().saveCells();
    focusGrid(cmp);
    rig.prompter.clear();
    for (const QKeySequence& keys : {QKeySequence(Qt::CTRL | Qt::Key_S), QKeySequence(Qt::CTRL | Qt::Key_Z),
                                     QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::Key_N),
                                     QKeySequence(Qt::CTRL | Qt::Key_O), QKeySequence(Qt::Key_Insert)}) {
        press(keys);
        EXPECT_TRUE(rig.prompter.shown().empty()) << qPrintable(keys.toString());
    }
    EXPECT_TRUE(rig.prompter.fileRequests().empty());
    EXPECT_EQ(cmp->editor().sheet().saveCells(), before);
    EXPECT_FALSE(cmp->isWindowModified());
    EXPECT_EQ(remark(1), QStringLiteral("mine"));
    EXPECT_TRUE(win->isWindowModified()) << "the user program was not saved or replaced";
}

TEST_F(Keys, ToolTipsAndMenusShowTheKeysAndNoKeyIsBoundTwice) {
    const struct {
        const char* key;
        const char* tip;
    } tips[] = {{"keyNew", "New (Ctrl+N)"},
                {"keyOPEN", "Open (Ctrl+O)"},
                {"keySAVE", "Save (Ctrl+S)"},
                {"keyPRINT", "Print (Ctrl+P)"},
                {"keyUNDO", "Undo (Ctrl+Z)"},
                {"keyCOPY", "Copy (Ctrl+C)"},
                {"keyROWINSERT", "Insert (Ins)"},
                {"keyHelp", "Help (F1)"},
                {"keyFind", "Find function / replace(CTRL+F)"}};
    for (bool captions : {true, false}) {
        win->ShowButtonCaption(captions);
        for (const auto& t : tips)
            EXPECT_EQ(win->action(QLatin1String(t.key))->toolTip(), QLatin1String(t.tip)) << t.key;
    }
    const QList<QKeySequence> redo = win->action(QStringLiteral("keyREDO"))->shortcuts();
    EXPECT_TRUE(redo.contains(QKeySequence(Qt::CTRL | Qt::Key_Y)));
    EXPECT_TRUE(redo.contains(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)));
    EXPECT_EQ(win->menuAction(QStringLiteral("keySAVE"), QStringLiteral("keySAVEAS"))->shortcut(),
              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    EXPECT_EQ(win->menuAction(QStringLiteral("keyOPEN"), QStringLiteral("keyREAD_USER1"))->shortcut(),
              QKeySequence(Qt::CTRL | Qt::Key_O));

    // Within the window every key names one command, and none takes a key of the grid.
    QHash<QKeySequence, QString> owners;
    const QList<QKeySequence> gridKeys = {
        QKeySequence(Qt::CTRL | Qt::Key_C), QKeySequence(Qt::CTRL | Qt::Key_X),
        QKeySequence(Qt::CTRL | Qt::Key_V), QKeySequence(Qt::CTRL | Qt::Key_F),
        QKeySequence(Qt::Key_F2),           QKeySequence(Qt::Key_Delete)};
    for (const QAction* a : win->findChildren<QAction*>()) {
        for (const QKeySequence& k : a->shortcuts()) {
            EXPECT_FALSE(owners.contains(k))
                << qPrintable(k.toString()) << " " << qPrintable(a->objectName());
            EXPECT_FALSE(gridKeys.contains(k)) << qPrintable(k.toString());
            owners.insert(k, a->objectName());
        }
    }
    EXPECT_GE(owners.size(), 10);

    // With VKM_KEYS_SHOT set, the editor with an unsaved change, the Save menu open and a
    // tool tip shown is saved there for a person to look at.
    if (const QByteArray path = qgetenv("VKM_KEYS_SHOT"); !path.isEmpty()) {
        type(1, StepSheet::GetcolRemark(), QStringLiteral("changed"));
        MainWindow* main = startup.mainWindow();
        QWidget* saveButton = win->toolBar()->widgetForAction(win->action(QStringLiteral("keySAVE")));
        QWidget* undoButton = win->toolBar()->widgetForAction(win->action(QStringLiteral("keyUNDO")));
        QMenu* menu = win->action(QStringLiteral("keySAVE"))->menu();
        menu->popup(saveButton->mapToGlobal(QPoint(0, saveButton->height())));
        QToolTip::showText(undoButton->mapToGlobal(QPoint(4, undoButton->height() + 4)),
                           win->action(QStringLiteral("keyUNDO"))->toolTip(), undoButton);
        QTest::qWait(300);
        QPixmap shot = main->grab();
        QPainter painter(&shot);
        for (QWidget* popup : QApplication::topLevelWidgets())
            if (popup != main && popup->isVisible())
                painter.drawPixmap(main->mapFromGlobal(popup->mapToGlobal(QPoint(0, 0))), popup->grab());
        painter.end();
        shot.save(QString::fromLocal8Bit(path));
        menu->hide();
        QToolTip::hideText();
    }
}

} // namespace
} // namespace vkm::test
