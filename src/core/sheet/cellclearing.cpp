#include "sheet/cellclearing.h"

#include "base/prompter.h"
#include "sheet/cellrules.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetqueries.h"

#include <algorithm>

namespace vkm {

CellClearing::CellClearing(SheetContext& context, const SheetQueries& queries, CellRules& rules)
    : m_ctx(context), m_sheet(context.sheet), m_q(queries), m_rules(rules) {}

bool CellClearing::MustNotDelete(int row, int col) const {
    if (m_q.isStar(row, col))
        return true;
    switch (m_sheet.colKind(col)) {
    case KindLogic:
    case KindDelayKind:
    case KindDelayValue:
    case KindState:
    case KindRel:
        return true;
    default:
        return false;
    }
}

void CellClearing::ResetThisColBlock(int row, int col) {
    const int kc = m_sheet.groupStart(col);
    if (kc < 0 || !StepSheet::isStepRow(row))
        return;
    StepSheet::Batch batch(m_sheet);
    // Clearing a counter clears its operands too: without the counter they mean nothing.
    const int width = kc == m_sheet.colInp() && m_q.TopIsCOUNT(row) ? 12 : m_sheet.isOutputCol(kc) ? 4 : 3;
    for (int i = 0; i < width; ++i)
        m_sheet.setCell(row, kc + i, QString(), QString());
    m_rules.SprashThisRow(row);
}

void CellClearing::ClearCells(int row, int col) {
    if (!StepSheet::isStepRow(row) || col < 1)
        return;
    StepSheet::Batch batch(m_sheet);
    m_sheet.setCell(row, col, QString(), QString());
    m_rules.SprashThisRow(row);
}

bool CellClearing::DeleteOp() {
    if (m_sheet.rowSelectionMode()) {
        if (!m_ctx.comparison)
            m_ctx.prompter.showMessage(151, 2);
        return false;
    }
    const CellRect r = m_sheet.selection();
    return DeleteOp(r.row1, r.col1, r.row2, r.col2);
}

bool CellClearing::DeleteOp(int row1, int col1, int row2, int col2) {
    if (m_ctx.comparison)
        return false;
    row1 = std::max(row1, StepSheet::kFirstStepRow);
    col1 = std::max(col1, 1);
    row2 = std::min(row2, StepSheet::kLastStepRow);
    col2 = std::min(col2, StepSheet::kCols - 1);
    if (row1 > row2 || col1 > col2)
        return false;
    if (row1 == row2 && col1 == col2 && MustNotDelete(row1, col1)) {
        m_ctx.prompter.showMessage(36, 2);
        return false;
    }
    if (m_ctx.hooks.snapshot)
        m_ctx.hooks.snapshot();
    StepSheet::Batch batch(m_sheet);
    for (int r = row1; r <= row2; ++r) {
        for (int c = col1; c <= col2; ++c) {
            const int kind = m_sheet.colKind(c);
            if ((kind == KindOutKino || kind == KindInpKino) && !m_q.isEmptyCell(r, c))
                ResetThisColBlock(r, c);
            else
                m_sheet.setCell(r, c, QString(), QString());
        }
        m_rules.SprashThisRow(r);
    }
    m_ctx.setChanged();
    return true;
}

} // namespace vkm
