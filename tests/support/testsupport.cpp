#include "testsupport.h"

#include <QFile>

namespace vkm::test {

Scratch::Scratch() = default;

QString Scratch::write(const QString& name, const QByteArray& bytes) const {
    const QString p = file(name);
    QFile f(p);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(bytes);
    return p;
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

QString testData(const QString& name) {
    return QStringLiteral(VKM_TEST_DATA "/") + name;
}

} // namespace vkm::test
