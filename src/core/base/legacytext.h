#pragma once

#include <QByteArray>
#include <QString>

namespace vkm {

// Text stored in files of the machine (remarks, memo, author, password, memo file
// names, catalogue files) uses the legacy single-byte/double-byte code page:
// Windows code page 932 unless the "General"/"CodePage" setting names another.
class LegacyText {
public:
    // Selects the code page by name ("windows-31j", "CP1252", ...). Returns false and
    // keeps the current one when Qt does not know the name.
    static bool setCodePage(const QString& name);
    static QString codePage();

    static QByteArray encode(const QString& text);
    static QString decode(const QByteArray& bytes);

    // Number of bytes the text takes in the code page (a double-byte character counts 2).
    static int byteLength(const QString& text);

    // True when the character is stored as one byte in the code page.
    static bool isSingleByte(QChar c);
};

} // namespace vkm
