// Copy, cut, paste, insert and row disabling on the sheet, with the renumbering of the
// step references that moving rows brings.
#include "sheetfixture.h"

#include "sheet/clipboardtext.h"

using namespace vkm;
using namespace vkm::test;

namespace {

// An editor whose window answers the renumbering question from a list and counts the undo
// snapshots taken.
struct RowsFixture : SheetFixture {
    explicit RowsFixture(bool inputsFirst = false) : SheetFixture(inputsFirst) {
        // Every step target, as the machine's catalogues list them.
        for (int n = 3; n <= 32; ++n)
            selout.Add(QStringLiteral("J%1").arg(n, 3, 10, QLatin1Char('0')), jumpTarget(n), "", "JMP", "0",
                       "0");
        for (int n = 2; n <= 32; ++n) {
            selout.Add(QStringLiteral("C%1").arg(n, 3, 10, QLatin1Char('0')), callTarget(n), "", "CALL", "0",
                       "0");
            selinp.Add(QStringLiteral("S%1").arg(n, 3, 10, QLatin1Char('0')), jumpTarget(n), "", "STEP", "0",
                       "0");
        }
        EditorHooks hooks = countingHooks();
        hooks.option = [this](const BoolKey& key) {
            if (key == keys::DoesReplaceFunction)
                return replaceFunctions;
            if (key == keys::DoesAskInReplacing)
                return askInReplacing;
            return key.defaultValue;
        };
        hooks.confirmReplace = [this](const QString& oldDigital, const QString& newDigital) {
            asked << oldDigital + " -> " + newDigital;
            return answers.empty() ? 2 : std::exchange(answers, {answers.begin() + 1, answers.end()}).front();
        };
        editor->setHooks(hooks);
    }

    RowClipboard& clip() { return editor->rowClipboard(); }
    RowOperations& rows() { return editor->rows(); }
    QString clipboardText() { return editor->clipboard().text(); }
    void typeRow(int row, const QString& remark) { ASSERT_TRUE(type(row, 1, remark)); }
    void typeJump(int row, const QString& target) {
        ASSERT_TRUE(type(row, o1(), target)) << target.toStdString();
        ASSERT_TRUE(type(row, in(1), "IN001"));
    }

    bool replaceFunctions = true;
    bool askInReplacing = false;
    std::vector<int> answers; // 1 Yes, 2 No, 3 All Yes, 4 All No
    QStringList asked;
};

// Rows 3 and 4: an ordinary step and a disabled jump.
void fillCopySource(RowsFixture& f) {
    f.typeAll(3, {{1, "first"},
                  {f.o1(), "OUT001"},
                  {f.o1() + 1, "1"},
                  {f.o1() + 2, "0"},
                  {f.o1() + 3, "100"},
                  {f.in(1), "IN001"},
                  {f.in(1) + 1, "0"},
                  {f.in(1) + 2, "2"}});
    f.typeAll(4, {{f.o1(), "J002"}, {f.in(1), "IN002"}, {f.in(1) + 1, "0"}, {f.in(1) + 2, "2"}});
    f.sheet().setRowDisabled(4, true);
}

// The two rows as the clipboard carries them, written out cell by cell for the layout
// with the outputs first: remark, output 1 and 2 (function, logic, delay kind, delay),
// inputs 1 to 4 (function, state, relation).
const QString kRow3 = "NOTREM\tfirst\t1\t1\t0\t100\t\t\t\t\t1\t0\t2\t\t\t\t\t\t\t\t\t";
const QString kRow4 = "REM\t\t-32767\t3\t***\t***\t***\t***\t***\t***\t2\t0\t2\t\t\t\t\t\t\t\t\t";
const QString kRows3And4 = "1\r\nRemark\r\n" + kRow3 + "\r\n" + kRow4;

} // namespace

TEST(RowClipboard, WholeRowsTravelAsNumbersWithTheirDisabledState) {
    RowsFixture f;
    fillCopySource(f);
    f.selectRows(4, 3);
    f.clip().copySelection();
    EXPECT_EQ(f.clipboardText(), kRows3And4);
    EXPECT_EQ(f.clipboardText().toUtf8().count('\t'), 2 * 21);
    EXPECT_FALSE(f.clipboardText().endsWith("\r\n"));

    // Pasted at row 10, the two rows come back as they were, disabled state included.
    f.sheet().setRowDisabled(10, true);
    f.selectRows(10, 10);
    f.changedCount = 0;
    ASSERT_TRUE(f.clip().pasteCommand());
    EXPECT_EQ(f.rowCells(10), f.rowCells(3));
    EXPECT_EQ(f.rowCells(11), f.rowCells(4));
    EXPECT_FALSE(f.sheet().isRowDisabled(10));
    EXPECT_TRUE(f.sheet().isRowDisabled(11));
    EXPECT_EQ(f.snapshots, 1);
    EXPECT_GT(f.changedCount, 0);
    EXPECT_TRUE(f.prompter.shown().empty());
}

