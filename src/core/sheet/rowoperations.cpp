#include "sheet/rowoperations.h"

#include "base/prompter.h"
#include "sheet/cellclearing.h"
#include "sheet/rowclipboard.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetqueries.h"
#include "sheet/stepreferences.h"

#include <algorithm>

namespace vkm {

namespace {
constexpr int kPackQuestion = 59;
constexpr int kOverflowQuestion = 97;
} // namespace

RowOperations::RowOperations(SheetContext& context, const SheetQueries& queries, CellClearing& clearing,
                             RowClipboard& clipboard, StepReferences& references)
    : m_ctx(context), m_sheet(context.sheet), m_q(queries), m_clearing(clearing), m_clipboard(clipboard),
      m_references(references) {}

bool RowOperations::IsInsideSelection(int row, int col) const {
    return m_sheet.selection().contains(row, col);
}

int RowOperations::selectedRowCount() const {
    const CellRect r = m_sheet.selection();
    return std::min(r.row2, int(StepSheet::kLastStepRow)) - std::max(r.row1, int(StepSheet::kFirstStepRow)) +
           1;
}

void RowOperations::copyRow(int from, int to) {
    m_sheet.setRowDisabled(to, m_sheet.isRowDisabled(from));
    for (int c = 1; c < StepSheet::kCols; ++c)
        m_sheet.setCell(to, c, m_sheet.text(from, c), m_sheet.data(from, c));
}

void RowOperations::clearRow(int row) {
    m_sheet.setRowDisabled(row, false);
    for (int c = 1; c < StepSheet::kCols; ++c)
        m_sheet.setCell(row, c, QString(), QString());
}

bool RowOperations::insertCommand() {
    if (m_ctx.comparison)
        return false;
    const int count = selectedRowCount();
    if (count <= 0)
        return false;
    if (!m_q.SafeBottomRow(count) && m_ctx.prompter.showMessage(kOverflowQuestion, 7) != Answer::Yes)
        return false;
    m_ctx.takeSnapshot();
    const int row = m_sheet.row();
    const int col = m_sheet.col();
    const int cornerRow = m_sheet.cornerRow();
    const int cornerCol = m_sheet.cornerCol();
    const bool wholeRows = m_sheet.rowSelectionMode();
    const int first = std::max(m_sheet.selection().row1, int(StepSheet::kFirstStepRow));
    InsertRows(first, count);
    m_ctx.setChanged();
    m_references.AdjustRow(first, count, true);
    // The current row and the selection stay where they were (the renumbering points at
    // the references it asks about).
    m_sheet.setSelection(row, col, cornerRow, cornerCol);
    m_sheet.setRowSelectionMode(wholeRows);
    return true;
}

void RowOperations::InsertRows(int row, int count) {
    if (!StepSheet::isStepRow(row) || count <= 0)
        return;
    StepSheet::Batch batch(m_sheet);
    count = std::min(count, StepSheet::kLastStepRow - row + 1);
    for (int r = StepSheet::kLastStepRow; r >= row + count; --r)
        copyRow(r - count, r);
    for (int r = row; r < row + count; ++r)
        clearRow(r);
}

void RowOperations::DeleteTheseRow(int row1, int row2) {
    row1 = std::max(row1, int(StepSheet::kFirstStepRow));
    row2 = std::min(row2, int(StepSheet::kLastStepRow));
    if (row1 > row2)
        return;
    StepSheet::Batch batch(m_sheet);
    const int count = row2 - row1 + 1;
    for (int r = row1; r + count <= StepSheet::kLastStepRow; ++r)
        copyRow(r + count, r);
    for (int r = StepSheet::kLastStepRow - count + 1; r <= StepSheet::kLastStepRow; ++r)
        clearRow(r);
}

bool RowOperations::cutCommand() {
    if (m_ctx.comparison)
        return false;
    const CellRect r = m_sheet.selection();
    const bool whole = m_sheet.rowSelectionMode();
    m_ctx.takeSnapshot();
    m_clipboard.CopyRowToBuf(r.row1, r.row2, r.col1, r.col2, whole);
    DeleteRows(r.row1, r.row2, r.col1, r.col2, whole);
    return true;
}

void RowOperations::DeleteRows(int row1, int row2, int col1, int col2, bool wholeRows) {
    const int r1 = std::max(std::min(row1, row2), int(StepSheet::kFirstStepRow));
    const int r2 = std::min(std::max(row1, row2), int(StepSheet::kLastStepRow));
    if (r1 > r2)
        return;
    if (wholeRows) {
        {
            StepSheet::Batch batch(m_sheet);
            for (int r = r1; r <= r2; ++r)
                clearRow(r);
        }
        m_ctx.setChanged();
        // Rows below the cut may move up into its place.
        if (r2 < StepSheet::kLastStepRow && m_ctx.prompter.showMessage(kPackQuestion, 3) == Answer::Yes) {
            DeleteTheseRow(r1, r2);
            m_references.AdjustRow(r1, r2 - r1 + 1, false);
        }
        return;
    }
    const int c1 = std::max(std::min(col1, col2), 1);
    const int c2 = std::min(std::max(col1, col2), StepSheet::kCols - 1);
    StepSheet::Batch batch(m_sheet);
    for (int r = r1; r <= r2; ++r)
        for (int c = c1; c <= c2; ++c)
            m_clearing.ClearCells(r, c);
    m_ctx.setChanged();
}

void RowOperations::RemOp() {
    if (m_ctx.comparison)
        return;
    const CellRect r = m_sheet.selection();
    StepSheet::Batch batch(m_sheet);
    for (int row = std::max(r.row1, int(StepSheet::kFirstStepRow));
         row <= std::min(r.row2, int(StepSheet::kLastStepRow)); ++row)
        m_sheet.setRowDisabled(row, !m_sheet.isRowDisabled(row));
    m_ctx.setChanged();
}

void RowOperations::ClearAllRem() {
    if (m_ctx.comparison)
        return;
    const quint64 before = m_sheet.revision();
    m_sheet.enableAllRows();
    if (m_sheet.revision() != before)
        m_ctx.setChanged();
}

} // namespace vkm
