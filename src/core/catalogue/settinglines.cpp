#include "catalogue/settinglines.h"

#include "base/errorreporter.h"
#include "base/legacytext.h"

#include <QFile>

namespace vkm {

QStringList settingFileLines(const QByteArray& content) {
    QStringList lines;
    qsizetype start = 0;
    while (start < content.size()) {
        // The line ends at the first CR or LF; a CR directly followed by LF is one break.
        qsizetype end = start;
        while (end < content.size() && content[end] != '\r' && content[end] != '\n')
            ++end;
        lines << LegacyText::decode(content.mid(start, end - start));
        if (end < content.size() && content[end] == '\r' && end + 1 < content.size() &&
            content[end + 1] == '\n')
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