TEST(RowClipboard, OneCopiedRowFillsEverySelectedRow) {
    RowsFixture f;
    fillCopySource(f);
    f.selectRows(3, 3);
    f.clip().copySelection();
    f.selectRows(5, 8);
    ASSERT_TRUE(f.clip().pasteCommand());
    for (int r = 5; r <= 8; ++r)
        EXPECT_EQ(f.rowCells(r), f.rowCells(3)) << r;
    EXPECT_EQ(f.rowCells(9), f.rowCells(30));
}

TEST(RowClipboard, ABlockGoesOnlyIntoItsOwnColumn) {
    RowsFixture f;
    fillCopySource(f);
    f.sheet().setSelection(3, f.o1() + 1, 4, f.o1() + 1);
    f.clip().copySelection();
    EXPECT_EQ(f.clipboardText(), "0\r\nLogic\r\nNOTREM\t1\r\nREM\t3");

    const QStringList before = f.rowCells(10);
    f.sheet().select(10, f.o1() + 3);
    EXPECT_FALSE(f.clip().PasteFromBuf(10));
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{71});
    EXPECT_EQ(f.rowCells(10), before);

    // Into the logic column of output group 2 it goes, and the rows keep their state.
    f.prompter.clear();
    f.sheet().setRowDisabled(21, true);
    f.sheet().select(20, f.o2() + 1);
    ASSERT_TRUE(f.clip().PasteFromBuf(20));
    EXPECT_EQ(f.sheet().text(20, f.o2() + 1), "1");
    EXPECT_EQ(f.sheet().text(21, f.o2() + 1), "3");
    EXPECT_FALSE(f.sheet().isRowDisabled(20));
    EXPECT_TRUE(f.sheet().isRowDisabled(21));
}

// Text that is not copied cells, or that does not fit where it would go, is refused with
// its message and changes nothing.
TEST(RowClipboard, ForeignOrUnfittingTextIsRefusedWhole) {
    // A whole row: the REM field and 21 cells.
    const QString tabs21 = QString("\t").repeated(21);
    struct Case {
        const char* what;
        QString text;
        int row, col;
        int message;
    };
    const std::vector<Case> cases = {
        {"empty", "", 5, 1, 58},
        {"one line", "hello", 5, 1, 58},
        {"LF only", "1\nRemark\nNOTREM" + tabs21, 5, 1, 58},
        {"first line 2", "2\r\nRemark\r\nNOTREM" + tabs21, 5, 1, 58},
        {"no rows", "1\r\nRemark", 5, 1, 58},
        {"REM field missing", "1\r\nRemark\r\nfoo" + tabs21, 5, 1, 58},
        {"a row line with too many fields", "1\r\nRemark\r\nNOTREM" + tabs21 + "\t", 5, 1, 58},
        {"a row line with too few fields", "1\r\nRemark\r\nNOTREM\tx", 5, 1, 58},
        {"rows of different widths", "0\r\nRemark\r\nNOTREM\ta\r\nNOTREM\ta\tb", 5, 1, 58},
        {"a name where a number goes", "0\r\nOutput\r\nNOTREM\tOUT001", 5, 2, 58},
        {"a logic of 12", "0\r\nLogic\r\nNOTREM\t12", 5, 3, 58},
        {"an odd delay kind", "0\r\nDelay Kind\r\nNOTREM\t3", 5, 4, 58},
        {"a remark of 21 bytes", "0\r\nRemark\r\nNOTREM\t" + QString(21, 'r'), 5, 1, 58},
        {"a remark holding a line feed", "0\r\nRemark\r\nNOTREM\ta\nb", 5, 1, 58},
        {"a remark holding a carriage return", "0\r\nRemark\r\nNOTREM\ta\rb", 5, 1, 58},
        {"a function beyond 16 bits", "0\r\nOutput\r\nNOTREM\t65536", 5, 2, 58},
        {"rows below step 32", "1\r\nRemark\r\nNOTREM" + tabs21 + "\r\nNOTREM" + tabs21, 32, 1, 90},
        {"a block beyond the last column", "0\r\nStat.\r\nNOTREM\t0\t2\t\t1", 5, 20, 90},
    };
    for (const Case& c : cases) {
        RowsFixture f;
        f.type(c.row, 1, "keep");
        f.editor->clipboard().setText(c.text);
        f.sheet().select(c.row, c.col);
        const quint64 revision = f.sheet().revision();
        f.changedCount = 0;
        EXPECT_FALSE(f.clip().PasteFromBuf(c.row)) << c.what;
        EXPECT_EQ(f.prompter.numbers(), std::vector<int>{c.message}) << c.what;
        EXPECT_EQ(f.sheet().revision(), revision) << c.what;
        EXPECT_EQ(f.changedCount, 0) << c.what;
    }
}

