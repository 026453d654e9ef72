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

StepSheet::StepSheet(bool locateInpFirst) : SheetLayout(locateInpFirst) {
    SetTitleCaption();
    for (int r = kFirstStepRow; r <= kLastStepRow; ++r)
        at(r, 0).text = QString::number(r);
}

void StepSheet::SetTitleCaption() {
    static const char* titles[] = {"STEP",        "Remark", "Output", "Logic", "Delay Kind",
                                   "Delay Value", "Input",  "Stat.",  "8"};
    for (int c = 0; c < kCols; ++c)
        at(0, c).text = QString::fromLatin1(titles[colKind(c)]);
}

QString StepSheet::headerText(int col) const {
    return isValidCell(0, col) ? at(0, col).text : QString();
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

void StepSheet::enableAllRows() {
    Batch batch(*this);
    for (int r = kFirstStepRow; r <= kLastStepRow; ++r)
        setRowDisabled(r, false);
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

StepSheet::ListenerId StepSheet::addChangeListener(std::function<void(const CellRect&)> listener) {
    m_changeListeners.push_back({m_nextListener, std::move(listener)});
    return m_nextListener++;
}

StepSheet::ListenerId StepSheet::addSelectionListener(std::function<void()> listener) {
    m_selectionListeners.push_back({m_nextListener, std::move(listener)});
    return m_nextListener++;
}

void StepSheet::removeListener(ListenerId id) {
    std::erase_if(m_changeListeners, [id](const auto& l) { return l.id == id; });
    std::erase_if(m_selectionListeners, [id](const auto& l) { return l.id == id; });
}

// Listeners are called from a copy: one may add or remove listeners while it is told.
void StepSheet::notifySelection() {
    const auto listeners = m_selectionListeners;
    for (const auto& l : listeners)
        l.call();
}

void StepSheet::notifyChange(const CellRect& r) {
    const auto listeners = m_changeListeners;
    for (const auto& l : listeners)
        l.call(r);
}

void StepSheet::touch(int row1, int col1, int row2, int col2) {
    ++m_revision;
    const CellRect r{row1, col1, row2, col2};
    if (m_batchDepth > 0) {
        m_pending = m_pending.united(r);
        return;
    }
    notifyChange(r);
}

StepSheet::Batch::Batch(StepSheet& sheet) : m_sheet(sheet) {
    ++m_sheet.m_batchDepth;
}

StepSheet::Batch::~Batch() {
    if (--m_sheet.m_batchDepth > 0 || m_sheet.m_pending.isEmpty())
        return;
    const CellRect r = m_sheet.m_pending;
    m_sheet.m_pending = CellRect{};
    m_sheet.notifyChange(r);
}

QByteArray StepSheet::saveCells() const {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_0);
    out << kSnapshotTag << kSnapshotVersion << qint32(kRows) << qint32(kCols) << DoesLocateInpFirst();
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
        rows != kRows || cols != kCols || inpFirst != DoesLocateInpFirst())
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
