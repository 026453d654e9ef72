#include "sheetfixture.h"

#include "model/csteps.h"

using namespace vkm;
using namespace vkm::test;

namespace {

// Row 1: OUT001 HIGH with the delay kind, ready for a delay value.
void outputReadyForDelay(SheetFixture& f, const QString& kind = "0") {
    f.typeAll(1, {{f.o1(), "OUT001"}, {f.o1() + 1, "1"}, {f.o1() + 2, kind}});
}

} // namespace

TEST(SheetEntry, FunctionCellsAcceptLowerCaseAndRefuseUnknownNames) {
    SheetFixture f;
    EXPECT_TRUE(f.type(1, f.o1(), "out001"));
    EXPECT_EQ(f.sheet().text(1, f.o1()), "OUT001");
    EXPECT_EQ(f.sheet().data(1, f.o1()), "OUT");
    EXPECT_GT(f.changedCount, 0);

    const int changed = f.changedCount;
    const ValidateResult r = f.editor->entry().fg_ValidateEdit(1, f.o1(), "NOPE");
    EXPECT_FALSE(r.accepted);
    EXPECT_EQ(r.text, "OUT001") << "the editor text goes back to the stored function";
    EXPECT_EQ(f.prompter.lastNumber(), 67);
    EXPECT_EQ(f.sheet().text(1, f.o1()), "OUT001");
    EXPECT_EQ(f.changedCount, changed);

    EXPECT_TRUE(f.type(1, f.in(1), "in002"));
    EXPECT_EQ(f.sheet().text(1, f.in(1)), "IN002");
    EXPECT_EQ(f.sheet().data(1, f.in(1)), "IN");
}

