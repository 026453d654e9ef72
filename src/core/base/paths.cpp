#include "base/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace vkm::paths {

QString exeFolder() {
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath();
    return QDir::currentPath();
}

QString installedDataFolder() {
    return QDir::cleanPath(exeFolder() + QStringLiteral("/../share/vkmstep"));
}

QString settingArchive(const QString& override) {
    if (!override.isEmpty())
        return QFileInfo(override).absoluteFilePath();
    const QString env = qEnvironmentVariable("VKM_ARCHIVE");
    if (!env.isEmpty())
        return QFileInfo(env).absoluteFilePath();
    const QString beside = exeFolder() + QStringLiteral("/VKM.e");
    if (QFileInfo::exists(beside))
        return beside;
    const QString installed = installedDataFolder() + QStringLiteral("/VKM.e");
    if (QFileInfo::exists(installed))
        return installed;
    return beside;
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
    return exeFolder() + QStringLiteral("/Help/SampleCodes");
}
QString helpSamplesFolderEnglish() {
    return helpSamplesFolder() + QStringLiteral("/Eng");
}

} // namespace vkm::paths
