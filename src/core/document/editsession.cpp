#include "document/editsession.h"

#include "catalogue/cselections.h"
#include "document/documents.h"
#include "document/passwordrules.h"
#include "sheet/stepsheeteditor.h"

namespace vkm {

EditSession::EditSession(Documents& documents) : m_documents(documents) {
    StepDocument& doc = document();
    EditorHooks hooks;
    hooks.chooseFunction = [this](int, int, int) { return std::exchange(m_nextChoice, std::nullopt); };
    hooks.chooseCategory = [](const CSelections& sels, const QString& digital) {
        return sels.CategoryByDigitalOnly(digital);
    };
    hooks.changed = [&doc] { doc.setChanged(true); };
    hooks.snapshot = [&doc] { doc.SaveCurrent(); };
    hooks.cellEdited = [&doc](const QByteArray& cellsBefore) { doc.recordCellEdit(cellsBefore); };
    editor().setHooks(std::move(hooks));
}

StepDocument& EditSession::document() {
    return m_documents.user();
}

StepSheetEditor& EditSession::editor() {
    return m_documents.user().editor();
}

const SheetLayout& EditSession::layout() const {
    return m_documents.user().editor().sheet();
}

const CSelections& EditSession::catalogue(int side) const {
    return side == 2 ? m_documents.selout() : m_documents.selinp();
}

void EditSession::goTo(int row, int col) {
    editor().sheet().select(row, col);
}

void EditSession::enterAccount(const std::optional<QString>& password, const std::optional<QString>& author) {
    Prompter& prompter = m_documents.prompter();
    DocumentHooks& hooks = m_documents.hooks();
    const auto previous = hooks.inputPassword;
    hooks.inputPassword = [&](int, const QString& oldPassword, const QString& oldAuthor) {
        const QString p = password.value_or(oldPassword).trimmed();
        const QString a = author.value_or(oldAuthor).trimmed();
        // A refused value keeps the dialog open; the user then leaves it with Cancel.
        if (ExactInput(p, a, prompter) != AccountField::None)
            return oldPassword + QLatin1Char('\t') + oldAuthor;
        return p + QLatin1Char('\t') + a;
    };
    document().InputPassword();
    hooks.inputPassword = previous;
}

bool EditSession::enterMemo(const QString& memo) {
    QString text = memo;
    // The memo window keeps line breaks as the program stores them: CR LF.
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return document().storeMemoWindow(text, m_documents.userProgram().MemoFile);
}

void EditSession::print(const QString& line) const {
    if (m_output)
        m_output(line);
}

void EditSession::fail(const QString& reason) {
    if (m_failure.isEmpty())
        m_failure = reason;
}

void EditSession::setReplaceConfirmation(std::function<int(const QString&, const QString&)> ask) {
    EditorHooks hooks = editor().hooks();
    hooks.confirmReplace = std::move(ask);
    editor().setHooks(std::move(hooks));
}

bool EditSession::save(const QString& path) {
    m_documents.filePath(0) = path;
    return document().SaveStepData(false);
}

} // namespace vkm
