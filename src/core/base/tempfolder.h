#pragma once

#include <QString>
#include <memory>

class QTemporaryDir;

namespace vkm {

// The private temporary folder of this process: owner-only, under the system's
// temporary folder, removed with everything in it when the process ends normally.
// Every fixed temporary name ("eusr2.tmp", "ecmp2.tmp", "eusr3.tmp", undo snapshots,
// files read from the machine) lives here and nowhere else.
//
// When the folder cannot be made (TMPDIR names a folder that does not exist or cannot
// be written), the folder is not valid: its path and every name in it are empty, so that
// nothing is ever written to a fixed name anywhere else (the root of the file system
// least of all). The programs check isValid() at start and stop with failureText().
class TempFolder {
public:
    // The folder of this process, created on first use.
    static TempFolder& instance();

    bool isValid() const;
    // What could not be made and why, and what to do about it; "" when valid.
    QString failureText() const;

    QString path() const;
    QString filePath(const QString& name) const;

    // Full path of a new, unused, empty file "<prefix><n>.tmp" in the folder.
    QString newTempFile(const QString& prefix) const;

    // Removes the folder and starts a fresh one under the current system temporary
    // folder (tests).
    void recreate();

    ~TempFolder();

private:
    TempFolder();
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_parent; // the system temporary folder it was made in (or TMPDIR as named)
    QString m_reason; // why it could not be made
};

} // namespace vkm
