#include "sheet/rowclipboard.h"

#include "base/prompter.h"
#include "catalogue/cselections.h"
#include "sheet/cellrules.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetqueries.h"

#include <algorithm>

namespace vkm {

namespace {
constexpr int kNotCopiedCells = 58; // clipboard empty or not copied cells
constexpr int kWrongColumn = 71;
constexpr int kNoSpace = 90;
constexpr int kUnknownFunction = 88;
} // namespace

RowClipboard::RowClipboard(SheetContext& context, const SheetQueries& queries, CellRules& rules)
    : m_ctx(context), m_sheet(context.sheet), m_q(queries), m_rules(rules) {}

void RowClipboard::copySelection() {
    const CellRect r = m_sheet.selection();
    const bool whole = m_sheet.rowSelectionMode();
    CopyRowToBuf(r.row1, r.row2, r.col1, r.col2, whole);
}

void RowClipboard::CopyRowToBuf(int row1, int row2, int col1, int col2, bool wholeRows) {
    m_ctx.clipboard().setText(copyText(row1, row2, col1, col2, wholeRows));
}

QString RowClipboard::copyText(int row1, int row2, int col1, int col2, bool wholeRows) const {
    const int r1 = std::max(std::min(row1, row2), StepSheet::kFirstStepRow);
    const int r2 = std::min(std::max(row1, row2), StepSheet::kLastStepRow);
    const int c1 = wholeRows ? 1 : std::max(std::min(col1, col2), 1);
    const int c2 = wholeRows ? StepSheet::kCols - 1 : std::min(std::max(col1, col2), StepSheet::kCols - 1);
    ClipboardData data;
    data.wholeRows = wholeRows;
    data.header = m_sheet.headerText(c1);
    for (int r = r1; r <= r2; ++r) {
        ClipboardRow line;
        line.rem = m_sheet.isRowDisabled(r);
        // A remark read from a file may hold a TAB or a line break, which would split
        // it; it travels with blanks instead, so the text reads back as these cells.
        for (int c = c1; c <= c2; ++c)
            line.cells << ClipboardText::copiedCell(cellText(r, c));
        data.rows.push_back(std::move(line));
    }
    return ClipboardText::compose(data);
}

// A function travels as its number; everything else as the cell holds it.
QString RowClipboard::cellText(int row, int col) const {
    const QString text = m_sheet.text(row, col);
    const int kind = m_sheet.colKind(col);
    if ((kind != KindOutKino && kind != KindInpKino) || text.isEmpty() || m_q.isStar(row, col))
        return text;
    const QString category = m_q.category(row, col);
    if (kind == KindInpKino && category.isEmpty() && SheetQueries::IsJyosu(text))
        return text; // a number typed in as a counter's operand
    const CSelections& sels = kind == KindOutKino ? m_ctx.selout : m_ctx.selinp;
    if (const auto value = sels.valueInCategory(category, text))
        return QString::number(*value);
    // A function no catalogue knows is shown as "#" and its number.
    if (text.startsWith(QLatin1Char('#')) && SheetQueries::IsJyosu(text.mid(1)))
        return text.mid(1);
    return text;
}

bool RowClipboard::pasteCommand() {
    if (m_ctx.comparison)
        return false;
    m_ctx.takeSnapshot();
    return PasteFromBuf(m_sheet.row());
}

bool RowClipboard::pasteTargets(const ClipboardData& data, int row, int& col, std::vector<int>& rows) {
    const int count = int(data.rows.size());
    if (data.wholeRows && count == 1) {
        // One copied row fills every selected row, from the current row to the other end.
        const int other = std::clamp(m_sheet.cornerRow(), StepSheet::kFirstStepRow, StepSheet::kLastStepRow);
        for (int r = std::min(row, other); r <= std::max(row, other); ++r)
            rows.push_back(r);
    } else {
        for (int i = 0; i < count; ++i)
            rows.push_back(row + i);
    }
    if (rows.back() > StepSheet::kLastStepRow ||
        col + int(data.rows.front().cells.size()) > StepSheet::kCols) {
        m_ctx.prompter.showMessage(kNoSpace, 2);
        return false;
    }
    return true;
}

bool RowClipboard::cellsFit(const ClipboardData& data, int col) const {
    for (const ClipboardRow& line : data.rows)
        for (int i = 0; i < line.cells.size(); ++i)
            if (!ClipboardText::cellFits(m_sheet.colKind(col + i), line.cells[i]))
                return false;
    return true;
}

bool RowClipboard::PasteFromBuf(int row) {
    if (m_ctx.comparison || !StepSheet::isStepRow(row))
        return false;
    const std::optional<ClipboardData> data = ClipboardText::parse(m_ctx.clipboard().text());
    // Whole rows hold every data column, starting with the remark.
    if (!data || (data->wholeRows && (data->header != m_sheet.headerText(1) ||
                                      data->rows.front().cells.size() != StepSheet::kCols - 1))) {
        m_ctx.prompter.showMessage(kNotCopiedCells, 2);
        return false;
    }
    int col = data->wholeRows ? 1 : m_sheet.col();
    if (!data->wholeRows && (col < 1 || data->header != m_sheet.headerText(col))) {
        m_ctx.prompter.showMessage(kWrongColumn, 2);
        return false;
    }
    std::vector<int> rows;
    if (!pasteTargets(*data, row, col, rows))
        return false;
    if (!cellsFit(*data, col)) {
        m_ctx.prompter.showMessage(kNotCopiedCells, 2);
        return false;
    }
    StepSheet::Batch batch(m_sheet);
    QString unknown;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ClipboardRow& line = data->rows[std::min(i, data->rows.size() - 1)];
        const QString first = PasteRow(rows[i], col, {line}, data->wholeRows);
        if (unknown.isEmpty())
            unknown = first;
    }
    m_ctx.setChanged();
    // A number no catalogue knows stays as "#" and its number, which saving refuses until
    // the cell holds a function again; the user is told which.
    if (!unknown.isEmpty())
        m_ctx.prompter.showMessage(kUnknownFunction, 2, unknown);
    return true;
}

