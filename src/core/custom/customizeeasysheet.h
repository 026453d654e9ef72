#pragma once

#include <QString>
#include <vector>

namespace vkm {

class CSelections;
class CCustomInps;
class CCustomOuts;
class Prompter;

// One row of the easy customisation grid: a customisable terminal and the digital text
// of its function.
struct CustomizeRow {
    int inOut = 1; // 1 input terminal, 2 output terminal
    QString location;
    // The digital text as the catalogue spells it (padding included); "#" and the number for
    // a function the catalogue does not know.
    QString digital;
    bool changed = false; // edited since the last save to the machine
};

// The easy customisation grid as data: one row per input terminal, then one per output
// terminal, each in table order, showing the terminal's function by its digital text.
// Only the function is edited here; the terminals' other properties go back to the
// machine as they came.
class CustomizeEasySheet {
public:
    CustomizeEasySheet(const CSelections& selCusInp, const CSelections& selCusOut, Prompter& prompter);

    // Rows from the terminals' current functions; nothing is marked changed.
    void fill(const CCustomInps& inps, const CCustomOuts& outs);
    int rowCount() const { return int(m_rows.size()); }
    // 0-based.
    const CustomizeRow& row(int index) const { return m_rows.at(std::size_t(index)); }

    // The value of a digital text in the catalogue of the side (1 inputs, else outputs),
    // under any category; -1 when it has none.
    qint16 GetCrntValue(int In_or_Out, const QString& digital) const;

    // A typed function: upper-cased, then looked up as it is and with one, two and three
    // blanks appended (the catalogues pad digital texts on the right). Unknown: message 67
    // and false, the row keeps its function. Known: the row shows the catalogue's spelling
    // and is marked changed.
    bool enterFunction(int index, const QString& typed);
    // The function of a value chosen in the selection dialog, as if its digital text had
    // been typed; false (nothing changes) when the catalogue has no such value.
    bool enterValue(int index, qint16 value);
    // "No function": the entry whose digital text is " NO".
    bool setNoFunction(int index);

    bool IsChanged() const { return m_changed; }
    // After a successful save: no row is marked and IsChanged is false.
    void markSaved();
    // The editor is closed without saving.
    void discardChanges() { m_changed = false; }

    // Gives every terminal of the tables the function of its row. A row whose text the
    // catalogue does not know: message 80 and false (the tables may be partly updated).
    bool Update_Variable(CCustomInps& inps, CCustomOuts& outs) const;

    const CSelections& catalogue(int In_or_Out) const { return In_or_Out == 1 ? m_selCusInp : m_selCusOut; }

private:
    void setFunction(int index, const QString& digital);

    const CSelections& m_selCusInp;
    const CSelections& m_selCusOut;
    Prompter& m_prompter;
    std::vector<CustomizeRow> m_rows;
    bool m_changed = false;
};

} // namespace vkm
