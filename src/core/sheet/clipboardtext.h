#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace vkm {

// One copied row: whether it was disabled, and its cells left to right.
struct ClipboardRow {
    bool rem = false;
    QStringList cells;
};

// Copied cells as they travel on the clipboard.
struct ClipboardData {
    bool wholeRows = false; // every data column of the rows, or a block of cells
    QString header;         // the header text of the first copied column
    std::vector<ClipboardRow> rows;
};

// The text form of copied cells, which other editor windows (and older copies of the
// editor on the same desk) read back:
//
//   line 1   "1" for whole rows, "0" for a block of cells
//   line 2   the header text of the first copied column
//   line 3.. "REM" or "NOTREM", TAB, then the cells separated by TAB
//
// Lines are separated by CR LF, with none after the last. A function cell travels as the
// function's number, so that the text stays valid whichever catalogue shows the names.
// A cell never carries a control character: a TAB, CR or LF in a remark (read from a
// file; typing refuses them) would break the cell or line apart, so a copy writes each
// control character as a blank (copiedCell) and a pasted remark holding one is refused.
class ClipboardText {
public:
    // The text of the data as it stands; no cell may hold a TAB, CR or LF.
    static QString compose(const ClipboardData& data);
    // A cell's text as a copy writes it: each control character as a blank.
    static QString copiedCell(const QString& text);
    // Whether the text holds a control character (below U+0020): a TAB, CR or LF would
    // break a cell or a line of the text apart.
    static bool holdsControlCharacter(const QString& text);
    // The copied cells of a clipboard text; nullopt for any text that is not in the form
    // above (no CR LF, a first line other than 0 or 1, no row, a row line without its REM
    // field, rows of different widths). One CR LF after the last line is tolerated: a text
    // editor adds it when the lines are copied from it.
    static std::optional<ClipboardData> parse(const QString& text);
    // The number of TAB-separated fields of a line.
    static int ParseColCount(const QString& line);
    // Whether a cell's text has the form copying writes for a column of that kind (a
    // function as its number, a code of that column, a whole number of a delay, a remark
    // of at most 20 bytes without control characters, or "***" where a cell may not apply).
    static bool cellFits(int colKind, const QString& cell);

    static constexpr const char* kRem = "REM";
    static constexpr const char* kNotRem = "NOTREM";
};

} // namespace vkm