// A remark read from a file may hold any byte. Copied as it stands, a TAB would start
// another cell and a line break another row; the copy writes each control character as a
// blank, so the text reads back as the cells that were copied.
TEST(RowClipboard, ControlCharactersInARemarkTravelAsBlanks) {
    RowsFixture f;
    fillCopySource(f);
    f.sheet().setText(3, 1, "a\t256\r\nb\x01");
    f.sheet().setSelection(3, 1, 3, f.o1());
    f.clip().copySelection();
    EXPECT_EQ(f.clipboardText(), "0\r\nRemark\r\nNOTREM\ta 256  b \t1");
    f.sheet().select(6, 1);
    ASSERT_TRUE(f.clip().PasteFromBuf(6));
    EXPECT_EQ(f.sheet().text(6, 1), "a 256  b ");
    EXPECT_EQ(f.sheet().text(6, f.o1()), "OUT001") << "the remark stays in its own cell";
    EXPECT_EQ(f.sheet().text(6, f.o1() + 1), "");
    EXPECT_TRUE(f.prompter.shown().empty());

    // As whole rows, the editor takes its own copy back.
    f.selectRows(3, 4);
    f.clip().copySelection();
    EXPECT_EQ(f.clipboardText(),
              "1\r\nRemark\r\n" + QString(kRow3).replace("first", "a 256  b ") + "\r\n" + kRow4);
    f.selectRows(10, 10);
    ASSERT_TRUE(f.clip().pasteCommand());
    EXPECT_TRUE(f.prompter.shown().empty());
    EXPECT_EQ(f.sheet().text(10, 1), "a 256  b ");
    EXPECT_EQ(f.rowCells(10).mid(2), f.rowCells(3).mid(2));
    EXPECT_EQ(f.rowCells(11), f.rowCells(4));
}

TEST(RowClipboard, ANumberNoCatalogueKnowsIsKeptRecognisablyAndNamed) {
    RowsFixture f;
    f.editor->clipboard().setText("0\r\nOutput\r\nNOTREM\t4321\t1\t2\t5");
    f.sheet().select(6, f.o1());
    ASSERT_TRUE(f.clip().PasteFromBuf(6));
    EXPECT_EQ(f.sheet().text(6, f.o1()), "#4321");
    EXPECT_EQ(f.sheet().data(6, f.o1()), "");
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{88});
    EXPECT_EQ(f.prompter.shown().back().a1, "4321");
    // Copied again, it travels as the same number.
    f.sheet().setSelection(6, f.o1(), 6, f.o1() + 3);
    f.clip().copySelection();
    EXPECT_EQ(f.clipboardText(), "0\r\nOutput\r\nNOTREM\t4321\t1\t2\t5");
}

