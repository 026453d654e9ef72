#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace vkm {

// One value property of a terminal by its name, for listings. present is false when the
// terminal has no place for it in the image (its address is empty).
struct TerminalValue {
    const char* name;
    quint8 value;
    bool present;
};

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

// Reports an address of the terminal that lies outside the customisation image, naming the
// terminal after the standard text.
void reportAddressOutside(const QString& procedure, const QString& location);

// How a value property of a terminal lives in the customisation image.
enum class FieldRule {
    Function, // a whole byte every terminal has; bit 7 is not part of the function number
    Logic,    // the flag every terminal has, OR-ed in on writing
    Flag,     // a flag under its mask, OR-ed in on writing: a flag the machine has set stays set
    Code,     // a number under its mask, replaced on writing: a new code keeps no bit of the old
    Byte,     // a whole byte
    Unplaced, // kept by the program only, never in the image
};

// One value property of the terminal type T: its name, rule, and the members holding its
// address (an index, -1 when the terminal has none), its mask and its value.
template <typename T> struct ValueField {
    const char* name;
    FieldRule rule;
    qint32 T::*adrs;
    quint8 T::*bit; // nullptr for whole bytes
    quint8 T::*value;
};

namespace detail {
inline bool isRequired(FieldRule rule) {
    return rule == FieldRule::Function || rule == FieldRule::Logic;
}
// Whether the terminal has a place in the image for the field: the function and logic
// always, the others when their address is set.
template <typename T> bool hasPlace(const T& t, const ValueField<T>& f) {
    return f.rule != FieldRule::Unplaced && (isRequired(f.rule) || t.*f.adrs != -1);
}
// visit(field, index) for every field with a place in the image, in field order. False at
// the first index that does not lie in the image (the fields before it were visited).
template <typename T, typename Visit>
bool forEachPlacedField(const T& t, qsizetype size, const std::vector<ValueField<T>>& fields, Visit visit) {
    for (const ValueField<T>& f : fields) {
        if (!hasPlace(t, f))
            continue;
        const qint32 index = t.*f.adrs;
        if (index < 0 || index >= size)
            return false;
        visit(f, index);
    }
    return true;
}
} // namespace detail

// Fills the terminal's values from the image, in field order. A field without an address
// keeps its value. False at the first address outside the image (the fields before it
// have their new values).
template <typename T>
bool readTerminalValues(T& t, const QByteArray& image, const std::vector<ValueField<T>>& fields) {
    return detail::forEachPlacedField(t, image.size(), fields, [&](const ValueField<T>& f, qint32 index) {
        const quint8 byte = quint8(image.at(index));
        switch (f.rule) {
        case FieldRule::Function:
            t.*f.value = byte & 0x7F;
            break;
        case FieldRule::Byte:
            t.*f.value = byte;
            break;
        default:
            t.*f.value = maskedValue(byte, t.*f.bit);
            break;
        }
    });
}

// Writes the terminal's values into the image, in field order; fields without an address
// are skipped. False at the first address outside the image (the image is never resized).
template <typename T>
bool writeTerminalValues(const T& t, QByteArray& image, const std::vector<ValueField<T>>& fields) {
    return detail::forEachPlacedField(t, image.size(), fields, [&](const ValueField<T>& f, qint32 index) {
        const quint8 byte = quint8(image.at(index));
        const quint8 value = t.*f.value;
        switch (f.rule) {
        case FieldRule::Function:
        case FieldRule::Byte:
            image[index] = char(value);
            break;
        case FieldRule::Code:
            image[index] = char(replaceMasked(byte, t.*f.bit, value));
            break;
        default:
            image[index] = char(orMasked(byte, t.*f.bit, value));
            break;
        }
    });
}

// The terminal's values by name, in field order.
template <typename T>
std::vector<TerminalValue> listTerminalValues(const T& t, const std::vector<ValueField<T>>& fields) {
    std::vector<TerminalValue> out;
    for (const ValueField<T>& f : fields)
        out.push_back({f.name, t.*f.value, detail::hasPlace(t, f)});
    return out;
}

} // namespace vkm
