// The workbook file of a printed program, read back as a zip of XML parts.
#include "../model/programs.h"
#include "xlsxreader.h"

#include "print/printlayout.h"
#include "print/workbookwriter.h"
#include "testsupport.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

// A column width as a workbook stores it: the characters of the standard font's digit
// (7 pixels) plus 5 pixels of padding, in 1/256 of a character.
double storedWidth(double characters) {
    const double pixels = std::trunc(characters * 7 + 0.5) + 5;
    return std::trunc(pixels / 7 * 256) / 256;
}

// Each cell's text, named by its reference when it differs.
void expectTexts(const XlsxFile& x, std::initializer_list<std::pair<const char*, const char*>> cells) {
    for (const auto& [ref, text] : cells)
        EXPECT_EQ(x.text(ref), text) << ref;
}

class WorkbookTest : public ::testing::Test {
protected:
    void SetUp() override {
        addRow(program, c, {{256, LogicHigh, DelayTimer, 50}},
               {{256, StatePosEdg, RelAnd}, {257, StateNegLev, RelEnd}}, "first");
        addRow(program, c, {{16, LogicInc, DelayTimer, 0}}, {{16, 0, RelGe}, {-536, 0, RelEnd}});
        addRow(program, c, {{257, LogicHigh, DelayStc, 4}}, {{3, StatePosLev, RelEnd}}, {}, true);
        padRows(program);
        program.Memo = "Needle 14\r\n2500";
        options.fileToPrint = "/srv/programs/LINE2.gsp";
        options.isEditing = true;
        options.printMemo = true;
        options.toFile = true;
    }

    XlsxFile written(const QString& name) {
        const StepPrintLayout layout(c.selout, c.selinp, options);
        const QString path = scratch.file(name);
        QString error;
        EXPECT_TRUE(WriteWorkbook(layout.build(program), path, &error)) << error.toStdString();
        return XlsxFile(path);
    }

    Catalogues c = testCatalogues();
    CSteps program;
    PrintOptions options;
    Scratch scratch;
};

TEST_F(WorkbookTest, HoldsTheSheetItsCellsAndPictures) {
    const XlsxFile x = written("out.xlsx");
    ASSERT_TRUE(x.ok());
    EXPECT_EQ(x.sheetNames(), QStringList({"STEP"}));
    expectTexts(x, {{"A1", "/srv/programs/LINE2.gsp(editing)"},
                    {"A2", "STEP"},
                    {"C2", "Category"},
                    {"F2", "Delay\nKind"},
                    {"M2", "Category"},
                    {"P2", "8"},
                    {"A3", "1"},
                    {"B3", "first"},
                    {"D3", "Y001"},
                    {"G3", "100"},
                    {"H3", "***"},
                    {"R4", "65000"},
                    {"Q4", ""},
                    {"O4", "***"}});
    EXPECT_EQ(x.fontName("P2"), "Marlett");
    EXPECT_EQ(x.fontName("D3"), "Tahoma");
    for (const char* number : {"A3", "G3", "R4"})
        EXPECT_TRUE(x.cell(number).isNumber) << number;
    // The disabled third step is filled in the disabled colour across A to AB.
    EXPECT_EQ(x.fill("A5"), "FFD0D0D0");
    EXPECT_EQ(x.fill("AB5"), "FFD0D0D0");
    EXPECT_NE(x.fill("AB4"), "FFD0D0D0");
    // Memo lines right below the last step, kept as text.
    EXPECT_EQ(x.text("A6"), "Needle 14");
    EXPECT_EQ(x.text("A7"), "2500");
    EXPECT_FALSE(x.cell("A7").isNumber);
    EXPECT_FALSE(x.has("A8"));

    // State pictures over the state cells of step 1 (O3, S3) and step 3 (O5).
    std::vector<std::pair<int, int>> at;
    for (const auto& a : x.pictures())
        at.emplace_back(a.col, a.row);
    std::sort(at.begin(), at.end());
    EXPECT_EQ(at, (std::vector<std::pair<int, int>>{{14, 2}, {14, 4}, {18, 2}}));
}

TEST_F(WorkbookTest, ColumnsRowsAndPageAreSetUpForPrinting) {
    const XlsxFile x = written("page.xlsx");
    ASSERT_TRUE(x.ok());
    // A step number, B remark, two output groups, four input groups.
    std::vector<double> widths = {4, 10};
    for (int g = 0; g < 2; ++g)
        widths.insert(widths.end(), {6, 7, 6, 7, 7});
    for (int g = 0; g < 4; ++g)
        widths.insert(widths.end(), {6, 6, 3.5, 3.5});
    ASSERT_EQ(widths.size(), 28u);
    for (int col = 1; col <= 28; ++col)
        EXPECT_DOUBLE_EQ(x.columnWidth(col), storedWidth(widths[std::size_t(col - 1)]))
            << XlsxFile::column(col).toStdString();
    EXPECT_EQ(x.rowHeight(2), 25.5);
    for (int row = 3; row <= 5; ++row)
        EXPECT_EQ(x.rowHeight(row), 14) << row;

    EXPECT_EQ(x.attribute("pageSetup", "orientation"), "landscape");
    EXPECT_EQ(x.attribute("pageSetup", "scale"), "75");
    for (const auto& [side, inches] : {std::pair{"left", "0.4"},
                                       {"right", "0.4"},
                                       {"top", "0.4"},
                                       {"bottom", "0.3"},
                                       {"header", "0.1"},
                                       {"footer", "0.1"}})
        EXPECT_EQ(x.attribute("pageMargins", side), inches) << side;
    EXPECT_EQ(x.oddHeader(), "&C&9Filename:&F  Sheetname:&A  &PPage  &D");
    EXPECT_TRUE(x.oddFooter().isEmpty());
    EXPECT_EQ(x.attribute("sheetView", "showGridLines"), "0");
}

TEST_F(WorkbookTest, InputsFirstPutsInputTitlesAtCAndOutputTitlesAtS) {
    options.locateInpFirst = true;
    const XlsxFile x = written("inputs.xlsx");
    ASSERT_TRUE(x.ok());
    expectTexts(x, {{"C2", "Category"},
                    {"D2", "Input"},
                    {"E2", "Stat."},
                    {"S2", "Category"},
                    {"T2", "Output"},
                    {"X2", "Category"},
                    {"D3", "X001"},
                    {"T3", "Y001"}});
}

TEST_F(WorkbookTest, ReplacesAnOldWorkbookAndLeavesItWhenWritingFails) {
    const QString path = scratch.write("old.xlsx", "an older workbook");
    const StepPrintLayout layout(c.selout, c.selinp, options);
    PrintSheet sheet = layout.build(program);
    PrintSheet broken = sheet;
    broken.cell(2, 14).picture = "NoSuchPicture";
    QString error;
    EXPECT_FALSE(WriteWorkbook(broken, path, &error));
    EXPECT_TRUE(error.contains("NoSuchPicture")) << error.toStdString();
    EXPECT_EQ(readAll(path), "an older workbook");

    EXPECT_TRUE(WriteWorkbook(sheet, path, &error)) << error.toStdString();
    EXPECT_TRUE(XlsxFile(path).ok());
    EXPECT_FALSE(WriteWorkbook(sheet, scratch.file("no/such/folder/x.xlsx"), &error));
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
} // namespace vkm::test
