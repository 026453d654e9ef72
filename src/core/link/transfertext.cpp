#include "link/transfertext.h"

#include "base/errorreporter.h"
#include "base/messages.h"
#include "base/prompter.h"
#include "link/memorymap.h"

#include <QFile>

namespace vkm {

namespace {

const char kHex[] = "0123456789ABCDEF";

int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// Checksum over raw characters: complement of the sum, low 8 bits.
int checkSumOf(const char* text, int length) {
    unsigned sum = 0;
    for (int i = 0; i < length; ++i)
        sum += quint8(text[i]);
    return int(~sum & 0xFF);
}

void appendRecord(QByteArray& out, int address, const char* bytes) {
    char line[memmap::kRecordLength + 2];
    line[0] = 'W';
    for (int i = 0; i < 4; ++i)
        line[1 + i] = kHex[(address >> (12 - 4 * i)) & 0xF];
    for (int i = 0; i < memmap::kRecordDataBytes; ++i) {
        line[5 + 2 * i] = kHex[(quint8(bytes[i]) >> 4) & 0xF];
        line[6 + 2 * i] = kHex[quint8(bytes[i]) & 0xF];
    }
    const int sum = checkSumOf(line + 1, 20);
    line[21] = kHex[sum >> 4];
    line[22] = kHex[sum & 0xF];
    line[23] = '\r';
    line[24] = '\n';
    out.append(line, sizeof line);
}

bool readWhole(const QString& path, QByteArray& bytes, const char* procedure) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        reportError(f.exists() ? ErrPermissionDenied : ErrFileNotFound, QString::fromLatin1(procedure));
        return false;
    }
    bytes = f.readAll();
    return true;
}

// The destination (a temporary file) is removed first and written as a whole; a write
// that fails leaves no file behind rather than a half one. The user's own files are
// replaced atomically by the callers (CopyFiles).
bool writeWhole(const QString& path, const QByteArray& bytes, const char* procedure) {
    if (QFile::exists(path) && !QFile::remove(path)) {
        reportError(ErrPermissionDenied, QString::fromLatin1(procedure));
        return false;
    }
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.flush()) {
        f.close();
        QFile::remove(path);
        reportError(ErrPathAccess, QString::fromLatin1(procedure));
        return false;
    }
    return true;
}

} // namespace

QString HexByte(int value) {
    return HexDigits(value & 0xFF, 2);
}

QString HexDigits(qint64 value, int width) {
    return QString::number(value, 16).toUpper().rightJustified(width, QLatin1Char('0'));
}

QString GetCheckSum(const QString& text) {
    const QByteArray bytes = text.toLatin1();
    return HexByte(checkSumOf(bytes.constData(), int(bytes.size())));
}

QString GetStringToCheckSum(const QString& record) {
    if (record.size() < 3)
        return {};
    return record.mid(1, record.size() - 3);
}

QList<QByteArray> recordLines(const QByteArray& text) {
    QList<QByteArray> lines;
    qsizetype pos = 0;
    while (pos < text.size()) {
        qsizetype end = text.indexOf('\n', pos);
        if (end < 0)
            end = text.size();
        QByteArray line = text.mid(pos, end - pos);
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.isEmpty())
            break;
        lines << line;
        pos = end + 1;
    }
    return lines;
}

bool isWRecord(const QByteArray& line, int* address) {
    if (line.size() != memmap::kRecordLength || line.at(0) != 'W')
        return false;
    for (int i = 1; i < memmap::kRecordLength; ++i) {
        if (hexValue(line.at(i)) < 0)
            return false;
    }
    const int sum = checkSumOf(line.constData() + 1, 20);
    if (line.at(21) != kHex[sum >> 4] || line.at(22) != kHex[sum & 0xF])
        return false;
    if (address)
        *address = line.mid(1, 4).toInt(nullptr, 16);
    return true;
}

QString wRecord(int address, const QByteArray& bytes) {
    if (bytes.size() != memmap::kRecordDataBytes)
        return {};
    QByteArray line;
    appendRecord(line, address, bytes.constData());
    return QString::fromLatin1(line.left(memmap::kRecordLength));
}

