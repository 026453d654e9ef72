#include "link/machinefiles.h"

#include "base/errorreporter.h"
#include "base/prompter.h"
#include "base/tempfolder.h"
#include "link/memorymap.h"
#include "link/transfertext.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>

namespace vkm {

namespace {

bool isNetworkPath(const QString& path) {
    return path.startsWith(QLatin1String("\\\\")) || path.startsWith(QLatin1String("//"));
}

void makeWritable(const QString& path) {
    QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteOwner | QFile::ReadOwner);
}

// A file counts as the machine's when its name starts "VKM" and ends ".tmp" (any case).
bool hasMachineName(const QFileInfo& fi) {
    return fi.fileName().left(3).toUpper() == QLatin1String("VKM") &&
           fi.suffix().toUpper() == QLatin1String("TMP");
}

} // namespace

QString CreateTempName(int index, int eUSRCMP) {
    switch (index) {
    case 1:
        return TempFolder::instance().filePath(eUSRCMP == eCMP ? QStringLiteral("ecmp2.tmp")
                                                               : QStringLiteral("eusr2.tmp"));
    case 2:
        return TempFolder::instance().filePath(QStringLiteral("eusr3.tmp"));
    default:
        return {};
    }
}

QString NewTempFile(const QString& prefix) {
    return TempFolder::instance().newTempFile(prefix);
}

bool IsThisFileFromMachine(const QString& sFullFname) {
    const QFileInfo fi(sFullFname);
    if (!hasMachineName(fi) || !TempFolder::instance().isValid())
        return false;
    const QString folder = QDir::cleanPath(fi.absolutePath()).toUpper();
    return folder == QDir::cleanPath(TempFolder::instance().path()).toUpper();
}

void DeleteVKMTemporaryFiles() {
    // Only ever the private temporary folder: other programs' files never match it. Without
    // one there is nothing of ours to delete (an empty path would be the current folder).
    if (!TempFolder::instance().isValid())
        return;
    const QDir dir(TempFolder::instance().path());
    for (const QFileInfo& fi : dir.entryInfoList(QDir::Files | QDir::Hidden)) {
        if (hasMachineName(fi) && !QFile::remove(fi.absoluteFilePath()))
            reportError(ErrPermissionDenied, QStringLiteral("DeleteVKMTemporaryFiles"));
    }
}

bool Del(const QString& path) {
    if (!QFileInfo::exists(path))
        return true;
    if (QFile::remove(path))
        return true;
    reportError(ErrPermissionDenied, QStringLiteral("Del"));
    return false;
}

QString CopyFromFDToHD(int eUSRCMP, const QString& sFullFname, int index) {
    const QString dest = CreateTempName(index, eUSRCMP);
    if (dest.isEmpty() || !QFileInfo(sFullFname).isFile())
        return {};
    if (QFileInfo(sFullFname).canonicalFilePath() == QFileInfo(dest).canonicalFilePath())
        return dest;
    if (QFileInfo::exists(dest)) {
        makeWritable(dest); // an old copy may carry the read-only mark of its source
        QFile::remove(dest);
    }
    if (!QFile::copy(sFullFname, dest)) {
        reportError(ErrPathAccess, QStringLiteral("CopyFromFDToHD"));
        return {};
    }
    makeWritable(dest);
    return dest;
}

bool CheckFreeSpace(const QString& sScrFullFname, const QString& sDestFile) {
    if (QFileInfo::exists(sDestFile) || isNetworkPath(sDestFile))
        return true;
    const QStorageInfo volume(QFileInfo(sDestFile).absolutePath());
    if (!volume.isValid() || !volume.isReady())
        return false;
    return volume.bytesAvailable() >= QFileInfo(sScrFullFname).size();
}

