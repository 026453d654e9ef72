#include "sheetfixture.h"

using namespace vkm;
using namespace vkm::test;

namespace {

// A column as the fixture names it ("o1", "o2", "in1" to "in4", or its number) plus "+N".
int column(SheetFixture& f, const QString& name) {
    const QString base = name.section(u'+', 0, 0);
    const int add = name.section(u'+', 1).toInt();
    bool number = false;
    const int col = base.toInt(&number);
    if (number)
        return col + add;
    const int group = base.right(1).toInt();
    return (base.startsWith(u'i') ? f.in(group) : f.out(group)) + add;
}

// Writes cells as a case's set-up says, without the entry rules. Commands separated by ";":
// "row R" (a complete ordinary row), "out R G FUNCTION LOGIC KIND DELAY", "in R G FUNCTION
// STATE RELATION", "text R COLUMN TEXT", "starin R" (every input cell "***") and "off R"
// (the row disabled); "-" is an empty cell.
void setUp(SheetFixture& f, const char* script) {
    for (const QString& command : QString::fromLatin1(script).split(u';', Qt::SkipEmptyParts)) {
        QStringList w = command.simplified().split(u' ');
        for (QString& word : w)
            if (word == "-")
                word.clear();
        const int row = w.value(1).toInt();
        if (w[0] == "row")
            f.putSimpleRow(row);
        else if (w[0] == "out")
            f.putOut(row, w[2].toInt(), w[3], w[4], w[5], w[6]);
        else if (w[0] == "in")
            f.putIn(row, w[2].toInt(), w[3], w[4], w[5]);
        else if (w[0] == "text")
            f.sheet().setText(row, column(f, w[2]), w[3]);
        else if (w[0] == "starin")
            for (int c = 0; c < 12; ++c)
                f.sheet().setText(row, f.in(1) + c, "***");
        else if (w[0] == "off")
            f.editor->conversion().DoGyoMuko(row, true);
        else
            ADD_FAILURE() << "unknown set-up " << command.toStdString();
    }
}

struct CheckCase {
    const char* name;
    const char* setup;
    int message;     // 0: all checks pass
    int row;         // -1: no cell selected
    const char* col; // the selected column
};

const CheckCase kCheckCases[] = {
    {"empty sheet passes", "", 0, -1, ""},
    {"complete rows pass", "row 1; row 2; text 3 1 note", 0, -1, ""},
    {"output without END", "out 3 1 OUT001 1 0 100", 52, 3, "in1"},
    {"ALL input needs no END", "out 3 1 OUT001 1 0 100; in 3 1 ALLON *** 0", 0, -1, ""},
    {"RETURN output needs no END", "out 3 1 RET 11 *** ***; out 3 2 *** *** *** ***; starin 3", 0, -1, ""},
    {"logic missing", "row 2; out 2 2 OUT002 - - -", 64, 2, "o2+2"},
    {"input without output", "in 4 1 IN001 0 2", 76, 4, "o1"},
    {"jump in both groups", "row 5; out 5 1 J001 3 0 0; out 5 2 C001 10 0 0", 112, 5, "o1"},
    {"edge without EMAKE", "row 1; text 1 in1+1 1", 114, -1, ""},
    {"edge with EMAKE in an enabled row", "row 1; text 1 in1+1 3; row 2; out 2 1 EMAKE 1 0 10", 0, -1, ""},
    {"edge only in a disabled row needs no EMAKE", "row 1; text 1 in1+1 1; off 1", 0, -1, ""},
    {"EMAKE in a disabled row does not count", "row 1; text 1 in1+1 1; row 2; out 2 1 EMAKE 1 0 10; off 2",
     114, -1, ""},
    {"gap between input groups", "out 6 1 OUT001 1 0 100; in 6 1 IN001 0 0; in 6 3 IN003 0 2", 115, 6, "in1"},
    {"four input groups pass",
     "out 6 1 OUT001 1 0 100; in 6 1 IN001 0 0; in 6 2 IN002 0 1; in 6 3 IN003 0 0; in 6 4 IN004 0 2", 0, -1,
     ""},
    {"input group without state", "row 7; in 7 1 IN001 - 2", 116, 7, "in1+1"},
    {"two END relations", "row 8; in 8 2 IN002 0 2", 134, 8, "in2+2"},
    {"pulse with equal delays", "row 9; out 9 2 OUT001 0 0 100", 149, 9, "o2+3"},
    {"pulse with a later second delay", "row 9; out 9 2 OUT001 0 0 102", 0, -1, ""},
    {"jump with the wrong logic", "row 10; out 10 1 J001 0 *** ***; out 10 2 *** *** *** ***", 153, 10,
     "o1+1"},
    {"jump without *** in group 2", "row 10; out 10 1 J001 3 *** ***; out 10 2 OUT001 1 0 100", 154, 10,
     "o2"},
    {"odd TIMER delay", "row 11; text 11 o1+3 15", 158, 11, "o1+3"},
    {"TIMER above 130000", "row 12; text 12 o1+3 130002", 159, 12, "o1+3"},
    {"TIMER 130000 passes", "row 12; text 12 o1+3 130000", 0, -1, ""},
    {"STC 10000", "row 12; out 12 2 OUT002 1 2 10000", 159, 12, "o2+3"},
    {"ANGLE1 3600 passes", "row 12; out 12 2 OUT002 1 4 3600", 0, -1, ""},
    {"counter output beyond its catalogue range", "row 13; out 13 2 CNT01 6 *** 10000", 159, 13, "o2+3"},
    {"rows are scanned from the top within a check", "out 20 1 OUT001 1 0 100; row 14; text 14 o1+1 -", 64,
     14, "o1+2"},
};

} // namespace

TEST(SheetChecks, EachCheckSelectsItsCellInBothLayouts) {
    for (bool inpFirst : {false, true}) {
        for (const CheckCase& c : kCheckCases) {
            SCOPED_TRACE(std::string(c.name) + (inpFirst ? " (inputs first)" : " (outputs first)"));
            SheetFixture f(inpFirst);
            setUp(f, c.setup);
            const int col = *c.col ? column(f, QLatin1String(c.col)) : -1;
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
            EXPECT_EQ(fail.col, col);
            if (c.row >= 0) {
                EXPECT_EQ(f.sheet().row(), c.row);
                EXPECT_EQ(f.sheet().col(), col);
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
