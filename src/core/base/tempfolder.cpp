#include "base/tempfolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vkm {

TempFolder::TempFolder() {
    recreate();
}
TempFolder::~TempFolder() = default;

TempFolder& TempFolder::instance() {
    static TempFolder folder;
    return folder;
}

void TempFolder::recreate() {
    m_dir = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/vkmstep-XXXXXX"));
    if (m_dir->isValid())
        QFile::setPermissions(m_dir->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString TempFolder::path() const {
    return QDir::cleanPath(m_dir->path());
}

QString TempFolder::filePath(const QString& name) const {
    return path() + QLatin1Char('/') + name;
}

QString TempFolder::newTempFile(const QString& prefix) const {
    for (unsigned n = 1;; ++n) {
        const QString candidate =
            filePath(prefix + QString::number(n, 16).toUpper().rightJustified(4, QLatin1Char('0')) + ".tmp");
        QFile f(candidate);
        if (f.exists())
            continue;
        if (f.open(QIODevice::NewOnly | QIODevice::WriteOnly))
            return candidate;
        if (n > 0xFFFFF)
            return {};
    }
}

} // namespace vkm
