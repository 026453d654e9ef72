#pragma once

namespace vkm {

class CellClearing;
class RowClipboard;
class SheetQueries;
class StepReferences;
class StepSheet;
struct SheetContext;

// Commands on whole rows and blocks: inserting empty rows, cutting rows or cells (with
// packing the rows below up), and disabling rows. The sheet keeps its 32 step rows through
// all of them; rows that move take their step references along.
class RowOperations {
public:
    RowOperations(SheetContext& context, const SheetQueries& queries, CellClearing& clearing,
                  RowClipboard& clipboard, StepReferences& references);

    bool IsInsideSelection(int row, int col) const;
    // The rows the selection spans.
    int selectedRowCount() const;

    // Insert: as many empty rows as are selected, before the selection's upper row. A
    // used row that would be pushed past the last step is asked about first (message 97).
    bool insertCommand();
    // Inserts count empty rows before row; the last count rows are lost.
    void InsertRows(int row, int count);

    // Cut: an undo snapshot, the selection copied, then cleared (whole rows, with the
    // question whether the rows below move up into their place).
    bool cutCommand();
    void DeleteRows(int row1, int row2, int col1, int col2, bool wholeRows);
    // Removes rows row1..row2; the rows below move up and empty rows fill the bottom.
    void DeleteTheseRow(int row1, int row2);

    // Rem: every selected row is disabled if it was enabled and enabled if it was disabled.
    void RemOp();
    // Every row enabled.
    void ClearAllRem();

private:
    // Row `from` with its cells and disabled state into row `to`.
    void copyRow(int from, int to);
    void clearRow(int row);

    SheetContext& m_ctx;
    StepSheet& m_sheet;
    const SheetQueries& m_q;
    CellClearing& m_clearing;
    RowClipboard& m_clipboard;
    StepReferences& m_references;
};

} // namespace vkm
