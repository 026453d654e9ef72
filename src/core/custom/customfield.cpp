#include "custom/customfield.h"

#include "base/errorreporter.h"
#include "base/number.h"

#include <limits>

namespace vkm {

namespace {
// The customisation area starts at this address in the setting files' numbering.
constexpr qint64 kAreaBase = 1792;

int lowestBit(quint8 mask) {
    int shift = 0;
    while (shift < 8 && !(mask & (1u << shift)))
        ++shift;
    return shift;
}
} // namespace

std::optional<qint32> AdrsToIndex(qint64 adrs) {
    const qint64 index = adrs > 0 ? adrs - kAreaBase : adrs;
    if (index < std::numeric_limits<qint32>::min() || index > std::numeric_limits<qint32>::max())
        return std::nullopt;
    return qint32(index);
}

std::optional<qint32> AdrsToIndex(const QString& sAdrs) {
    if (sAdrs.isEmpty())
        return -1;
    return AdrsToIndex(leadingInteger(sAdrs));
}

std::optional<quint8> maskFromText(const QString& text) {
    const qint64 v = leadingInteger(text);
    if (v < 0 || v > 255)
        return std::nullopt;
    return quint8(v);
}

quint8 maskedValue(quint8 byte, quint8 mask) {
    if (mask == 0)
        return 0;
    return quint8((byte & mask) >> lowestBit(mask));
}

quint8 replaceMasked(quint8 byte, quint8 mask, quint8 value) {
    if (mask == 0)
        return byte;
    return quint8((byte & ~mask) | ((value << lowestBit(mask)) & mask));
}

quint8 orMasked(quint8 byte, quint8 mask, quint8 value) {
    if (mask == 0)
        return byte;
    return quint8(byte | ((value << lowestBit(mask)) & mask));
}

qint32 TerminalFields::adrs(int field) {
    const auto v = AdrsToIndex(text(field));
    if (!v) {
        if (ok())
            m_error = ErrOverflow;
        return -1;
    }
    return *v;
}

qint32 TerminalFields::numberAdrs(int field) {
    const auto v = AdrsToIndex(leadingInteger(text(field)));
    if (!v) {
        if (ok())
            m_error = ErrOverflow;
        return 0;
    }
    return *v;
}

quint8 TerminalFields::mask(int field) {
    const auto v = maskFromText(text(field));
    if (!v) {
        if (ok())
            m_error = ErrOverflow;
        return 0;
    }
    return *v;
}

void reportAddressOutside(const QString& procedure, const QString& location) {
    reportError(ErrSubscript, procedure,
                errorText(ErrSubscript) + QStringLiteral(" (terminal ") + location + u')');
}

} // namespace vkm
