#include "base/number.h"

#include <cmath>
#include <limits>

namespace vkm {

namespace {
// Length of the numeric prefix of text starting at pos (after blanks), 0 when none.
int numericPrefix(const QString& text, int pos) {
    const int n = text.size();
    int i = pos;
    if (i < n && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    int digits = 0;
    while (i < n && text[i].isDigit() && text[i].unicode() < 128) {
        ++i;
        ++digits;
    }
    if (i < n && text[i] == u'.') {
        int j = i + 1;
        int frac = 0;
        while (j < n && text[j].isDigit() && text[j].unicode() < 128) {
            ++j;
            ++frac;
        }
        if (digits + frac > 0) {
            i = j;
            digits += frac;
        }
    }
    if (digits == 0)
        return 0;
    if (i < n && (text[i] == u'e' || text[i] == u'E')) {
        int j = i + 1;
        if (j < n && (text[j] == u'+' || text[j] == u'-'))
            ++j;
        int exp = 0;
        while (j < n && text[j].isDigit() && text[j].unicode() < 128) {
            ++j;
            ++exp;
        }
        if (exp > 0)
            i = j;
    }
    return i - pos;
}

int skipBlanks(const QString& text, int pos) {
    while (pos < text.size() && (text[pos] == u' ' || text[pos] == u'\t'))
        ++pos;
    return pos;
}
} // namespace

double leadingNumber(const QString& text) {
    const int start = skipBlanks(text, 0);
    const int len = numericPrefix(text, start);
    if (len == 0)
        return 0.0;
    bool ok = false;
    const double v = text.mid(start, len).toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return 0.0;
    return v;
}

double roundHalfEven(double value) {
    if (!std::isfinite(value))
        return value;
    return std::nearbyint(value); // the default rounding mode rounds halves to even
}

qint64 leadingInteger(const QString& text) {
    const double r = roundHalfEven(leadingNumber(text));
    if (r >= 9.2e18)
        return std::numeric_limits<qint64>::max();
    if (r <= -9.2e18)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(r);
}

std::optional<qint16> leadingInt16(const QString& text) {
    const double r = roundHalfEven(leadingNumber(text));
    if (r < -32768.0 || r > 32767.0)
        return std::nullopt;
    return static_cast<qint16>(r);
}

bool isNumeric(const QString& text) {
    const int start = skipBlanks(text, 0);
    const int len = numericPrefix(text, start);
    if (len == 0)
        return false;
    return skipBlanks(text, start + len) == text.size();
}

} // namespace vkm
