#pragma once

#include <QString>
#include <memory>

class QTemporaryDir;

namespace vkm {

// The private temporary folder of this process: owner-only, under the system's
// temporary folder, removed with everything in it when the process ends normally.
// Every fixed temporary name ("eusr2.tmp", "ecmp2.tmp", "eusr3.tmp", undo snapshots,
// files read from the machine) lives here and nowhere else.
class TempFolder {
public:
    // The folder of this process, created on first use.
    static TempFolder& instance();

    QString path() const;
    QString filePath(const QString& name) const;

    // Full path of a new, unused, empty file "<prefix><n>.tmp" in the folder.
    QString newTempFile(const QString& prefix) const;

    // Removes the folder and starts a fresh one (tests).
    void recreate();

    ~TempFolder();

private:
    TempFolder();
    std::unique_ptr<QTemporaryDir> m_dir;
};

} // namespace vkm
