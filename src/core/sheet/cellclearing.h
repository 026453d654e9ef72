#pragma once

namespace vkm {

class CellRules;
class SheetQueries;
class StepSheet;
struct SheetContext;

// Clearing cells: the Delete key, and what a function takes with it when it goes. A
// function's dependent cells are cleared only together with it, and the "***" cells it
// caused go back to empty.
class CellClearing {
public:
    CellClearing(SheetContext& context, const SheetQueries& queries, CellRules& rules);

    // The Delete key on the sheet's selection. Whole rows are refused (message 151: they
    // are removed with cut); so is a dependent cell on its own (message 36).
    bool DeleteOp();
    bool DeleteOp(int row1, int col1, int row2, int col2);
    // True for the cells that go only with their function (logic, delay, state, relation).
    bool MustNotDelete(int row, int col) const;
    // Clears the group whose function cell col is, and in a counter row, the counter's
    // operands with the counter.
    void ResetThisColBlock(int row, int col);
    // Clears one cell and the "***" cells it caused.
    void ClearCells(int row, int col);

private:
    SheetContext& m_ctx;
    StepSheet& m_sheet;
    const SheetQueries& m_q;
    CellRules& m_rules;
};

} // namespace vkm
