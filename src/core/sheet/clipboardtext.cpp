#include "sheet/clipboardtext.h"

#include "base/legacytext.h"
#include "model/codes.h"
#include "model/stepimagelayout.h"
#include "sheet/sheetlayout.h"

namespace vkm {

namespace {
const QString kLineBreak = QStringLiteral("\r\n");
const QChar kTab = QLatin1Char('\t');

// A whole number written as the editor writes one: digits without leading zeros, an
// optional minus sign; nullopt for anything else or beyond maxDigits digits. The editor's
// own spelling of the number is the test: any other form of it reads back differently.
std::optional<qint64> canonicalNumber(const QString& text, bool allowSign, int maxDigits) {
    bool ok = false;
    const qint64 value = text.toLongLong(&ok);
    if (!ok || (value < 0 && !allowSign) || text.size() - (value < 0 ? 1 : 0) > maxDigits ||
        QString::number(value) != text)
        return std::nullopt;
    return value;
}

bool codeIn(const QString& text, int first, int last) {
    const auto value = canonicalNumber(text, false, 2);
    return value && *value >= first && *value <= last;
}
} // namespace

bool ClipboardText::holdsControlCharacter(const QString& text) {
    for (QChar ch : text)
        if (ch.unicode() < 0x20)
            return true;
    return false;
}

QString ClipboardText::compose(const ClipboardData& data) {
    QStringList lines;
    lines << QLatin1String(data.wholeRows ? "1" : "0") << data.header;
    for (const ClipboardRow& row : data.rows)
        lines << QLatin1String(row.rem ? kRem : kNotRem) + kTab + row.cells.join(kTab);
    return lines.join(kLineBreak);
}

QString ClipboardText::copiedCell(const QString& text) {
    if (!holdsControlCharacter(text))
        return text;
    QString out = text;
    for (QChar& ch : out)
        if (ch.unicode() < 0x20)
            ch = QLatin1Char(' ');
    return out;
}

int ClipboardText::ParseColCount(const QString& line) {
    return int(line.count(kTab)) + 1;
}

std::optional<ClipboardData> ClipboardText::parse(const QString& text) {
    if (!text.contains(kLineBreak))
        return std::nullopt;
    QString body = text;
    if (body.endsWith(kLineBreak))
        body.chop(kLineBreak.size());
    const QStringList lines = body.split(kLineBreak);
    if (lines.size() < 3)
        return std::nullopt;
    ClipboardData data;
    if (lines[0] == QLatin1String("1"))
        data.wholeRows = true;
    else if (lines[0] != QLatin1String("0"))
        return std::nullopt;
    data.header = lines[1];
    if (data.header.isEmpty() || data.header.contains(kTab))
        return std::nullopt;
    const int fields = ParseColCount(lines[2]);
    if (fields < 2)
        return std::nullopt;
    data.rows.reserve(std::size_t(lines.size() - 2));
    for (int i = 2; i < lines.size(); ++i) {
        QStringList cells = lines[i].split(kTab);
        if (cells.size() != fields)
            return std::nullopt;
        ClipboardRow row;
        const QString rem = cells.takeFirst();
        if (rem == QLatin1String(kRem))
            row.rem = true;
        else if (rem != QLatin1String(kNotRem))
            return std::nullopt;
        row.cells = std::move(cells);
        data.rows.push_back(std::move(row));
    }
    return data;
}

bool ClipboardText::cellFits(int colKind, const QString& cell) {
    if (cell.isEmpty())
        return true;
    if (colKind == KindRemark)
        return LegacyText::byteLength(cell) <= image::kRemarkSize && !holdsControlCharacter(cell);
    if (cell == QLatin1String(SheetLayout::kStar))
        return colKind >= KindOutKino && colKind <= KindRel;
    switch (colKind) {
    case KindOutKino:
    case KindInpKino: {
        // Either form of a 16-bit function number: signed as the catalogues list step
        // targets, unsigned as a counter's number operand is shown.
        const auto value = canonicalNumber(cell, true, 5);
        return value && *value >= -32768 && *value <= 65535;
    }
    case KindLogic:
        return codeIn(cell, LogicLow, LogicRet);
    case KindDelayKind:
        // Only even kinds exist.
        return codeIn(cell, DelayTimer, DelayAngle3) && cell.toInt() % 2 == 0;
    case KindDelayValue:
        return canonicalNumber(cell, false, 9).has_value();
    case KindState:
        return codeIn(cell, StatePosLev, StateNegEdg);
    case KindRel:
        return codeIn(cell, RelAnd, RelMinus);
    default:
        return false;
    }
}

} // namespace vkm