QByteArray stepImageToText(const QByteArray& image, bool* ok) {
    if (ok)
        *ok = image.size() >= memmap::kStepImageBytes;
    if (image.size() < memmap::kStepImageBytes)
        return {};
    QByteArray text;
    text.reserve(memmap::kStepRecordCount * (memmap::kRecordLength + 2));
    for (int n = 0; n < memmap::kStepImageBytes; n += memmap::kRecordDataBytes)
        appendRecord(text, memmap::stepImageAddress(n), image.constData() + n);
    return text;
}

bool SaveAsTextStep(const QString& sourceImage, const QString& destText) {
    QByteArray image;
    if (!readWhole(sourceImage, image, "SaveAsTextStep"))
        return false;
    bool ok = false;
    const QByteArray text = stepImageToText(image, &ok);
    if (!ok) {
        QFile::remove(destText);
        reportError(ErrSubscript, QStringLiteral("SaveAsTextStep"));
        return false;
    }
    return writeWhole(destText, text, "SaveAsTextStep");
}

bool SaveAsText(const QString& source, const QString& dest, qint64 lStartAdrs, qint64 lEndAdrs,
                Prompter& prompter) {
    QByteArray bytes;
    if (!readWhole(source, bytes, "SaveAsText"))
        return false;
    if (bytes.size() - 1 > lEndAdrs) {
        // A plain notice with OK only; the information box is the closest of the styles.
        prompter.showText(QStringLiteral("SaveAsText UBound(byt) is larger than lEndAdrs!"), kPlainBox);
    }
    static const char zeros[memmap::kRecordDataBytes] = {};
    QByteArray text;
    for (qint64 n = 0; n <= lEndAdrs - lStartAdrs - memmap::kRecordDataBytes; n += memmap::kRecordDataBytes) {
        const char* data = zeros;
        if (n < bytes.size()) {
            // Whole records past the end are padded; a record cut by the end is not.
            if (n + memmap::kRecordDataBytes > bytes.size()) {
                QFile::remove(dest);
                reportError(ErrSubscript, QStringLiteral("SaveAsText"));
                return false;
            }
            data = bytes.constData() + n;
        }
        appendRecord(text, int(lStartAdrs + n), data);
    }
    return writeWhole(dest, text, "SaveAsText");
}

QByteArray parseTransferText(const QByteArray& text, Prompter& prompter, bool* ok) {
    if (ok)
        *ok = false;
    QByteArray bytes;
    bytes.reserve(text.size() / (memmap::kRecordLength + 2) * memmap::kRecordDataBytes +
                  memmap::kRecordDataBytes);
    const char* p = text.constData();
    const qsizetype n = text.size();
    qsizetype pos = 0;
    while (pos < n) {
        qsizetype end = pos;
        while (end < n && p[end] != '\r' && p[end] != '\n')
            ++end;
        const qsizetype length = end - pos;
        if (length == 0)
            break; // an empty line ends the text
        const char* line = p + pos;
        pos = end;
        if (pos < n && p[pos] == '\r')
            ++pos;
        if (pos < n && p[pos] == '\n')
            ++pos;
        if (length != memmap::kRecordLength)
            continue;
        const int sum = checkSumOf(line + 1, 20);
        if (line[21] != kHex[sum >> 4] || line[22] != kHex[sum & 0xF])
            prompter.showText(QStringLiteral("checksum error"), 1); // the record is used all the same
        for (int i = 0; i < memmap::kRecordDataBytes; ++i) {
            const int hi = hexValue(line[5 + 2 * i]);
            const int lo = hexValue(line[6 + 2 * i]);
            if (hi < 0 || lo < 0) {
                reportError(ErrTypeMismatch, QStringLiteral("ParseData"));
                return {};
            }
            bytes.append(char(hi * 16 + lo));
        }
    }
    if (ok)
        *ok = true;
    return bytes;
}

QByteArray ParseData(const QString& textFile, Prompter& prompter, bool* ok) {
    if (ok)
        *ok = false;
    QByteArray text;
    if (!readWhole(textFile, text, "ParseData"))
        return {};
    return parseTransferText(text, prompter, ok);
}

} // namespace vkm