TEST(RowClipboard, CounterOperandsAndStarsFollowTheRowTheyLandIn) {
    RowsFixture f;
    f.typeAll(2, {{f.o1(), "OUT001"}, {f.in(1), "CT10"}, {f.in(1) + 2, "5"}, {f.in(2), "300"}});
    f.sheet().setSelection(2, f.in(1), 2, f.in(2) + 2);
    f.clip().copySelection();
    // The counter as its number, the operand as typed.
    EXPECT_EQ(f.clipboardText(), "0\r\nInput\r\nNOTREM\t10\t***\t5\t300\t***\t");
    f.sheet().select(7, f.in(1));
    ASSERT_TRUE(f.clip().PasteFromBuf(7));
    EXPECT_EQ(f.sheet().text(7, f.in(1)), "CT10");
    EXPECT_EQ(f.sheet().data(7, f.in(1)), "COUNT");
    EXPECT_EQ(f.sheet().text(7, f.in(2)), "300");
    EXPECT_EQ(f.sheet().data(7, f.in(2)), "");

    // A return pasted alone into a row makes the rest of the row not apply.
    f.editor->clipboard().setText("0\r\nOutput\r\nNOTREM\t10");
    f.sheet().select(9, f.o1());
    ASSERT_TRUE(f.clip().PasteFromBuf(9));
    EXPECT_EQ(f.sheet().text(9, f.o2()), "***");
    EXPECT_EQ(f.sheet().text(9, f.in(4) + 2), "***");
}

TEST(RowOperations, InsertMovesRowsDownAndRenumbersReferences) {
    RowsFixture f;
    for (int r = 1; r <= 32; ++r)
        f.typeRow(r, QStringLiteral("r%1").arg(r));
    f.typeJump(10, "J006");
    f.typeJump(12, "J004");
    ASSERT_TRUE(f.type(12, f.in(2), "S031"));
    const QStringList row30 = f.rowCells(30);
    f.selectRows(5, 6);
    f.prompter.queueAnswer(Answer::Yes); // the bottom rows will overflow
    f.changedCount = 0;
    ASSERT_TRUE(f.rows().insertCommand());
    EXPECT_EQ(f.prompter.numbers(), (std::vector<int>{97, 85}));
    EXPECT_EQ(f.prompter.shown()[0].style, 7);
    EXPECT_EQ(f.prompter.texts()[1],
              "The following function cannot be replaced because of invalid address.\n\nS031");
    EXPECT_EQ(f.sheet().text(4, 1), "r4");
    EXPECT_EQ(f.rowCells(5), f.rowCells(6));
    EXPECT_EQ(f.sheet().text(5, 1), "");
    EXPECT_EQ(f.sheet().text(7, 1), "r5");
    EXPECT_EQ(f.rowCells(32), row30);
    // Step 6 is step 8 now; step 4 did not move; step 31 is gone.
    EXPECT_EQ(f.sheet().text(12, f.o1()), "J008");
    EXPECT_EQ(f.sheet().data(12, f.o1()), "JMP");
    EXPECT_EQ(f.sheet().text(14, f.o1()), "J004");
    EXPECT_EQ(f.sheet().text(14, f.in(2)), "S031");
    EXPECT_EQ(f.sheet().text(12, 1), "r10");
    EXPECT_EQ(f.snapshots, 1);
    EXPECT_GT(f.changedCount, 0);
    // The selection stays where it was.
    EXPECT_EQ(f.sheet().row(), 5);
    EXPECT_TRUE(f.sheet().rowSelectionMode());
    EXPECT_EQ(f.sheet().selection().row2, 6);
}

TEST(RowOperations, InsertAsksBeforeLosingUsedRowsAndNoChangesNothing) {
    RowsFixture f;
    f.typeRow(31, "used");
    const QByteArray before = f.sheet().saveCells();
    f.selectRows(3, 4);
    f.prompter.queueAnswer(Answer::No);
    EXPECT_FALSE(f.rows().insertCommand());
    EXPECT_EQ(f.sheet().saveCells(), before);
    EXPECT_EQ(f.snapshots, 0);
    // One row fits.
    f.selectRows(3, 3);
    EXPECT_TRUE(f.rows().insertCommand());
    EXPECT_EQ(f.sheet().text(32, 1), "used");
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{97});
}

TEST(RowOperations, ReferencesBeyondTheLastStepAreRefused) {
    RowsFixture f;
    f.typeJump(2, "J032");
    f.typeJump(3, "J031");
    f.typeJump(4, "C010");
    ASSERT_TRUE(f.type(4, f.in(2), "S001"));
    f.selectRows(1, 1);
    ASSERT_TRUE(f.rows().insertCommand());
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{85});
    EXPECT_EQ(f.prompter.shown()[0].a1, "J032");
    EXPECT_EQ(f.sheet().text(3, f.o1()), "J032"); // refused: as it was
    EXPECT_EQ(f.sheet().text(4, f.o1()), "J032"); // 031 moved on to 032
    EXPECT_EQ(f.sheet().text(5, f.o1()), "C011");
    EXPECT_EQ(f.sheet().text(5, f.in(2)), "S002");

    // A reference before the inserted rows stays: 010 with rows inserted at step 12.
    RowsFixture g;
    g.typeJump(1, "J010");
    g.selectRows(12, 12);
    ASSERT_TRUE(g.rows().insertCommand());
    EXPECT_EQ(g.sheet().text(1, g.o1()), "J010");

    // Switched off, nothing is renumbered.
    RowsFixture off;
    off.replaceFunctions = false;
    off.typeJump(1, "J010");
    off.selectRows(2, 2);
    ASSERT_TRUE(off.rows().insertCommand());
    EXPECT_EQ(off.sheet().text(1, off.o1()), "J010");
}

