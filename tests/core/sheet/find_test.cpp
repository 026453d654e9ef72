// Finding a function in the sheet and replacing it.
#include "sheetfixture.h"

using namespace vkm;
using namespace vkm::test;

namespace {

struct FindFixture : SheetFixture {
    explicit FindFixture(bool inputsFirst = false, bool comparison = false)
        : SheetFixture(inputsFirst, comparison) {
        EditorHooks hooks = countingHooks();
        hooks.option = [this](const BoolKey& key) {
            return key == keys::DoesShowMsgInFinding ? showMessageInFinding : key.defaultValue;
        };
        editor->setHooks(hooks);
    }
    FunctionFinder& finder() { return editor->finder(); }
    std::pair<int, int> current() { return {sheet().row(), sheet().col()}; }
    // Opens the find window on the remark of row 1 and looks for an output function.
    void lookFor(const QString& digital, int side = 2) {
        sheet().select(1, 1);
        finder().open();
        finder().setFindValue({digital, QString()}, side);
    }

    bool showMessageInFinding = false;
};

} // namespace

TEST(FunctionFinder, OpensOnTheCurrentCellsFunctionAndSide) {
    for (bool inputsFirst : {false, true}) {
        FindFixture f(inputsFirst);
        f.putSimpleRow(4);
        f.sheet().select(4, f.in(1));
        f.finder().open();
        EXPECT_EQ(f.finder().INOUT(), 1);
        EXPECT_EQ(f.finder().findValue().digital, "IN001");
        EXPECT_EQ(f.finder().findValue().category, "IN");
        EXPECT_FALSE(f.finder().replaceEnabled());
        EXPECT_EQ(f.finder().USRCMP(), 0);
        // The search starts at the top, whatever cell the window opened on.
        ASSERT_TRUE(f.finder().Next());
        EXPECT_EQ(f.current(), std::pair(4, f.in(1)));

        // Reopened on an output cell, the output is looked for among the outputs.
        f.sheet().select(4, f.o1() + 1);
        f.finder().open();
        EXPECT_EQ(f.finder().INOUT(), 2);
        EXPECT_EQ(f.finder().findValue().digital, "IN001") << "a logic cell names no function";
        f.sheet().select(4, f.o1());
        f.finder().open();
        EXPECT_EQ(f.finder().findValue().digital, "OUT001");
        ASSERT_TRUE(f.finder().Next());
        EXPECT_EQ(f.current(), std::pair(4, f.o1()));
    }
}

// Loading the window makes the first step the current row, in the column the cursor was
// in; opening it again while it is loaded leaves the cursor alone.
TEST(FunctionFinder, LoadingMovesTheCursorToTheFirstStep) {
    FindFixture f;
    f.putSimpleRow(6);
    f.sheet().select(6, f.o1());
    f.finder().open();
    EXPECT_EQ(f.current(), std::pair(1, f.o1()));
    EXPECT_EQ(f.finder().findValue().digital, "OUT001");

    f.sheet().select(6, f.in(1));
    f.finder().open();
    EXPECT_EQ(f.current(), std::pair(6, f.in(1)));
    EXPECT_EQ(f.finder().findValue().digital, "IN001");

    // Closed and loaded again: back to the first step.
    f.finder().close();
    f.sheet().select(9, f.in(1) + 1);
    f.finder().open();
    EXPECT_EQ(f.current(), std::pair(1, f.in(1) + 1));
}

// The value is only above the search position: the search starts again at the top once;
// missing again it says so and the next search begins at the top.
TEST(FunctionFinder, NextWrapsAroundOnceThenReportsNotFound) {
    FindFixture f;
    f.putSimpleRow(3);
    f.putOut(20, 1, "OUT002", "1", "0", "10");
    f.lookFor("OUT001");
    ASSERT_TRUE(f.finder().Next());
    EXPECT_EQ(f.current(), std::pair(3, f.o1()));
    ASSERT_TRUE(f.finder().Next());
    EXPECT_EQ(f.current(), std::pair(3, f.o1()));
    EXPECT_TRUE(f.prompter.shown().empty());
    EXPECT_FALSE(f.finder().Next());
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{133});
    EXPECT_EQ(f.current(), std::pair(3, f.o1()));
    ASSERT_TRUE(f.finder().Next());
    EXPECT_EQ(f.current(), std::pair(3, f.o1()));

    // Input functions are not looked at for an output value, nor the other way round.
    f.prompter.clear();
    f.lookFor("IN001", 2);
    EXPECT_FALSE(f.finder().Next());
    f.finder().setFindValue({"IN001", "IN"}, 1);
    EXPECT_TRUE(f.finder().Next());
    EXPECT_EQ(f.current(), std::pair(3, f.in(1)));
}

