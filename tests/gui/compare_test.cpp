// The differences between the user and the comparison program, marked in both editor windows
// and walked with F7 and Shift+F7, driven with keys and clicks.
#include "differencehighlight.h"
#include "documentcontroller.h"
#include "editorfixture.h"
#include "finpmemo.h"
#include "startuprig.h"
#include "steptoolbar.h"

#include "model/csteps.h"

#include <QAction>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QToolButton>

using namespace vkm;
using test::Editor;

namespace {

// The user editor of the fixture, a comparison window beside it and the highlight over both.
struct Comparing : Editor {
    std::unique_ptr<StepEditorWindow> cmp;
    std::unique_ptr<DifferenceHighlight> diff;

    Comparing() {
        cmp = std::make_unique<StepEditorWindow>(ctx, 1);
        cmp->resize(1260, 700);
        diff = std::make_unique<DifferenceHighlight>(ed(), cmp->editor());
        diff->attach(*win);
        diff->attach(*cmp);
    }
    ~Comparing() {
        diff.reset(); // before the windows that own the sheets
    }
    StepSheet& cmpSheet() { return cmp->editor().sheet(); }
    QToolButton* toggle(StepEditorWindow& w) {
        return qobject_cast<QToolButton*>(w.toolBar()->widgetForAction(diff->action(w, "keyDIFF")));
    }
    QColor cellColour(StepEditorWindow& w, int row, int col) {
        return w.model()->index(row, col).data(Qt::BackgroundRole).value<QColor>();
    }
    bool marked(StepEditorWindow& w, int row, int col) {
        const QColor own = QColor::fromRgb(w.editor().sheet().backColor(row, col));
        const QVariant c = col == 0 ? w.model()->headerData(row, Qt::Vertical, Qt::BackgroundRole)
                                    : w.model()->index(row, col).data(Qt::BackgroundRole);
        return c.value<QColor>() != own;
    }
    QString status(StepEditorWindow& w) {
        auto* bar = w.findChild<QStatusBar*>("differenceStatus");
        auto* label = w.findChild<QLabel*>("lblDifferences");
        return bar && label && bar->isVisible() ? label->text() : QString();
    }
    QModelIndex current(StepEditorWindow& w) { return w.grid()->currentIndex(); }
    void key(StepEditorWindow& w, Qt::Key k, Qt::KeyboardModifiers m = {}) {
        QApplication::setActiveWindow(&w);
        w.grid()->setFocus();
        QTest::keyClick(w.grid(), k, m);
    }
};

TEST(DifferenceHighlight, MarksCountsAndWalksTheDifferencesFollowingEdits) {
    Comparing t;
    const int delay = t.out1() + 3;
    t.output(1, t.out1(), "OUT1", "1", "0");
    t.setup(1, delay, "100");
    t.setup(3, t.out1(), "OUT2");
    // The comparison program: the same, with another delay, a remark and a disabled row.
    ASSERT_TRUE(t.cmpSheet().loadCells(t.sheet().saveCells()));
    t.cmpSheet().setText(1, delay, "120");
    t.cmpSheet().setText(3, StepSheet::GetcolRemark(), "check");
    t.cmpSheet().setRowDisabled(5, true);
    ASSERT_EQ(t.diff->differences().size(), 3u);

    // Without a comparison program the toggle and F7 do nothing.
    ASSERT_NE(t.toggle(*t.win), nullptr);
    EXPECT_FALSE(t.toggle(*t.win)->isEnabled());
    t.go(1, 1);
    t.key(*t.win, Qt::Key_F7);
    EXPECT_EQ(t.current(*t.win), t.win->model()->index(1, 1));

    t.cmp->show(); // a comparison program was opened
    ASSERT_TRUE(t.toggle(*t.win)->isEnabled());
    EXPECT_FALSE(t.marked(*t.win, 1, delay)) << "marks only once the toggle is on";
    QTest::mouseClick(t.toggle(*t.win), Qt::LeftButton);
    EXPECT_EQ(t.status(*t.win), "3 differing cells");
    EXPECT_TRUE(t.marked(*t.win, 1, delay));
    EXPECT_TRUE(t.marked(*t.win, 3, StepSheet::GetcolRemark()));
    EXPECT_TRUE(t.marked(*t.win, 5, 0)) << "the step number of the row disabled in one program only";
    EXPECT_FALSE(t.marked(*t.win, 1, t.out1()));
    EXPECT_FALSE(t.marked(*t.win, 5, 1));
    // Each window has its own toggle.
    EXPECT_FALSE(t.marked(*t.cmp, 1, delay));
    EXPECT_EQ(t.status(*t.cmp), QString());
    QTest::mouseClick(t.toggle(*t.cmp), Qt::LeftButton);
    EXPECT_TRUE(t.marked(*t.cmp, 1, delay));
    EXPECT_EQ(t.status(*t.cmp), "3 differing cells");

    // F7 walks forwards in reading order and wraps round; Shift+F7 backwards. A disabled
    // row leads to its first shown cell.
    const auto at = [&](StepEditorWindow& w, int row, int col) { return w.model()->index(row, col); };
    t.go(1, 1);
    for (const auto& [row, col] : std::vector<std::pair<int, int>>{{1, delay}, {3, 1}, {5, 1}, {1, delay}}) {
        t.key(*t.win, Qt::Key_F7);
        EXPECT_EQ(t.current(*t.win), at(*t.win, row, col)) << row << "," << col;
    }
    t.key(*t.win, Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_EQ(t.current(*t.win), at(*t.win, 5, 1));
    t.key(*t.win, Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_EQ(t.current(*t.win), at(*t.win, 3, 1));
    // In the read-only comparison window as well, each window with its own cursor.
    t.cmp->grid()->setCurrentIndex(at(*t.cmp, 4, 1));
    t.key(*t.cmp, Qt::Key_F7);
    EXPECT_EQ(t.current(*t.cmp), at(*t.cmp, 5, 1));
    EXPECT_EQ(t.current(*t.win), at(*t.win, 3, 1));

    // Typing the comparison's delay removes that difference at once, in both windows;
    // typing another function adds one.
    QApplication::setActiveWindow(t.win.get());
    t.type(1, delay, "120");
    EXPECT_EQ(t.status(*t.win), "2 differing cells");
    EXPECT_EQ(t.status(*t.cmp), "2 differing cells");
    EXPECT_FALSE(t.marked(*t.win, 1, delay));
    EXPECT_FALSE(t.marked(*t.cmp, 1, delay));
    t.type(3, t.out1(), "OUT1");
    EXPECT_EQ(t.status(*t.win), "3 differing cells");
    EXPECT_TRUE(t.marked(*t.cmp, 3, t.out1()));
    // A snapshot loaded (as Undo loads one) and another program shown count at once as well.
    const QByteArray edited = t.sheet().saveCells();
    ASSERT_TRUE(t.cmpSheet().loadCells(edited));
    EXPECT_EQ(t.status(*t.win), "No differing cells");
    EXPECT_FALSE(t.marked(*t.win, 3, t.out1()));
    t.cmp->editor().conversion().PasteData(CSteps()); // an empty program opened for comparison
    EXPECT_TRUE(t.marked(*t.win, 1, t.out1()));
    EXPECT_TRUE(t.marked(*t.cmp, 3, t.out1()));
    // Against an empty program every cell the user's steps fill differs, and nothing else.
    int filled = 0;
    for (int row = StepSheet::kFirstStepRow; row <= StepSheet::kLastStepRow; ++row)
        for (int col = 1; col < StepSheet::kCols; ++col)
            if (!t.sheet().text(row, col).isEmpty()) {
                ++filled;
                EXPECT_TRUE(t.marked(*t.cmp, row, col)) << row << "," << col;
            } else {
                EXPECT_FALSE(t.marked(*t.cmp, row, col)) << row << "," << col;
            }
    ASSERT_GE(filled, 5) << "rows 1 and 3 hold an output each, row 1 with its delay";
    EXPECT_EQ(t.status(*t.cmp), QString::number(filled) + " differing cells");
    ASSERT_TRUE(t.cmpSheet().loadCells(edited));
    t.cmpSheet().setText(3, t.out1(), "OUT2");
    EXPECT_EQ(t.status(*t.win), "1 differing cell");

    // Toggled off: the marks and the count go, in that window only.
    QTest::mouseClick(t.toggle(*t.win), Qt::LeftButton);
    EXPECT_FALSE(t.marked(*t.win, 3, t.out1()));
    EXPECT_EQ(t.status(*t.win), QString());
    EXPECT_TRUE(t.marked(*t.cmp, 3, t.out1()));

    // Closing the comparison window unloads its program: nothing is marked or counted.
    t.cmp->close();
    EXPECT_FALSE(t.toggle(*t.win)->isEnabled());
    EXPECT_FALSE(t.marked(*t.cmp, 3, t.out1()));
    t.go(1, 1);
    t.key(*t.win, Qt::Key_F7);
    EXPECT_EQ(t.current(*t.win), at(*t.win, 1, 1));
}

TEST(DifferenceHighlight, AHiddenRemarkColumnLeadsF7ToTheRowsFirstShownCell) {
    Comparing t;
    t.ts.settings->set(keys::DoesViewRemarkColumn, false);
    t.win->ControlRemarkColumn();
    t.cmpSheet().setText(4, StepSheet::GetcolRemark(), "only here");
    t.cmp->show();
    QTest::mouseClick(t.toggle(*t.win), Qt::LeftButton);
    EXPECT_EQ(t.status(*t.win), "1 differing cell");
    t.go(1, t.out1());
    t.key(*t.win, Qt::Key_F7);
    EXPECT_EQ(t.current(*t.win), t.win->model()->index(4, t.out1()));
    // The only difference: F7 stays on it.
    t.key(*t.win, Qt::Key_F7);
    EXPECT_EQ(t.current(*t.win), t.win->model()->index(4, t.out1()));
    // Emptied again: no difference, F7 stays where it is.
    t.cmpSheet().setText(4, StepSheet::GetcolRemark(), QString());
    EXPECT_EQ(t.status(*t.win), "No differing cells");
}

TEST(DifferenceHighlight, CtrlDTurnsTheMarksOnAndOffInTheWindowWithTheFocus) {
    Comparing t;
    const int remark = StepSheet::GetcolRemark();
    t.cmpSheet().setText(2, remark, "only here");
    QAction* toggle = t.diff->action(*t.win, "keyDIFF");
    ASSERT_NE(toggle, nullptr);
    EXPECT_EQ(
        toggle->toolTip(),
        "Mark the cells that differ from the other program (Ctrl+D); F7 next, Shift+F7 previous difference");
    // Without a comparison program the key does nothing.
    t.go(1, 1);
    t.key(*t.win, Qt::Key_D, Qt::ControlModifier);
    EXPECT_FALSE(toggle->isChecked());
    EXPECT_FALSE(t.marked(*t.win, 2, remark));

    t.cmp->show();
    t.key(*t.win, Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_TRUE(t.marked(*t.win, 2, remark));
    EXPECT_EQ(t.status(*t.win), "1 differing cell");
    EXPECT_EQ(t.win->grid()->indexWidget(t.current(*t.win)), nullptr) << "the key opened the cell";
    EXPECT_TRUE(t.sheet().text(1, 1).isEmpty());
    // The window with the focus answers: the other one keeps its own state.
    EXPECT_FALSE(t.marked(*t.cmp, 2, remark));
    t.key(*t.cmp, Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(t.marked(*t.cmp, 2, remark));
    EXPECT_TRUE(toggle->isChecked());

    t.key(*t.win, Qt::Key_D, Qt::ControlModifier);
    EXPECT_FALSE(toggle->isChecked());
    EXPECT_FALSE(t.marked(*t.win, 2, remark));
    EXPECT_EQ(t.status(*t.win), QString());
    EXPECT_TRUE(t.marked(*t.cmp, 2, remark));
}

TEST(DifferenceHighlight, TheCountNamesTheProgramsOwnFieldsThatDiffer) {
    Comparing t;
    CSteps user, comparison;
    t.diff->setPrograms(&user, &comparison);
    t.cmp->show();
    QTest::mouseClick(t.toggle(*t.win), Qt::LeftButton);
    EXPECT_EQ(t.status(*t.win), "No differing cells");

    comparison.Author = QStringLiteral("KT");
    comparison.Memo = QStringLiteral("check the clamp");
    t.diff->programFieldsChanged();
    EXPECT_EQ(t.status(*t.win), "No differing cells (author, memo differ too)");
    EXPECT_EQ(t.diff->differingProgramFields(), QStringList({"author", "memo"}));
    EXPECT_TRUE(t.diff->differences().empty());

    // A change of either grid reads the fields again as well.
    user.Author = QStringLiteral("KT");
    t.cmpSheet().setText(2, StepSheet::GetcolRemark(), "x");
    EXPECT_EQ(t.status(*t.win), "1 differing cell (memo differs too)");

    user.Memo = comparison.Memo;
    user.MemoFile = QStringLiteral("notes.txt");
    user.Password = QStringLiteral("abc");
    t.diff->programFieldsChanged();
    EXPECT_EQ(t.status(*t.win), "1 differing cell (memo file, password differ too)");
    user.MemoFile.clear();
    user.Password.clear();
    t.diff->programFieldsChanged();
    EXPECT_EQ(t.status(*t.win), "1 differing cell");
}

// The whole editor: the author set in the password dialog, a note written in the memo window
// and a new program change the count as they happen.
TEST(DifferenceHighlight, InTheEditorTheCountFollowsTheProgramsOwnFields) {
    test::StartupRig rig;
    Startup startup(rig.options);
    ASSERT_TRUE(startup.run());
    DocumentController* controller = startup.documents();
    Documents& docs = controller->documents();
    const QString file = test::testData(QStringLiteral("gsp/flow.gsp"));
    ASSERT_TRUE(docs.user().ReadStep(0, 0, file));
    ASSERT_TRUE(docs.user().ReadStep(1, 0, file));
    ASSERT_TRUE(docs.userProgram().Author.isEmpty());
    StepEditorWindow* user = startup.userEditorWindow();
    DifferenceHighlight* diff = startup.differences();
    ASSERT_NE(diff, nullptr);
    diff->action(*user, "keyDIFF")->trigger();
    const auto says = [&](const QString& text) {
        return QTest::qWaitFor([&] { return diff->statusText(*user) == text; });
    };
    EXPECT_TRUE(says("No differing cells")) << qPrintable(diff->statusText(*user));

    // The password dialog, answered with an author.
    docs.hooks().inputPassword = [](int, const QString& password, const QString&) {
        return password + QStringLiteral("\tKT");
    };
    docs.user().InputPassword();
    ASSERT_EQ(docs.userProgram().Author, QStringLiteral("KT"));
    EXPECT_TRUE(says("No differing cells (author differs too)")) << qPrintable(diff->statusText(*user));

    // The memo window's OK: the program was changed already, so only the window closing
    // tells of it.
    ASSERT_TRUE(user->isWindowModified());
    fInpMemo* memo = controller->openMemoWindow(0);
    ASSERT_NE(memo, nullptr);
    memo->txtMemo()->setPlainText(QStringLiteral("check the clamp"));
    QTest::mouseClick(memo->button(1), Qt::LeftButton);
    ASSERT_EQ(docs.userProgram().Memo, QStringLiteral("check the clamp"));
    EXPECT_TRUE(says("No differing cells (author, memo differ too)")) << qPrintable(diff->statusText(*user));
    ASSERT_TRUE(QTest::qWaitFor([&] { return controller->memoWindow() == nullptr; }));

    // New empties the program (not saved): its author and memo go with its steps.
    rig.prompter.queueAnswer(Answer::No);
    ASSERT_TRUE(docs.user().NewOp());
    EXPECT_TRUE(QTest::qWaitFor([&] { return diff->differingProgramFields().isEmpty(); }))
        << qPrintable(diff->differingProgramFields().join(", "));
    EXPECT_FALSE(diff->differences().empty());
    EXPECT_FALSE(diff->statusText(*user).contains("too")) << qPrintable(diff->statusText(*user));
}

} // namespace
