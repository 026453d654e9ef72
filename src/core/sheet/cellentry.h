#pragma once

#include "sheet/cellrules.h"

#include <QString>

namespace vkm {

class CellClearing;
class SheetQueries;
class StepSheet;
struct SheetContext;

struct StartEditResult {
    bool allowed = false;
    CellEditor editor = CellEditor::None;
    QString comboList;  // "#v;name|..." for combo cells
    QString textBefore; // the cell's text when editing began
    int side = 0;       // function cells: 1 input, 2 output
    int orgValue = -1;  // function cells: the cell's function number, -1 when empty
};

struct ValidateResult {
    bool accepted = false;
    QString text; // accepted: what the cell now holds; refused: what to put back in the cell editor
};

// What F2 (or a double click) asks the window to do.
enum class F2Action { Nothing, FunctionWritten, StartEdit };
struct F2Result {
    F2Action action = F2Action::Nothing;
    StartEditResult start; // StartEdit: the editor to open
};

// Entering one cell: whether an edit may start, what the typed or chosen value must be,
// and how the rest of the row follows an accepted value. Every refusal shows its message.
class CellEntry {
public:
    CellEntry(SheetContext& context, const SheetQueries& queries, CellRules& rules, CellClearing& clearing);

    StartEditResult fg_StartEdit(int row, int col);
    // The text typed in the cell editor. When accepted the sheet holds the new value.
    ValidateResult fg_ValidateEdit(int row, int col, const QString& text);
    // After an accepted edit: changed flag, "***" refresh, pulse hook.
    void fg_AfterEdit(int row, int col);
    // Start, validate and after-edit in one go: typing a text and pressing Enter.
    bool enterText(int row, int col, const QString& text);
    // Space on a combo cell: the next value of its list.
    bool SpaceOp(int row, int col);
    // F2: the selection dialog for a function cell, otherwise the cell's own editor.
    F2Result F2InputOp(int row, int col);
    // A printable character typed on a cell: the editor to open with it as the text
    // (allowed false when refused, with the message shown).
    StartEditResult typeCharacter(int row, int col, QChar ch);

    bool CheckEditable(int row, int col);
    bool MustInputCell(int row, int col);

    // Functions ------------------------------------------------------------------
    ValidateResult ExactInputKino(int row, int col, const QString& text);
    bool ExactJyosu(int row, int col, const QString& text);
    // Puts function (category, value) into a function cell and makes the row follow.
    bool UpdateKinoOutInp(int row, int col, const QString& category, int value);
    // A function named by its display text put into a function cell through the rules of
    // a typed one (what a replacement in the find window and the renumbering of step
    // references do). A category the catalogue holds for the text is kept; an empty one
    // is chosen as for a typed name. False, with the rules' message, when refused.
    bool putFunction(int row, int col, const QString& digital, const QString& category);
    bool CanInputOut(int row, int col, int value);
    // side 1 input (counter or not), 2 output (same category).
    static bool DoesSameCaegory(int side, const QString& oldCategory, const QString& newCategory);

private:
    ValidateResult validateByKind(int row, int col, const QString& text);
    ValidateResult validateFunction(int row, int col, const QString& text);
    ValidateResult validateRemark(int row, int col, const QString& text);
    ValidateResult validateDelay(int row, int col, const QString& text);
    ValidateResult validateCombo(int row, int col, const QString& text);
    ValidateResult acceptInput(int row, int col, const QString& category, int value);
    // A function of known category into a cell: an output as it is, an input through the
    // rules of its group.
    bool writeFunction(int row, int col, const QString& category, int value);
    bool counterOperandCellOk(int row, int col);
    bool startEditRelation(int row, int col);
    void writeCounterOperand(int row, int col, const QString& number);
    void closeAddingCounterRow(int row, int col);
    // An edit of one cell begins: the sheet as it is now is what undoing the edit gives
    // back. Changes made for a replacement (which took its own snapshot) record nothing.
    void beginEdit();
    void endEdit() { m_editPending = false; }
    // Sets the changed flag; the first change of an edit records the sheet before it.
    void markChanged();

    SheetContext& m_ctx;
    StepSheet& m_sheet;
    const SheetQueries& m_q;
    CellRules& m_rules;
    CellClearing& m_clearing;
    QString m_textBefore;
    QByteArray m_cellsBefore;
    bool m_editPending = false;
    bool m_replacing = false;
};

} // namespace vkm
