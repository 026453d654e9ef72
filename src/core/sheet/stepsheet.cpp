#include "sheet/stepsheet.h"

#include <QDataStream>
#include <QIODevice>
#include <algorithm>

namespace vkm {

namespace {
// Snapshot format: a tag, a version, the geometry it was made for, then per step row
// the disabled flag and the text and data of every data column.
constexpr quint32 kSnapshotTag = 0x564B5353; // "VKSS"
constexpr quint16 kSnapshotVersion = 1;
} // namespace

CellRect CellRect::united(const CellRect& o) const {
    if (isEmpty())
        return o;
    if (o.isEmpty())
        return *this;
    return {std::min(row1, o.row1), std::min(col1, o.col1), std::max(row2, o.row2), std::max(col2, o.col2)};
}

StepSheet::StepSheet(bool locateInpFirst) : m_locateInpFirst(locateInpFirst) {
    Format_fg();
}

void StepSheet::Format_fg() {
    m_colOut1 = m_locateInpFirst ? 14 : 2;
    m_colOut2 = m_locateInpFirst ? 18 : 6;
    m_colInp = m_locateInpFirst ? 2 : 10;
    SetTitleCaption();
    for (int r = kFirstStepRow; r <= kLastStepRow; ++r)
        at(r, 0).text = QString::number(r);
    for (int c = 0; c < kCols; ++c) {
        if (c == 0)
            m_normalColors[std::size_t(c)] = sheetcolor::StepColumn;
        else if (c == 1)
            m_normalColors[std::size_t(c)] = sheetcolor::RemarkColumn;
        else
            m_normalColors[std::size_t(c)] = isOutputCol(c) ? sheetcolor::OutputCell : sheetcolor::InputCell;
    }
}

void StepSheet::SetTitleCaption() {
    static const char* outTitles[] = {"Output", "Logic", "Delay Kind", "Delay Value"};
    static const char* inpTitles[] = {"Input", "Stat.", "8"};
    m_kinds[0] = KindStep;
    at(0, 0).text = QStringLiteral("STEP");
    m_kinds[1] = KindRemark;
    at(0, 1).text = QStringLiteral("Remark");
    for (int g = 1; g <= 2; ++g) {
        for (int i = 0; i < 4; ++i) {
            const int c = outputGroupCol(g) + i;
            m_kinds[std::size_t(c)] = KindOutKino + i;
            at(0, c).text = QString::fromLatin1(outTitles[i]);
        }
    }
    for (int g = 1; g <= 4; ++g) {
        for (int i = 0; i < 3; ++i) {
            const int c = inputGroupCol(g) + i;
            m_kinds[std::size_t(c)] = KindInpKino + i;
            at(0, c).text = QString::fromLatin1(inpTitles[i]);
        }
    }
}

int StepSheet::colKind(int col) const {
    return col >= 0 && col < kCols ? m_kinds[std::size_t(col)] : -1;
}

bool StepSheet::isOutputCol(int col) const {
    return (col >= m_colOut1 && col < m_colOut1 + 4) || (col >= m_colOut2 && col < m_colOut2 + 4);
}

bool StepSheet::isInputCol(int col) const {
    return col >= m_colInp && col < m_colInp + 12;
}

int StepSheet::groupOf(int col) const {
    if (col >= m_colOut1 && col < m_colOut1 + 4)
        return 1;
    if (col >= m_colOut2 && col < m_colOut2 + 4)
        return 2;
    if (isInputCol(col))
        return (col - m_colInp) / 3 + 1;
    return 0;
}

int StepSheet::groupStart(int col) const {
    if (isOutputCol(col))
        return outputGroupCol(groupOf(col));
    if (isInputCol(col))
        return inputGroupCol(groupOf(col));
    return -1;
}

QString StepSheet::headerText(int col) const {
    return isValidCell(0, col) ? at(0, col).text : QString();
}

QString StepSheet::headerFont(int col) const {
    return colKind(col) == KindRel ? QString::fromLatin1(kSymbolFont) : QString();
}

QString StepSheet::text(int row, int col) const {
    return isValidCell(row, col) ? at(row, col).text : QString();
}

QString StepSheet::data(int row, int col) const {
    return isValidCell(row, col) ? at(row, col).data : QString();
}

void StepSheet::setText(int row, int col, const QString& text) {
    if (!isValidCell(row, col) || at(row, col).text == text)
        return;
    at(row, col).text = text;
    touch(row, col, row, col);
}

void StepSheet::setData(int row, int col, const QString& data) {
    if (!isValidCell(row, col) || at(row, col).data == data)
        return;
    at(row, col).data = data;
    touch(row, col, row, col);
}

void StepSheet::setCell(int row, int col, const QString& text, const QString& data) {
    if (!isValidCell(row, col))
        return;
    Cell& c = at(row, col);
    if (c.text == text && c.data == data)
        return;
    c.text = text;
    c.data = data;
    touch(row, col, row, col);
}

void StepSheet::clear() {
    for (int r = kFirstStepRow; r <= kLastStepRow; ++r) {
        m_disabled[std::size_t(r)] = false;
        for (int c = 1; c < kCols; ++c)
            at(r, c) = Cell{};
    }
    touch(kFirstStepRow, 0, kLastStepRow, kCols - 1);
}

bool StepSheet::isRowDisabled(int row) const {
    return isStepRow(row) && m_disabled[std::size_t(row)];
}

void StepSheet::setRowDisabled(int row, bool disabled) {
    if (!isStepRow(row) || m_disabled[std::size_t(row)] == disabled)
        return;
    m_disabled[std::size_t(row)] = disabled;
    touch(row, 0, row, kCols - 1);
}

quint32 StepSheet::normalColor(int col) const {
    return col >= 0 && col < kCols ? m_normalColors[std::size_t(col)] : sheetcolor::InputCell;
}

quint32 StepSheet::backColor(int row, int col) const {
    if (row == 0) {
        if (isOutputCol(col))
            return sheetcolor::OutputHeader;
        if (isInputCol(col))
            return sheetcolor::InputHeader;
        return sheetcolor::FixedHeader;
    }
    if (col >= 1 && isRowDisabled(row))
        return sheetcolor::Disabled;
    return normalColor(col);
}

quint32 StepSheet::foreColor(int row, int col) const {
    if (row == 0 && (isOutputCol(col) || isInputCol(col)))
        return sheetcolor::HeaderText;
    return 0x000000;
}

void StepSheet::select(int row, int col) {
    setSelection(row, col, row, col);
}

void StepSheet::setSelection(int row, int col, int cornerRow, int cornerCol) {
    auto clampRow = [](int r) { return std::clamp(r, 0, kRows - 1); };
    auto clampCol = [](int c) { return std::clamp(c, 0, kCols - 1); };
    m_row = clampRow(row);
    m_col = clampCol(col);
    m_cornerRow = clampRow(cornerRow);
    m_cornerCol = clampCol(cornerCol);
    m_rowMode = false;
    notifySelection();
}

CellRect StepSheet::selection() const {
    if (m_rowMode)
        return {std::min(m_row, m_cornerRow), 0, std::max(m_row, m_cornerRow), kCols - 1};
    return {std::min(m_row, m_cornerRow), std::min(m_col, m_cornerCol), std::max(m_row, m_cornerRow),
            std::max(m_col, m_cornerCol)};
}

void StepSheet::setRowSelectionMode(bool on) {
    if (m_rowMode == on)
        return;
    m_rowMode = on;
    notifySelection();
}

void StepSheet::notifySelection() {
    if (m_onSelection)
        m_onSelection();
}

void StepSheet::touch(int row1, int col1, int row2, int col2) {
    ++m_revision;
    const CellRect r{row1, col1, row2, col2};
    if (m_batchDepth > 0) {
        m_pending = m_pending.united(r);
        return;
    }
    if (m_onChange)
        m_onChange(r);
}

StepSheet::Batch::Batch(StepSheet& sheet) : m_sheet(sheet) {
    ++m_sheet.m_batchDepth;
}

StepSheet::Batch::~Batch() {
    if (--m_sheet.m_batchDepth > 0 || m_sheet.m_pending.isEmpty())
        return;
    const CellRect r = m_sheet.m_pending;
    m_sheet.m_pending = CellRect{};
    if (m_sheet.m_onChange)
        m_sheet.m_onChange(r);
}

QByteArray StepSheet::saveCells() const {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_0);
    out << kSnapshotTag << kSnapshotVersion << qint32(kRows) << qint32(kCols) << m_locateInpFirst;
    for (int r = kFirstStepRow; r <= kLastStepRow; ++r) {
        out << m_disabled[std::size_t(r)];
        for (int c = 1; c < kCols; ++c)
            out << at(r, c).text << at(r, c).data;
    }
    return bytes;
}