QString RowClipboard::PasteRow(int row, int col, const std::vector<ClipboardRow>& lines, bool wholeRows) {
    StepSheet::Batch batch(m_sheet);
    QString unknown;
    for (const ClipboardRow& line : lines) {
        if (!StepSheet::isStepRow(row))
            break;
        if (wholeRows)
            m_sheet.setRowDisabled(row, line.rem);
        for (int i = 0; i < line.cells.size() && col + i < StepSheet::kCols; ++i)
            writeCell(row, col + i, line.cells[i], unknown);
        m_rules.SprashThisRow(row);
        ++row;
    }
    return unknown;
}

void RowClipboard::writeCell(int row, int col, const QString& field, QString& unknown) {
    const int kind = m_sheet.colKind(col);
    if (field == QLatin1String(StepSheet::kStar) && kind != KindRemark) {
        m_rules.SetStarCell(row, col, 1);
        return;
    }
    if (field.isEmpty() || (kind != KindOutKino && kind != KindInpKino)) {
        m_sheet.setCell(row, col, field, QString());
        return;
    }
    // In a counter row, input groups 2 and 3 take numbers typed in as operands.
    if (kind == KindInpKino && m_sheet.ColIs2or3Grp(col) && m_q.TopIsCOUNT(row) &&
        SheetQueries::IsJyosu(field)) {
        m_sheet.setCell(row, col, field, QString());
        return;
    }
    const CSelections& sels = kind == KindOutKino ? m_ctx.selout : m_ctx.selinp;
    const int value = field.toInt();
    if (!sels.hasValue(value) && unknown.isEmpty())
        unknown = field;
    m_rules.WriteKino(row, col, false, sels, value);
}

} // namespace vkm
