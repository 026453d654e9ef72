#include "link/commframes.h"

#include "link/transfertext.h"

namespace vkm::comm {

namespace {
const QByteArray kLineEnd("\r\n");

QString latin1(const QByteArray& bytes, qsizetype from, qsizetype count) {
    return QString::fromLatin1(bytes.mid(from, count));
}
} // namespace

QString CreateChkSum(const QString& text) {
    return GetCheckSum(text);
}

QByteArray readRequest(int address) {
    const QString digits = HexDigits(address, 4);
    return ('R' + digits + CreateChkSum(digits)).toLatin1() + kLineEnd;
}

QByteArray writeRequest(const QByteArray& record) {
    return record + kLineEnd;
}

QByteArray resetCommand() {
    return QByteArrayLiteral("C00003F") + kLineEnd;
}

AnswerFault readAnswerFault(const QByteArray& answer, const QString& address) {
    if (answer.startsWith('#'))
        return AnswerFault::ErrorReturned;
    if (CreateChkSum(latin1(answer, 1, 20)) != latin1(answer, 21, 2))
        return AnswerFault::CheckSum;
    if (latin1(answer, 1, 4) != address)
        return AnswerFault::Address;
    return AnswerFault::None;
}

QByteArray recordOfAnswer(const QByteArray& answer) {
    return 'W' + answer.mid(1, 22) + kLineEnd;
}

QString acknowledgementCode(const QByteArray& answer) {
    return latin1(answer, 1, 4);
}

bool isAcknowledged(const QByteArray& answer) {
    return acknowledgementCode(answer) == QLatin1String("E000");
}

QString machineKindOf(const QByteArray& answer) {
    bool ok = false;
    const int option = latin1(answer, 7, 2).toInt(&ok, 16);
    return latin1(answer, 5, 2) + HexByte(ok ? option & 0x1F : 0) + latin1(answer, 9, 1);
}

bool isSeriesMachine(const QByteArray& answer) {
    return answer.size() > 9 && answer.at(9) == '2';
}

} // namespace vkm::comm
