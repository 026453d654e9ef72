#include "printcontroller.h"

#include "appcontext.h"
#include "document/documents.h"
#include "fprint.h"

#include "base/prompter.h"
#include "print/printjob.h"

#include <QDesktopServices>
#include <QUrl>

namespace vkm {

PrintController::PrintController(AppContext& context, Documents& documents, QWidget* dialogParent)
    : m_context(context), m_documents(documents), m_parent(dialogParent) {
    m_runner = [](fPrint& dialog) { dialog.exec(); };
    m_opener = [](const QString& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); };
}

void PrintController::PrintOp(int usrcmp) {
    Prompter& prompter = *m_context.prompter;
    CSteps program;
    QString file;
    bool editing = false;
    if (usrcmp == 0) {
        // What is printed is what a save would write: the checks first, then the grid.
        StepDocument& doc = m_documents.user();
        if (!ProgramForPrint(doc.editor(), m_documents.userProgram(), prompter, program))
            return;
        file = m_documents.userFilePath();
        editing = doc.IsChanged();
    } else {
        program = m_documents.comparisonProgram();
        file = m_documents.comparisonFilePath();
    }
    if (!HasStepsToPrint(program, prompter))
        return;
    fPrint dialog(prompter, m_context.settings, m_documents.selout(), m_documents.selinp(), m_parent);
    dialog.setStep(program);
    dialog.setFileToPrint(file);
    dialog.setIsEditing(editing);
    dialog.setKillDoesPrintOnlyDif(true);
    m_runner(dialog);
    if (dialog.DispExcel() && !(m_opener && m_opener(dialog.ExcelFile())))
        prompter.showMessage(139, 2); // "File cannot be opened."
}

} // namespace vkm
