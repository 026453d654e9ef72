#include "virtualmachine.h"

#include "link/transfertext.h"

#include <cctype>

namespace vkm::sim {

namespace {

const QByteArray kLineEnd("\r\n");

bool hexField(const QByteArray& frame, int from, int count, int* value = nullptr) {
    if (frame.size() < from + count)
        return false;
    for (int i = from; i < from + count; ++i) {
        if (!std::isxdigit(static_cast<unsigned char>(frame.at(i))))
            return false;
    }
    if (value)
        *value = frame.mid(from, count).toInt(nullptr, 16);
    return true;
}

QByteArray checksum(const QByteArray& text) {
    return GetCheckSum(QString::fromLatin1(text)).toLatin1();
}

bool checksumOk(const QByteArray& frame) {
    return frame.size() >= 3 && checksum(frame.mid(1, frame.size() - 3)) == frame.right(2);
}

QByteArray hex4(int value) {
    return HexDigits(value, 4).toLatin1();
}

QString printable(const QByteArray& bytes) {
    QString s;
    for (char c : bytes) {
        const auto u = static_cast<unsigned char>(c);
        if (u == '\r')
            s += QStringLiteral("\\r");
        else if (u == '\n')
            s += QStringLiteral("\\n");
        else if (u < 0x20 || u >= 0x7F)
            s += QStringLiteral("\\x%1").arg(u, 2, 16, QLatin1Char('0'));
        else
            s += QLatin1Char(c);
    }
    return s;
}

} // namespace

std::optional<Fault> parseFault(const QString& text, QString* error) {
    static const QList<std::pair<QString, Fault::Type>> names = {
        {QStringLiteral("silent"), Fault::Silent},        {QStringLiteral("late"), Fault::Late},
        {QStringLiteral("checksum"), Fault::BadChecksum}, {QStringLiteral("error"), Fault::ErrorAnswer},
        {QStringLiteral("address"), Fault::WrongAddress}, {QStringLiteral("write-error"), Fault::WriteError},
        {QStringLiteral("lost-write"), Fault::LostWrite}, {QStringLiteral("disconnect"), Fault::Disconnect},
    };
    const QStringList parts = text.split(u':');
    Fault f;
    bool known = false;
    for (const auto& [name, type] : names) {
        if (parts.value(0) == name) {
            f.type = type;
            known = true;
        }
    }
    bool ok = false;
    f.frame = parts.value(1).toInt(&ok);
    if (!known || !ok || f.frame < 1) {
        *error = QStringLiteral("bad fault \"%1\": expected KIND:N with N from 1 (see --help)").arg(text);
        return std::nullopt;
    }
    const int extra = int(parts.size()) - 2;
    if (f.type == Fault::Late) {
        f.attempts = parts.value(2).toInt(&ok);
        if (extra != 1 || !ok || f.attempts < 2) {
            *error = QStringLiteral("bad fault \"%1\": late:N:K needs K from 2").arg(text);
            return std::nullopt;
        }
    } else if (f.type == Fault::WriteError && extra == 1) {
        f.code = parts.value(2).toLatin1();
        if (f.code.size() != 4) {
            *error = QStringLiteral("bad fault \"%1\": the code has four characters (E001)").arg(text);
            return std::nullopt;
        }
    } else if (extra != 0) {
        *error = QStringLiteral("bad fault \"%1\": too many fields").arg(text);
        return std::nullopt;
    }
    return f;
}

VirtualMachine::VirtualMachine() : m_memory(kMemorySize, '\0') {}

void VirtualMachine::setIdentification(const QByteArray& bytes) {
    for (int i = 0; i < 3 && i < bytes.size(); ++i)
        m_memory[kIdAddress + i] = bytes.at(i);
}

bool VirtualMachine::loadTransferText(const QByteArray& text, QString* error) {
    const QList<QByteArray> lines = recordLines(text);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        int address = 0;
        if (!isWRecord(lines[i], &address) || address + 8 > kMemorySize) {
            *error = QStringLiteral("line %1 is not a W record: %2").arg(i + 1).arg(printable(lines[i]));
            return false;
        }
        m_memory.replace(address, 8, QByteArray::fromHex(lines[i].mid(5, 16)));
    }
    return true;
}

void VirtualMachine::log(const QString& line) const {
    if (logger)
        logger(line);
}

