#pragma once

#include <QString>
#include <QStringList>

namespace vkm {

class Settings;
class Prompter;

// Names of the eleven setting files inside the archive, "Set01.e" .. "Set11.e", in order.
QStringList settingFileNames();

// The text shown when a file the program cannot do without is missing: the fixed
// sentence, an empty line, then the path.
QString missingFileText(const QString& path);

// Start-up presence check of the setting archive: when the file does not exist, shows the
// missing-file text (critical box) and returns false so that the caller ends the program.
bool checkArchivePresent(const QString& archivePath, Prompter& prompter);

// The loader of the setting archive "VKM.e": unpacks its eleven files flat into a working
// folder, checks that they are all there and removes them again after loading (unless the
// maker switch BlueHeron says to keep them).
//
// The function selection dialogs that are prepared together with the catalogues live in the
// GUI; this class is the part without widgets.
class CSelectKino {
public:
    // settings: the per-user store holding "General"/"BlueHeron" (created as True when
    // missing); nullptr means no store (command-line tool): BlueHeron is True and nothing
    // is shown. workFolder: where the files are unpacked; empty chooses a private folder
    // under the process's temporary folder when BlueHeron is True, and the per-user data
    // folder when it is False (so that the kept files survive the process).
    CSelectKino(Settings* settings, Prompter& prompter, QString archivePath, QString workFolder = {});

    bool BlueHeron() const { return m_blueHeron; }
    void setBlueHeron(bool value) { m_blueHeron = value; }

    QString archivePath() const { return m_archivePath; }
    QString workFolder() const { return m_workFolder; }
    // The eleven full paths, Set01.e .. Set11.e, in the working folder.
    const QStringList& settingFiles() const { return m_files; }

    // Deletes stale files, unpacks the archive, then checks the eleven files in order; the
    // first missing one is named in a critical box and false is returned.
    bool DoneMelt();
    // With BlueHeron True deletes each of the eleven files that exists; otherwise nothing.
    // Always true.
    bool DeleteSettingFiles();

    // Unpacking alone: every member of the archive is written flat, by its base name, into
    // the working folder, overwriting; the eleven setting files by their own spelling
    // whatever the case of the stored name. Members whose name is empty, ".", ".." or that
    // are not regular files are left out. A damaged member (CRC error, data cut short,
    // beyond the size cap) is skipped and the rest is still unpacked; each is reported
    // quietly (log only) as "MeltSettingFiles" and listed in skippedMembers(). A header
    // that cannot be read ends the unpacking there. False when anything was skipped or
    // the archive cannot be opened or read to its end; what was written stays.
    bool MeltSettingFiles();
    // The members the last unpacking skipped, by the name they would have had.
    const QStringList& skippedMembers() const { return m_skipped; }

private:
    void ReadRegData();

    Settings* m_settings;
    Prompter& m_prompter;
    QString m_archivePath;
    QString m_workFolder;
    QStringList m_files;
    QStringList m_skipped;
    bool m_blueHeron = false;
};

} // namespace vkm
