#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <array>
#include <functional>

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

// A rectangle of cells, inclusive on both ends. Empty when row1 > row2 or col1 > col2.
struct CellRect {
    int row1 = 0;
    int col1 = 0;
    int row2 = -1;
    int col2 = -1;
    bool isEmpty() const { return row1 > row2 || col1 > col2; }
    bool contains(int row, int col) const { return row >= row1 && row <= row2 && col >= col1 && col <= col2; }
    CellRect united(const CellRect& o) const;
};

// The step grid as data: 33 rows (row 0 header, rows 1..32 the steps) by 22 columns
// (column 0 the step number, column 1 the remark, then two output groups of four and
// four input groups of three). Each cell holds a text and a data text (the category
// of a function cell). The sheet knows nothing of the editing rules: StepSheetEditor
// applies them. Whoever shows the sheet listens to its change notifications.
class StepSheet {
public:
    static constexpr int kRows = 33;
    static constexpr int kCols = 22;
    static constexpr int kFirstStepRow = 1;
    static constexpr int kLastStepRow = 32;
    static constexpr const char* kSymbolFont = "Marlett"; // the relation header "8" is an arrow in it
    static constexpr const char* kStar = "***";

    // Formats the grid (Format_fg). locateInpFirst puts the input groups left of the
    // output groups; the layout never changes afterwards.
    explicit StepSheet(bool locateInpFirst = false);

    // Geometry -----------------------------------------------------------------
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
    // Header text of a column and the font it is drawn in ("" = the grid's own font).
    QString headerText(int col) const;
    QString headerFont(int col) const;
    static bool isStepRow(int row) { return row >= kFirstStepRow && row <= kLastStepRow; }
    static bool isValidCell(int row, int col) { return row >= 0 && row < kRows && col >= 0 && col < kCols; }

    // Cells ------------------------------------------------------------------
    QString text(int row, int col) const;
    QString data(int row, int col) const;
    void setText(int row, int col, const QString& text);
    void setData(int row, int col, const QString& data);
    void setCell(int row, int col, const QString& text, const QString& data);
    // Empties every step row's data cells and enables every row (step numbers stay).
    void clear();

    // Row disable --------------------------------------------------------------
    bool isRowDisabled(int row) const;
    void setRowDisabled(int row, bool disabled);
    // The normal back colour of a column, recorded when the grid was formatted.
    quint32 normalColor(int col) const;
    // What a cell is painted with (header colours in row 0, the disabled colour in a
    // disabled row from column 1 on).
    quint32 backColor(int row, int col) const;
    quint32 foreColor(int row, int col) const;

    // Current cell and selection --------------------------------------------------
    int row() const { return m_row; }
    int col() const { return m_col; }
    // Makes one cell current and the selection that single cell (what a failing check
    // does to point at its cell).
    void select(int row, int col);
    // Anchor (current cell) and corner of the selection; ends row-selection mode (set it
    // again afterwards when whole rows are selected).
    void setSelection(int row, int col, int cornerRow, int cornerCol);
    CellRect selection() const; // normalised
    int cornerRow() const { return m_cornerRow; }
    int cornerCol() const { return m_cornerCol; }
    // Whole rows are selected (the step number column was clicked).
    bool rowSelectionMode() const { return m_rowMode; }
    void setRowSelectionMode(bool on);

    // Change notification -------------------------------------------------------------
    // Cells: called with the changed rectangle (text, data or colour); batched while a
    // Batch lives. Selection: called when the core moves the current cell or selection.
    void setChangeListener(std::function<void(const CellRect&)> listener) {
        m_onChange = std::move(listener);
    }
    void setSelectionListener(std::function<void()> listener) { m_onSelection = std::move(listener); }
    // Increases with every change of a cell or a row's state.
    quint64 revision() const { return m_revision; }

    // Collects the changes made while it lives into one notification.
    class Batch {
    public:
        explicit Batch(StepSheet& sheet);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        StepSheet& m_sheet;
    };

    // Snapshot -----------------------------------------------------------------
    // Every step row's cells (text and data) and the disabled rows, versioned.
    QByteArray saveCells() const;
    // Restores a snapshot made by saveCells. Bytes that are not such a snapshot are
    // refused (false) and the sheet stays as it was.
    bool loadCells(const QByteArray& bytes);

private:
    struct Cell {
        QString text;
        QString data;
    };
    void Format_fg();
    void SetTitleCaption();
    void touch(int row1, int col1, int row2, int col2);
    void notifySelection();
    Cell& at(int row, int col) { return m_cells[std::size_t(row * kCols + col)]; }
    const Cell& at(int row, int col) const { return m_cells[std::size_t(row * kCols + col)]; }

    bool m_locateInpFirst;
    int m_colOut1 = 2;
    int m_colOut2 = 6;
    int m_colInp = 10;
    std::array<Cell, std::size_t(kRows* kCols)> m_cells;
    std::array<int, kCols> m_kinds{};
    std::array<quint32, kCols> m_normalColors{};
    std::array<bool, kRows> m_disabled{};
    int m_row = 1;
    int m_col = 1;
    int m_cornerRow = 1;
    int m_cornerCol = 1;
    bool m_rowMode = false;
    quint64 m_revision = 0;
    int m_batchDepth = 0;
    CellRect m_pending;
    std::function<void(const CellRect&)> m_onChange;
    std::function<void()> m_onSelection;
};

} // namespace vkm
