#pragma once

#include <QtGlobal>
#include <memory>

namespace vkm {

class CellRules;
class CSteps;
class CStepInps;
class CStepOuts;
class SheetQueries;
class StepSheet;
struct CStep;
struct SheetContext;

// A step program into the sheet (when a program is shown) and the sheet back into a
// program (what is saved, printed or sent).
class SheetConversion {
public:
    SheetConversion(SheetContext& context, const SheetQueries& queries, CellRules& rules);

    // Program into the sheet -------------------------------------------------------------
    // Clears the sheet (every row enabled) and writes the program's steps row by row.
    void PasteData(const CSteps& steps);
    void PasteThisData(const CStep& step, int row);
    void DoGyoMuko(int row, bool disable);
    void ClearAllRem();

    // Sheet into a program ---------------------------------------------------------------
    // The delay a step keeps for an output group (half a TIMER delay of a plain output).
    qint32 GetDelayToSave(int row, int outKinoCol) const;
    // Appends the step of a row with an output; false when a function of the row is one
    // no catalogue knows.
    bool AddValidRow(CSteps& steps, int row) const;
    // The whole sheet as a new program that keeps the password, author, memo and memo
    // file of `current`; false (newProgram untouched) when a row cannot be saved.
    bool Update_step(const CSteps& current, CSteps& newProgram) const;

private:
    std::shared_ptr<CStepOuts> buildOutputs(int row) const;
    std::shared_ptr<CStepInps> buildInputs(int row) const;

    SheetContext& m_ctx;
    StepSheet& m_sheet;
    const SheetQueries& m_q;
    CellRules& m_rules;
};

} // namespace vkm
