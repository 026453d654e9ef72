// The differences between the user and the comparison program, marked in both editor windows
// and walked with F7 and Shift+F7, driven with keys and clicks.
#include "differencehighlight.h"
#include "editorfixture.h"
#include "steptoolbar.h"

#include "model/csteps.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
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
    EXPECT_EQ(t.status(*t.win), "3 differences");
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
    EXPECT_EQ(t.status(*t.cmp), "3 differences");

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
    EXPECT_EQ(t.status(*t.win), "2 differences");
    EXPECT_EQ(t.status(*t.cmp), "2 differences");
    EXPECT_FALSE(t.marked(*t.win, 1, delay));
    EXPECT_FALSE(t.marked(*t.cmp, 1, delay));
    t.type(3, t.out1(), "OUT1");
    EXPECT_EQ(t.status(*t.win), "3 differences");
    EXPECT_TRUE(t.marked(*t.cmp, 3, t.out1()));
    // A snapshot loaded (as Undo loads one) and another program shown count at once as well.
    const QByteArray edited = t.sheet().saveCells();
    ASSERT_TRUE(t.cmpSheet().loadCells(edited));
    EXPECT_EQ(t.status(*t.win), "No differences");
    EXPECT_FALSE(t.marked(*t.win, 3, t.out1()));
    t.cmp->editor().conversion().PasteData(CSteps()); // an empty program opened for comparison
    EXPECT_TRUE(t.marked(*t.win, 1, t.out1()));
    EXPECT_TRUE(t.marked(*t.cmp, 3, t.out1()));
    EXPECT_EQ(t.status(*t.cmp), DifferenceHighlight::countText(int(t.diff->differences().size())));
    ASSERT_TRUE(t.cmpSheet().loadCells(edited));
    t.cmpSheet().setText(3, t.out1(), "OUT2");
    EXPECT_EQ(t.status(*t.win), "1 difference");

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
    EXPECT_EQ(t.status(*t.win), "1 difference");
    t.go(1, t.out1());
    t.key(*t.win, Qt::Key_F7);
    EXPECT_EQ(t.current(*t.win), t.win->model()->index(4, t.out1()));
    // The only difference: F7 stays on it.
    t.key(*t.win, Qt::Key_F7);
    EXPECT_EQ(t.current(*t.win), t.win->model()->index(4, t.out1()));
    // Emptied again: no difference, F7 stays where it is.
    t.cmpSheet().setText(4, StepSheet::GetcolRemark(), QString());
    EXPECT_EQ(t.status(*t.win), "No differences");
}

} // namespace