bool StepSheet::loadCells(const QByteArray& bytes) {
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 tag = 0;
    quint16 version = 0;
    qint32 rows = 0;
    qint32 cols = 0;
    bool inpFirst = false;
    in >> tag >> version >> rows >> cols >> inpFirst;
    if (in.status() != QDataStream::Ok || tag != kSnapshotTag || version != kSnapshotVersion ||
        rows != kRows || cols != kCols || inpFirst != m_locateInpFirst)
        return false;
    // Read everything first: a truncated or damaged snapshot must not half-change the sheet.
    std::array<bool, kRows> disabled{};
    std::array<Cell, std::size_t(kRows * kCols)> cells;
    for (int r = kFirstStepRow; r <= kLastStepRow; ++r) {
        in >> disabled[std::size_t(r)];
        for (int c = 1; c < kCols; ++c) {
            Cell& cell = cells[std::size_t(r * kCols + c)];
            in >> cell.text >> cell.data;
        }
    }
    if (in.status() != QDataStream::Ok || !in.atEnd())
        return false;
    for (int r = kFirstStepRow; r <= kLastStepRow; ++r) {
        m_disabled[std::size_t(r)] = disabled[std::size_t(r)];
        for (int c = 1; c < kCols; ++c)
            at(r, c) = cells[std::size_t(r * kCols + c)];
    }
    touch(kFirstStepRow, 0, kLastStepRow, kCols - 1);
    return true;
}

} // namespace vkm
