#include "base/tempfolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
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
    m_dir.reset(); // the old folder goes first, whatever becomes of the new one
    m_reason.clear();
    // Qt gives an empty path when TMPDIR names a folder that does not exist; a folder made
    // "under" it would then land at the root of the file system.
    const QString system = QDir::tempPath();
    const QString named = qEnvironmentVariable("TMPDIR");
    m_parent = system.isEmpty() ? named : system;
    if (system.isEmpty() || !QFileInfo(system).isDir()) {
        m_reason = QStringLiteral("There is no such folder.");
        return;
    }
    m_dir = std::make_unique<QTemporaryDir>(system + QStringLiteral("/vkmstep-XXXXXX"));
    if (!m_dir->isValid()) {
        m_reason = m_dir->errorString();
        m_dir.reset();
        return;
    }
    if (!QFile::setPermissions(m_dir->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
        m_reason = QStringLiteral("Its permissions cannot be limited to the owner.");
        m_dir.reset(); // a folder others could read is no private folder
    }
}

bool TempFolder::isValid() const {
    return m_dir && m_dir->isValid();
}

QString TempFolder::failureText() const {
    if (isValid())
        return {};
    return QStringLiteral("Cannot create a temporary folder in:") + QStringLiteral("\n\n") +
           QDir::toNativeSeparators(m_parent) + QStringLiteral("\n\n") +
           (m_reason.isEmpty() ? QString() : m_reason + QStringLiteral("\n\n")) +
           QStringLiteral("Set TMPDIR to a folder you can write to, or remove it to use the system's.");
}

QString TempFolder::path() const {
    return isValid() ? QDir::cleanPath(m_dir->path()) : QString();
}

QString TempFolder::filePath(const QString& name) const {
    return isValid() ? path() + QLatin1Char('/') + name : QString();
}

QString TempFolder::newTempFile(const QString& prefix) const {
    if (!isValid())
        return {};
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
