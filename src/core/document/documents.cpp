#include "document/documents.h"

#include "base/messages.h"
#include "base/prompter.h"
#include "base/settings.h"

#include <QFileInfo>

namespace vkm {

namespace {
// The transfer text of one step image is 238 records of 25 bytes; files written by the
// older floppy tools carry padding up to 6400 bytes.
constexpr qint64 kStepFileSize = 5950;
constexpr qint64 kPaddedStepFileSize = 6400;
} // namespace

bool ExactFile(const QString& path, Prompter& prompter) {
    if (path.isEmpty())
        return true;
    const QFileInfo info(path);
    if (info.suffix().toUpper() != QStringLiteral("GSP")) {
        prompter.showMessage(8, 2);
        return false;
    }
    const qint64 size = info.size();
    if (size != kStepFileSize && size != kPaddedStepFileSize) {
        prompter.showMessage(155, 2, QString::number(kStepFileSize));
        return false;
    }
    return true;
}

Documents::Documents(Prompter& prompter, Settings* settings, const CSelections& selout,
                     const CSelections& selinp, StepSheetEditor& userEditor,
                     StepSheetEditor& comparisonEditor, QString initialPath)
    : m_prompter(prompter), m_settings(settings), m_selout(selout), m_selinp(selinp),
      m_initialPath(std::move(initialPath)), m_user(std::make_unique<StepDocument>(*this, 0, userEditor)),
      m_comparison(std::make_unique<StepDocument>(*this, 1, comparisonEditor)) {}

Documents::~Documents() = default;

void Documents::SaveInitialPath(const QString& path) {
    m_initialPath = path;
    if (m_settings)
        m_settings->SaveInitialPath(path);
}

bool Documents::InitialPathCommand() {
    const QString folder = m_prompter.existingFolder(LoadMessageText(189), m_initialPath);
    if (folder.isEmpty())
        return false;
    SaveInitialPath(folder);
    return true;
}

QString Documents::commandLineFile(const QString& commandLine) {
    const int first = commandLine.indexOf(QLatin1Char('"'));
    if (first < 0)
        return commandLine.trimmed();
    const int second = commandLine.indexOf(QLatin1Char('"'), first + 1);
    return second < 0 ? commandLine.mid(first + 1) : commandLine.mid(first + 1, second - first - 1);
}

bool Documents::HikisuOp(const QString& commandLine) {
    if (commandLine.trimmed().isEmpty())
        return false;
    const QString file = commandLineFile(commandLine);
    if (file.isEmpty() || !QFileInfo(file).isFile())
        return false;
    return m_user->ReadStep(0, 0, file);
}

bool Documents::canCloseApplication() {
    bool cancel = false;
    m_user->SaveCheck(cancel, true);
    return !cancel;
}

void Documents::refuseUserEditorClose() {
    m_prompter.showMessage(62, 2);
    if (m_hooks.focusGrid)
        m_hooks.focusGrid(0);
}

void Documents::shutdown() {
    m_user->DeleteTemporaryFiles();
    m_comparison->DeleteTemporaryFiles();
}

} // namespace vkm
