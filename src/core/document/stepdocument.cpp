#include "document/stepdocument.h"

#include "base/errorreporter.h"
#include "base/messages.h"
#include "base/prompter.h"
#include "base/tempfolder.h"
#include "document/documents.h"
#include "document/memorules.h"
#include "document/passwordrules.h"
#include "document/programfile.h"
#include "link/machinefiles.h"
#include "sheet/sheetexit.h"
#include "sheet/stepsheeteditor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vkm {

namespace {
const QString kOpenFilter = QStringLiteral("gsp file (*.gsp)");
const QString kSaveFilter = QStringLiteral("gsp file(*.gsp)");
// Files in the shared temporary folder that belong to the user editor besides its image.
const QString kStepText = QStringLiteral("steptext.tmp");
} // namespace

StepDocument::StepDocument(Documents& owner, int usrcmp, StepSheetEditor& editor)
    : m_owner(owner), m_usrcmp(usrcmp), m_editor(editor) {}

StepDocument::~StepDocument() = default;

CSteps& StepDocument::program() {
    return m_owner.program(m_usrcmp);
}

QString StepDocument::filePath() const {
    return m_owner.filePath(m_usrcmp);
}

// ---- titles and focus ---------------------------------------------------------------

QString StepDocument::CreateMyCaption() const {
    const QString path = m_owner.filePath(m_usrcmp);
    QString caption;
    if (path.isEmpty())
        caption = QStringLiteral("STEP");
    else if (IsThisFileFromMachine(path))
        caption = QStringLiteral("***");
    else
        caption = QFileInfo(path).fileName();
    if (!isUser())
        caption.prepend(QStringLiteral("Refer:"));
    const QString author = m_owner.program(m_usrcmp).Author;
    if (!author.isEmpty())
        caption += QStringLiteral(" written by ") + author;
    return caption;
}

void StepDocument::refreshTitle() {
    setTitle(CreateMyCaption());
}

void StepDocument::setTitle(const QString& title) {
    m_title = title;
    if (m_owner.hooks().titleChanged)
        m_owner.hooks().titleChanged(m_usrcmp, title);
}

void StepDocument::setChanged(bool changed) {
    if (changed == m_changed)
        return;
    m_changed = changed;
    stateChanged();
}

void StepDocument::stateChanged() {
    if (m_owner.hooks().stateChanged)
        m_owner.hooks().stateChanged(m_usrcmp);
}

void StepDocument::focusGrid() {
    if (m_owner.hooks().focusGrid)
        m_owner.hooks().focusGrid(m_usrcmp);
}

void StepDocument::clearGrid() {
    m_editor.sheet().clear();
    m_editor.sheet().select(StepSheet::kFirstStepRow, StepSheet::GetcolRemark());
}

// ---- opening ------------------------------------------------------------------------

QString StepDocument::GetSettingFile(int eUSRCMP) {
    FileDialogRequest request;
    request.title = LoadMessageText(eUSRCMP == 0 ? 191 : 190);
    request.filter = kOpenFilter;
    request.defaultSuffix = QStringLiteral("rom");
    const QString current = m_owner.filePath(eUSRCMP);
    request.startDir = current.isEmpty() || IsThisFileFromMachine(current)
                           ? m_owner.initialPath()
                           : QFileInfo(current).absolutePath();
    const QString chosen = m_owner.prompter().openFileName(request);
    if (chosen.isEmpty() || !ExactFile(chosen, m_owner.prompter()))
        return {};
    return chosen;
}

QString StepDocument::ReadDataFile(int eUSRCMP, int source, const QString& fileName) {
    if (source == 1)
        return m_owner.hooks().readFromMachine ? m_owner.hooks().readFromMachine(eUSRCMP) : QString();
    if (!fileName.isEmpty())
        return fileName;
    return GetSettingFile(eUSRCMP);
}

