#include "catalogue/settinglines.h"

#include "base/errorreporter.h"
#include "base/legacytext.h"

#include <QFile>

namespace vkm {

QStringList settingFileLines(const QByteArray& content) {
    // Decoded as a whole, once: CR and LF are single bytes in every code page the machine
    // files use (never the second byte of a double-byte character), so the breaks are
    // found in the text as well as in the bytes.
    const QString text = LegacyText::decode(content);
    QStringList lines;
    qsizetype start = 0;
    while (start < text.size()) {
        // The line ends at the first CR or LF; a CR directly followed by LF is one break.
        qsizetype end = start;
        while (end < text.size() && text[end] != u'\r' && text[end] != u'\n')
            ++end;
        lines << text.mid(start, end - start);
        if (end + 1 < text.size() && text[end] == u'\r' && text[end + 1] == u'\n')
            ++end;
        start = end + 1;
    }
    return lines;
}

bool readSettingFile(const QString& path, QByteArray& content, int* error) {
    QFile file(path);
    if (!file.exists()) {
        *error = ErrFileNotFound;
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        *error = ErrPermissionDenied;
        return false;
    }
    content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        *error = ErrIO;
        return false;
    }
    return true;
}

} // namespace vkm
