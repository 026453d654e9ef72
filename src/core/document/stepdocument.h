#pragma once

#include <QString>
#include <QStringList>

namespace vkm {

class Documents;
class StepSheetEditor;
class CSteps;

// One editor window's document: the user program (0) or the comparison program (1),
// its changed flag, its undo snapshots and its temporary files. The grid is the
// editor's StepSheetEditor; the two programs and their file paths are shared through
// Documents.
class StepDocument {
public:
    StepDocument(Documents& owner, int usrcmp, StepSheetEditor& editor);
    ~StepDocument();
    StepDocument(const StepDocument&) = delete;
    StepDocument& operator=(const StepDocument&) = delete;

    int USRCMP() const { return m_usrcmp; }
    bool isUser() const { return m_usrcmp == 0; }
    StepSheetEditor& editor() { return m_editor; }
    const StepSheetEditor& editor() const { return m_editor; }
    CSteps& program();
    QString filePath() const;

    bool IsChanged() const { return m_changed; }
    void setChanged(bool changed) { m_changed = changed; }
    QString title() const { return m_title; }

    // Opening: the editor that runs the command opens into the editor of eUSRCMP.
    // source 0 a file (an empty name asks with the open dialog), 1 the machine.
    bool ReadStep(int eUSRCMP, int source, const QString& fileName);
    QString ReadDataFile(int eUSRCMP, int source, const QString& fileName);
    QString GetSettingFile(int eUSRCMP);

    // Saving (user program only).
    bool SaveStepData(bool saveAs);
    QString GetSavingFullFname(const QString& currentPath);
    // Asks about unsaved changes (message 13); cancel is set when the user cancelled or
    // the save that was asked for failed.
    void SaveCheck(bool& cancel, bool clearOnNo);

    // New program. False when refused (memo window open, or the question was cancelled).
    bool NewOp();

    // Undo (user program only): a snapshot of the whole grid before a multi-cell change.
    bool SaveCurrent();
    bool DoUndo();
    QString GetLastTempFile() const { return m_undo.isEmpty() ? QString() : m_undo.last(); }
    void Delete_dicUndoFiles();
    const QStringList& undoFiles() const { return m_undo; }
    // The toolbar's undo: message 95 when empty, else question 96 and DoUndo on Yes.
    void UndoCommand();

    // Removes the editor's temporary files; message 78 when one cannot be removed.
    bool DeleteTemporaryFiles();

    // Window title: file name ("***" for a program read from the machine), "Refer:" in
    // front for the comparison program, " written by " and the author when there is one.
    QString CreateMyCaption() const;
    void refreshTitle();

    // The password and author dialog of this editor's program (keyPASS).
    void InputPassword();
    // The memo window's OK: stores memo and related file in the user program. False
    // (message 56) when the memo is too long.
    bool storeMemoWindow(const QString& memo, const QString& memoFileName);

private:
    void setTitle(const QString& title);
    void focusGrid();
    void clearGrid();

    Documents& m_owner;
    int m_usrcmp;
    StepSheetEditor& m_editor;
    bool m_changed = false;
    QStringList m_undo;
    QString m_title;
};

} // namespace vkm
