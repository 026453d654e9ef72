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

// The last part of a member name. LHA archives made on the machine's platform separate
// folders with a backslash, others with a slash; both are cut off so that every member
// lands directly in the working folder, whatever its stored path says.
QString flatName(const char* pathname) {
    if (!pathname)
        return {};
    const QString name = QString::fromLocal8Bit(pathname);
    const qsizetype cut = std::max(name.lastIndexOf(u'/'), name.lastIndexOf(u'\\'));
    const QString base = name.mid(cut + 1);
    if (base.isEmpty() || base == QLatin1String(".") || base == QLatin1String(".."))
        return {};
    return base;
}

// Copies the data of the current member into target; false (target untouched) on a read
// error, a member too large, or a file that cannot be written. The data goes to a side
// file that is renamed over the target once complete: the unpacked files are scratch
// copies in a private folder, so the atomic rename is enough and no disk sync is paid
// for on every start.
bool writeMember(archive* a, const QString& target) {
    const QString part = target + QStringLiteral(".part");
    QFile out(part);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        reportError(ErrPermissionDenied, kMelt, target);
        return false;
    }
    auto fail = [&](int number, const QString& text) {
        out.close();
        QFile::remove(part);
        reportError(number, kMelt, text);
        return false;
    };
    char buffer[16384];
    qint64 total = 0;
    for (;;) {
        const la_ssize_t n = archive_read_data(a, buffer, sizeof buffer);
        if (n == 0)
            break;
        if (n < 0)
            return fail(ErrIO, QString::fromLocal8Bit(archive_error_string(a)));
        total += n;
        if (total > kMaxMemberSize)
            return fail(ErrIO, QStringLiteral("member too large: ") + target);
        if (out.write(buffer, n) != n)
            return fail(ErrDiskFull, target);
    }
    if (!out.flush())
        return fail(ErrDiskFull, target);
    out.close();
    QFile::remove(target);
    if (!QFile::rename(part, target)) {
        QFile::remove(part);
        reportError(ErrIO, kMelt, target);
        return false;
    }
    return true;
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
    m_workFolder = QDir::cleanPath(workFolder);
    for (const QString& name : settingFileNames())
        m_files << m_workFolder + u'/' + name;
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
        if (QFileInfo(path).isFile() && !QFile::remove(path))
            reportError(ErrPermissionDenied, QStringLiteral("DeleteSettingFiles"), path);
    }
    return true;
}

bool CSelectKino::MeltSettingFiles() {
    if (!QDir().mkpath(m_workFolder)) {
        reportError(ErrPathNotFound, kMelt, m_workFolder);
        return false;
    }
    ArchivePtr a(archive_read_new());
    archive_read_support_format_lha(a.get());
    if (archive_read_open_filename(a.get(), QFile::encodeName(m_archivePath).constData(), 10240) !=
        ARCHIVE_OK) {
        reportError(ErrFileNotFound, kMelt, QString::fromLocal8Bit(archive_error_string(a.get())));
        return false;
    }
    for (;;) {
        archive_entry* entry = nullptr;
        const int rc = archive_read_next_header(a.get(), &entry);
        if (rc == ARCHIVE_EOF)
            return true;
        if (rc != ARCHIVE_OK && rc != ARCHIVE_WARN) {
            reportError(ErrIO, kMelt, QString::fromLocal8Bit(archive_error_string(a.get())));
            return false;
        }
        if (archive_entry_filetype(entry) != AE_IFREG)
            continue;
        const QString name = flatName(archive_entry_pathname(entry));
        if (name.isEmpty())
            continue;
        if (!writeMember(a.get(), m_workFolder + u'/' + name))
            return false;
    }
}

bool CSelectKino::DoneMelt() {
    DeleteSettingFiles();
    // As with the extractor of the machine's tools, the unpacking result itself decides
    // nothing: whatever went wrong shows up as the first missing file below.
    MeltSettingFiles();
    for (const QString& path : m_files) {
        if (!QFileInfo(path).isFile()) {
            m_prompter.showText(missingFileText(path), 1);
            return false;
        }
    }
    return true;
}

} // namespace vkm
