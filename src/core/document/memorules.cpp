#include "document/memorules.h"

#include "base/legacytext.h"
#include "base/prompter.h"
#include "model/csteps.h"

#include <QDir>
#include <QFileInfo>

namespace vkm {

int memoRemaining(const QString& memo) {
    return kMemoMaxBytes - LegacyText::byteLength(memo);
}

bool checkMemoFile(const QString& path, const QString& programFolder, Prompter& prompter) {
    const QFileInfo info(path);
    const int baseBytes = LegacyText::byteLength(info.completeBaseName());
    const int extBytes = LegacyText::byteLength(info.suffix());
    if (baseBytes < 1 || baseBytes > 8 || extBytes < 1 || extBytes > 3) {
        prompter.showMessage(136, 2);
        return false;
    }
    const QString folder = QDir::cleanPath(info.absolutePath()).toUpper();
    if (folder != QDir::cleanPath(QFileInfo(programFolder).absoluteFilePath()).toUpper()) {
        prompter.showMessage(138, 2);
        return false;
    }
    return true;
}

bool storeMemo(CSteps& program, const QString& memo, const QString& memoFileName, Prompter& prompter,
               bool& changed) {
    changed = false;
    if (LegacyText::byteLength(memo) > kMemoMaxBytes) {
        prompter.showMessage(56, 2, QString::number(kMemoMaxBytes));
        return false;
    }
    if (memo != program.Memo) {
        program.Memo = memo;
        changed = true;
    }
    if (memoFileName != program.MemoFile) {
        program.MemoFile = memoFileName;
        changed = true;
    }
    return true;
}

} // namespace vkm
