#pragma once

#include "catalogue/choosecategory.h"
#include "sheet/stepsheet.h"

#include <QString>
#include <functional>
#include <memory>
#include <optional>

namespace vkm {

class CSelections;
class CSteps;
struct CStep;
class CStepOuts;
class CStepInps;
class Prompter;

// Opens the function selection dialog for a function cell: side 1 input, 2 output, the
// cell's current function number (-1 when empty), the step number. nullopt = cancelled.
using FunctionChooser = std::function<std::optional<int>(int inOut, int orgValue, int row)>;

// What the window around the editor wants to hear of. Every hook may be empty.
struct EditorHooks {
    FunctionChooser chooseFunction;            // F2 / double click on a function cell
    CategoryChooser chooseCategory;            // a digital text shared by several categories
    std::function<void()> changed;             // sets the document's IsChanged
    std::function<void(int row)> pulseRefresh; // after an edit: refresh (or open) the pulse editor
    std::function<void(int row, int col)> functionChanged; // tells an open find window
    std::function<void()> snapshot;                        // takes an undo snapshot before a block is cleared
};

// The cell a failing check pointed at (row and column -1 when it selects none).
struct CheckFailure {
    int message = 0;
    int row = -1;
    int col = -1;
};

// How a cell is entered.
enum class CellEditor { None, Text, Combo, Function };

struct StartEditResult {
    bool allowed = false;
    CellEditor editor = CellEditor::None;
    QString comboList;  // "#v;name|..." for combo cells
    QString textBefore; // the cell's text when editing began
};

struct ValidateResult {
    bool accepted = false;
    QString text; // accepted: what the cell now holds; refused: what to put back in the cell editor
};

// What F2 (or a double click) asks the window to do.
enum class F2Action { Nothing, FunctionWritten, StartEdit };

// The editing rules of one step editor window over its sheet: writing a program into
// the sheet, the "***" rules, cell entry and validation, the Delete key, the checks
// before a program leaves the editor, and the sheet back into a program. Messages go
// through the prompter (style 2); nothing here touches a widget.
class StepSheetEditor {
public:
    StepSheetEditor(const CSelections& selout, const CSelections& selinp, Prompter& prompter,
                    bool isComparison, bool locateInpFirst, EditorHooks hooks = {});

    StepSheet& sheet() { return m_sheet; }
    const StepSheet& sheet() const { return m_sheet; }
    bool isComparison() const { return m_comparison; }
    void setHooks(EditorHooks hooks) { m_hooks = std::move(hooks); }
    const CSelections& selout() const { return m_selout; }
    const CSelections& selinp() const { return m_selinp; }

    // Combo lists ("#" value ";" name, joined by "|").
    static const QString kStateList;
    static const QString kDelayKindList;
    static const QString kLogicIoList;
    static const QString kLogicCountList;
    static const QString kRelList;
    static const QString kRelCountLowList;  // counter below 32
    static const QString kRelCountHighList; // counter 32 and above, and group 2 after "+" / "-"
    // The list offered on a combo cell ("" when the cell has none).
    QString comboList(int row, int col) const;
    // "[v]name " per entry.
    static QString CreateInpList(const QString& list);
    static bool listHasValue(const QString& list, const QString& value);
    // Display name of a combo cell's value ("" when not in the list), for painting.
    QString comboName(int row, int col) const;

    // Writing a program -----------------------------------------------------------------
    void PasteData(const CSteps& steps);
    void PasteThisData(const CStep& step, int row);
    // clear: empty text and data; otherwise the function of value from sels (an unknown
    // value is shown as "#" + number with no category).
    void WriteKino(int row, int col, bool clear, const CSelections& sels, int value);
    void SprashThisRow(int row);
    void SetStarCell(int row, int col, int mode); // 1 "***", 0 ""
    void CannotEditOp1(const QString& category, int row, int col);
    void DoGyoMuko(int row, bool disable);
    void ClearAllRem();

