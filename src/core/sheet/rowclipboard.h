#pragma once

#include "sheet/clipboardtext.h"

#include <QString>
#include <vector>

namespace vkm {

class CellRules;
class SheetQueries;
class StepSheet;
struct SheetContext;

// Copying cells to the clipboard and pasting them back: whole rows (the step number
// column was clicked) or a block of cells. The text on the clipboard is untrusted: a paste
// first reads and checks all of it and changes nothing unless every line and cell fits
// where it goes.
class RowClipboard {
public:
    RowClipboard(SheetContext& context, const SheetQueries& queries, CellRules& rules);

    // Copy: the selection's whole rows in row selection mode, else its rectangle.
    void copySelection();
    // Writes the cells to the clipboard, replacing what it held (corners in any order).
    void CopyRowToBuf(int row1, int row2, int col1, int col2, bool wholeRows);
    // The clipboard text of those cells.
    QString copyText(int row1, int row2, int col1, int col2, bool wholeRows) const;

    // Paste: an undo snapshot, then the clipboard at the current row.
    bool pasteCommand();
    // The clipboard pasted at the row: whole rows from column 1 (one copied row goes into
    // every selected row), a block with its top-left cell at the current cell, which must
    // lie in the column it was copied from. False, with the message shown and the sheet
    // unchanged, when the text is refused.
    bool PasteFromBuf(int row);
    // Writes row lines into the sheet from (row, col) down and right: whole rows restore
    // their disabled state, a block keeps the rows' state. The lines must fit (PasteFromBuf
    // checks them first). Returns the first function number no catalogue knows ("" when
    // every one is known).
    QString PasteRow(int row, int col, const std::vector<ClipboardRow>& lines, bool wholeRows);

private:
    QString cellText(int row, int col) const;
    // The rows a paste of `data` at the current cell writes to; false (message shown) when
    // they do not fit.
    bool pasteTargets(const ClipboardData& data, int row, int& col, std::vector<int>& rows);
    bool cellsFit(const ClipboardData& data, int col) const;
    // Writes one cell; a function number no catalogue knows is noted in `unknown`.
    void writeCell(int row, int col, const QString& field, QString& unknown);

    SheetContext& m_ctx;
    StepSheet& m_sheet;
    const SheetQueries& m_q;
    CellRules& m_rules;
};

} // namespace vkm
