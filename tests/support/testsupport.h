#pragma once

#include "base/settings.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <memory>
#include <ostream>

// Readable failures: a QString is shown as its text.
inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

namespace vkm::test {

// A scratch folder removed after the test.
class Scratch {
public:
    Scratch();
    QString path() const { return m_dir.path(); }
    QString file(const QString& name) const { return m_dir.filePath(name); }
    // Writes bytes to name in the folder; returns the full path.
    QString write(const QString& name, const QByteArray& bytes) const;

private:
    QTemporaryDir m_dir;
};

// A settings store in a scratch INI file, never the user's.
struct TempSettings {
    Scratch scratch;
    std::unique_ptr<Settings> settings = Settings::inFile(scratch.file(QStringLiteral("settings.ini")));
};

// Sets an environment variable (or removes it, for a null value) while it lives and puts
// the old value back afterwards.
class EnvOverride {
public:
    EnvOverride(const char* name, const QByteArray& value);
    ~EnvOverride();
    EnvOverride(const EnvOverride&) = delete;
    EnvOverride& operator=(const EnvOverride&) = delete;

private:
    const char* m_name;
    bool m_had;
    QByteArray m_old;
};

// The archive the build packed from data/setting.
QString bundledArchive();
// Reads a whole file ("" when missing).
QByteArray readAll(const QString& path);
// Writes a whole file, replacing what it held; false when it could not be written.
bool writeFile(const QString& path, const QByteArray& bytes);
// Path of a file under tests/data.
QString testData(const QString& name);

} // namespace vkm::test
