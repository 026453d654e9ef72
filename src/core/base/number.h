#pragma once

#include <QString>
#include <optional>

namespace vkm {

// Numbers read from text (catalogue and setting files, cells, typed values) are the
// leading decimal number of the text: optional blanks, an optional sign, digits, an
// optional fraction and exponent; parsing stops at the first character that cannot
// continue the number. Empty or non-numeric text gives 0.
double leadingNumber(const QString& text);

// Rounds to the nearest integer, halves to even (12.5 -> 12, 13.5 -> 14).
double roundHalfEven(double value);

// The leading number rounded half to even.
qint64 leadingInteger(const QString& text);

// The leading number rounded half to even, when it fits a signed 16-bit integer.
std::optional<qint16> leadingInt16(const QString& text);

// True when the whole text (blanks around it allowed) is a decimal number.
bool isNumeric(const QString& text);

} // namespace vkm
