// The printed sheet of a step program: which columns hold what, what each kind of step
// prints, the first row, the memo, the page setup and the stages of a print.
#include "../model/programs.h"

#include "base/errorreporter.h"
#include "print/printjob.h"
#include "print/printlayout.h"

#include <gtest/gtest.h>

namespace vkm::test {
namespace {

// Column letters to 0-based numbers ("A" 0, "AB" 27).
int col(const char* name) {
    int n = 0;
    for (const char* p = name; *p; ++p)
        n = n * 26 + (*p - 'A' + 1);
    return n - 1;
}

QString text(const PrintSheet& s, int row1, const char* column) {
    return s.cell(row1 - 1, col(column)).text;
}

class PrintLayoutTest : public ::testing::Test {
protected:
    PrintSheet build(const CSteps& program, PrintOptions options = {}) {
        StepPrintLayout layout(c.selout, c.selinp, options);
        return layout.build(program);
    }
    Catalogues c = testCatalogues();
};

// The title row (row 2) read across: what each group of columns starts with.
TEST_F(PrintLayoutTest, TitlesFollowTheGroupOrderOfTheEditor) {
    CSteps program;
    addRow(program, c, {{256, LogicHigh}}, {{256, StatePosLev, RelEnd}});
    const QStringList out = {"Category", "Output", "Logic", "Delay\nKind", "Delay"};
    const QStringList in = {"Category", "Input", "Stat.", "8"};
    struct Case {
        bool inputsFirst;
        std::vector<const char*> outputStarts;
        std::vector<const char*> inputStarts;
    };
    const std::vector<Case> cases = {
        {false, {"C", "H"}, {"M", "Q", "U", "Y"}},
        {true, {"S", "X"}, {"C", "G", "K", "O"}},
    };
    for (const Case& k : cases) {
        PrintOptions options;
        options.locateInpFirst = k.inputsFirst;
        const PrintSheet s = build(program, options);
        EXPECT_EQ(text(s, 2, "A"), "STEP");
        EXPECT_EQ(text(s, 2, "B"), "Remark");
        for (const char* start : k.outputStarts)
            for (int i = 0; i < out.size(); ++i)
                EXPECT_EQ(s.cell(1, col(start) + i).text, out[i])
                    << start << "+" << i << " " << k.inputsFirst;
        for (const char* start : k.inputStarts) {
            for (int i = 0; i < in.size(); ++i)
                EXPECT_EQ(s.cell(1, col(start) + i).text, in[i]) << start << "+" << i << " " << k.inputsFirst;
            EXPECT_EQ(s.cell(1, col(start) + 3).style.font, "Marlett");
        }
    }
}

TEST_F(PrintLayoutTest, RelationTitleIsAnArrowWhereTheSymbolFontIsMissing) {
    CSteps program;
    addRow(program, c, {{256, LogicHigh}}, {{256, StatePosLev, RelEnd}});
    PrintOptions options;
    options.symbolFontAvailable = false;
    const PrintSheet s = build(program, options);
    for (const char* rel : {"P", "T", "X", "AB"}) {
        EXPECT_EQ(text(s, 2, rel), QString(QChar(0x25BA))) << rel;
        EXPECT_TRUE(s.cell(1, col(rel)).style.font.isEmpty()) << rel; // the sheet's own font
    }
}

// One step of each kind, outputs first: C..G output 1, H..L output 2, M..AB inputs.
TEST_F(PrintLayoutTest, StepsPrintAsTheEditorShowsThem) {
    CSteps p;
    // 1: a timer output (kept halved in the program), the second output empty, two inputs.
    addRow(p, c, {{256, LogicHigh, DelayTimer, 50}}, {{256, StatePosEdg, RelAnd}, {257, StateNegLev, RelEnd}},
           "first");
    // 2: a register with a stitch count and an output with a timer.
    addRow(p, c, {{768, LogicLow, DelayStc, 30}, {511, LogicNot, DelayTimer, 7}}, {{3, StateNegEdg, RelEnd}});
    // 3: a counter row comparing with 65000 (stored as the 16-bit field -536).
    addRow(p, c, {{16, LogicInc, DelayTimer, 0}}, {{16, 0, RelGe}, {-536, 0, RelEnd}});
    // 4: a jump, read on any input.
    addRow(p, c, {{jumpTarget(1), 0, 0, 0}}, {{1000, StatePosLev, RelEnd}});
    // 5: a return: its inputs do not apply.
    {
        auto o = std::make_shared<CStepOuts>();
        o->Add(1, 28673, 0, 0, 0, c.selout);
        o->Add(2, -1, 0, 0, 0, c.selout);
        p.Add(o, nullptr, {}, false, false);
    }
    addEmptyRow(p);                                                                                     // 6
    p.Add(std::make_shared<CStepOuts>(), std::make_shared<CStepInps>(), "only a remark", false, false); // 7
    addRow(p, c, {{257, LogicHigh, DelayStc, 4}}, {{256, StatePosLev, RelEnd}}, {}, true);              // 8
    {
        // 9: one output only, as a program file with an empty second record reads.
        auto o = std::make_shared<CStepOuts>();
        o->Add(1, 256, LogicLow, DelayStc, 2, c.selout);
        auto in = std::make_shared<CStepInps>();
        in->Add(1, 256, StatePosLev, RelEnd);
        p.Add(o, in, {}, false, false);
    }
    padRows(p);

    const PrintSheet s = build(p);
    // Rows 3 to 11 hold the nine steps; nothing is printed for the empty rows after them.
    for (int step = 1; step <= 9; ++step) {
        EXPECT_EQ(s.cell(step + 1, 0).type, PrintCell::Type::Number);
        EXPECT_EQ(s.cell(step + 1, 0).number, step);
    }
    EXPECT_EQ(s.lastUsedRow(), 10);

    struct Expect {
        int row;
        const char* column;
        QString value;
    };
    const QString star = "***";
    const std::vector<Expect> cells = {
        {3, "B", "first"}, {3, "C", "OUT"},    {3, "D", "Y001"}, {3, "E", "HIGH"},  {3, "F", "TIMER"},
        {3, "G", "100"},   {3, "H", star},     {3, "L", star},   {3, "M", "IN"},    {3, "N", "X001"},
        {3, "P", "AND"},   {3, "Q", "IN"},     {3, "R", "X002"}, {3, "T", "END"},   {3, "U", ""},
        {3, "AB", ""},     {4, "C", "RGST"},   {4, "E", "LOW"},  {4, "F", "STC"},   {4, "G", "30"},
        {4, "H", "OUT"},   {4, "I", "EMAKE"},  {4, "J", "NOT"},  {4, "K", "TIMER"}, {4, "L", "14"},
        {5, "C", "COUNT"}, {5, "D", "CN16"},   {5, "E", "INC"},  {5, "F", ""},      {5, "G", ""},
        {5, "M", "COUNT"}, {5, "N", "CN16"},   {5, "O", star},   {5, "P", ">="},    {5, "Q", ""},
        {5, "R", "65000"}, {5, "S", star},     {5, "T", "END"},  {6, "C", "JMP"},   {6, "E", "JMP"},
        {6, "F", ""},      {6, "G", ""},       {6, "H", star},   {6, "M", "ALL"},   {6, "O", star},
        {6, "P", "END"},   {7, "C", "RETURN"}, {7, "E", "RET"},  {7, "F", ""},      {7, "H", star},
        {7, "M", star},    {7, "AB", star},    {8, "C", ""},     {8, "B", ""},      {9, "B", "only a remark"},
        {9, "C", ""},      {9, "H", ""},       {11, "C", "OUT"}, {11, "G", "2"},    {11, "H", star},
        {11, "L", star},
    };
    for (const Expect& e : cells)
        EXPECT_EQ(text(s, e.row, e.column), e.value) << e.column << e.row;
    // Delays and counter operands are numbers; the operand has no category.
    EXPECT_EQ(s.cell(2, col("G")).type, PrintCell::Type::Number);
    EXPECT_EQ(s.cell(4, col("R")).type, PrintCell::Type::Number);
    EXPECT_EQ(s.cell(4, col("R")).number, 65000);
    // States are pictures, except where the editor shows "***".
    EXPECT_EQ(s.cell(2, col("O")).picture, "Jyotai1");
    EXPECT_EQ(s.cell(2, col("O")).pictureText, "POS EDG");
    EXPECT_EQ(s.cell(2, col("S")).picture, "Jyotai2");
    EXPECT_EQ(s.cell(3, col("O")).picture, "Jyotai3");
    EXPECT_TRUE(s.cell(4, col("O")).picture.isEmpty());
    EXPECT_TRUE(s.cell(5, col("O")).picture.isEmpty());
    // The disabled step: its whole row marked, the others not.
    for (int cc = 0; cc < 28; ++cc) {
        EXPECT_EQ(s.cell(9, cc).style.fill, 0xD0D0D0u) << cc;
        EXPECT_NE(s.cell(8, cc).style.fill, 0xD0D0D0u) << cc;
    }
}

TEST_F(PrintLayoutTest, InputsFirstMovesTheGroupsNotTheirContent) {
    CSteps p;
    addRow(p, c, {{256, LogicHigh, DelayTimer, 50}}, {{256, StatePosEdg, RelEnd}});
    PrintOptions options;
    options.locateInpFirst = true;
    const PrintSheet s = build(p, options);
    EXPECT_EQ(text(s, 3, "C"), "IN");
    EXPECT_EQ(text(s, 3, "D"), "X001");
    EXPECT_EQ(s.cell(2, col("E")).picture, "Jyotai1");
    EXPECT_EQ(text(s, 3, "F"), "END");
    EXPECT_EQ(text(s, 3, "S"), "OUT");
    EXPECT_EQ(text(s, 3, "T"), "Y001");
    EXPECT_EQ(text(s, 3, "W"), "100");
    EXPECT_EQ(text(s, 3, "X"), "***");
}

TEST_F(PrintLayoutTest, FirstRowNamesTheFileAndSaysWhetherItIsBeingEdited) {
    CSteps p;
    addRow(p, c, {{256, LogicHigh}}, {{256, StatePosLev, RelEnd}});
    PrintOptions options;
    options.fileToPrint = "/home/tech/programs/LINE2.gsp";
    EXPECT_EQ(text(build(p, options), 1, "A"), "/home/tech/programs/LINE2.gsp");
    options.isEditing = true;
    const PrintSheet s = build(p, options);
    EXPECT_EQ(text(s, 1, "A"), "/home/tech/programs/LINE2.gsp(editing)");
    EXPECT_EQ(s.cell(0, 0).style.align, CellAlign::Left);
    EXPECT_EQ(text(s, 2, "A"), "STEP");
}

TEST_F(PrintLayoutTest, MemoLinesFollowTheStepsAsTextWhenAskedFor) {
    CSteps p;
    addRow(p, c, {{256, LogicHigh}}, {{256, StatePosLev, RelEnd}});
    addRow(p, c, {{257, LogicHigh}}, {{256, StatePosLev, RelEnd}});
    p.Memo = "Check the needle.\r\n0120\r\n\r\nLast line\r\n";
    PrintOptions options;
    EXPECT_EQ(build(p, options).lastUsedRow(), 3); // no memo unless asked for
    options.printMemo = true;
    const PrintSheet s = build(p, options);
    EXPECT_EQ(text(s, 5, "A"), "Check the needle.");
    EXPECT_EQ(text(s, 6, "A"), "0120");
    EXPECT_EQ(s.cell(5, 0).type, PrintCell::Type::Text);
    EXPECT_TRUE(s.cell(6, 0).isEmpty());
    EXPECT_EQ(text(s, 8, "A"), "Last line");
    EXPECT_EQ(s.lastUsedRow(), 7);
}

TEST_F(PrintLayoutTest, HeaderNamesTheFileOnlyForASavedWorkbook) {
    CSteps p;
    addRow(p, c, {{256, LogicHigh}}, {{256, StatePosLev, RelEnd}});
    PrintOptions options;
    options.toFile = true;
    HeaderFields f;
    f.fileName = "VKM_STEP.xlsx";
    f.sheetName = "STEP";
    f.page = 2;
    f.date = "2026/11/16";
    const HeaderText saved = expandHeaderCodes(build(p, options).page().centerHeader, f);
    EXPECT_EQ(saved.text, "Filename:VKM_STEP.xlsx  Sheetname:STEP  2Page  2026/11/16");
    EXPECT_EQ(saved.fontSize, 9);
    options.toFile = false;
    const HeaderText printed = expandHeaderCodes(build(p, options).page().centerHeader, f);
    EXPECT_EQ(printed.text, "Sheetname:STEP  2Page  2026/11/16");
    EXPECT_EQ(expandHeaderCodes("&L&&10 &12big&N", f).text, "&10 big1");
}

// A target that records what happened to it.
class FakeTarget : public SheetTarget {
public:
    bool canOpen = true;
    bool canWrite = true;
    int written = 0;
    bool open() override { return canOpen; }
    bool output(const PrintSheet&) override {
        ++written;
        return canWrite;
    }
    QString errorString() const override { return "disk full"; }
};

TEST_F(PrintLayoutTest, PrintReportsItsStagesInOrder) {
    CSteps p;
    addRow(p, c, {{256, LogicHigh}}, {{256, StatePosLev, RelEnd}});
    addRow(p, c, {{257, LogicHigh}}, {{256, StatePosLev, RelEnd}});
    padRows(p);
    QStringList seen;
    FakeTarget target;
    EXPECT_TRUE(PrintToExcelStep(p, c.selout, c.selinp, {}, target, [&](const QString& t) { seen << t; }));
    EXPECT_EQ(target.written, 1);
    const QStringList expected = {"Creating excel object...",
                                  "Printing:1 row",
                                  "Printing:2 row",
                                  "Setting sheet name...",
                                  "Setting font / location...",
                                  "Setting column width / height...",
                                  "Setting line...",
                                  "Removing line around.",
                                  "Setting page ... Header/Footer",
                                  "Setting page ... Margin",
                                  "Setting page ... Other",
                                  "Success to print to excel."};
    EXPECT_EQ(seen, expected);

    seen.clear();
    target.canOpen = false;
    EXPECT_FALSE(PrintToExcelStep(p, c.selout, c.selinp, {}, target, [&](const QString& t) { seen << t; }));
    EXPECT_EQ(seen, QStringList({"Creating excel object...", "Microsoft Excel is not installed!"}));
    EXPECT_EQ(target.written, 1);

    seen.clear();
    target.canOpen = true;
    target.canWrite = false;
    CapturingErrorSink errors;
    EXPECT_FALSE(PrintToExcelStep(p, c.selout, c.selinp, {}, target, [&](const QString& t) { seen << t; }));
    EXPECT_FALSE(seen.contains("Success to print to excel."));
    ASSERT_EQ(errors.reports().size(), 1u);
    EXPECT_EQ(errors.reports()[0].procedure, "PrintToExcelStep");
}

} // namespace
} // namespace vkm::test