TEST(FunctionFinder, TheOptionAsksBeforeStartingAgainAtTheTop) {
    FindFixture f;
    f.showMessageInFinding = true;
    f.putSimpleRow(3);
    f.lookFor("OUT001");
    ASSERT_TRUE(f.finder().Next());
    f.prompter.queueAnswer(Answer::No);
    EXPECT_FALSE(f.finder().Next());
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{73});
    EXPECT_EQ(f.current(), std::pair(3, f.o1()));
    f.sheet().select(9, 1);
    f.prompter.queueAnswer(Answer::Yes);
    EXPECT_TRUE(f.finder().Next());
    EXPECT_EQ(f.current(), std::pair(3, f.o1()));

    f.prompter.clear();
    f.finder().setFindValue({}, 2);
    EXPECT_FALSE(f.finder().Next());
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{152});
}

TEST(FunctionFinder, ReplaceAllReplacesEveryHitOnce) {
    FindFixture f;
    f.putSimpleRow(2);
    f.putOut(9, 1, "OUT002", "1", "0", "100");
    f.putOut(9, 2, "OUT001", "0", "0", "200");
    f.putSimpleRow(30);
    f.lookFor("OUT001");
    f.finder().setReplaceValue({"EMAKE", "OUT"}, 2);
    // From the middle: the hit above is reached too.
    ASSERT_TRUE(f.finder().Next());
    ASSERT_TRUE(f.finder().Next());
    EXPECT_EQ(f.current(), std::pair(9, f.o2()));
    EXPECT_EQ(f.finder().ReplaceAll(), 3);
    EXPECT_FALSE(f.finder().ExistKino(1, 1, "OUT001"));
    for (auto [r, c] : {std::pair(2, f.o1()), std::pair(9, f.o2()), std::pair(30, f.o1())}) {
        EXPECT_EQ(f.sheet().text(r, c), "EMAKE");
        EXPECT_EQ(f.sheet().data(r, c), "OUT");
    }
    EXPECT_EQ(f.sheet().text(9, f.o1()), "OUT002");
    EXPECT_EQ(f.sheet().text(9, f.o2() + 3), "200") << "the same kind keeps its settings";
    EXPECT_EQ(f.snapshots, 1);
    EXPECT_GT(f.changedCount, 0);
    EXPECT_EQ(f.finder().takeReplacedCount(), 3);
    EXPECT_EQ(f.finder().takeReplacedCount(), 0);
    EXPECT_TRUE(f.prompter.shown().empty());

    // Nothing left to replace.
    EXPECT_EQ(f.finder().ReplaceAll(), 0);
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{133});
}

TEST(FunctionFinder, ReplaceOpensItsFieldsThenReplacesTheHitAndMovesOn) {
    FindFixture f;
    f.putSimpleRow(3);
    f.putSimpleRow(5);
    f.lookFor("OUT001");
    EXPECT_FALSE(f.finder().Replace());
    EXPECT_TRUE(f.finder().replaceEnabled());
    EXPECT_FALSE(f.finder().Replace());
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{74});
    f.finder().setReplaceValue({"EMAKE", "OUT"}, 2);
    // Nothing found yet: Replace looks first.
    EXPECT_FALSE(f.finder().Replace());
    EXPECT_EQ(f.current(), std::pair(3, f.o1()));
    EXPECT_EQ(f.sheet().text(3, f.o1()), "OUT001");
    EXPECT_TRUE(f.finder().Replace());
    EXPECT_EQ(f.sheet().text(3, f.o1()), "EMAKE");
    EXPECT_EQ(f.current(), std::pair(5, f.o1()));
    EXPECT_EQ(f.snapshots, 1);

    // A replacement the cell's rules refuse leaves it as it was: a jump where the other
    // output group of the row jumps already.
    f.prompter.clear();
    f.putOut(5, 2, "J001", "3", "***", "***");
    f.finder().setReplaceValue({"J002", "JMP"}, 2);
    EXPECT_FALSE(f.finder().Replace());
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{112});
    EXPECT_EQ(f.sheet().text(5, f.o1()), "OUT001");
    EXPECT_EQ(f.current(), std::pair(5, f.o1())) << "found again from the top";
}

TEST(FunctionFinder, TheComparisonProgramIsSearchedButNotChanged) {
    FindFixture f(false, true);
    f.putSimpleRow(7);
    f.lookFor("OUT001");
    EXPECT_EQ(f.finder().USRCMP(), 1);
    EXPECT_FALSE(f.finder().canReplace());
    ASSERT_TRUE(f.finder().Next());
    f.finder().setReplaceValue({"OUT002", "OUT"}, 2);
    EXPECT_FALSE(f.finder().Replace());
    EXPECT_EQ(f.finder().ReplaceAll(), 0);
    EXPECT_EQ(f.sheet().text(7, f.o1()), "OUT001");
    EXPECT_EQ(f.snapshots, 0);
}
