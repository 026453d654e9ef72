#pragma once

#include <QString>
#include <utility>
#include <vector>

namespace vkm {

class CSelections;
class SheetQueries;
class StepSheet;
struct SheetContext;

// How a cell is entered.
enum class CellEditor { None, Text, Combo, Function };

// What each cell of a row offers and which cells do not apply to it: the combo lists, the
// names the grid shows for codes, the hint for the current cell, and the "***" cells that
// a row's functions cause.
class CellRules {
public:
    CellRules(SheetContext& context, const SheetQueries& queries);

    // Combo lists ("#" value ";" name, joined by "|").
    static const QString kStateList;
    static const QString kDelayKindList;
    static const QString kLogicIoList;
    static const QString kLogicCountList;
    static const QString kRelList;
    static const QString kRelCountLowList;  // counter below 32
    static const QString kRelCountHighList; // counter 32 and above, and group 2 after "+" / "-"
    static const QString kRelEndList;       // a relation that can only be END

    // How a column's cells are entered: a drop-down list for codes, the selection dialog
    // or typed text for functions, typed text otherwise.
    static CellEditor editorFor(int colKind);
    // The list offered on a combo cell ("" when the cell has none).
    QString comboList(int row, int col) const;
    // "[v]name " per entry: the hint's form of a list.
    static QString CreateInpList(const QString& list);
    static bool listHasValue(const QString& list, const QString& value);
    // The (value, name) entries of a list, in order.
    static std::vector<std::pair<QString, QString>> listEntries(const QString& list);
    // Name of a combo cell's value ("" when no list names it).
    QString comboName(int row, int col) const;
    // What the grid shows in a cell: the name of a code, otherwise the text itself.
    QString displayText(int row, int col) const;
    // The value of a code cell's column named (LOW, POS EDG, >=, ...) or given as a number;
    // "" when the column has no such name. For typing a name where the grid takes codes.
    static QString codeForName(int colKind, const QString& nameOrValue);

    bool DoesCannotEdit(int row, int col) const; // "***"
    // A relation that must stay END: the last input group's, input group 3's of a counter
    // row, and an END in a counter row.
    bool relationMustStayEnd(int row, int col) const;
    // Whether the input method for Japanese text is on in the cell (remarks).
    bool MustIMEON(int row, int col) const;
    // How the cell is entered, for the hint pane.
    QString hintText(int row, int col) const;

    // Makes the row's "***" cells what its functions cause (and the END of an "ALL" input).
    void SprashThisRow(int row);
    void SetStarCell(int row, int col, int mode); // 1 "***", 0 ""
    // Writes a function cell: its display text and category from sels; clear empties it.
    // A value the catalogue does not know is shown as "#" and its number, without a
    // category, so that saving its row refuses it rather than guessing a function.
    void WriteKino(int row, int col, bool clear, const CSelections& sels, int value);

private:
    SheetContext& m_ctx;
    StepSheet& m_sheet;
    const SheetQueries& m_q;
};

} // namespace vkm
