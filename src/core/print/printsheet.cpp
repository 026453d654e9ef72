#include "print/printsheet.h"

#include <cmath>

namespace vkm {

void PrintCell::setText(const QString& t) {
    type = Type::Text;
    text = t;
    number = 0;
}

void PrintCell::setNumber(double n) {
    type = Type::Number;
    number = n;
    text = QString::number(n, 'g', 15);
}

HeaderText expandHeaderCodes(const QString& codes, const HeaderFields& fields) {
    HeaderText out;
    for (qsizetype i = 0; i < codes.size(); ++i) {
        const QChar ch = codes[i];
        if (ch != QLatin1Char('&') || i + 1 >= codes.size()) {
            out.text += ch;
            continue;
        }
        const QChar code = codes[++i];
        if (code.isDigit()) {
            qsizetype end = i;
            while (end < codes.size() && codes[end].isDigit())
                ++end;
            out.fontSize = codes.mid(i, end - i).toDouble();
            i = end - 1;
            continue;
        }
        switch (code.toUpper().toLatin1()) {
        case '&':
            out.text += QLatin1Char('&');
            break;
        case 'F':
            out.text += fields.fileName;
            break;
        case 'A':
            out.text += fields.sheetName;
            break;
        case 'P':
            out.text += QString::number(fields.page);
            break;
        case 'N':
            out.text += QString::number(fields.pages);
            break;
        case 'D':
            out.text += fields.date;
            break;
        default: // sections (&L, &C, &R) and codes the page does not draw
            break;
        }
    }
    return out;
}

PrintSheet::PrintSheet(int columns, QString name)
    : m_name(std::move(name)), m_columns(columns), m_widths(std::size_t(columns), kDefaultColumnWidth) {}

void PrintSheet::setFont(const QString& name, double size) {
    m_fontName = name;
    m_fontSize = size;
}

const PrintCell& PrintSheet::cell(int row, int col) const {
    static const PrintCell empty;
    if (row < 0 || row >= rowCount() || col < 0 || col >= m_columns)
        return empty;
    return m_rows[std::size_t(row)].cells[std::size_t(col)];
}

PrintCell& PrintSheet::cell(int row, int col) {
    Q_ASSERT(col >= 0 && col < m_columns);
    return rowAt(row).cells[std::size_t(col)];
}

PrintSheet::Row& PrintSheet::rowAt(int row) {
    Q_ASSERT(row >= 0);
    while (rowCount() <= row)
        m_rows.push_back(Row{std::vector<PrintCell>(std::size_t(m_columns)), -1});
    return m_rows[std::size_t(row)];
}

void PrintSheet::insertRow(int row) {
    if (row >= rowCount()) {
        rowAt(row);
        return;
    }
    m_rows.insert(m_rows.begin() + row, Row{std::vector<PrintCell>(std::size_t(m_columns)), -1});
}

int PrintSheet::lastUsedRow() const {
    for (int r = rowCount() - 1; r >= 0; --r)
        for (const PrintCell& c : m_rows[std::size_t(r)].cells)
            if (!c.isEmpty())
                return r;
    return -1;
}

double PrintSheet::columnWidth(int col) const {
    return col >= 0 && col < m_columns ? m_widths[std::size_t(col)] : kDefaultColumnWidth;
}

void PrintSheet::setColumnWidth(int col, double characters) {
    if (col >= 0 && col < m_columns)
        m_widths[std::size_t(col)] = characters;
}

double PrintSheet::rowHeight(int row) const {
    if (row < 0 || row >= rowCount() || m_rows[std::size_t(row)].height < 0)
        return kDefaultRowHeight;
    return m_rows[std::size_t(row)].height;
}

bool PrintSheet::hasRowHeight(int row) const {
    return row >= 0 && row < rowCount() && m_rows[std::size_t(row)].height >= 0;
}

void PrintSheet::setRowHeight(int row, double points) {
    rowAt(row).height = points;
}

QString PrintSheet::columnName(int col) {
    QString name;
    for (int n = col + 1; n > 0; n = (n - 1) / 26)
        name.prepend(QChar(u'A' + (n - 1) % 26));
    return name;
}

int PrintSheet::columnWidthPixels(double characters) {
    constexpr int kDigitWidth = 7; // pixels of a digit of the standard font
    constexpr int kPadding = 5;
    if (characters <= 0)
        return 0;
    if (characters < 1)
        return int(characters * (kDigitWidth + kPadding) + 0.5);
    return int(characters * kDigitWidth + 0.5) + kPadding;
}

double PrintSheet::columnWidthPoints(double characters) {
    return columnWidthPixels(characters) * 0.75; // 96 pixels an inch, 72 points an inch
}

} // namespace vkm