TEST(SheetEntry, DelayValueRangeAndEvenTimer) {
    struct Case {
        QString kind;
        QString typed;
        int message; // 0 = accepted
        QString stored;
    } cases[] = {
        {"0", "130000", 0, "130000"}, {"0", "130001", 43, ""}, {"0", "129999", 158, ""},
        {"0", "abc", 68, ""},         {"0", "", 68, ""},       {"0", " 0016 ", 0, "16"},
        {"2", "9999", 0, "9999"},     {"2", "10000", 43, ""},  {"2", "15", 0, "15"},
        {"4", "3600", 0, "3600"},     {"4", "3601", 43, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE((c.kind + " " + c.typed).toStdString());
        SheetFixture f;
        outputReadyForDelay(f, c.kind);
        f.prompter.clear();
        EXPECT_EQ(f.type(1, f.o1() + 3, c.typed), c.message == 0);
        EXPECT_EQ(f.sheet().text(1, f.o1() + 3), c.stored);
        if (c.message == 0) {
            EXPECT_TRUE(f.prompter.shown().empty());
            continue;
        }
        ASSERT_EQ(f.prompter.numbers(), std::vector<int>{c.message});
        if (c.message == 43) {
            EXPECT_EQ(f.prompter.shown()[0].a1, "0");
            EXPECT_EQ(f.prompter.shown()[0].a2, c.kind == "0" ? "130000" : c.kind == "2" ? "9999" : "3600");
        }
    }
}

TEST(SheetEntry, RemarkByteLimitCountsDoubleByteCharacters) {
    struct Case {
        QString text;
        bool ok;
    } cases[] = {
        {QString(20, 'a'), true},
        {QString(21, 'a'), false},
        {QString(10, QChar(0x3042)), true}, // あ takes two bytes
        {QString(11, QChar(0x3042)), false},
        {QString(9, QChar(0x3042)) + "ab", true},
        {QString(9, QChar(0x3042)) + "abc", false},
    };
    for (const Case& c : cases) {
        SheetFixture f;
        f.sheet().setText(1, 1, "old");
        EXPECT_EQ(f.type(1, 1, c.text), c.ok) << c.text.size();
        EXPECT_EQ(f.sheet().text(1, 1), c.ok ? c.text : QString("old"));
        if (!c.ok) {
            ASSERT_EQ(f.prompter.numbers(), std::vector<int>{56});
            EXPECT_EQ(f.prompter.shown()[0].a1, "20");
        }
    }
}

// A TAB or a line break would break the clipboard's cells and lines apart: a remark is
// refused with them (and with any other control character), and keeps what it held.
TEST(SheetEntry, RemarkRefusesControlCharacters) {
    for (const QString& text :
         {QString("a\t256"), QString("a\nb"), QString("a\rb"), QString("\x01"), QString(QChar(0x1f))}) {
        SheetFixture f;
        f.sheet().setText(1, 1, "old");
        const ValidateResult r = f.editor->entry().fg_ValidateEdit(1, 1, text);
        EXPECT_FALSE(r.accepted) << text.toStdString();
        EXPECT_EQ(r.text, "old");
        EXPECT_EQ(f.sheet().text(1, 1), "old");
        EXPECT_EQ(f.changedCount, 0);
        EXPECT_EQ(f.prompter.texts(),
                  QStringList{"A remark cannot hold a tab, a line break or another control character."});
    }
    SheetFixture f;
    EXPECT_TRUE(f.type(1, 1, " a b ~"));
    EXPECT_EQ(f.sheet().text(1, 1), " a b ~");
    EXPECT_TRUE(f.prompter.shown().empty());
}

TEST(SheetEntry, PrerequisitesAndStarCellsRefuseToStart) {
    SheetFixture f;
    struct Case {
        int col;
        int message;
        QString a1;
    } cases[] = {
        {f.o2(), 46, "Output"},         {f.o1() + 1, 46, "Output"}, {f.o1() + 2, 46, "Logic"},
        {f.o1() + 3, 46, "Delay Kind"}, {f.in(1) + 1, 46, "Input"}, {f.in(2) + 2, 46, "Input"},
    };
    for (const Case& c : cases) {
        f.prompter.clear();
        EXPECT_FALSE(f.editor->entry().fg_StartEdit(2, c.col).allowed) << c.col;
        ASSERT_EQ(f.prompter.numbers(), std::vector<int>{c.message});
        EXPECT_EQ(f.prompter.shown()[0].a1, c.a1);
    }
    // A jump in group 1 puts "***" in group 2 and locks its own logic.
    ASSERT_TRUE(f.type(2, f.o1(), "J001"));
    EXPECT_EQ(f.sheet().text(2, f.o1() + 1), "3");
    for (int col : {f.o2(), f.o2() + 3, f.o1() + 2, f.o1() + 1}) {
        f.prompter.clear();
        EXPECT_FALSE(f.type(2, col, "0")) << col;
        EXPECT_EQ(f.prompter.numbers(), std::vector<int>{42});
    }
    EXPECT_EQ(f.sheet().text(2, f.o1() + 1), "3");
}

TEST(SheetEntry, RelationRulesAndInputsAfterEnd) {
    SheetFixture f;
    f.typeAll(1, {{f.in(1), "IN001"}, {f.in(1) + 2, "2"}});
    f.prompter.clear();
    EXPECT_FALSE(f.type(1, f.in(2), "IN002"));
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{156});
    EXPECT_TRUE(f.sheet().text(1, f.in(2)).isEmpty());

    // The last relation is always END: starting to edit it writes END and stops.
    f.typeAll(2, {{f.in(1), "IN001"},
                  {f.in(1) + 2, "0"},
                  {f.in(2), "IN002"},
                  {f.in(2) + 2, "1"},
                  {f.in(3), "IN003"},
                  {f.in(3) + 2, "0"},
                  {f.in(4), "IN004"}});
    EXPECT_EQ(f.sheet().text(2, f.in(4) + 2), "2") << "group 4 gets END with its function";
    f.sheet().setText(2, f.in(4) + 2, "");
    f.prompter.clear();
    EXPECT_FALSE(f.editor->entry().fg_StartEdit(2, f.in(4) + 2).allowed);
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{49});
    EXPECT_EQ(f.sheet().text(2, f.in(4) + 2), "2");

    // A value outside the combo list and a counter outside group 1.
    f.prompter.clear();
    EXPECT_FALSE(f.type(2, f.in(1) + 2, "7"));
    EXPECT_FALSE(f.type(3, f.in(1), "IN001") && f.type(3, f.in(2), "CT10"));
    EXPECT_EQ(f.prompter.numbers(), (std::vector<int>{67, 87}));
    EXPECT_EQ(f.sheet().row(), 3);
    EXPECT_EQ(f.sheet().col(), f.in(1));
}

