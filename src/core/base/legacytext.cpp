#include "base/legacytext.h"

#include <QStringDecoder>
#include <QStringEncoder>

namespace vkm {

namespace {
QString g_codePage = QStringLiteral("windows-31j");
}

bool LegacyText::setCodePage(const QString& name) {
    QStringEncoder probe(name.toLatin1().constData());
    if (!probe.isValid())
        return false;
    g_codePage = name;
    return true;
}

QString LegacyText::codePage() {
    return g_codePage;
}

QByteArray LegacyText::encode(const QString& text) {
    QStringEncoder enc(g_codePage.toLatin1().constData());
    if (!enc.isValid())
        return text.toLatin1();
    return enc.encode(text);
}

QString LegacyText::decode(const QByteArray& bytes) {
    QStringDecoder dec(g_codePage.toLatin1().constData());
    if (!dec.isValid())
        return QString::fromLatin1(bytes);
    return dec.decode(bytes);
}

int LegacyText::byteLength(const QString& text) {
    return int(encode(text).size());
}

bool LegacyText::isSingleByte(QChar c) {
    return encode(QString(c)).size() == 1;
}

} // namespace vkm
