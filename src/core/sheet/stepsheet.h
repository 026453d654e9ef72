#pragma once

#include "sheet/sheetlayout.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <array>
#include <functional>
#include <vector>

namespace vkm {

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

// The step grid as data, in its layout. Each cell holds a text and a data text (the
// category of a function cell); the header row holds the column titles. The sheet knows
// nothing of the editing rules: the classes that StepSheetEditor gathers apply them.
class StepSheet : public SheetLayout {
public:
    // Formats the grid (Format_fg); the layout never changes afterwards.
    explicit StepSheet(bool locateInpFirst = false);

    // Header text of a column (its cell in row 0).
    QString headerText(int col) const;

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
    void enableAllRows();
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
    // Whoever shows or follows the sheet listens: the grid, the find and pulse windows.
    // Change listeners are called with the changed rectangle (text, data or colour),
    // batched while a Batch lives; selection listeners when the current cell or the
    // selection moves. Each listener is removed with the id it was added under.
    using ListenerId = int;
    ListenerId addChangeListener(std::function<void(const CellRect&)> listener);
    ListenerId addSelectionListener(std::function<void()> listener);
    void removeListener(ListenerId id);
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
    void SetTitleCaption();
    void touch(int row1, int col1, int row2, int col2);
    void notifySelection();
    Cell& at(int row, int col) { return m_cells[std::size_t(row * kCols + col)]; }
    const Cell& at(int row, int col) const { return m_cells[std::size_t(row * kCols + col)]; }

    std::array<Cell, std::size_t(kRows* kCols)> m_cells;
    std::array<bool, kRows> m_disabled{};
    int m_row = 1;
    int m_col = 1;
    int m_cornerRow = 1;
    int m_cornerCol = 1;
    bool m_rowMode = false;
    quint64 m_revision = 0;
    int m_batchDepth = 0;
    CellRect m_pending;
    template <typename F> struct Listener {
        ListenerId id;
        F call;
    };
    std::vector<Listener<std::function<void(const CellRect&)>>> m_changeListeners;
    std::vector<Listener<std::function<void()>>> m_selectionListeners;
    ListenerId m_nextListener = 1;
    void notifyChange(const CellRect& r);
};

} // namespace vkm