TEST(SheetEntry, CounterRows) {
    SheetFixture f;
    ASSERT_TRUE(f.type(1, f.in(1), "ct10"));
    EXPECT_TRUE(f.editor->queries().TopIsCOUNT(1));
    EXPECT_EQ(f.sheet().text(1, f.in(1) + 1), "***");
    EXPECT_EQ(f.sheet().text(1, f.in(2) + 1), "***");
    EXPECT_EQ(f.editor->rules().comboList(1, f.in(1) + 2), CellRules::kRelCountLowList);

    f.prompter.clear();
    EXPECT_FALSE(f.type(1, f.in(4), "IN001"));
    EXPECT_FALSE(f.type(1, f.in(2), "501"));
    EXPECT_EQ(f.prompter.numbers(), (std::vector<int>{89, 81}));
    EXPECT_EQ(f.prompter.shown()[1].a1, "0");
    EXPECT_EQ(f.prompter.shown()[1].a2, "500");

    // A number in range is kept as the number itself, even where a function has that value.
    EXPECT_TRUE(f.type(1, f.in(2), "1"));
    EXPECT_EQ(f.sheet().text(1, f.in(2)), "1");
    EXPECT_TRUE(f.sheet().data(1, f.in(2)).isEmpty());
    EXPECT_TRUE(f.type(1, f.in(2), "CT11"));
    EXPECT_EQ(f.sheet().data(1, f.in(2)), "COUNT");

    // "+" makes group 2 an addend compared with group 3.
    EXPECT_EQ(f.editor->rules().comboList(1, f.in(2) + 2), "#2;END");
    ASSERT_TRUE(f.type(1, f.in(1) + 2, "7"));
    EXPECT_EQ(f.sheet().text(1, f.in(3) + 1), "***");
    EXPECT_EQ(f.editor->rules().comboList(1, f.in(2) + 2), CellRules::kRelCountHighList);
    EXPECT_EQ(f.editor->rules().comboList(1, f.in(3) + 2), "#2;END");
    ASSERT_TRUE(f.type(1, f.in(1) + 2, "3"));
    EXPECT_TRUE(f.sheet().text(1, f.in(3) + 1).isEmpty()) << "the *** goes when + goes";

    ASSERT_TRUE(f.type(2, f.in(1), "CT40"));
    EXPECT_EQ(f.editor->rules().comboList(2, f.in(1) + 2), CellRules::kRelCountHighList);
    EXPECT_EQ(f.editor->rules().hintText(2, f.in(2)),
              "Dialogue:[F2], DoubleClick    Can input directly   Max:65535  Min:0");
}

TEST(SheetEntry, OutputFollowRules) {
    SheetFixture f;
    // A counter output: INC/DEC/CLR need neither delay kind nor value, SET needs a value.
    ASSERT_TRUE(f.type(1, f.o1(), "CNT01"));
    EXPECT_EQ(f.editor->rules().comboList(1, f.o1() + 1), CellRules::kLogicCountList);
    ASSERT_TRUE(f.type(1, f.o1() + 1, "4"));
    EXPECT_EQ(f.sheet().text(1, f.o1() + 2), "***");
    EXPECT_EQ(f.sheet().text(1, f.o1() + 3), "***");
    ASSERT_TRUE(f.type(1, f.o1() + 1, "6"));
    EXPECT_EQ(f.sheet().text(1, f.o1() + 2), "***");
    EXPECT_TRUE(f.sheet().text(1, f.o1() + 3).isEmpty());
    EXPECT_TRUE(f.type(1, f.o1() + 3, "9999"));

    // Flow control in both groups is refused; RETURN stars the inputs.
    f.typeAll(2, {{f.o1(), "OUT001"}, {f.o2(), "J002"}});
    f.prompter.clear();
    EXPECT_FALSE(f.type(2, f.o1(), "C001"));
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{112});
    EXPECT_EQ(f.sheet().text(2, f.o1()), "OUT001");
    f.typeAll(3, {{f.in(1), "IN001"}, {f.o1(), "RET"}});
    for (int c = 0; c < 12; ++c)
        EXPECT_EQ(f.sheet().text(3, f.in(1) + c), "***") << c;
    EXPECT_EQ(f.sheet().text(3, f.o1() + 1), "11");
    ASSERT_TRUE(f.type(3, f.o1(), "OUT002"));
    EXPECT_TRUE(f.sheet().text(3, f.in(1)).isEmpty()) << "inputs come back when RETURN goes";
    EXPECT_TRUE(f.sheet().text(3, f.o2()).isEmpty());

    // An ALL input has no state and ends the block.
    ASSERT_TRUE(f.type(4, f.in(1), "ALLON"));
    EXPECT_EQ(f.sheet().text(4, f.in(1) + 1), "***");
    EXPECT_EQ(f.sheet().text(4, f.in(1) + 2), "2");
}

