#include "testsupport.h"

#include <QFile>

namespace vkm::test {

Scratch::Scratch() = default;

QString Scratch::write(const QString& name, const QByteArray& bytes) const {
    writeFile(file(name), bytes);
    return file(name);
}

EnvOverride::EnvOverride(const char* name, const QByteArray& value)
    : m_name(name), m_had(qEnvironmentVariableIsSet(name)), m_old(qgetenv(name)) {
    if (value.isNull())
        qunsetenv(name);
    else
        qputenv(name, value);
}

EnvOverride::~EnvOverride() {
    if (m_had)
        qputenv(m_name, m_old);
    else
        qunsetenv(m_name);
}

QString bundledArchive() {
    return QStringLiteral(VKM_BIN_DIR "/VKM.e");
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

QString testData(const QString& name) {
    return QStringLiteral(VKM_TEST_DATA "/") + name;
}

} // namespace vkm::test
