#include "applicationrestart.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

namespace vkm {

bool ApplicationRestart::startAgain(const QString& program, const QStringList& arguments,
                                    const QString& workingFolder) {
    return QProcess::startDetached(program, arguments, workingFolder);
}

bool ApplicationRestart::startAgain() {
    return startAgain(QCoreApplication::applicationFilePath(), QCoreApplication::arguments().mid(1),
                      QDir::currentPath());
}

} // namespace vkm
