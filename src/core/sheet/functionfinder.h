#pragma once

#include <QString>
#include <optional>

namespace vkm {

class CellEntry;
class SheetQueries;
class StepSheet;
struct SheetContext;

// A function cell a search stopped at.
struct FoundCell {
    int row = 0;
    int col = 0;
};

// A function named by its display text, with its category when known.
struct FunctionName {
    QString digital;
    QString category;
};

// Finding a function in the function cells of one editor's sheet and replacing it by
// another, one cell at a time or all at once: what the find window does. The window
// stays open between searches, so the search position, whether it has started again from
// the top, and the side of the functions scanned live here.
class FunctionFinder {
public:
    FunctionFinder(SheetContext& context, const SheetQueries& queries, CellEntry& entry);

    // The editor opens its find window on the current cell: the side scanned follows the
    // cell's column, and a function in the cell becomes the value to find. The first
    // opening also starts the search at the top with the replacement off, and makes the
    // first step the current row (the column stays).
    void open();
    void close() { m_loaded = false; }
    bool isLoaded() const { return m_loaded; }
    int USRCMP() const;
    // 1 input functions, 2 output functions: the side of the cell the window opened on.
    int INOUT() const { return m_inout; }
    // The side the search scans: that of the browse button last used, else INOUT.
    int scanSide() const { return m_browseSide != 0 ? m_browseSide : m_inout; }

    // Values chosen with a browse button of side 1 (inputs) or 2 (outputs); side 0 when
    // the value came otherwise. The browse side decides the side scanned.
    void setFindValue(const FunctionName& value, int browseSide);
    void setReplaceValue(const FunctionName& value, int browseSide);
    const FunctionName& findValue() const { return m_find; }
    const FunctionName& replaceValue() const { return m_replace; }
    // The replacement fields open with the first press of Replace.
    bool replaceEnabled() const { return m_replaceEnabled; }
    bool canReplace() const; // not in the comparison program's window

    // Next: the next cell holding the value, starting again from the top once.
    bool Next();
    // Replace: the found cell gets the replacement, then the next one is found.
    bool Replace();
    // Replace all: every cell holding the value; the number replaced (0 after the message).
    int ReplaceAll();

    // The first function cell of the scanned side at or after (row, col) that holds digital.
    std::optional<FoundCell> ExistKino(int row, int col, const QString& digital) const;
    // One search step from the position, starting again from the top once; a hit is
    // selected and becomes the position.
    bool FindOp(bool silent);
    bool ReplaceWord(bool silent, int row, int col);
    bool ExactReplaceInput() const { return !m_replace.digital.isEmpty(); }

    FoundCell position() const { return m_pos; }
    // What the last Replace all did, for the editor to report once it is active again;
    // taking it clears it. 0 when nothing is waiting.
    int takeReplacedCount();

private:
    void advance() { ++m_pos.col; }
    bool askRetryFromTop();
    // The value to find (and for a replacement the replacement) is given; else its message.
    bool valuesGiven(bool replacing) const;
    // Next from the position after the current one; a declined restart keeps the position.
    bool findNext();

    SheetContext& m_ctx;
    StepSheet& m_sheet;
    const SheetQueries& m_q;
    CellEntry& m_entry;
    bool m_loaded = false;
    int m_inout = 2;
    int m_browseSide = 0;
    FunctionName m_find;
    FunctionName m_replace;
    bool m_replaceEnabled = false;
    FoundCell m_pos{1, 1};
    bool m_wrapped = false;
    int m_count = 0; // replaced by the last Replace all, until taken
};

} // namespace vkm