TEST(SheetEntry, KeysSpaceF2AndTypedCharacters) {
    SheetFixture f;
    ASSERT_TRUE(f.type(1, f.o1(), "OUT001"));
    QStringList seen;
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(f.editor->entry().SpaceOp(1, f.o1() + 1));
        seen << f.sheet().text(1, f.o1() + 1);
    }
    EXPECT_EQ(seen, (QStringList{"0", "1", "2", "0"}));
    EXPECT_TRUE(f.editor->entry().typeCharacter(1, f.o1() + 2, '2').allowed);
    f.prompter.clear();
    EXPECT_FALSE(f.editor->entry().typeCharacter(1, f.o1() + 2, '3').allowed);
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{67});
    EXPECT_EQ(f.editor->rules().hintText(1, f.o1() + 1),
              "Combo:[F2]->[F4]    Direct:[0]LOW [1]HIGH [2]NOT    Toggle:[SPACE]");

    int askedOrg = 0;
    EditorHooks hooks;
    hooks.chooseFunction = [&](int inOut, int org, int row) -> std::optional<int> {
        askedOrg = org;
        EXPECT_EQ(inOut, 2);
        EXPECT_EQ(row, 1);
        return jumpTarget(2);
    };
    f.editor->setHooks(hooks);
    EXPECT_EQ(f.editor->entry().F2InputOp(1, f.o1()).action, F2Action::FunctionWritten);
    EXPECT_EQ(askedOrg, 1);
    EXPECT_EQ(f.sheet().text(1, f.o1()), "J002");
    EXPECT_EQ(f.sheet().text(1, f.o1() + 1), "3");
    EXPECT_EQ(f.editor->entry().F2InputOp(1, f.o1() + 3).action, F2Action::Nothing) << "*** cell";
    EXPECT_EQ(f.editor->entry().F2InputOp(1, 1).action, F2Action::StartEdit);
}

TEST(SheetEntry, DeleteKey) {
    SheetFixture f;
    f.putSimpleRow(1);
    f.sheet().select(1, f.o1() + 1);
    EXPECT_FALSE(f.editor->clearing().DeleteOp());
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{36});
    EXPECT_EQ(f.sheet().text(1, f.o1() + 1), "1");

    f.sheet().setSelection(1, 0, 1, 21);
    f.sheet().setRowSelectionMode(true);
    f.prompter.clear();
    EXPECT_FALSE(f.editor->clearing().DeleteOp());
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{151});

    f.sheet().select(1, f.o1());
    EXPECT_TRUE(f.editor->clearing().DeleteOp());
    for (int c = 0; c < 4; ++c)
        EXPECT_TRUE(f.sheet().text(1, f.o1() + c).isEmpty());
    EXPECT_EQ(f.sheet().text(1, f.in(1)), "IN001") << "other groups stay";

    f.typeAll(2, {{f.in(1), "CT10"}, {f.in(2), "12"}});
    EXPECT_TRUE(f.editor->clearing().DeleteOp(2, f.in(1), 2, f.in(1)));
    for (int c = 0; c < 12; ++c)
        EXPECT_TRUE(f.sheet().text(2, f.in(1) + c).isEmpty()) << c;
}

TEST(SheetEntry, ComparisonWindowEditsNothing) {
    SheetFixture f(false, true);
    f.putSimpleRow(1);
    const QByteArray before = f.sheet().saveCells();
    for (int col = 1; col < StepSheet::kCols; ++col) {
        EXPECT_FALSE(f.editor->entry().fg_StartEdit(1, col).allowed) << col;
        EXPECT_FALSE(f.type(1, col, "2")) << col;
        EXPECT_FALSE(f.editor->entry().SpaceOp(1, col));
        EXPECT_FALSE(f.editor->entry().typeCharacter(1, col, '1').allowed);
        EXPECT_EQ(f.editor->entry().F2InputOp(1, col).action, F2Action::Nothing);
    }
    EXPECT_FALSE(f.editor->clearing().DeleteOp(1, 1, 1, 21));
    EXPECT_EQ(f.sheet().saveCells(), before);
    EXPECT_TRUE(f.prompter.shown().empty());
    EXPECT_EQ(f.changedCount, 0);
}

