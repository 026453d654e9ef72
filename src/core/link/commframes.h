#pragma once

#include <QByteArray>
#include <QString>

namespace vkm::comm {

// The frames of the machine link. Every frame is ASCII text ended by CR LF; its checksum
// is the transfer text's (complement of the sum of the character codes, low 8 bits, two
// uppercase hexadecimal digits) over the characters after the first one.
//
//   read request       "R" + 4 address digits + checksum                      9 with CR LF
//   read answer        1 lead character ("#" = error) + 4 address digits +
//                      16 data digits + checksum of the 20 digits              25 with CR LF
//   write request      one W record of the transfer text                      25 with CR LF
//   acknowledgement    1 lead character + "E000" on success or an error code  13 with CR LF
//   reset              "C00003F"                                               9 with CR LF

constexpr int kReadAnswerLength = 25;
constexpr int kAcknowledgementLength = 13;
// The address whose answer identifies the machine: the identification bytes at
// 0x0100..0x0102 lead its data.
constexpr int kMachineCheckAddress = 0x0100;

QString CreateChkSum(const QString& text);

// "R" + address + checksum + CR LF.
QByteArray readRequest(int address);
// A W record (as a transfer text line, without line end) + CR LF.
QByteArray writeRequest(const QByteArray& record);
// "C00003F" + CR LF: the machine restarts with what it was sent.
QByteArray resetCommand();

// What is wrong with a read answer, checked in this order.
enum class AnswerFault {
    None,
    ErrorReturned, // it begins with "#"
    CheckSum,      // characters 22-23 are not the checksum of characters 2-21
    Address,       // characters 2-5 are not the address asked for
};
AnswerFault readAnswerFault(const QByteArray& answer, const QString& address);

// The W record a good read answer stands for: its lead character replaced by "W", the
// 22 characters after it, CR LF.
QByteArray recordOfAnswer(const QByteArray& answer);

// Characters 2-5 of an acknowledgement: "E000" when the record was taken.
QString acknowledgementCode(const QByteArray& answer);
bool isAcknowledged(const QByteArray& answer);

// The machine kind of the identification answer: its characters 6-7 as they are, 8-9 as a
// byte masked to its low five bits (the upper three bits of 0x0101 are options of the
// same model) in two uppercase digits, and character 10. Five characters.
QString machineKindOf(const QByteArray& answer);
// Whether the identification answer is one of the series: character 10, the high digit
// of the byte at 0x0102, is "2".
bool isSeriesMachine(const QByteArray& answer);

} // namespace vkm::comm