bool StepDocument::ReadStep(int eUSRCMP, int source, const QString& fileName) {
    Prompter& prompter = m_owner.prompter();
    const QString path = ReadDataFile(eUSRCMP, source, fileName);
    if (path.isEmpty())
        return false;
    // Read into a fresh program so that a file that cannot be read leaves the open
    // program and its grid exactly as they were.
    CSteps read;
    if (!ReadStepData(eUSRCMP, path, read, m_owner.selout(), m_owner.selinp(), prompter)) {
        prompter.showMessage(4, 2);
        return false;
    }
    if (!ExactPassword(read, true, prompter)) {
        prompter.showMessage(100, 1);
        NewOp();
        return false;
    }
    StepDocument& target = m_owner.document(eUSRCMP);
    m_owner.program(eUSRCMP) = std::move(read);
    m_owner.filePath(eUSRCMP) = path;
    const DocumentHooks& hooks = m_owner.hooks();
    const bool firstComparison = eUSRCMP == 1 && !(hooks.comparisonLoaded && hooks.comparisonLoaded());
    if (firstComparison && hooks.showComparison)
        hooks.showComparison();
    target.m_editor.conversion().PasteData(m_owner.program(eUSRCMP));
    target.setChanged(false);
    target.refreshTitle();
    if (hooks.loadForms)
        hooks.loadForms(eUSRCMP);
    if (eUSRCMP == 0)
        target.Delete_dicUndoFiles();
    if (firstComparison && hooks.tileHorizontally)
        hooks.tileHorizontally();
    target.programFieldsChanged();
    return true;
}

// ---- saving -------------------------------------------------------------------------

QString StepDocument::GetSavingFullFname(const QString& currentPath) {
    const QString current = IsThisFileFromMachine(currentPath) ? QString() : currentPath;
    FileDialogRequest request;
    request.title = LoadMessageText(188);
    request.filter = kSaveFilter;
    request.defaultSuffix = QStringLiteral("gsp");
    const QFileInfo info(current);
    request.startDir =
        !current.isEmpty() && info.absoluteDir().exists() ? info.absolutePath() : m_owner.initialPath();
    request.proposedName = current.isEmpty() ? QString() : info.fileName();
    return m_owner.prompter().saveFileName(request);
}

bool StepDocument::SaveStepData(bool saveAs) {
    if (!isUser())
        return false;
    Prompter& prompter = m_owner.prompter();
    if (!m_editor.ExactInput())
        return false;

    QString path = m_owner.userFilePath();
    const bool askName = saveAs || path.isEmpty() || IsThisFileFromMachine(path);
    if (askName) {
        path = GetSavingFullFname(path);
        if (path.isEmpty())
            return false;
    }

    CSteps saved;
    if (!ProgramFromSheet(m_editor, program(), prompter, saved) ||
        !SaveProgramFile(saved, path, askName, m_owner.selout(), m_owner.selinp(), prompter, m_owner.clock()))
        return false;
    program() = std::move(saved);
    m_owner.filePath(0) = path;
    refreshTitle();
    setChanged(false);
    if (m_owner.hooks().saved)
        m_owner.hooks().saved(path);
    return true;
}

void StepDocument::SaveCheck(bool& cancel, bool clearOnNo) {
    if (!m_changed)
        return;
    switch (m_owner.prompter().showMessage(13, 6)) {
    case Answer::Yes:
        if (!SaveStepData(false))
            cancel = true;
        break;
    case Answer::No:
        if (clearOnNo)
            setChanged(false);
        break;
    default:
        cancel = true;
        break;
    }
}

// ---- new ----------------------------------------------------------------------------

bool StepDocument::NewOp() {
    const DocumentHooks& hooks = m_owner.hooks();
    if (isUser()) {
        if (hooks.memoWindowOpen && hooks.memoWindowOpen()) {
            m_owner.prompter().showMessage(72, 2);
            return false;
        }
        bool cancel = false;
        SaveCheck(cancel, false);
        if (cancel)
            return false;
        m_owner.filePath(0).clear();
        if (hooks.loadForms)
            hooks.loadForms(0);
    }
    setChanged(false);
    setTitle(QStringLiteral("STEP"));
    clearGrid();
    Delete_dicUndoFiles();
    if (isUser())
        program() = CSteps();
    programFieldsChanged();
    DeleteTemporaryFiles();
    if (!(hooks.comparisonLoaded && hooks.comparisonLoaded()) && hooks.tileHorizontally)
        hooks.tileHorizontally();
    return true;
}

// ---- undo ---------------------------------------------------------------------------