const Fault* VirtualMachine::faultAt(int frame, Fault::Type type) const {
    for (const Fault& f : m_faults) {
        if (f.frame == frame && f.type == type)
            return &f;
    }
    return nullptr;
}

QByteArray VirtualMachine::readAnswer(const QByteArray& frame) const {
    int address = 0;
    const bool good = frame.size() == 7 && hexField(frame, 1, 4, &address) && checksumOk(frame) &&
                      address + 8 <= kMemorySize;
    const QByteArray digits = frame.mid(1, 4);
    const QByteArray data = good ? m_memory.mid(address, 8).toHex().toUpper() : QByteArray(16, '0');
    const QByteArray body = digits.leftJustified(4, '0', true) + data;
    return (good ? "R" : "#") + body + checksum(body) + kLineEnd;
}

QByteArray VirtualMachine::writeAnswer(const QByteArray& frame) {
    int address = 0;
    QByteArray code = "E000";
    if (frame.size() != 23 || !hexField(frame, 1, 20))
        code = "E003";
    else if (!checksumOk(frame))
        code = "E001";
    else if (!hexField(frame, 1, 4, &address) || address + 8 > kMemorySize)
        code = "E002";
    if (const Fault* f = faultAt(m_frames, Fault::WriteError)) {
        log(QStringLiteral("   fault: write error %1").arg(QString::fromLatin1(f->code)));
        code = f->code;
    }
    const bool lost = code == "E000" && faultAt(m_frames, Fault::LostWrite);
    if (lost)
        log(QStringLiteral("   fault: record acknowledged but not stored"));
    if (code == "E000" && !lost)
        m_memory.replace(address, 8, QByteArray::fromHex(frame.mid(5, 16)));
    const QByteArray body = code + frame.mid(1, 4).leftJustified(4, '0', true);
    return "A" + body + checksum(body) + kLineEnd;
}

QByteArray VirtualMachine::applyFaults(const QByteArray& frame, QByteArray answer) {
    Q_UNUSED(frame);
    if (faultAt(m_frames, Fault::WrongAddress) && answer.size() >= 23) {
        // Another address, with a checksum that fits it: only the echo is wrong.
        int address = 0;
        hexField(answer, 1, 4, &address);
        QByteArray body = hex4((address + 8) % kMemorySize) + answer.mid(5, 16);
        answer = answer.left(1) + body + checksum(body) + kLineEnd;
        log(QStringLiteral("   fault: wrong address echo"));
    }
    if (faultAt(m_frames, Fault::BadChecksum) && answer.size() >= 23) {
        answer[22] = answer.at(22) == '0' ? '1' : '0';
        log(QStringLiteral("   fault: wrong checksum"));
    }
    if (faultAt(m_frames, Fault::ErrorAnswer)) {
        answer[0] = '#';
        log(QStringLiteral("   fault: error answer"));
    }
    return answer;
}

VirtualMachine::Response VirtualMachine::handleFrame(const QByteArray& frame) {
    const int n = ++m_frames;
    log(QStringLiteral("#%1 <- %2").arg(n).arg(printable(frame)));
    Response r;
    if (faultAt(n, Fault::Disconnect)) {
        log(QStringLiteral("   fault: line dropped"));
        r.hangUp = true;
        return r;
    }
    if (const Fault* late = faultAt(n, Fault::Late)) {
        m_lateFrame = frame;
        m_lateLeft = late->attempts - 1;
    }
    if (m_lateLeft > 0 && frame == m_lateFrame) {
        --m_lateLeft;
        log(QStringLiteral("   fault: no answer (%1 more time(s))").arg(m_lateLeft));
        return r;
    }
    if (faultAt(n, Fault::Silent)) {
        log(QStringLiteral("   fault: no answer"));
        return r;
    }
    if (frame.startsWith('R')) {
        r.answer = applyFaults(frame, readAnswer(frame));
    } else if (frame.startsWith('W')) {
        r.answer = applyFaults(frame, writeAnswer(frame));
    } else if (frame == "C00003F") {
        ++m_resets;
        r.reset = true;
        log(QStringLiteral("   reset"));
        return r;
    } else {
        log(QStringLiteral("   unknown frame, no answer"));
        return r;
    }
    QByteArray shown = r.answer;
    shown.chop(2);
    log(QStringLiteral("#%1 -> %2").arg(n).arg(printable(shown)));
    return r;
}

} // namespace vkm::sim