TEST(RowOperations, EachReplacementIsConfirmedUntilAllYesOrAllNo) {
    struct Case {
        std::vector<int> answers;
        QStringList asked;
        QStringList result; // rows 3, 4, 5 after inserting one row at step 1
    };
    const std::vector<Case> cases = {
        {{1, 2, 1}, {"J005 -> J006", "J006 -> J007", "J007 -> J008"}, {"J006", "J006", "J008"}},
        {{2, 3}, {"J005 -> J006", "J006 -> J007"}, {"J005", "J007", "J008"}},
        {{1, 4}, {"J005 -> J006", "J006 -> J007"}, {"J006", "J006", "J007"}},
    };
    for (const Case& c : cases) {
        RowsFixture f;
        f.askInReplacing = true;
        f.answers = c.answers;
        f.typeJump(2, "J005");
        f.typeJump(3, "J006");
        f.typeJump(4, "J007");
        f.selectRows(1, 1);
        ASSERT_TRUE(f.rows().insertCommand());
        EXPECT_EQ(f.asked, c.asked);
        EXPECT_EQ(
            (QStringList{f.sheet().text(3, f.o1()), f.sheet().text(4, f.o1()), f.sheet().text(5, f.o1())}),
            c.result);
    }
}

TEST(RowOperations, CutRowsPacksOnlyWhenAsked) {
    for (bool pack : {true, false}) {
        RowsFixture f;
        for (int r = 1; r <= 8; ++r)
            f.typeRow(r, QStringLiteral("r%1").arg(r));
        f.typeJump(6, "J008");
        f.typeJump(7, "J004");
        f.sheet().setRowDisabled(4, true);
        f.selectRows(3, 4);
        f.prompter.queueAnswer(pack ? Answer::Yes : Answer::No);
        ASSERT_TRUE(f.rows().cutCommand());
        EXPECT_EQ(f.snapshots, 1);
        EXPECT_TRUE(f.editor->clipboard().text().startsWith("1\r\nRemark\r\nNOTREM\tr3\t"));
        if (pack) {
            // Steps 5.. moved up two; the reference to removed step 4 cannot follow.
            EXPECT_EQ(f.prompter.numbers(), (std::vector<int>{59, 86}));
            EXPECT_EQ(f.prompter.shown()[1].a1, "J004");
            EXPECT_EQ(f.sheet().text(3, 1), "r5");
            EXPECT_EQ(f.sheet().text(4, f.o1()), "J006");
            EXPECT_EQ(f.sheet().text(5, f.o1()), "J004");
            EXPECT_EQ(f.sheet().text(6, 1), "r8");
            EXPECT_EQ(f.sheet().text(7, 1), "");
            EXPECT_FALSE(f.sheet().isRowDisabled(4));
        } else {
            EXPECT_EQ(f.prompter.numbers(), std::vector<int>{59});
            EXPECT_EQ(f.rowCells(3), f.rowCells(31));
            EXPECT_EQ(f.rowCells(4), f.rowCells(31));
            EXPECT_EQ(f.sheet().text(6, f.o1()), "J008");
        }
    }
    // Cut at the bottom asks nothing.
    RowsFixture f;
    f.typeRow(32, "last");
    f.selectRows(31, 32);
    ASSERT_TRUE(f.rows().cutCommand());
    EXPECT_TRUE(f.prompter.shown().empty());
    EXPECT_EQ(f.sheet().text(32, 1), "");
}