bool BeReadyDrive(const QString& sPath, Prompter& prompter) {
    if (isNetworkPath(sPath))
        return true;
    for (;;) {
        const QFileInfo given(sPath);
        const QFileInfo folder(given.isDir() ? given.absoluteFilePath() : given.absolutePath());
        if (folder.isDir() && folder.isWritable())
            return true;
        if (prompter.showMessage(69, 10) != Answer::Ok)
            return false;
    }
}

bool CopyFiles(const QString& binaryImage, const QString& destination, Prompter& prompter) {
    if (destination.trimmed().isEmpty()) {
        prompter.showMessage(93, 1);
        return false;
    }
    const QString text = QFileInfo(binaryImage).absoluteDir().filePath(QStringLiteral("steptext.tmp"));
    if (!SaveAsTextStep(binaryImage, text))
        return false;
    if (!CheckFreeSpace(text, destination)) {
        prompter.showMessage(90, 2);
        return false;
    }
    QFile source(text);
    if (!source.open(QIODevice::ReadOnly)) {
        reportError(ErrPathAccess, QStringLiteral("CopyFiles"));
        return false;
    }
    // The user's file is replaced only once the new one is complete: a write that fails
    // part way leaves the previous file as it was.
    // Unbuffered, so that a short write is seen here and the commit never happens.
    QSaveFile out(destination);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        out.write(source.readAll()) != source.size() || !out.commit()) {
        out.cancelWriting();
        reportError(out.error() == QFileDevice::OpenError ? ErrPermissionDenied : ErrIO,
                    QStringLiteral("CopyFiles"));
        return false;
    }
    return true;
}

std::optional<QByteArray> readTransferFileToTemp(int eUSRCMP, const QString& sFullFname, int index,
                                                 Prompter& prompter, QString* imagePath) {
    const QString copy = CopyFromFDToHD(eUSRCMP, sFullFname, index);
    if (copy.isEmpty())
        return std::nullopt;
    bool ok = false;
    const QByteArray bytes = ParseData(copy, prompter, &ok);
    if (!ok || !Del(copy))
        return std::nullopt;
    QFile f(copy);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size()) {
        reportError(ErrIO, QStringLiteral("CopyFromFDToHD"));
        return std::nullopt;
    }
    f.close();
    if (imagePath)
        *imagePath = copy;
    return bytes;
}

bool ReadStepData(int eUSRCMP, const QString& sFullFname, CSteps& program, const CSelections& selout,
                  const CSelections& selinp, Prompter& prompter) {
    QString image;
    if (!readTransferFileToTemp(eUSRCMP, sFullFname, 1, prompter, &image))
        return false;
    return program.ReadData(image, selout, selinp);
}

QString transferFileForProgram(const CSteps& program, const CSelections& selout, const CSelections& selinp,
                               Prompter& prompter, const Clock& clock) {
    const QString image = NewTempFile(QStringLiteral("VKM"));
    if (image.isEmpty() || !program.SaveData(image, false, selout, selinp, clock)) {
        prompter.showMessage(50, 1);
        return {};
    }
    const QString text = NewTempFile(QStringLiteral("VKM"));
    if (text.isEmpty() || !SaveAsTextStep(image, text)) {
        prompter.showMessage(141, 1);
        return {};
    }
    return text;
}

QString transferFileForCustomImage(const QByteArray& image, bool fromMachine, Prompter& prompter) {
    const QString binary = NewTempFile(QStringLiteral("VKM"));
    QFile f(binary);
    const bool written = !binary.isEmpty() && f.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                         f.write(image) == image.size() && f.flush();
    f.close();
    const QString text = NewTempFile(QStringLiteral("VKM"));
    const qint64 end = fromMachine ? memmap::kCustomStart + memmap::kCustomSize : memmap::kMemorySize;
    if (!written || text.isEmpty() || !SaveAsText(binary, text, memmap::kCustomStart, end, prompter)) {
        if (!written)
            reportError(ErrIO, QStringLiteral("GetFileNameToTransferCustom"));
        prompter.showMessage(141, 1);
        return {};
    }
    return text;
}

} // namespace vkm
