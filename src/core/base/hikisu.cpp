#include "base/hikisu.h"

#include <QFileInfo>

namespace vkm {

QString hikisuFileName(const QString& commandLine) {
    QString name = commandLine;
    const qsizetype first = commandLine.indexOf(QLatin1Char('"'));
    if (first >= 0) {
        const qsizetype second = commandLine.indexOf(QLatin1Char('"'), first + 1);
        name = second < 0 ? commandLine.mid(first + 1) : commandLine.mid(first + 1, second - first - 1);
    } else {
        name = name.trimmed();
    }
    if (name.isEmpty())
        return {};
    const QFileInfo info(name);
    return info.isFile() ? info.absoluteFilePath() : QString();
}

} // namespace vkm
