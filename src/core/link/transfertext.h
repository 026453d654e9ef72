#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace vkm {

class Prompter;

// Transfer text: the machine's memory as lines of W records, "W" + 4 hex address digits +
// 16 hex data digits (8 bytes) + 2 hex checksum digits, each line ended by CR LF. It is
// what the serial link sends and what a ".gsp" file holds.

// A value 0..255 as exactly two uppercase hexadecimal digits.
QString HexByte(int value);
// A value as uppercase hexadecimal, zero-padded on the left to width digits.
QString HexDigits(qint64 value, int width);

// Checksum of a text: the complement of the sum of its character codes, low 8 bits, as
// two uppercase hexadecimal digits.
QString GetCheckSum(const QString& text);
// The part of a record the checksum covers: without the first character and the last two.
QString GetStringToCheckSum(const QString& record);

// The lines of a transfer text up to its first empty line (where a reader of the text
// stops), without their line ends (CR LF or LF).
QList<QByteArray> recordLines(const QByteArray& text);

// Whether a line (without its line end) is a good W record: "W", 4 address digits and 16
// data digits in hexadecimal, and the checksum that fits them. *address gets its address.
bool isWRecord(const QByteArray& line, int* address = nullptr);

// One W record (23 characters, no line end) for eight bytes at address.
// bytes must hold exactly 8 bytes.
QString wRecord(int address, const QByteArray& bytes);

// The transfer text of a step image held in memory: 238 records, CR LF after each. An
// image shorter than 1904 bytes gives an empty result and *ok false (bytes past 1903 are
// not transferred).
QByteArray stepImageToText(const QByteArray& image, bool* ok = nullptr);

// Step image file -> transfer text file. The destination is deleted first and written
// only as a whole; false (reported as "SaveAsTextStep") when the source cannot be read or
// is shorter than 1904 bytes, or the destination cannot be written.
bool SaveAsTextStep(const QString& sourceImage, const QString& destText);

// A binary file holding memory from lStartAdrs -> transfer text over lStartAdrs ..
// lEndAdrs. Records past the end of the source are written with zero data. A source
// longer than the range shows "SaveAsText UBound(byt) is larger than lEndAdrs!" in a
// plain box (no icon, OK only; not a numbered message) and goes on.
bool SaveAsText(const QString& source, const QString& dest, qint64 lStartAdrs, qint64 lEndAdrs,
                Prompter& prompter);

// Transfer text file -> the data bytes of its records, in line order (the address field
// is not used). Lines that are not 23 characters long are skipped; an empty line ends the
// text; a record whose checksum is wrong shows "checksum error" (style 1) and is used all
// the same. A data field that is not hexadecimal, or a file that cannot be read, is
// reported as "ParseData" and gives an empty result with *ok false.
QByteArray ParseData(const QString& textFile, Prompter& prompter, bool* ok = nullptr);
// The same over text in memory.
QByteArray parseTransferText(const QByteArray& text, Prompter& prompter, bool* ok = nullptr);

} // namespace vkm
