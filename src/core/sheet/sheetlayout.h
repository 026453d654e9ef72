#pragma once

#include <QString>
#include <QtGlobal>
#include <array>

namespace vkm {

// Colours as 0xRRGGBB (the GUI turns them into QColor with QColor::fromRgb).
namespace sheetcolor {
constexpr quint32 GridLine = 0x808080;
constexpr quint32 CellBorder = 0xC0C0C0;   // silver, so neighbouring groups can be told apart
constexpr quint32 OutputHeader = 0x000080; // navy
constexpr quint32 InputHeader = 0x006060;  // dark teal
constexpr quint32 HeaderText = 0xFFFFFF;
constexpr quint32 FixedHeader = 0xD4D0C8; // header cells of the step number and remark columns
constexpr quint32 StepColumn = 0xB9AA9D;
constexpr quint32 RemarkColumn = 0xEFE5E0;
constexpr quint32 OutputCell = 0xDFF0E0;
constexpr quint32 InputCell = 0xFFFFFF;
constexpr quint32 Disabled = 0xD0D0D0;     // a disabled (REM) row
constexpr quint32 CategoryText = 0x808080; // small grey category name in function cells
} // namespace sheetcolor

// What a column holds. The numbers are the column kinds the clipboard text and the
// find window use.
enum ColKind {
    KindStep = 0,
    KindRemark = 1,
    KindOutKino = 2,
    KindLogic = 3,
    KindDelayKind = 4,
    KindDelayValue = 5,
    KindInpKino = 6,
    KindState = 7,
    KindRel = 8,
};

// The layout of the step grid: 33 rows (row 0 the header, rows 1..32 the steps) by 22
// columns (column 0 the step number, column 1 the remark, then two output groups of four
// and four input groups of three, outputs first or inputs first). It never changes once
// made.
class SheetLayout {
public:
    static constexpr int kRows = 33;
    static constexpr int kCols = 22;
    static constexpr int kFirstStepRow = 1;
    static constexpr int kLastStepRow = 32;
    static constexpr const char* kSymbolFont = "Marlett"; // the relation header "8" is an arrow in it
    static constexpr const char* kStar = "***";

    // locateInpFirst puts the input groups left of the output groups.
    explicit SheetLayout(bool locateInpFirst);

    int rows() const { return kRows; }
    int cols() const { return kCols; }
    bool DoesLocateInpFirst() const { return m_locateInpFirst; }
    int GetcolOutKino1() const { return m_colOut1; } // 2 or 14
    int GetcolOutKino2() const { return m_colOut2; } // 6 or 18
    int colInp() const { return m_colInp; }          // 10 or 2
    static int GetcolRemark() { return 1; }
    // First column of output group g (1, 2) or input group g (1..4).
    int outputGroupCol(int group) const { return group == 1 ? m_colOut1 : m_colOut2; }
    int inputGroupCol(int group) const { return m_colInp + 3 * (group - 1); }
    // True for the first column of input group 2 or 3.
    bool ColIs2or3Grp(int col) const { return col == m_colInp + 3 || col == m_colInp + 6; }
    int colKind(int col) const;
    bool isOutputCol(int col) const;
    bool isInputCol(int col) const;
    // Group number of a data column: 1..2 for outputs, 1..4 for inputs, 0 otherwise.
    int groupOf(int col) const;
    // First (function) column of the group holding col; -1 for columns 0 and 1.
    int groupStart(int col) const;
    // The font a column's header is drawn in ("" = the grid's own font).
    QString headerFont(int col) const;
    // The normal back colour of a column's step cells.
    quint32 normalColor(int col) const;
    static bool isStepRow(int row) { return row >= kFirstStepRow && row <= kLastStepRow; }
    static bool isValidCell(int row, int col) { return row >= 0 && row < kRows && col >= 0 && col < kCols; }

private:
    bool m_locateInpFirst;
    int m_colOut1 = 2;
    int m_colOut2 = 6;
    int m_colInp = 10;
    std::array<int, kCols> m_kinds{};
    std::array<quint32, kCols> m_normalColors{};
};

} // namespace vkm