TEST(RowOperations, CutBlockClearsCellsAndWhatTheyCaused) {
    RowsFixture f;
    f.typeJump(5, "J002");
    ASSERT_TRUE(f.type(5, 1, "keep"));
    ASSERT_EQ(f.sheet().text(5, f.o2()), "***");
    f.sheet().setSelection(5, f.o1(), 5, f.o1());
    ASSERT_TRUE(f.rows().cutCommand());
    EXPECT_EQ(f.editor->clipboard().text(), "0\r\nOutput\r\nNOTREM\t-32767");
    EXPECT_EQ(f.sheet().text(5, f.o1()), "");
    EXPECT_EQ(f.sheet().text(5, f.o2()), "");
    EXPECT_EQ(f.sheet().text(5, f.o1() + 2), "");
    EXPECT_EQ(f.sheet().text(5, 1), "keep");
}

TEST(RowOperations, RemSwapsEachRowAndClearAllEnablesEveryRow) {
    RowsFixture f;
    f.sheet().setRowDisabled(4, true);
    f.sheet().setSelection(3, 2, 4, 5);
    f.rows().RemOp();
    EXPECT_TRUE(f.sheet().isRowDisabled(3));
    EXPECT_FALSE(f.sheet().isRowDisabled(4));
    EXPECT_EQ(f.snapshots, 0);
    EXPECT_GT(f.changedCount, 0);
    f.changedCount = 0;
    f.rows().ClearAllRem();
    EXPECT_FALSE(f.sheet().isRowDisabled(3));
    EXPECT_EQ(f.changedCount, 1);
    f.rows().ClearAllRem();
    EXPECT_EQ(f.changedCount, 1);
}

TEST(RowOperations, TheComparisonProgramOnlyCopies) {
    SheetFixture f(false, true);
    f.sheet().setCell(3, 1, "shown", "");
    f.selectRows(3, 3);
    f.editor->rowClipboard().copySelection();
    EXPECT_TRUE(f.editor->clipboard().text().startsWith("1\r\nRemark\r\nNOTREM\tshown\t"));
    const QByteArray before = f.sheet().saveCells();
    f.selectRows(5, 5);
    EXPECT_FALSE(f.editor->rowClipboard().pasteCommand());
    EXPECT_FALSE(f.editor->rows().insertCommand());
    EXPECT_FALSE(f.editor->rows().cutCommand());
    f.editor->rows().RemOp();
    EXPECT_EQ(f.sheet().saveCells(), before);
}

TEST(RowOperations, InputsFirstLayoutCopiesInItsOwnColumnOrder) {
    RowsFixture f(true);
    f.typeAll(2, {{f.o1(), "OUT002"}, {f.in(1), "IN003"}});
    f.selectRows(2, 2);
    f.clip().copySelection();
    // Remark, inputs 1 to 4, then the outputs.
    // Cells 0 to 20 are columns 1 to 21: the remark, input 1's function (3) in cell 1,
    // output 1's function (2) in cell 13 after the twelve input columns.
    EXPECT_EQ(f.clipboardText(),
              "1\r\nRemark\r\nNOTREM\t\t3" + QString("\t").repeated(12) + "2" + QString("\t").repeated(7));
    f.selectRows(9, 9);
    ASSERT_TRUE(f.clip().pasteCommand());
    EXPECT_EQ(f.rowCells(9), f.rowCells(2));
}

TEST(ClipboardText, ParsesWhatItComposes) {
    ClipboardData data;
    data.wholeRows = false;
    data.header = "Delay Value";
    data.rows = {{true, {"10", ""}}, {false, {"", "***"}}};
    const QString text = ClipboardText::compose(data);
    EXPECT_EQ(text, "0\r\nDelay Value\r\nREM\t10\t\r\nNOTREM\t\t***");
    const auto back = ClipboardText::parse(text);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->header, data.header);
    ASSERT_EQ(back->rows.size(), 2u);
    EXPECT_TRUE(back->rows[0].rem);
    EXPECT_EQ(back->rows[1].cells, (QStringList{"", "***"}));
    // A text editor's line break after the last line does no harm.
    EXPECT_TRUE(ClipboardText::parse(text + "\r\n"));
    EXPECT_FALSE(ClipboardText::parse(text + "\r\n\r\n"));
    EXPECT_EQ(ClipboardText::ParseColCount("NOTREM\ta\t\tb"), 4);

    // A copy writes each control character of a cell as a blank.
    EXPECT_EQ(ClipboardText::copiedCell("x\ty\r\n\x1f!"), "x y   !");
    EXPECT_EQ(ClipboardText::copiedCell("plain ~"), "plain ~");
}
