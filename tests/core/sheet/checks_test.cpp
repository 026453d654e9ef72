#include "sheetfixture.h"

#include "base/messages.h"

#include <functional>

using namespace vkm;
using namespace vkm::test;

namespace {

struct CheckCase {
    const char* name;
    std::function<void(SheetFixture&)> setup;
    int message;                           // 0: all checks pass
    int row;                               // -1: no cell selected
    std::function<int(SheetFixture&)> col; // the selected column in this layout
};

int none(SheetFixture&) {
    return -1;
}

const std::vector<CheckCase>& checkCases() {
    static const std::vector<CheckCase> cases = {
        {"empty sheet passes", [](SheetFixture&) {}, 0, -1, none},
        {"complete rows pass",
         [](SheetFixture& f) {
             f.putSimpleRow(1);
             f.putSimpleRow(2);
             f.sheet().setText(3, 1, "only a remark");
         },
         0, -1, none},
        {"output without END", [](SheetFixture& f) { f.putOut(3, 1, "OUT001", "1", "0", "100"); }, 52, 3,
         [](SheetFixture& f) { return f.in(1); }},
        {"ALL input needs no END",
         [](SheetFixture& f) {
             f.putOut(3, 1, "OUT001", "1", "0", "100");
             f.putIn(3, 1, "ALLON", "***", "0");
         },
         0, -1, none},
        {"RETURN output needs no END",
         [](SheetFixture& f) {
             f.putOut(3, 1, "RET", "11", "***", "***");
             f.putOut(3, 2, "***", "***", "***", "***");
             for (int c = 0; c < 12; ++c)
                 f.sheet().setText(3, f.in(1) + c, "***");
         },
         0, -1, none},
        {"logic missing",
         [](SheetFixture& f) {
             f.putSimpleRow(2);
             f.sheet().setText(2, f.o2(), "OUT002");
             f.sheet().setData(2, f.o2(), "OUT");
         },
         64, 2, [](SheetFixture& f) { return f.o2() + 2; }},
        {"input without output", [](SheetFixture& f) { f.putIn(4, 1, "IN001", "0", "2"); }, 76, 4,
         [](SheetFixture& f) { return f.o1(); }},
        {"jump in both groups",
         [](SheetFixture& f) {
             f.putSimpleRow(5);
             f.putOut(5, 1, "J001", "3", "0", "0");
             f.putOut(5, 2, "C001", "10", "0", "0");
         },
         112, 5, [](SheetFixture& f) { return f.o1(); }},
        {"edge without EMAKE",
         [](SheetFixture& f) {
             f.putSimpleRow(1);
             f.sheet().setText(1, f.in(1) + 1, "1");
         },
         114, -1, none},
        {"edge with EMAKE in an enabled row",
         [](SheetFixture& f) {
             f.putSimpleRow(1);
             f.sheet().setText(1, f.in(1) + 1, "3");
             f.putSimpleRow(2);
             f.putOut(2, 1, "EMAKE", "1", "0", "10");
         },
         0, -1, none},
        {"edge only in a disabled row needs no EMAKE",
         [](SheetFixture& f) {
             f.putSimpleRow(1);
             f.sheet().setText(1, f.in(1) + 1, "1");
             f.editor->conversion().DoGyoMuko(1, true);
         },
         0, -1, none},
        {"EMAKE in a disabled row does not count",
         [](SheetFixture& f) {
             f.putSimpleRow(1);
             f.sheet().setText(1, f.in(1) + 1, "1");
             f.putSimpleRow(2);
             f.putOut(2, 1, "EMAKE", "1", "0", "10");
             f.editor->conversion().DoGyoMuko(2, true);
         },
         114, -1, none},
        {"gap between input groups",
         [](SheetFixture& f) {
             f.putOut(6, 1, "OUT001", "1", "0", "100");
             f.putIn(6, 1, "IN001", "0", "0");
             f.putIn(6, 3, "IN003", "0", "2");
         },
         115, 6, [](SheetFixture& f) { return f.in(1); }},
        {"four input groups pass",
         [](SheetFixture& f) {
             f.putOut(6, 1, "OUT001", "1", "0", "100");
             f.putIn(6, 1, "IN001", "0", "0");
             f.putIn(6, 2, "IN002", "0", "1");
             f.putIn(6, 3, "IN003", "0", "0");
             f.putIn(6, 4, "IN004", "0", "2");
         },
         0, -1, none},
        {"input group without state",
         [](SheetFixture& f) {
             f.putSimpleRow(7);
             f.putIn(7, 1, "IN001", "", "2");
         },
         116, 7, [](SheetFixture& f) { return f.in(1) + 1; }},
        {"two END relations",
         [](SheetFixture& f) {
             f.putSimpleRow(8);
             f.putIn(8, 2, "IN002", "0", "2");
         },
         134, 8, [](SheetFixture& f) { return f.in(2) + 2; }},
        {"pulse with equal delays",
         [](SheetFixture& f) {
             f.putSimpleRow(9);
             f.putOut(9, 2, "OUT001", "0", "0", "100");
         },
         149, 9, [](SheetFixture& f) { return f.o2() + 3; }},
        {"pulse with a later second delay",
         [](SheetFixture& f) {
             f.putSimpleRow(9);
             f.putOut(9, 2, "OUT001", "0", "0", "102");
         },
         0, -1, none},
        {"jump with the wrong logic",
         [](SheetFixture& f) {
             f.putSimpleRow(10);
             f.putOut(10, 1, "J001", "0", "***", "***");
             f.putOut(10, 2, "***", "***", "***", "***");
         },
         153, 10, [](SheetFixture& f) { return f.o1() + 1; }},
        {"jump without *** in group 2",
         [](SheetFixture& f) {
             f.putSimpleRow(10);
             f.putOut(10, 1, "J001", "3", "***", "***");
             f.putOut(10, 2, "OUT001", "1", "0", "100");
         },
         154, 10, [](SheetFixture& f) { return f.o2(); }},
        {"odd TIMER delay",
         [](SheetFixture& f) {
             f.putSimpleRow(11);
             f.sheet().setText(11, f.o1() + 3, "15");
         },
         158, 11, [](SheetFixture& f) { return f.o1() + 3; }},
        {"TIMER above 130000",
         [](SheetFixture& f) {
             f.putSimpleRow(12);
             f.sheet().setText(12, f.o1() + 3, "130002");
         },
         159, 12, [](SheetFixture& f) { return f.o1() + 3; }},
        {"TIMER 130000 passes",
         [](SheetFixture& f) {
             f.putSimpleRow(12);
             f.sheet().setText(12, f.o1() + 3, "130000");
         },
         0, -1, none},
        {"STC 10000",
         [](SheetFixture& f) {
             f.putSimpleRow(12);
             f.putOut(12, 2, "OUT002", "1", "2", "10000");
         },
         159, 12, [](SheetFixture& f) { return f.o2() + 3; }},
        {"ANGLE1 3600 passes",
         [](SheetFixture& f) {
             f.putSimpleRow(12);
             f.putOut(12, 2, "OUT002", "1", "4", "3600");
         },
         0, -1, none},
        {"counter output beyond its catalogue range",
         [](SheetFixture& f) {
             f.putSimpleRow(13);
             f.putOut(13, 2, "CNT01", "6", "***", "10000");
         },
         159, 13, [](SheetFixture& f) { return f.o2() + 3; }},
        {"rows are scanned from the top within a check",
         [](SheetFixture& f) {
             f.putOut(20, 1, "OUT001", "1", "0", "100");
             f.putSimpleRow(14);
             f.sheet().setText(14, f.o1() + 1, "");
         },
         64, 14, [](SheetFixture& f) { return f.o1() + 2; }},
    };
    return cases;
}

} // namespace

