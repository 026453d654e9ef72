#include "applicationrestart.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

namespace vkm {

bool ApplicationRestart::startAgain() {
    return QProcess::startDetached(QCoreApplication::applicationFilePath(),
                                   QCoreApplication::arguments().mid(1), QDir::currentPath());
}

} // namespace vkm
