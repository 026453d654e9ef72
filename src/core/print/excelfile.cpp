#include "print/excelfile.h"

#include "base/prompter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vkm {

namespace {

// The lock files spreadsheet programs keep beside a workbook while they have it open:
// LibreOffice's ".~lock.NAME#", and the owner file "~$NAME" of the other one, which drops
// the first two letters of a longer name.
bool hasLockFile(const QFileInfo& file) {
    const QDir dir = file.absoluteDir();
    const QString name = file.fileName();
    return QFileInfo::exists(dir.filePath(QStringLiteral(".~lock.") + name + QLatin1Char('#'))) ||
           QFileInfo::exists(dir.filePath(QStringLiteral("~$") + name)) ||
           (name.size() > 2 && QFileInfo::exists(dir.filePath(QStringLiteral("~$") + name.mid(2))));
}

// Moves the file aside and back. A program that holds the file open keeps it from being
// deleted (or from being copied); whatever happens, the file is put back.
bool cannotMoveAside(const QFileInfo& file) {
    const QString path = file.absoluteFilePath();
    const QString backup = file.absoluteDir().filePath(QStringLiteral("bak_") + file.fileName());
    QFile::remove(backup);
    if (!QFile::copy(path, backup))
        return true;
    if (!QFile::remove(path)) {
        QFile::remove(backup);
        return true;
    }
    if (!QFile::copy(backup, path)) {
        QFile::rename(backup, path); // never lose the user's file
        return true;
    }
    QFile::remove(backup);
    return false;
}

} // namespace

bool FileIsInUse(const QString& path) {
    const QFileInfo file(path);
    if (!file.exists())
        return false;
    return hasLockFile(file) || cannotMoveAside(file);
}

QString GetExcelFullFname(Prompter& prompter, const QString& defaultPath) {
    QString start = defaultPath;
    for (;;) {
        const QFileInfo info(start);
        FileDialogRequest request;
        request.title = QStringLiteral("Specify excel file name");
        request.startDir = info.absolutePath();
        request.proposedName = info.fileName();
        request.filter = QStringLiteral("Excel file (*.xlsx)|*.xlsx");
        request.defaultSuffix = QStringLiteral("xlsx");
        const QString chosen = prompter.saveFileName(request);
        if (chosen.isEmpty())
            return {};
        if (!FileIsInUse(chosen))
            return chosen;
        prompter.showText(
            QStringLiteral("This file is already open, please specify another filename or close file."), 2);
        start = chosen;
    }
}

} // namespace vkm
