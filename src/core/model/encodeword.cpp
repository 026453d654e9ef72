#include "model/csteps.h"

#include "base/errorreporter.h"
#include "base/legacytext.h"

namespace vkm {

// The author and password are not stored in clear: each byte becomes 242 - byte, shifted
// by the digit sum of a key taken from the clock when saving. The key digits are stored
// (as 245 - digit) right behind the text, so the reader needs no secret, but the same
// word gives different bytes in every file.
namespace {
struct Form {
    int textBytes; // 16 author, 8 password
    int keyBytes;  // 4 author, 8 password
    int sumFrom;   // first key digit that counts in the sum
    const char* keyFormat;
};
const Form kAuthor{16, 4, 0, "mmss"};
const Form kPassword{8, 8, 4, "yyyyMMdd"};

int digitValue(int code) {
    return code >= '0' && code <= '9' ? code - '0' : 0;
}
} // namespace

QByteArray EncodeWord(const QString& text, bool authorForm, const QDateTime& now) {
    const Form& form = authorForm ? kAuthor : kPassword;
    const QByteArray key = now.toString(QLatin1String(form.keyFormat)).toLatin1();
    if (key.size() != form.keyBytes) {
        reportError(ErrInvalidCall, QStringLiteral("EncodeWord"));
        return {};
    }
    int sum = 0;
    for (int j = form.sumFrom; j < form.keyBytes; ++j)
        sum += digitValue(quint8(key[j]));

    QByteArray bytes = LegacyText::encode(text);
    for (auto& b : bytes) {
        const int t = quint8(b);
        const int v = 242 - t + sum;
        if (t > 242 || v > 255) {
            reportError(ErrOverflow, QStringLiteral("EncodeWord"));
            return {};
        }
        b = char(v);
    }
    // Longer words lose their tail; the zero padding is left unscrambled, which is how
    // the reader finds the end of the word.
    bytes.resize(form.textBytes, '\0');
    for (const char k : key)
        bytes.append(char(245 - quint8(k)));
    return bytes;
}

QString DecodeWord(const QByteArray& block, bool authorForm, bool* ok) {
    const Form& form = authorForm ? kAuthor : kPassword;
    if (ok)
        *ok = false;
    if (block.size() != form.textBytes + form.keyBytes) {
        reportError(ErrInputPastEnd, QStringLiteral("DecodeWord"));
        return {};
    }
    int sum = 0;
    for (int j = form.sumFrom; j < form.keyBytes; ++j)
        sum += digitValue(245 - quint8(block[form.textBytes + j]));
    QString word;
    for (int i = 0; i < form.textBytes; ++i) {
        const int b = quint8(block[i]);
        if (b == 0)
            break;
        const int c = 242 - (b - sum);
        if (b < sum || c < 0) {
            reportError(ErrInvalidCall, QStringLiteral("DecodeWord"));
            return {};
        }
        // Byte by byte: a double-byte character does not come back intact, as on the machine.
        // Through the code page even for ASCII codes: it maps some control codes (0x1A,
        // 0x7F) to each other, and encoding must undo exactly what decoding did.
        word += LegacyText::decode(QByteArray(1, char(c)));
    }
    if (ok)
        *ok = true;
    return word;
}

QString DecodeWord(const QByteArray& block, bool authorForm) {
    return DecodeWord(block, authorForm, nullptr);
}

} // namespace vkm
