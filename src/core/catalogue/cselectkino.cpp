#include "catalogue/cselectkino.h"

#include "base/errorreporter.h"
#include "base/paths.h"
#include "base/prompter.h"
#include "base/settings.h"
#include "base/tempfolder.h"

#include <QDir>
#include <QFile>
#include <QFileDevice>
#include <QFileInfo>

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <memory>

namespace vkm {

namespace {
const QString kMelt = QStringLiteral("MeltSettingFiles");

// The setting files are a few kilobytes; a member far beyond that is not ours and is not
// unpacked (it would only fill the disk).
constexpr qint64 kMaxMemberSize = 16 * 1024 * 1024;

struct ArchiveCloser {
    void operator()(archive* a) const { archive_read_free(a); }
};
using ArchivePtr = std::unique_ptr<archive, ArchiveCloser>;

// The name a member is written under: the last part of its stored name, so that every
// member lands directly in the working folder whatever its stored path says (LHA archives
// made on the machine's platform separate folders with a backslash, others with a slash).
// The eleven setting files are written under their own spelling whatever the case of the
// stored name: DOS-era packers store "SET01.E", and the presence check looks for "Set01.e".
QString flatName(const char* pathname) {
    if (!pathname)
        return {};
    const QString name = QString::fromLocal8Bit(pathname);
    const qsizetype cut = std::max(name.lastIndexOf(u'/'), name.lastIndexOf(u'\\'));
    const QString base = name.mid(cut + 1);
    if (base.isEmpty() || base == QLatin1String(".") || base == QLatin1String(".."))
        return {};
    for (const QString& setting : settingFileNames()) {
        if (base.compare(setting, Qt::CaseInsensitive) == 0)
            return setting;
    }
    return base;
}

// Copies the data of the current member into target. On a damaged member (a CRC error,
// data cut short, more than the size cap) or a file that cannot be written, target is
// left untouched and the reason is returned; an empty result means the member is
// written. The data goes to a side file that is renamed over the target once complete:
// the unpacked files are scratch copies in a private folder, so the atomic rename is
// enough and no disk sync is paid for on every start.
QString writeMember(archive* a, const QString& target) {
    const QString part = target + QStringLiteral(".part");
    QFile out(part);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return QStringLiteral("cannot be written: ") + out.errorString();
    auto fail = [&](const QString& reason) {
        out.close();
        QFile::remove(part);
        return reason;
    };
    char buffer[16384];
    qint64 total = 0;
    for (;;) {
        const la_ssize_t n = archive_read_data(a, buffer, sizeof buffer);
        if (n == 0)
            break;
        if (n < 0)
            return fail(QString::fromLocal8Bit(archive_error_string(a)));
        total += n;
        if (total > kMaxMemberSize)
            return fail(QStringLiteral("larger than %1 bytes").arg(kMaxMemberSize));
        if (out.write(buffer, n) != n)
            return fail(QStringLiteral("cannot be written: ") + out.errorString());
    }
    if (!out.flush())
        return fail(QStringLiteral("cannot be written: ") + out.errorString());
    out.close();
    QFile::remove(target);
    if (!QFile::rename(part, target)) {
        QFile::remove(part);
        return QStringLiteral("cannot be renamed into place");
    }
    return {};
}
} // namespace

QStringList settingFileNames() {
    QStringList names;
    for (int i = 1; i <= 11; ++i)
        names << QStringLiteral("Set%1.e").arg(i, 2, 10, QLatin1Char('0'));
    return names;
}

QString missingFileText(const QString& path) {
    return QStringLiteral("Cannot find following file. Cannot load.") + QStringLiteral("\n\n") +
           QDir::toNativeSeparators(path);
}

bool checkArchivePresent(const QString& archivePath, Prompter& prompter) {
    if (QFileInfo(archivePath).isFile())
        return true;
    prompter.showText(missingFileText(archivePath), 1);
    return false;
}

CSelectKino::CSelectKino(Settings* settings, Prompter& prompter, QString archivePath, QString workFolder)
    : m_settings(settings), m_prompter(prompter), m_archivePath(std::move(archivePath)) {
    ReadRegData();
    if (workFolder.isEmpty()) {
        // Unpacked files that are thrown away after loading never touch a shared folder;
        // files the maker wants to keep go where the user's own data lives.
        workFolder = m_blueHeron ? TempFolder::instance().filePath(QStringLiteral("setting"))
                                 : paths::userDataFolder() + QStringLiteral("/setting");
    }
    // Without a working folder (no private temporary folder could be made) the files have
    // no place: unpacking fails and nothing is deleted, never a name at the root.
    m_workFolder = workFolder.isEmpty() ? QString() : QDir::cleanPath(workFolder);
    for (const QString& name : settingFileNames())
        m_files << (m_workFolder.isEmpty() ? QString() : m_workFolder + u'/' + name);
}

void CSelectKino::ReadRegData() {
    if (!m_settings) {
        m_blueHeron = true;
        return;
    }
    if (!m_settings->ensure(keys::BlueHeron))
        m_prompter.showMessage(2, 1);
    bool ok = false;
    const bool value = Settings::textToBool(
        m_settings->read(keys::BlueHeron.section, QLatin1String(keys::BlueHeron.name)), &ok);
    if (!ok) {
        reportError(ErrTypeMismatch, QStringLiteral("ReadRegData"));
        m_blueHeron = false;
        m_prompter.showMessage(2, 1);
        return;
    }
    m_blueHeron = value;
}

bool CSelectKino::DeleteSettingFiles() {
    if (!m_blueHeron)
        return true;
    for (const QString& path : m_files) {
        if (!path.isEmpty() && QFileInfo(path).isFile() && !QFile::remove(path))
            reportError(ErrPermissionDenied, QStringLiteral("DeleteSettingFiles"), path);
    }
    return true;
}

bool CSelectKino::MeltSettingFiles() {
    // Every fault here is reported quietly (to the log): the presence check that follows
    // names the first setting file that did not come out, in the one box the user sees.
    m_skipped.clear();
    if (m_workFolder.isEmpty() || !QDir().mkpath(m_workFolder)) {
        reportQuietly(ErrPathNotFound, kMelt, m_workFolder);
        return false;
    }
    ArchivePtr a(archive_read_new());
    archive_read_support_format_lha(a.get());
    auto archiveError = [&a] { return QString::fromLocal8Bit(archive_error_string(a.get())); };
    if (archive_read_open_filename(a.get(), QFile::encodeName(m_archivePath).constData(), 10240) !=
        ARCHIVE_OK) {
        reportQuietly(ErrFileNotFound, kMelt, m_archivePath + QStringLiteral(": ") + archiveError());
        return false;
    }
    // A damaged member is skipped and the rest is still unpacked; only a header that
    // cannot be read ends the unpacking, since nothing after it can be found.
    for (;;) {
        archive_entry* entry = nullptr;
        const int rc = archive_read_next_header(a.get(), &entry);
        if (rc == ARCHIVE_EOF)
            return m_skipped.isEmpty();
        if (rc != ARCHIVE_OK && rc != ARCHIVE_WARN) {
            reportQuietly(ErrIO, kMelt, m_archivePath + QStringLiteral(": ") + archiveError());
            return false;
        }
        if (archive_entry_filetype(entry) != AE_IFREG)
            continue;
        const QString name = flatName(archive_entry_pathname(entry));
        if (name.isEmpty())
            continue;
        const QString reason = writeMember(a.get(), m_workFolder + u'/' + name);
        if (!reason.isEmpty()) {
            m_skipped << name;
            reportQuietly(ErrIO, kMelt, name + QStringLiteral(": ") + reason);
        }
    }
}

bool CSelectKino::DoneMelt() {
    DeleteSettingFiles();
    // As with the extractor of the machine's tools, the unpacking result itself decides
    // nothing: whatever went wrong shows up as the first missing file below.
    MeltSettingFiles();
    for (const QString& path : m_files) {
        if (path.isEmpty() || !QFileInfo(path).isFile()) {
            m_prompter.showText(missingFileText(path), 1);
            return false;
        }
    }
    return true;
}

} // namespace vkm
