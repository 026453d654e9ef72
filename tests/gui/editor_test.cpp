// The step editor window on real widgets: keys and clicks go to the grid, the sheet
// editor decides, the window shows its answer.
#include "appcontext.h"
#include "fselcategory.h"
#include "fselkino.h"
#include "functionchooser.h"
#include "stepdelegate.h"
#include "stepeditorwindow.h"
#include "steptablemodel.h"
#include "steptoolbar.h"

#include "document/documents.h"
#include "editorfixture.h"
#include "model/codes.h"
#include "model/csteps.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace vkm;

using test::Editor;
using test::whenModal;

TEST(StepEditorEntry, LowerCaseFunctionIsAcceptedWithItsCategoryAndUnknownNameRefused) {
    Editor e;
    QAbstractItemModelTester tester(e.win->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    e.type(1, e.out1(), "out1");
    EXPECT_EQ(e.sheet().text(1, e.out1()), "OUT1");
    EXPECT_EQ(e.sheet().data(1, e.out1()), "OUT");
    EXPECT_EQ(e.win->model()->index(1, e.out1()).data(StepTableModel::CategoryRole).toString(), "OUT");
    EXPECT_TRUE(e.win->IsChanged());
    EXPECT_TRUE(e.messages().empty());

    e.type(2, e.out1(), "nosuch");
    EXPECT_EQ(e.sheet().text(2, e.out1()), "");
    EXPECT_EQ(e.messages(), std::vector<int>{67});
}

TEST(StepEditorEntry, StarCellsAndJumpLogicAreRefused) {
    Editor e;
    e.setup(1, e.out1(), "RET");
    e.setup(2, e.out1(), "JMP");
    ASSERT_EQ(e.sheet().text(1, e.out2()), "***");
    for (auto [row, col] : {std::pair{1, e.out2()}, std::pair{1, e.out1() + 3}, std::pair{2, e.out1() + 1}}) {
        e.prompter.clear();
        e.go(row, col);
        QTest::keyClick(e.grid(), Qt::Key_F2);
        EXPECT_EQ(e.messages(), std::vector<int>{42}) << row << "," << col;
        EXPECT_EQ(e.openEditor(row, col), nullptr);
    }
    // Typing and Space on the refused cell change nothing either.
    const QString logic = e.sheet().text(2, e.out1() + 1);
    e.go(2, e.out1() + 1);
    QTest::keyClick(e.grid(), Qt::Key_Space);
    QTest::keyClicks(e.grid(), "1");
    EXPECT_EQ(e.sheet().text(2, e.out1() + 1), logic);
}

// Double-byte text comes as the input method commits it; the limit counts its bytes.
TEST(StepEditorEntry, RemarkIsLimitedToTwentyBytes) {
    const QString kanji = QString::fromUtf8("\u6f22");
    for (const auto& [text, ok] :
         {std::pair{kanji.repeated(10), true}, std::pair{kanji.repeated(11), false}}) {
        Editor e;
        e.type(3, 1, text);
        EXPECT_EQ(e.sheet().text(3, 1), ok ? text : QString()) << text.size();
        EXPECT_EQ(e.messages(), ok ? std::vector<int>{} : std::vector<int>{56}) << text.size();
    }
}

// A number typed as a counter's operand is kept, and the hint pane shows the operand's range.
TEST(StepEditorEntry, CounterOperandIsTypedWithItsRangeInTheHint) {
    Editor e;
    e.setup(1, e.out1(), "OUT1");
    e.setup(1, e.in(1), "C1");
    e.type(1, e.in(2), "42");
    EXPECT_EQ(e.sheet().text(1, e.in(2)), "42");
    EXPECT_TRUE(e.messages().empty());
    EXPECT_EQ(e.win->hintText(), e.ed().rules().hintText(1, e.in(2)));
    EXPECT_TRUE(e.win->hintText().contains("Max:99")) << e.win->hintText().toStdString();
}

TEST(StepEditorEntry, DeleteClearsTheSelectionAfterTheSnapshot) {
    Editor e;
    e.output(1, e.out1(), "OUT1", "1", "2");
    e.setup(1, 1, "note");
    QStringList order;
    QObject::connect(e.win.get(), &StepEditorWindow::snapshotRequested,
                     [&] { order << "snapshot:" + e.sheet().text(1, 1); });
    e.win->setChanged(false);
    e.go(1, 1);
    QTest::keyClick(e.grid(), Qt::Key_Right, Qt::ShiftModifier); // remark and output function
    QTest::keyClick(e.grid(), Qt::Key_Delete);
    EXPECT_EQ(order, QStringList{"snapshot:note"});
    EXPECT_EQ(e.sheet().text(1, 1), "");
    EXPECT_EQ(e.sheet().text(1, e.out1()), "");
    EXPECT_EQ(e.sheet().text(1, e.out1() + 1), "") << "the function's dependent cells go with it";
    EXPECT_TRUE(e.win->IsChanged());
}

TEST(StepEditorEntry, SpaceCyclesComboAndF2OpensItsList) {
    Editor e;
    e.setup(1, e.out1(), "OUT1");
    const int logic = e.out1() + 1;
    e.go(1, logic);
    QTest::keyClick(e.grid(), Qt::Key_Space);
    EXPECT_EQ(e.sheet().text(1, logic), "0");
    QTest::keyClick(e.grid(), Qt::Key_Space);
    EXPECT_EQ(e.sheet().text(1, logic), "1");
    EXPECT_TRUE(e.win->hintText().startsWith("Combo:[F2]->[F4]"));

    QTest::keyClick(e.grid(), Qt::Key_F2);
    auto* combo = qobject_cast<QComboBox*>(e.openEditor(1, logic));
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->count(), 3);
    EXPECT_EQ(combo->currentText(), "HIGH");
    combo->setCurrentIndex(2);
    QTest::keyClick(combo, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(e.sheet().text(1, logic), "2");

    // A digit that is not in the list is refused.
    e.prompter.clear();
    QTest::keyClicks(e.grid(), "7");
    EXPECT_EQ(e.messages(), std::vector<int>{67});
    EXPECT_EQ(e.sheet().text(1, logic), "2");
}

TEST(StepEditorEntry, F2OnFunctionCellsUsesTheChooser) {
    Editor e;
    std::vector<std::tuple<int, int, int>> asked;
    e.win->setFunctionChooser([&](int inOut, int org, int row) -> std::optional<int> {
        asked.emplace_back(inOut, org, row);
        return inOut == 2 ? 40 : 60;
    });
    e.go(4, e.out1());
    QTest::keyClick(e.grid(), Qt::Key_F2);
    EXPECT_EQ(e.sheet().text(4, e.out1()), "R1");
    EXPECT_EQ(e.sheet().data(4, e.out1()), "RGST");
    // A double click works as F2; the cell's function is handed to the chooser.
    const QRect r = e.grid()->visualRect(e.win->model()->index(4, e.out1()));
    QTest::mouseClick(e.grid()->viewport(), Qt::LeftButton, {}, r.center());
    QTest::mouseDClick(e.grid()->viewport(), Qt::LeftButton, {}, r.center());
    e.go(4, e.in(1));
    QTest::keyClick(e.grid(), Qt::Key_F2);
    EXPECT_EQ(e.sheet().text(4, e.in(1)), "C1");
    EXPECT_EQ(e.sheet().data(4, e.in(1)), "COUNT");
    ASSERT_EQ(asked.size(), 3u);
    EXPECT_EQ(asked[0], std::make_tuple(2, -1, 4));
    EXPECT_EQ(asked[1], std::make_tuple(2, 40, 4));
    EXPECT_EQ(asked[2], std::make_tuple(1, -1, 4));
}

TEST(StepEditorEntry, SharedDigitalTextAsksForTheCategory) {
    Editor e;
    QStringList lines;
    QString highlighted;
    const auto categories = whenModal([&](QWidget* modal) {
        auto* dialog = qobject_cast<fSelCategory*>(modal);
        if (!dialog) {
            ADD_FAILURE() << "not the category dialog";
            modal->close();
            return;
        }
        for (int i = 0; i < dialog->list()->count(); ++i)
            lines << dialog->list()->item(i)->text();
        highlighted = dialog->SelectedCategory();
        dialog->list()->setCurrentRow(1);
        QTest::keyClick(dialog->list(), Qt::Key_Return);
    });
    e.type(2, e.out1(), "xs");
    EXPECT_EQ(lines, (QStringList{"OUT", "RGST"}));
    EXPECT_EQ(highlighted, "OUT");
    EXPECT_EQ(e.sheet().text(2, e.out1()), "XS");
    EXPECT_EQ(e.sheet().data(2, e.out1()), "RGST");
}

TEST(StepEditorComparison, NothingIsEditableAndFileCommandsAreDisabled) {
    Editor e(1);
    e.win->setFunctionChooser([](int, int, int) -> std::optional<int> { return 1; });
    e.go(1, e.out1());
    QTest::keyClick(e.grid(), Qt::Key_F2);
    QTest::keyClicks(e.grid(), "O");
    e.go(1, 1);
    QTest::keyClicks(e.grid(), "x");
    QTest::keyClick(e.grid(), Qt::Key_Space);
    EXPECT_EQ(e.openEditor(1, 1), nullptr);
    EXPECT_EQ(e.sheet().text(1, e.out1()), "");
    EXPECT_EQ(e.sheet().text(1, 1), "");
    EXPECT_FALSE(e.win->model()->flags(e.win->model()->index(1, 1)) & Qt::ItemIsEditable);
    EXPECT_FALSE(e.win->HintVisible());
    for (const char* key : {"keyNew", "keyOPEN", "keySAVE", "keyCUT", "keyPASTE", "keyROWINSERT", "keyUNDO",
                            "keyPULSE", "keyREM"})
        EXPECT_FALSE(e.win->action(key)->isEnabled()) << key;
    EXPECT_FALSE(e.win->menuAction("keyFUZOKU", "keyPASS")->isEnabled());
    EXPECT_TRUE(e.win->menuAction("keyFUZOKU", "keyREM")->isEnabled());
    EXPECT_TRUE(e.win->action("keyFUZOKU")->isEnabled());
}

TEST(StepEditorToolbar, CommandsMenusAndCaptionStyle) {
    Editor e;
    EXPECT_EQ(StepEditorWindow::GetButtonCaption("keyNOPE"), "UNKNOWN");
    for (const char* key :
         {"keyFind", "keyCUT", "keyCOPY", "keyPASTE", "keyROWINSERT", "keyPULSE", "keyREM", "keyHelp"})
        EXPECT_TRUE(e.win->action(key)->isEnabled()) << key;
    EXPECT_FALSE(e.win->menuAction("keySAVE", "keySAVE2")->isEnabled());

    QStringList commands, items;
    QObject::connect(e.win.get(), &StepEditorWindow::commandTriggered,
                     [&](const QString& k) { commands << k; });
    QObject::connect(e.win.get(), &StepEditorWindow::menuTriggered,
                     [&](const QString& b, const QString& i) { items << b + "/" + i; });
    e.win->action("keyNew")->trigger();
    e.win->action("keyOPEN")->trigger();
    e.win->menuAction("keySAVE", "keySAVEAS")->trigger();
    e.win->action("keyFUZOKU")->trigger();
    QTest::keyClick(e.grid(), Qt::Key_C, Qt::ControlModifier);
    e.win->action("keyPASTE")->setEnabled(false); // a disabled command does nothing
    QTest::keyClick(e.grid(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(e.grid(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(commands, (QStringList{"keyNew", "keyCOPY", "keyFind"}));
    EXPECT_EQ(items, (QStringList{"keyOPEN/keyREAD_USER1", "keySAVE/keySAVEAS"}));
    EXPECT_EQ(e.messages(), std::vector<int>{98});

    auto* button = qobject_cast<QToolButton*>(e.win->toolBar()->widgetForAction(e.win->action("keyUNDO")));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    e.win->ShowButtonCaption(false);
    EXPECT_EQ(button->toolButtonStyle(), Qt::ToolButtonIconOnly);
}

TEST(StepEditorWindowState, TitleRemarkColumnAndHintPane) {
    Editor e(0, [](Settings& s) { s.write(Section::Location, "RemarkColumnWidth", QString::number(2880)); });
    e.win->setDocumentPath("/data/prog/SEW1.GSP");
    EXPECT_EQ(e.win->windowTitle(), "SEW1.GSP[*]");
    e.win->setAuthor("TANAKA");
    EXPECT_EQ(e.win->windowTitle(), "SEW1.GSP written by TANAKA[*]");
    e.win->setFromMachine(true);
    EXPECT_EQ(e.win->windowTitle(), "*** written by TANAKA[*]");
    Editor cmp(1);
    cmp.win->setDocumentPath("/x/REF.GSP");
    EXPECT_EQ(cmp.win->windowTitle(), "Refer:REF.GSP[*]");

    // 2880 twips are two inches.
    EXPECT_EQ(e.grid()->columnWidth(1), 2 * e.win->logicalDpiX());
    EXPECT_EQ(e.grid()->verticalHeader()->width(), e.win->twipsToPixels(555));
    e.grid()->horizontalHeader()->resizeSection(1, e.win->logicalDpiX());
    EXPECT_EQ(e.ts.settings->value(keys::RemarkColumnWidth), 1440);

    Editor hidden(0, [](Settings& s) {
        s.write(Section::General, "DoesViewRemarkColumn", Settings::boolText(false));
        s.write(Section::General, "DoesViewInputMethod", Settings::boolText(false));
    });
    EXPECT_TRUE(hidden.grid()->isColumnHidden(1));
    EXPECT_FALSE(hidden.win->HintVisible());
    EXPECT_TRUE(e.win->HintVisible());
    e.go(1, 1);
    EXPECT_EQ(e.win->hintText(), "Edit:[F2], DoubleClick");
    EXPECT_TRUE(e.grid()->testAttribute(Qt::WA_InputMethodEnabled)) << "remarks may be Japanese";
    e.go(1, e.out1());
    EXPECT_FALSE(e.grid()->testAttribute(Qt::WA_InputMethodEnabled));
}

TEST(StepEditorDisplay, HeadersPicturesAndContextMenu) {
    Editor e;
    QAbstractItemModel* m = e.win->model();
    EXPECT_EQ(m->headerData(e.in(1) + 2, Qt::Horizontal).toString(), e.sheet().headerText(e.in(1) + 2));
    EXPECT_EQ(m->headerData(e.in(1) + 2, Qt::Horizontal, StepTableModel::HeaderFontRole).toString(),
              e.sheet().headerFont(e.in(1) + 2));
    EXPECT_EQ(m->headerData(7, Qt::Vertical).toString(), "7");

    // Every code of every picture column has its picture; "***" and empty cells have none.
    const std::vector<std::pair<int, std::vector<int>>> codes = {
        {KindLogic, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}},
        {KindDelayKind, {0, 2, 4, 6, 8}},
        {KindState, {0, 1, 2, 3}},
        {KindRel, {0, 1, 2, 3, 4, 5, 6, 7, 8}}};
    for (const auto& [kind, values] : codes)
        for (int v : values)
            EXPECT_FALSE(QPixmap(StepDelegate::picturePath(kind, QString::number(v))).isNull())
                << kind << " " << v;
    EXPECT_TRUE(StepDelegate::picturePath(KindLogic, "***").isEmpty());
    EXPECT_TRUE(StepDelegate::picturePath(KindLogic, "").isEmpty());

    // A disabled row is painted in the disabled grey.
    e.sheet().setRowDisabled(6, true);
    EXPECT_EQ(m->index(6, e.out1()).data(Qt::BackgroundRole).value<QColor>(), QColor(0xD0, 0xD0, 0xD0));

    e.win->action("keyPASTE")->setEnabled(false);
    const QRect r = e.grid()->visualRect(m->index(2, e.out1()));
    QTest::mouseClick(e.grid()->viewport(), Qt::RightButton, {}, r.center());
    QMetaObject::invokeMethod(e.grid(), "customContextMenuRequested", Q_ARG(QPoint, r.center()));
    QMenu* menu = e.win->contextMenu();
    ASSERT_TRUE(menu->isVisible());
    QStringList texts;
    for (QAction* a : menu->actions())
        texts << a->text();
    // Each entry shows the key of its command.
    EXPECT_EQ(texts, (QStringList{"&Delete\tCtrl+X", "&Copy\tCtrl+C", "&Paste\tCtrl+V", "&Insert\tIns"}));
    EXPECT_TRUE(menu->actions().at(1)->isEnabled());
    EXPECT_FALSE(menu->actions().at(2)->isEnabled()) << "follows the disabled paste command";
    menu->hide();
}

// A filled program as the user sees it. The painted pixels are checked where the look
// is fixed (disabled grey, pictures only in filled non-"***" cells); with VKM_EDITOR_SHOT
// set the window is also saved there for a person to look at.
TEST(StepEditorDisplay, FilledProgramPaintsPicturesStarsAndDisabledRows) {
    Editor e;
    e.win->resize(1280, 980);
    e.win->setDocumentPath("/data/SAMPLE01.GSP");
    e.win->setAuthor("YAMADA");
    const int o1 = e.out1(), o2 = e.out2(), in1 = e.in(1), in2 = e.in(2);
    e.setupAll(1, {{1, "Start"},
                   {o1, "OUT1"},
                   {o1 + 1, "1"},
                   {o1 + 2, "0"},
                   {o1 + 3, "100"},
                   {o2, "OUT2"},
                   {o2 + 1, "0"},
                   {o2 + 2, "2"},
                   {o2 + 3, "50"},
                   {in1, "IN1"},
                   {in1 + 1, "1"},
                   {in1 + 2, "0"},
                   {in2, "IN2"},
                   {in2 + 1, "3"},
                   {in2 + 2, "2"}});
    e.setupAll(2, {{1, "Count up"}, {o1, "C1"}, {o1 + 1, "4"}, {in1, "IN3"}, {in1 + 1, "2"}, {in1 + 2, "2"}});
    e.setupAll(3, {{1, "Counter"},
                   {o1, "R1"},
                   {o1 + 1, "1"},
                   {o1 + 2, "4"},
                   {o1 + 3, "10"},
                   {in1, "C1"},
                   {in1 + 2, "3"},
                   {in2, "42"}});
    e.setupAll(4, {{1, "Off"}, {o1, "OUT2"}, {o1 + 1, "2"}, {o1 + 2, "8"}, {o1 + 3, "5"}, {in1, "IN1"}});
    e.ed().conversion().DoGyoMuko(4, true);
    e.setupAll(5, {{1, "Jump"}, {o1, "JMP"}, {in1, "IN2"}});
    e.setup(6, o1, "RET");
    e.go(1, o1 + 3);
    QApplication::processEvents();

    const QImage shot = e.win->grab().toImage();
    if (const QByteArray path = qgetenv("VKM_EDITOR_SHOT"); !path.isEmpty())
        shot.save(QString::fromLocal8Bit(path));
    auto cellImage = [&](int row, int col) {
        const QRect r = e.grid()->visualRect(e.win->model()->index(row, col));
        return e.grid()->viewport()->grab(r.adjusted(1, 1, -2, -2)).toImage();
    };
    auto colours = [](const QImage& img) {
        QSet<QRgb> set;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                set.insert(img.pixel(x, y) & 0xFFFFFF);
        return set;
    };
    // A logic cell with a value shows a picture: many colours on its background.
    EXPECT_GT(colours(cellImage(1, o1 + 1)).size(), 4);
    // "***" is text only: the green output colour, black and the anti-aliasing between.
    const QImage star = cellImage(6, o2 + 1);
    EXPECT_EQ(e.sheet().text(6, o2 + 1), "***");
    EXPECT_EQ(star.pixel(2, 2) & 0xFFFFFF, 0xDFF0E0u);
    // An empty input cell is plain white, a disabled row plain grey where nothing is written.
    EXPECT_EQ(colours(cellImage(8, e.in(1) + 1)), QSet<QRgb>{0xFFFFFF});
    EXPECT_EQ(cellImage(4, e.in(3)).pixel(3, 3) & 0xFFFFFF, 0xD0D0D0u);
    // The function cell's small grey category text sits in its top-left corner.
    const QImage fn = cellImage(1, o1);
    bool grey = false;
    for (int y = 0; y < 8 && !grey; ++y)
        for (int x = 0; x < 14 && !grey; ++x) {
            const QColor c = fn.pixelColor(x, y);
            grey = c.red() < 200 && qAbs(c.red() - c.green()) < 12 && qAbs(c.green() - c.blue()) < 12;
        }
    EXPECT_TRUE(grey);
}

namespace {
// The cell editor open anywhere in the grid, if any.
QWidget* anyCellEditor(Editor& e) {
    for (QWidget* w : e.grid()->viewport()->findChildren<QWidget*>())
        if (w->isVisible() && (qobject_cast<QLineEdit*>(w) || qobject_cast<QComboBox*>(w)))
            return w;
    return nullptr;
}

// Opens the cell editor of a combo cell by typing its value.
QComboBox* typeIntoCombo(Editor& e, int row, int col, const QString& digit) {
    e.go(row, col);
    QTest::keyClicks(e.grid(), digit);
    return qobject_cast<QComboBox*>(e.openEditor(row, col));
}

// Opens the line editor of a cell by typing its first character and puts text in it.
QLineEdit* typeIntoLine(Editor& e, int row, int col, const QString& text) {
    e.go(row, col);
    QTest::keyClicks(e.grid(), text.left(1));
    auto* line = qobject_cast<QLineEdit*>(e.openEditor(row, col));
    if (line)
        line->setText(text);
    return line;
}
} // namespace

// Tab ends the edit like Enter and moves to the next cell as the arrow keys do; the next
// cell's editor opens only when the user starts editing it, through its own rules.
TEST(StepEditorKeys, TabCommitsAndMovesWithoutOpeningTheNextCell) {
    Editor e;
    e.setup(2, e.out1(), "JMP");
    ASSERT_EQ(e.sheet().text(2, e.out1() + 1), "3");

    // From a jump row's function to its logic, which cannot be edited.
    QLineEdit* line = typeIntoLine(e, 2, e.out1(), "JMP");
    ASSERT_NE(line, nullptr);
    QTest::keyClick(line, Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(e.grid()->currentIndex().column(), e.out1() + 1);
    EXPECT_EQ(e.openEditor(2, e.out1() + 1), nullptr) << "the locked logic must not open";
    EXPECT_EQ(anyCellEditor(e), nullptr);
    EXPECT_EQ(e.sheet().text(2, e.out1() + 1), "3");

    // From a counter's logic into the "***" delay kind beside it.
    e.setup(1, e.out1(), "C1");
    QComboBox* combo = typeIntoCombo(e, 1, e.out1() + 1, "4");
    ASSERT_NE(combo, nullptr);
    QTest::keyClick(combo, Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(e.sheet().text(1, e.out1() + 1), "4") << "Tab commits the edit";
    EXPECT_EQ(e.sheet().text(1, e.out1() + 2), "***");
    EXPECT_EQ(e.grid()->currentIndex(), e.win->model()->index(1, e.out1() + 2));
    EXPECT_EQ(e.openEditor(1, e.out1() + 2), nullptr) << "a *** cell never opens";

    // Shift+Tab goes back a cell; a refused text keeps its editor open where it is.
    line = typeIntoLine(e, 1, e.out2(), "OUT2");
    ASSERT_NE(line, nullptr);
    QTest::keyClick(line, Qt::Key_Backtab, Qt::ShiftModifier);
    QCoreApplication::processEvents();
    EXPECT_EQ(e.sheet().text(1, e.out2()), "OUT2");
    EXPECT_EQ(e.grid()->currentIndex().column(), e.out1() + 3);
    EXPECT_EQ(e.openEditor(1, e.out1() + 3), nullptr);
    e.prompter.clear();
    line = typeIntoLine(e, 3, 1, QString(21, 'x'));
    ASSERT_NE(line, nullptr);
    QTest::keyClick(line, Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(e.messages(), std::vector<int>{56});
    EXPECT_EQ(e.grid()->currentIndex().column(), 1);
    EXPECT_NE(e.openEditor(3, 1), nullptr);

    QTest::keyClick(e.openEditor(3, 1), Qt::Key_Escape);

    // Without an editor, Tab and Shift+Tab move as the arrow keys do and open nothing.
    e.go(2, e.out1());
    QTest::keyClick(e.grid(), Qt::Key_Tab);
    EXPECT_EQ(e.grid()->currentIndex(), e.win->model()->index(2, e.out1() + 1));
    QTest::keyClick(e.grid(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(e.grid()->currentIndex(), e.win->model()->index(2, e.out1()));
    EXPECT_EQ(anyCellEditor(e), nullptr);
}

// Whole rows (picked in the step number column) are not cleared by Delete: that is cut.
TEST(StepEditorKeys, DeleteOnWholeRowsChangesNothing) {
    Editor e;
    e.setup(3, 1, "keep me");
    e.output(3, e.out1(), "OUT1", "1", "2");
    e.win->setChanged(false);
    e.clickStep(3);
    ASSERT_TRUE(e.grid()->selectionModel()->isRowSelected(3, {}));
    QTest::keyClick(e.grid(), Qt::Key_Delete);
    EXPECT_EQ(e.messages(), std::vector<int>{151});
    EXPECT_EQ(e.sheet().text(3, 1), "keep me");
    EXPECT_EQ(e.sheet().text(3, e.out1()), "OUT1");
    EXPECT_FALSE(e.win->IsChanged());
}

// The selection dialog opens with its first node selected and the keyboard in its tree:
// F2 then Enter acts on that node (a category, which cannot be chosen).
TEST(StepEditorKeys, F2ThenEnterActsOnTheTopNode) {
    Editor e;
    FunctionChooserDialogs* dialogs = e.win->functionDialogs();
    ASSERT_NE(dialogs, nullptr);
    QString current;
    const auto dialog = whenModal([&](QWidget* modal) {
        fSelKino* d = dialogs->dialog(2);
        if (modal != d) {
            ADD_FAILURE() << "the output dialog is not the modal window";
            modal->close();
            return;
        }
        if (QTreeWidgetItem* item = d->tree()->currentItem())
            current = item->text(0);
        // The user presses Enter once the dialog has the keyboard.
        EXPECT_TRUE(QTest::qWaitForWindowActive(d));
        QWidget* focus = QApplication::focusWidget();
        if (focus)
            QTest::keyClick(focus, Qt::Key_Return);
        d->cancelOp();
    });
    e.go(5, e.out1());
    QTest::keyClick(e.grid(), Qt::Key_F2);
    EXPECT_EQ(current, "OUT");
    ASSERT_EQ(e.prompter.shown().size(), 1u);
    EXPECT_EQ(e.prompter.shown()[0].text, "You cannnot select category!");
    EXPECT_EQ(e.sheet().text(5, e.out1()), "");

    // A function chosen in the dialog goes into the cell with its category.
    const auto chosen = whenModal([&](QWidget* modal) {
        fSelKino* d = dialogs->dialog(2);
        if (modal != d) {
            ADD_FAILURE() << "the output dialog is not the modal window";
            modal->close();
            return;
        }
        d->setExpandAll(true);
        d->tree()->setCurrentItem(d->findNodeByKey("2key"));
        d->selectOp();
    });
    QTest::keyClick(e.grid(), Qt::Key_F2);
    EXPECT_EQ(e.sheet().text(5, e.out1()), "OUT2");
    EXPECT_EQ(e.sheet().data(5, e.out1()), "OUT");
}

// A counter row that adds, typed cell by cell with the keyboard as a user does: the operand
// of input group 3 closes the block with END, so the row is saved and reads back the same.
TEST(StepEditorKeys, AddingCounterRowTypedSavedAndReadBack) {
    Editor e;
    const auto combo = [&](int row, int col, const QString& digit) {
        QComboBox* c = typeIntoCombo(e, row, col, digit);
        ASSERT_NE(c, nullptr) << col;
        QTest::keyClick(c, Qt::Key_Return);
        QCoreApplication::processEvents();
    };
    e.type(1, e.out1(), "OUT1");
    combo(1, e.out1() + 1, "1");
    combo(1, e.out1() + 2, "2");
    e.type(1, e.out1() + 3, "5");
    e.type(1, e.in(1), "C5");
    combo(1, e.in(1) + 2, "7");
    e.type(1, e.in(2), "12");
    combo(1, e.in(2) + 2, "3");
    e.type(1, e.in(3), "100");
    EXPECT_TRUE(e.messages().empty());
    EXPECT_EQ(e.sheet().text(1, e.in(3) + 2), "2") << "END comes with the last operand";
    EXPECT_EQ(e.sheet().text(1, e.in(3) + 1), "***");
    // The END cannot be edited: typing on it is refused.
    e.go(1, e.in(3) + 2);
    QTest::keyClicks(e.grid(), "0");
    EXPECT_EQ(e.messages(), std::vector<int>{49});
    e.prompter.clear();

    StepSheetEditor comparison(e.out, e.inp, e.prompter, true, false);
    Documents docs(e.prompter, nullptr, e.out, e.inp, e.ed(), comparison);
    const QString path = e.ts.scratch.file("ADD.GSP");
    docs.filePath(0) = path;
    ASSERT_TRUE(docs.user().SaveStepData(false)) << e.prompter.lastNumber();
    EXPECT_TRUE(e.messages().empty());

    Editor back;
    StepSheetEditor comparison2(back.out, back.inp, back.prompter, true, false);
    Documents docs2(back.prompter, nullptr, back.out, back.inp, back.ed(), comparison2);
    ASSERT_TRUE(docs2.user().ReadStep(0, 0, path));
    for (int col = 1; col < StepSheet::kCols; ++col)
        EXPECT_EQ(back.sheet().text(1, col), e.sheet().text(1, col)) << col;
    const CStepInps& inputs = *docs2.userProgram().Item(1)->inps;
    EXPECT_EQ(inputs.CounterId, 2) << "both operands are numbers";
    EXPECT_EQ(inputs.Item(QStringLiteral("3"))->Rel, RelEnd);
    EXPECT_TRUE(back.ed().ExactInput());
}
