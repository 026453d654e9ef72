// Copy, cut, paste, insert, the find window and the pulse window of the step editor,
// driven with keys and clicks.
#include "editorcommands.h"
#include "editorfixture.h"
#include "fdlgreplace.h"
#include "ffind.h"
#include "fpulse.h"
#include "steptoolbar.h"

#include "model/codes.h"

#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

using namespace vkm;
using test::Editor;

namespace {

void clickButton(Editor& e, const char* key) {
    auto* b = qobject_cast<QToolButton*>(e.win->toolBar()->widgetForAction(e.win->action(key)));
    ASSERT_NE(b, nullptr) << key;
    QTest::mouseClick(b, Qt::LeftButton);
}

// Answers every modal dialog that comes up with a key, and remembers what each showed.
// Given several keys, each press takes the next one; once they are used up, Escape closes
// whatever is still open (a key that left its dialog open shows as a repeated entry).
struct ModalAnswerer {
    ModalAnswerer(Qt::Key key) : ModalAnswerer(QList<Qt::Key>{key}, true) {}
    ModalAnswerer(QList<Qt::Key> keys, bool repeatLast = false) {
        QObject::connect(&timer, &QTimer::timeout, [this, keys, repeatLast] {
            QWidget* w = QApplication::activeModalWidget();
            if (!w)
                return;
            if (auto* d = qobject_cast<fDlgReplace*>(w))
                seen << d->Data();
            else
                seen << w->metaObject()->className();
            const Qt::Key key = pressed < keys.size() ? keys[pressed]
                                : repeatLast          ? keys.back()
                                                      : Qt::Key_Escape;
            ++pressed;
            QTest::keyClick(w, key);
        });
        timer.start(5);
    }
    QTimer timer;
    QStringList seen;
    int pressed = 0;
};

void typeRow(Editor& e, int row, const QString& out1, const QString& logic, const QString& kind,
             const QString& delay) {
    e.setup(row, e.out1(), out1);
    if (!logic.isEmpty()) {
        e.setup(row, e.out1() + 1, logic);
        e.setup(row, e.out1() + 2, kind);
        e.setup(row, e.out1() + 3, delay);
    }
    e.setup(row, e.in(1), "IN1");
    e.setup(row, e.in(1) + 1, "0");
    e.setup(row, e.in(1) + 2, "2");
}

void addTargets(Editor& e) {
    for (int n = 1; n <= 32; ++n)
        e.out.Add(QStringLiteral("J%1").arg(n, 3, 10, QLatin1Char('0')), jumpTarget(n), "", "JMP", "0", "0");
}

QStringList rowCells(StepSheet& s, int row) {
    QStringList cells{s.isRowDisabled(row) ? "disabled" : "enabled"};
    for (int c = 1; c < StepSheet::kCols; ++c)
        cells << s.text(row, c) + "|" + s.data(row, c);
    return cells;
}

} // namespace

