#include "base/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

// The installed data folder relative to the installed executables (set by the build from
// its install directories).
#ifndef VKM_DATA_FROM_BIN
#define VKM_DATA_FROM_BIN "../share/vkmstep"
#endif

namespace vkm::paths {

QString exeFolder() {
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath();
    return QDir::currentPath();
}

QString installedDataFolder() {
    return QDir::cleanPath(exeFolder() + QStringLiteral("/" VKM_DATA_FROM_BIN));
}

QString dataPath(const QString& relative) {
    // The installation is only ever read: nothing is written beside either candidate.
    for (const QString& folder : {exeFolder(), installedDataFolder()}) {
        const QString path = folder + QLatin1Char('/') + relative;
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

QString settingArchive(const QString& override) {
    if (!override.isEmpty())
        return QFileInfo(override).absoluteFilePath();
    const QString env = qEnvironmentVariable("VKM_ARCHIVE");
    if (!env.isEmpty())
        return QFileInfo(env).absoluteFilePath();
    const QString found = dataPath(QStringLiteral("VKM.e"));
    return found.isEmpty() ? exeFolder() + QStringLiteral("/VKM.e") : found;
}

QString userDataFolder() {
    QString dir = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    if (dir.isEmpty())
        dir = QDir::homePath() + QStringLiteral("/.local/share/vkmstep");
    return dir;
}

QString errorLogFile() {
    return userDataFolder() + QStringLiteral("/error.log");
}

QString helpSamplesFolder() {
    return dataPath(QStringLiteral("Help/SampleCodes"));
}
QString helpSamplesFolderEnglish() {
    return dataPath(QStringLiteral("Help/SampleCodes/Eng"));
}

} // namespace vkm::paths
