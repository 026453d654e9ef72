#pragma once

#include <QString>
#include <QtGlobal>

namespace vkm {

class StepSheet;
struct SheetContext;

// Questions about the cells and rows of a sheet, asked by the entry rules, the checks, the
// conversion into a program and the row operations. Nothing here changes the sheet.
class SheetQueries {
public:
    explicit SheetQueries(const SheetContext& context);

    // Cells ----------------------------------------------------------------------
    bool isStar(int row, int col) const; // "***": the cell does not apply to its row
    bool isEmptyCell(int row, int col) const;
    int cellValue(int row, int col) const; // the leading number of the cell's text
    QString category(int row, int col) const;

    // Rows -----------------------------------------------------------------------
    bool ExistsValidRow(int row) const; // output group 1 holds a function
    // A relation holding END among the relation cells from startCol - 1 rightwards (to the
    // last column) or leftwards (to the first input column).
    bool ExistsEND(int row, int startCol, bool toRight) const;
    bool TopIsCOUNT(int row) const; // a counter row: input group 1 is a counter
    bool RowHasAllInput(int row) const;
    bool RowHasReturnOutput(int row) const;
    bool IsRowDisabled(int row) const;
    bool InputSomething(int row) const; // any data cell of the row holds something
    bool ExistsInputItem(int row, int group) const;
    int GetVacantStepInp(int row) const; // first empty input group, 0 when none
    int FindFirstInputKinoCol() const;
    int GetLastInputRow() const;         // -1 when the sheet is empty
    int FindLastRow(int firstRow) const; // last row from firstRow on with an output; -1 when none
    bool SafeBottomRow(int count) const; // count rows can be inserted without losing a used row

    // Counter rows ----------------------------------------------------------------------
    // A counter row whose input group 1 adds ("+") or subtracts ("-") input group 2 before
    // comparing the result with input group 3.
    bool isAddingCounterRow(int row) const;
    int GetCounterId(int row) const;
    // A number typed in as a counter operand (1 to 5 digits, at most 65535).
    static bool IsJyosu(const QString& text);

    // Value ranges -----------------------------------------------------------------------
    // Of an output group's delay, and of a counter row's operands.
    void delayRange(int row, int outKinoCol, qint32& lMin, qint32& lMax) const;
    void counterRange(int row, qint32& lMin, qint32& lMax) const;

private:
    const SheetContext& m_ctx;
    const StepSheet& m_sheet;
};

} // namespace vkm
