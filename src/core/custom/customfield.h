#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace vkm {

// Addresses in Set04.e and Set05.e count from 1792, the first byte of the customisation
// area; an index into the customisation image is the address minus 1792. An empty field
// means the terminal has no such property (-1); 0 and negative numbers are kept as they are.
// nullopt when the number does not fit a 32-bit index.
std::optional<qint32> AdrsToIndex(const QString& sAdrs);
// The same for an address already read as a number.
std::optional<qint32> AdrsToIndex(qint64 adrs);

// A bit mask field: the leading number, rounded; nullopt outside 0..255.
std::optional<quint8> maskFromText(const QString& text);

// Value of the bits under mask, shifted down to bit 0 (mask 0 reads 0).
quint8 maskedValue(quint8 byte, quint8 mask);
// The byte with the bits under mask replaced by value shifted up to the mask's lowest bit.
quint8 replaceMasked(quint8 byte, quint8 mask, quint8 value);
// The byte with value shifted up to the mask's lowest bit OR-ed in (bits already set stay).
quint8 orMasked(quint8 byte, quint8 mask, quint8 value);

// Reads the fields of one Set04.e / Set05.e line by position. The first field that is not
// valid (a mask outside 0..255, an address beyond the index range) clears ok() and
// records the error number; later reads give defaults.
class TerminalFields {
public:
    explicit TerminalFields(const QStringList& fields) : m_fields(fields) {}
    bool ok() const { return m_error == 0; }
    int error() const { return m_error; }
    QString text(int field) const { return m_fields.value(field - 1); }
    // An address field (1-based position): -1 when empty.
    qint32 adrs(int field);
    // A number field that holds an address (KinoAdrs, LogicAdrs): empty reads as 0.
    qint32 numberAdrs(int field);
    quint8 mask(int field);

private:
    const QStringList& m_fields;
    int m_error = 0;
};

} // namespace vkm
