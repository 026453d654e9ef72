#pragma once

#include <QString>

namespace vkm {

class CellEntry;
class SheetQueries;
class StepSheet;
struct SheetContext;

// Jumps, calls and step inputs name a step by its number ("J006", "C012", "S031"). When
// rows are inserted or removed, the steps below move and these references are renumbered
// to name the same steps again, each with the user's consent unless they allowed all.
class StepReferences {
public:
    StepReferences(SheetContext& context, const SheetQueries& queries, CellEntry& entry);

    // What became of one reference.
    enum class Outcome { Unchanged, Replaced, Refused, Declined, StopAll };

    // After count rows were inserted before firstRow (insert) or removed from firstRow on:
    // every step reference naming a moved step is renumbered, when the option to replace
    // functions is on.
    void AdjustRow(int firstRow, int count, bool insert);
    // One reference in a function cell: references to steps before `position` stay; the
    // others move by `offset`. A reference that would name no step (beyond 32, or a removed
    // step) is refused with its message and left as it was.
    Outcome ReplaceValue(int row, int col, int position, int offset);

    // The step a reference names (the number in its last three characters), -1 when the
    // text ends in no such number.
    static int referencedStep(const QString& digital);
    // The first character of the reference and its step moved by offset, in three digits.
    static QString CreateNewDigital(const QString& oldDigital, int offset);

private:
    bool isReferenceCell(int row, int col) const;
    int confirm(const QString& oldDigital, const QString& newDigital);

    SheetContext& m_ctx;
    StepSheet& m_sheet;
    const SheetQueries& m_q;
    CellEntry& m_entry;
    bool m_allYes = false;
};

} // namespace vkm