TEST(SheetChecks, EachCheckSelectsItsCellInBothLayouts) {
    for (bool inpFirst : {false, true}) {
        for (const CheckCase& c : checkCases()) {
            SCOPED_TRACE(std::string(c.name) + (inpFirst ? " (inputs first)" : " (outputs first)"));
            SheetFixture f(inpFirst);
            c.setup(f);
            f.sheet().select(32, 21);
            const QByteArray before = f.sheet().saveCells();
            const bool ok = f.editor->ExactInput();
            EXPECT_EQ(ok, c.message == 0);
            EXPECT_EQ(f.sheet().saveCells(), before) << "a check changed a cell";
            const CheckFailure fail = f.editor->lastCheckFailure();
            EXPECT_EQ(fail.message, c.message);
            if (c.message == 0) {
                EXPECT_TRUE(f.prompter.shown().empty());
                continue;
            }
            ASSERT_EQ(f.prompter.numbers(), std::vector<int>{c.message});
            EXPECT_EQ(f.prompter.shown().front().style, 2);
            EXPECT_EQ(fail.row, c.row);
            EXPECT_EQ(fail.col, c.col(f));
            if (c.row >= 0) {
                EXPECT_EQ(f.sheet().row(), c.row);
                EXPECT_EQ(f.sheet().col(), c.col(f));
            } else {
                EXPECT_EQ(f.sheet().row(), 32) << "a check without a cell moved the selection";
            }
        }
    }
}

TEST(SheetRowQueries, SafeBottomRowAndLastRows) {
    SheetFixture f;
    EXPECT_EQ(f.editor->queries().GetLastInputRow(), -1);
    EXPECT_TRUE(f.editor->queries().SafeBottomRow(32));
    f.putSimpleRow(29);
    EXPECT_TRUE(f.editor->queries().SafeBottomRow(3));
    EXPECT_FALSE(f.editor->queries().SafeBottomRow(4));
    f.sheet().setText(30, 1, "x");
    EXPECT_EQ(f.editor->queries().GetLastInputRow(), 30);
    EXPECT_FALSE(f.editor->queries().SafeBottomRow(3));
    EXPECT_EQ(f.editor->queries().FindLastRow(1), 29);
    EXPECT_EQ(f.editor->queries().FindLastRow(30), -1);
}
