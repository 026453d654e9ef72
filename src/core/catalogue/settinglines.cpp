#include "catalogue/settinglines.h"

#include "base/errorreporter.h"
#include "base/legacytext.h"

#include <QFile>

namespace vkm {

QStringList settingFileLines(const QByteArray& content) {
    QStringList lines;
    qsizetype start = 0;
    while (start < content.size()) {
        qsizetype end = content.indexOf('\n', start);
        const qsizetype next = end < 0 ? content.size() : end + 1;
        if (end < 0)
            end = content.size();
        QByteArray raw = content.mid(start, end - start);
        if (raw.endsWith('\r'))
            raw.chop(1);
        lines << LegacyText::decode(raw);
        start = next;
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
