#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace vkm {

class CellRules;
class SheetQueries;
class StepSheet;
struct SheetContext;

// One output driven as a pulse: switched at the start delay and switched back after the
// length. In the sheet it is a pair of output actions in one row: both output groups name
// the same function with matching logics ("ON PULSE" HIGH then LOW, "OFF PULSE" LOW then
// HIGH, "NOT PULSE" NOT and NOT) and the same delay kind; group 2's delay is the end.
struct PulseValues {
    QString kino;     // the function's display text
    QString category; // its category
    int logic = -1;   // index into PulsePair::logicNames(), -1 none chosen
    int kind = -1;    // index into PulsePair::kindNames(), -1 none chosen
    QString delay1;   // start
    QString delay2;   // length
};

// The box of the pulse window a failed check puts the focus in.
enum class PulseField { None, Kino, DelayKind, Delay1, Delay2 };

// What the pulse window does when the current cell moved or a cell was edited.
enum class PulseFollow { Nothing, Open, Fill, Clear };

// The pulse pairs of a sheet: finding one in a row, reading it for the pulse window,
// checking the window's values and writing them back as a pair.
class PulsePair {
public:
    PulsePair(SheetContext& context, const SheetQueries& queries, CellRules& rules);

    static const QStringList& logicNames(); // "ON PULSE", "OFF PULSE", "NOT PULSE"
    static QStringList kindNames();         // the delay kinds, "TIMER" first
    static int kindCode(int index);         // -1 for none
    static int kindIndex(int code);         // -1 for a code that is no delay kind

    bool isPulseRow(int row) const;
    // The cell is an output cell of a row that holds a pulse.
    bool CanInputPulse(int row, int col) const;
    PulseValues PasteValue(int row) const;
    // Writes the pulse into both output groups of the row (an undo snapshot first).
    void SetValue(int row, const PulseValues& values);

    // Decide: the values checked, then written into the row; the field to put the focus
    // in when a check fails (PulseField::None also when the row is the header).
    PulseField Decide(const PulseValues& values, int row);
    PulseField ExactValue(const PulseValues& values) const;
    // The start (index 1) or the end (index 2: start + length) within the delay kind's
    // range, which goes to min and max.
    bool ExactDelay(const PulseValues& values, int index, qint32& lMin, qint32& lMax) const;
    // Leaving a delay box with text in it: the kind must be chosen first (DelayKind: the
    // box is to be emptied), then the value must lie in range.
    PulseField checkDelayBox(const PulseValues& values, int index) const;
    // Leaving the function box: the category of the typed function, "" for an empty box;
    // nullopt (message shown) when no output has that name or its category cannot pulse.
    std::optional<QString> checkKino(const QString& text) const;
    // A function chosen in the selection dialog: its name and category, or nullopt after
    // the message when its category cannot pulse.
    std::optional<std::pair<QString, QString>> chosenFunction(int value) const;

    static PulseFollow PulseOp(bool loaded, bool automatic, bool canInput);

private:
    // The start (index 1) or end (2) in range; else its message and the box to go to.
    PulseField checkDelayRange(const PulseValues& values, int index) const;
    void writeGroup(int row, int group, const PulseValues& values, int logic, const QString& delay);

    SheetContext& m_ctx;
    StepSheet& m_sheet;
    const SheetQueries& m_q;
    CellRules& m_rules;
};

} // namespace vkm