bool StepDocument::SaveCurrent() {
    if (!isUser())
        return false;
    const QString path = TempFolder::instance().newTempFile(QStringLiteral("~pl"));
    if (path.isEmpty()) {
        reportError(ErrPathAccess, QStringLiteral("SaveCurrent"));
        return false;
    }
    QFile file(path);
    const QByteArray cells = m_editor.sheet().saveCells();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(cells) != cells.size()) {
        file.close();
        QFile::remove(path);
        reportError(ErrIO, QStringLiteral("SaveCurrent"));
        return false;
    }
    m_history.addSnapshotFile(path);
    stateChanged();
    return true;
}

void StepDocument::recordCellEdit(const QByteArray& cellsBefore) {
    if (!isUser())
        return;
    m_history.addCells(cellsBefore);
    stateChanged();
}

bool StepDocument::DoUndo() {
    bool unreadable = false;
    const std::optional<QByteArray> cells = m_history.takeUndo(&unreadable);
    if (!cells && !unreadable)
        return false;
    const QByteArray current = m_editor.sheet().saveCells();
    if (!cells || !m_editor.sheet().loadCells(*cells)) {
        reportError(cells ? ErrTypeMismatch : ErrFileNotFound, QStringLiteral("DoUndo"));
        stateChanged();
        return false;
    }
    m_history.addRedo(current);
    // The grid now differs from what was last opened or saved.
    setChanged(true);
    stateChanged();
    return true;
}

void StepDocument::UndoCommand() {
    if (!isUser())
        return;
    if (!m_history.canUndo()) {
        m_owner.prompter().showMessage(95, 2);
        return;
    }
    if (m_owner.prompter().showMessage(96, 7) != Answer::Yes)
        return;
    DoUndo();
    focusGrid();
}

bool StepDocument::RedoCommand() {
    if (!isUser())
        return false;
    const std::optional<QByteArray> cells = m_history.takeRedo();
    if (!cells)
        return false;
    const QByteArray current = m_editor.sheet().saveCells();
    if (!m_editor.sheet().loadCells(*cells)) {
        reportError(ErrTypeMismatch, QStringLiteral("RedoCommand"));
        stateChanged();
        return false;
    }
    m_history.addUndoKeepingRedo(current);
    setChanged(true);
    stateChanged();
    focusGrid();
    return true;
}

void StepDocument::Delete_dicUndoFiles() {
    for (const QString& path : m_history.files())
        Del(path);
    m_history.clear();
    stateChanged();
}

// ---- temporary files -----------------------------------------------------------------

bool StepDocument::DeleteTemporaryFiles() {
    bool ok = true;
    if (isUser()) {
        const QString image = CreateTempName(1, 0);
        ok = Del(image) && ok;
        ok = Del(QFileInfo(image).absoluteDir().filePath(kStepText)) && ok;
        Delete_dicUndoFiles();
    } else {
        ok = Del(CreateTempName(1, 1)) && ok;
    }
    DeleteVKMTemporaryFiles();
    if (!ok) {
        reportError(ErrPermissionDenied, QStringLiteral("DeleteTemporaryFiles"));
        m_owner.prompter().showMessage(78, 1);
    }
    return ok;
}

// ---- author, password and memo -------------------------------------------------------

void StepDocument::InputPassword() {
    const DocumentHooks& hooks = m_owner.hooks();
    if (!hooks.inputPassword)
        return;
    CSteps& steps = program();
    const QString answer = hooks.inputPassword(m_usrcmp, steps.Password, steps.Author);
    // The comparison program is shown read-only: its dialog cannot change anything.
    if (isUser() && storePasswordAuthor(steps, answer)) {
        setChanged(true);
        programFieldsChanged();
    }
    refreshTitle();
}

bool StepDocument::storeMemoWindow(const QString& memo, const QString& memoFileName) {
    bool changed = false;
    if (!storeMemo(m_owner.userProgram(), memo, memoFileName, m_owner.prompter(), changed))
        return false;
    if (changed) {
        m_owner.user().setChanged(true);
        m_owner.user().programFieldsChanged();
    }
    return true;
}

void StepDocument::programFieldsChanged() {
    if (m_owner.hooks().programFieldsChanged)
        m_owner.hooks().programFieldsChanged(m_usrcmp);
}

} // namespace vkm