// A counter row that adds or subtracts compares its sum with input group 3: entering that
// operand closes the block with END, so the row can be completed and saved.
TEST(SheetEntry, AddingCounterRowIsClosedByItsThirdOperand) {
    struct Case {
        QString relation; // of input group 1
        QString operand3; // a number or a counter
        int counterId;    // what the save stores
    } cases[] = {{"7", "100", 2}, {"8", "CT11", 4}};
    for (const Case& c : cases) {
        SCOPED_TRACE((c.relation + " " + c.operand3).toStdString());
        SheetFixture f;
        f.typeAll(1, {{f.o1(), "OUT001"},
                      {f.o1() + 1, "1"},
                      {f.o1() + 2, "2"},
                      {f.o1() + 3, "5"},
                      {f.in(1), "CT10"},
                      {f.in(1) + 2, c.relation},
                      {f.in(2), "12"},
                      {f.in(2) + 2, "3"},
                      {f.in(3), c.operand3}});
        EXPECT_EQ(f.sheet().text(1, f.in(3) + 1), "***");
        EXPECT_EQ(f.sheet().text(1, f.in(3) + 2), "2") << "END comes with the operand";
        // The END stays closed to editing.
        f.prompter.clear();
        EXPECT_FALSE(f.editor->entry().fg_StartEdit(1, f.in(3) + 2).allowed);
        EXPECT_EQ(f.prompter.numbers(), std::vector<int>{49});
        EXPECT_EQ(f.sheet().text(1, f.in(3) + 2), "2");

        ASSERT_TRUE(f.editor->ExactInput()) << f.editor->lastCheckFailure().message;
        CSteps saved;
        ASSERT_TRUE(f.editor->conversion().Update_step(CSteps(), saved));
        const auto& in = *saved.Item(1)->inps;
        EXPECT_EQ(in.CounterId, c.counterId);
        EXPECT_EQ(in.Item(QStringLiteral("1"))->Rel, c.relation.toInt());
        EXPECT_EQ(in.Item(QStringLiteral("2"))->Rel, RelGe);
        EXPECT_EQ(in.Item(QStringLiteral("3"))->Rel, RelEnd);
    }

    // An operand entered before the "+": opening its relation puts the END there.
    SheetFixture f;
    f.typeAll(1,
              {{f.in(1), "CT10"}, {f.in(2), "12"}, {f.in(3), "100"}, {f.in(1) + 2, "7"}, {f.in(2) + 2, "4"}});
    EXPECT_TRUE(f.sheet().text(1, f.in(3) + 2).isEmpty());
    EXPECT_FALSE(f.editor->entry().SpaceOp(1, f.in(3) + 2));
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{49});
    EXPECT_EQ(f.sheet().text(1, f.in(3) + 2), "2");
}

// A function that replaces another clears what the old one caused, as clearing the cell would.
TEST(SheetEntry, ReplacingACounterClearsItsOperands) {
    SheetFixture f;
    f.typeAll(1, {{f.in(1), "CT10"},
                  {f.in(1) + 2, "7"},
                  {f.in(2), "12"},
                  {f.in(2) + 2, "3"},
                  {f.in(3), "CT11"},
                  {f.in(1), "IN001"}});
    EXPECT_EQ(f.sheet().text(1, f.in(1)), "IN001");
    for (int c = 1; c < 12; ++c)
        EXPECT_TRUE(f.sheet().text(1, f.in(1) + c).isEmpty()) << c;
    EXPECT_TRUE(f.sheet().data(1, f.in(3)).isEmpty());

    // The row is then completed as any other and passes the checks.
    f.typeAll(1, {{f.in(1) + 1, "0"},
                  {f.in(1) + 2, "2"},
                  {f.o1(), "OUT001"},
                  {f.o1() + 1, "1"},
                  {f.o1() + 2, "2"},
                  {f.o1() + 3, "5"}});
    EXPECT_TRUE(f.editor->ExactInput()) << f.editor->lastCheckFailure().message;

    // An ordinary input replaced by another keeps the rest of the row.
    ASSERT_TRUE(f.type(1, f.in(1), "IN002"));
    EXPECT_EQ(f.sheet().text(1, f.in(1) + 2), "2");
}