TEST(EditorRows, CopyInTheComparisonWindowPastesIntoTheUserWindow) {
    Editor cmp(1);
    StepSheet& source = cmp.sheet();
    source.setCell(3, 1, "shown", "");
    source.setCell(3, cmp.out1(), "OUT2", "OUT");
    source.setText(3, cmp.out1() + 1, "1");
    source.setText(3, cmp.out1() + 2, "2");
    source.setText(3, cmp.out1() + 3, "5");
    source.setCell(3, cmp.in(1), "IN3", "IN");
    source.setText(3, cmp.in(1) + 1, "0");
    source.setText(3, cmp.in(1) + 2, "2");
    source.setCell(4, 1, "off", "");
    source.setRowDisabled(4, true);
    QApplication::clipboard()->clear();
    EXPECT_FALSE(cmp.win->action("keyPASTE")->isEnabled());

    cmp.clickStep(3);
    cmp.clickStep(4, Qt::ShiftModifier);
    ASSERT_TRUE(source.rowSelectionMode());
    QTest::keyClick(cmp.grid(), Qt::Key_C, Qt::ControlModifier);
    const QString tail = QString("\t").repeated(9);
    EXPECT_EQ(QApplication::clipboard()->text(), "1\r\nRemark\r\nNOTREM\tshown\t2\t1\t2\t5\t\t\t\t\t3\t0\t2" +
                                                     tail + "\r\nREM\toff" + QString("\t").repeated(20));
    QTest::keyClick(cmp.grid(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(source.text(5, 1), "") << "nothing is pasted into the comparison program";

    Editor user;
    user.clickStep(10);
    QTest::keyClick(user.grid(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(rowCells(user.sheet(), 10), rowCells(source, 3));
    EXPECT_EQ(rowCells(user.sheet(), 11), rowCells(source, 4));
    EXPECT_TRUE(user.win->IsChanged());
    EXPECT_TRUE(user.messages().empty());
    EXPECT_TRUE(user.grid()->hasFocus());
}

namespace {

// Rows 2, 3 and 4 jump to steps 5, 6 and 7.
void typeJumps(Editor& e) {
    addTargets(e);
    typeRow(e, 2, "J005", "", "", "");
    typeRow(e, 3, "J006", "", "", "");
    typeRow(e, 4, "J007", "", "", "");
}

// A row inserted at step 1 with the toolbar's button, the renumbering questions answered
// with the keys: what the questions showed.
QStringList insertAnsweringWith(Editor& e, QList<Qt::Key> keys, bool repeatLast) {
    e.clickStep(1);
    ModalAnswerer answer(keys, repeatLast);
    clickButton(e, "keyROWINSERT");
    return answer.seen;
}

QStringList functions(Editor& e, int firstRow, int lastRow) {
    QStringList texts;
    for (int row = firstRow; row <= lastRow; ++row)
        texts << e.sheet().text(row, e.out1());
    return texts;
}

} // namespace

TEST(EditorRows, InsertAsksOnceWhenAllYesIsPressed) {
    Editor e;
    typeJumps(e);
    int snapshots = 0;
    QObject::connect(e.win.get(), &StepEditorWindow::snapshotRequested, [&] { ++snapshots; });
    EXPECT_EQ(insertAnsweringWith(e, {Qt::Key_A}, true), QStringList{"J005 -> J006"});
    EXPECT_EQ(functions(e, 2, 5), (QStringList{"", "J006", "J007", "J008"}));
    EXPECT_EQ(snapshots, 1);
    EXPECT_EQ(e.grid()->currentIndex().row(), 1) << "the current row stays";

    // "O" answers All No: nothing further is renumbered.
    EXPECT_EQ(insertAnsweringWith(e, {Qt::Key_O}, true), QStringList{"J006 -> J007"});
    EXPECT_EQ(functions(e, 4, 6), (QStringList{"J006", "J007", "J008"}));
}

// "Y" and "N" answer one reference each, as the buttons Yes and No do: each further
// reference is asked again.
TEST(EditorRows, InsertAsksForEachReferenceAnsweredWithYAndN) {
    Editor e;
    typeJumps(e);
    EXPECT_EQ(insertAnsweringWith(e, {Qt::Key_Y, Qt::Key_N, Qt::Key_Y}, false),
              (QStringList{"J005 -> J006", "J006 -> J007", "J007 -> J008"}));
    EXPECT_EQ(functions(e, 3, 5), (QStringList{"J006", "J006", "J008"})) << "N keeps the reference";
    EXPECT_TRUE(e.messages().empty());
}

TEST(EditorRows, CutOfWholeRowsPacksAndTheStepColumnOffersTheMenu) {
    Editor e;
    for (int r = 2; r <= 6; ++r)
        e.setup(r, 1, QStringLiteral("r%1").arg(r));
    e.clickStep(3);
    e.clickStep(4, Qt::ShiftModifier);
    e.prompter.queueAnswer(Answer::Yes);
    QTest::keyClick(e.grid(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(e.messages(), std::vector<int>{59});
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("1\r\nRemark\r\nNOTREM\tr3\t"));
    EXPECT_EQ(e.sheet().text(3, 1), "r5");
    EXPECT_EQ(e.sheet().text(4, 1), "r6");
    EXPECT_EQ(e.sheet().text(5, 1), "");

    // A right click on a step number selects that row and opens the menu; Insert inserts
    // one row there.
    QHeaderView* h = e.grid()->verticalHeader();
    const QPoint at = e.stepPoint(2);
    QTest::mouseClick(h->viewport(), Qt::RightButton, {}, at);
    QMetaObject::invokeMethod(h, "customContextMenuRequested", Q_ARG(QPoint, at));
    QMenu* menu = e.win->contextMenu();
    ASSERT_TRUE(menu->isVisible());
    ASSERT_TRUE(e.grid()->selectionModel()->isRowSelected(2, {}));
    menu->actions().at(3)->trigger();
    menu->hide();
    EXPECT_EQ(e.sheet().text(2, 1), "");
    EXPECT_EQ(e.sheet().text(3, 1), "r2");
    EXPECT_EQ(e.sheet().text(4, 1), "r5");

    // Rem on the toolbar disables the selected rows.
    e.clickStep(4);
    clickButton(e, "keyREM");
    EXPECT_TRUE(e.sheet().isRowDisabled(4));
}

TEST(EditorFind, NextReplaceAndReplaceAllThroughTheWindow) {
    Editor e;
    typeRow(e, 2, "OUT1", "1", "2", "5");
    typeRow(e, 5, "OUT1", "1", "2", "6");
    typeRow(e, 7, "OUT2", "1", "2", "7");
    e.setup(7, e.out2(), "OUT1");
    e.go(5, e.out1());
    QTest::keyClick(e.grid(), Qt::Key_F, Qt::ControlModifier);
    fFind* find = e.win->commands()->findWindow();
    ASSERT_NE(find, nullptr);
    ASSERT_TRUE(find->isVisible());
    // Loading the window puts the cursor on the first step, in the column it was in.
    EXPECT_EQ(e.grid()->currentIndex(), e.win->model()->index(1, e.out1()));
    EXPECT_EQ(find->windowTitle(), "Find <USER>");
    EXPECT_EQ(find->lblDigi(1), "OUT1");
    EXPECT_EQ(find->lblCategory(1), "OUT");
    EXPECT_FALSE(find->btnRef(2, 2)->isEnabled()) << "replacement fields open with Replace";

    const std::vector<std::pair<int, int>> hits = {
        {2, e.out1()}, {5, e.out1()}, {7, e.out2()}, {2, e.out1()}};
    for (const auto& [row, col] : hits) {
        QTest::mouseClick(find->BTN(1), Qt::LeftButton);
        EXPECT_EQ(e.grid()->currentIndex(), e.win->model()->index(row, col));
    }
    EXPECT_TRUE(e.messages().empty());

    QTest::mouseClick(find->BTN(3), Qt::LeftButton);
    ASSERT_TRUE(find->btnRef(2, 2)->isEnabled());
    e.win->setFunctionChooser([](int side, int, int) -> std::optional<int> { return side == 2 ? 2 : 1; });
    QTest::mouseClick(find->btnRef(2, 2), Qt::LeftButton);
    EXPECT_EQ(find->lblDigi(2), "OUT2");
    // Replace: the found cell, then on to the next.
    QTest::mouseClick(find->BTN(3), Qt::LeftButton);
    EXPECT_EQ(e.sheet().text(2, e.out1()), "OUT2");
    EXPECT_EQ(e.grid()->currentIndex(), e.win->model()->index(5, e.out1()));

    QTest::mouseClick(find->BTN(4), Qt::LeftButton);
    // The window closed; the editor, active again, opens it anew (its replacement empty
    // and closed again) and tells how many were replaced.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !e.messages().empty(); }, 2000));
    EXPECT_EQ(e.messages(), std::vector<int>{75});
    EXPECT_EQ(e.prompter.texts().back(), "The following numbre are replaced.\n\n2 ");
    EXPECT_TRUE(find->isVisible());
    EXPECT_EQ(find->lblDigi(2), "");
    EXPECT_FALSE(find->btnRef(2, 2)->isEnabled());
    for (int r = 1; r <= 32; ++r)
        for (int c : {e.out1(), e.out2()})
            EXPECT_NE(e.sheet().text(r, c), "OUT1") << r;
    EXPECT_EQ(e.sheet().text(7, e.out2() + 3), "") << "the group's settings stay as they were";
    QTest::mouseClick(find->BTN(2), Qt::LeftButton);
    EXPECT_FALSE(find->isVisible());

    // The comparison window's find window cannot replace.
    Editor cmp(1);
    cmp.go(3, cmp.out1());
    QTest::keyClick(cmp.grid(), Qt::Key_F, Qt::ControlModifier);
    fFind* other = cmp.win->commands()->findWindow();
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->windowTitle(), "Find <COMPARATIVE>");
    EXPECT_FALSE(other->BTN(3)->isEnabled());
    EXPECT_FALSE(other->BTN(4)->isEnabled());
    EXPECT_TRUE(other->BTN(1)->isEnabled());
}

TEST(EditorPulse, TheWindowFollowsTheCurrentRowAndWritesThePair) {
    Editor e;
    e.out.Add("Y012", 12, "", "OUT", "0", "0");
    typeRow(e, 3, "Y012", "1", "2", "100");
    e.setupAll(3, {{e.out2(), "Y012"}, {e.out2() + 1, "0"}, {e.out2() + 2, "2"}, {e.out2() + 3, "150"}});
    typeRow(e, 4, "OUT1", "1", "2", "5");
    e.go(2, e.out1());
    ASSERT_EQ(e.win->commands()->pulseWindow(), nullptr);
    ASSERT_EQ(e.ts.settings->value(keys::Pulse_Left), keys::kPulseNotPlaced);

    QTest::keyClick(e.grid(), Qt::Key_Down);
    fPulse* pulse = e.win->commands()->pulseWindow();
    ASSERT_NE(pulse, nullptr) << "opens by itself on a pulse";
    ASSERT_TRUE(pulse->IsLoaded());
    EXPECT_EQ(pulse->windowTitle(), "Pulse output");
    EXPECT_EQ((QStringList{pulse->lineText(), pulse->txtKino()->text(), pulse->lblCategory(),
                           pulse->cboLogic()->currentText(), pulse->cboDelayKind()->currentText(),
                           pulse->txtDelay(1)->text(), pulse->txtDelay(2)->text()}),
              (QStringList{"Line 3", "Y012", "OUT", "ON PULSE", "STC", "100", "50"}));
    EXPECT_TRUE(e.grid()->hasFocus()) << "the keys stay in the grid";
    EXPECT_NE(e.ts.settings->value(keys::Pulse_Left), keys::kPulseNotPlaced) << "first place stored";

    QTest::keyClick(e.grid(), Qt::Key_Down);
    EXPECT_EQ(pulse->lineText(), "Line 4");
    EXPECT_EQ(pulse->txtKino()->text(), "");
    EXPECT_EQ(pulse->cboLogic()->currentIndex(), -1);

    // Back on the pulse, a longer pulse is decided and written as the pair.
    QTest::keyClick(e.grid(), Qt::Key_Up);
    EXPECT_EQ(pulse->txtDelay(2)->text(), "50");
    pulse->txtDelay(2)->setFocus();
    pulse->txtDelay(2)->selectAll();
    QTest::keyClicks(pulse->txtDelay(2), "7x5");
    EXPECT_EQ(pulse->txtDelay(2)->text(), "75") << "digits only";
    pulse->cboLogic()->setCurrentIndex(2);
    QTest::mouseClick(pulse->BTN(1), Qt::LeftButton);
    EXPECT_EQ(e.sheet().text(3, e.out1() + 1), "2");
    EXPECT_EQ(e.sheet().text(3, e.out2() + 1), "2");
    EXPECT_EQ(e.sheet().text(3, e.out2() + 3), "175");
    EXPECT_TRUE(e.messages().empty());

    // Escape gives the box back what it held when it got the focus (the user has clicked
    // into the window).
    QApplication::setActiveWindow(pulse);
    pulse->txtDelay(1)->setFocus();
    QTest::keyClicks(pulse->txtDelay(1), "9");
    QTest::keyClick(pulse->txtDelay(1), Qt::Key_Escape);
    EXPECT_EQ(pulse->txtDelay(1)->text(), "100");
    EXPECT_TRUE(pulse->isVisible());

    // F2 in the function box: a jump cannot pulse.
    e.win->setFunctionChooser([](int, int, int) -> std::optional<int> { return 70; });
    pulse->txtKino()->setFocus();
    QTest::keyClick(pulse->txtKino(), Qt::Key_F2);
    EXPECT_EQ(e.messages(), std::vector<int>{145});
    EXPECT_EQ(pulse->txtKino()->text(), "Y012");

    // Out of range at the end: message 161, the grid keeps the pair.
    e.prompter.clear();
    pulse->cboDelayKind()->setCurrentIndex(2); // ANGLE1
    pulse->txtDelay(2)->setText("3501");
    QTest::mouseClick(pulse->BTN(1), Qt::LeftButton);
    EXPECT_EQ(e.messages(), std::vector<int>{161});
    EXPECT_EQ(e.sheet().text(3, e.out2() + 3), "175");

    // Closed, the window keeps its place for the next time.
    pulse->move(pulse->pos() + QPoint(-40, -30));
    const QPoint placed = pulse->pos();
    QTest::mouseClick(pulse->BTN(2), Qt::LeftButton);
    EXPECT_FALSE(pulse->IsLoaded());
    clickButton(e, "keyPULSE");
    EXPECT_TRUE(pulse->IsLoaded());
    EXPECT_EQ(pulse->pos(), placed);
}