    // Cell entry -----------------------------------------------------------------
    StartEditResult fg_StartEdit(int row, int col);
    // The text typed in the cell editor. When accepted the sheet holds the new value.
    ValidateResult fg_ValidateEdit(int row, int col, const QString& text);
    // After an accepted edit: changed flag, "***" refresh, pulse hook.
    void fg_AfterEdit(int row, int col);
    // Start, validate and after-edit in one go (what the window does for a typed entry).
    bool enterText(int row, int col, const QString& text);
    bool SpaceOp(int row, int col);
    F2Action F2InputOp(int row, int col);
    // A printable character typed on a cell: whether editing starts with it as the text.
    bool typeCharacter(int row, int col, QChar ch);
    QString hintText(int row, int col) const;
    bool MustIMEON(int row, int col) const;
    bool CheckEditable(int row, int col);
    bool DoesCannotEdit(int row, int col) const;
    bool MustInputCell(int row, int col);

    // Functions ------------------------------------------------------------------
    ValidateResult ExactInputKino(int row, int col, const QString& text);
    bool ExactJyosu(int row, int col, const QString& text);
    // Puts function (category, value) into a function cell and makes the row follow.
    bool UpdateKinoOutInp(int row, int col, const QString& category, int value);
    bool CanInputOut(int row, int col, int value);
    // side 1 input (counter or not), 2 output (same category).
    static bool DoesSameCaegory(int side, const QString& oldCategory, const QString& newCategory);

    // Delete key and clearing -----------------------------------------------------------
    // Clears the selection of the sheet (whole rows are refused).
    bool DeleteOp();
    bool DeleteOp(int row1, int col1, int row2, int col2);
    bool MustNotDelete(int row, int col) const;
    void ResetThisColBlock(int row, int col);
    void ClearCells(int row, int col);

    // Row queries ------------------------------------------------------------------
    bool ExistsValidRow(int row) const;
    bool ExistsEND(int row, int startCol, bool toRight) const;
    bool TopIsCOUNT(int row) const;
    bool RowHasAllInput(int row) const;
    bool RowHasReturnOutput(int row) const;
    bool IsRowDisabled(int row) const { return m_sheet.isRowDisabled(row); }
    bool InputSomething(int row) const;
    bool ExistsInputItem(int row, int group) const;
    int GetVacantStepInp(int row) const; // first empty input group, 0 when none
    int FindFirstInputKinoCol() const { return m_sheet.colInp(); }
    int GetLastInputRow() const;         // -1 when the sheet is empty
    int FindLastRow(int firstRow) const; // -1 when none
    bool SafeBottomRow(int count) const;

    // Counter rows -------------------------------------------------------------------
    int GetCounterId(int row) const;
    static bool IsJyosu(const QString& text);

    // Checks and the sheet back into a program -------------------------------------
    bool ExactInput();
    // The failure of the last ExactInput run (message 0 when it passed).
    CheckFailure lastCheckFailure() const { return m_lastFailure; }
    qint32 GetDelayToSave(int row, int outKinoCol) const;
    bool AddValidRow(CSteps& steps, int row) const;
    bool Update_step(const CSteps& current, CSteps& newProgram) const;

    // The value range of an output group's delay, and of a counter row's operands.
    void delayRange(int row, int outKinoCol, qint32& lMin, qint32& lMax) const;
    void counterRange(int row, qint32& lMin, qint32& lMax) const;

private:
    friend class SheetChecks;
    bool isStar(int row, int col) const;
    bool isEmptyCell(int row, int col) const;
    int cellValue(int row, int col) const;
    QString category(int row, int col) const { return m_sheet.data(row, col); }
    void setChanged();
    void refreshStars(int row);
    void clearStarsOfRow(int row);
    void writeValue(int row, int col, const QString& text);
    ValidateResult validateFunction(int row, int col, const QString& text);
    ValidateResult validateRemark(int row, int col, const QString& text);
    ValidateResult validateDelay(int row, int col, const QString& text);
    ValidateResult validateCombo(int row, int col, const QString& text);
    ValidateResult acceptInput(int row, int col, const QString& category, int value);
    bool counterOperandCellOk(int row, int col);
    bool startEditRelation(int row, int col);
    void writeCounterOperand(int row, int col, const QString& number);
    bool applyFunction(int row, int col, const QString& category, int value);
    std::shared_ptr<CStepOuts> buildOutputs(int row) const;
    std::shared_ptr<CStepInps> buildInputs(int row) const;

    StepSheet m_sheet;
    const CSelections& m_selout;
    const CSelections& m_selinp;
    Prompter& m_prompter;
    bool m_comparison;
    EditorHooks m_hooks;
    QString m_textBefore;
    CheckFailure m_lastFailure;
};

} // namespace vkm
