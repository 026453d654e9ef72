#pragma once

#include "document/undohistory.h"

#include <QByteArray>
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
    // Every change of the flag goes through here, so that the window's mark follows it.
    void setChanged(bool changed);
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

    // Undo (user program only): a snapshot file of the whole grid before a multi-cell
    // change, the grid as it was before an accepted cell edit kept in memory.
    bool SaveCurrent();
    void recordCellEdit(const QByteArray& cellsBefore);
    bool DoUndo();
    QString GetLastTempFile() const { return m_history.lastFile(); }
    void Delete_dicUndoFiles();
    QStringList undoFiles() const { return m_history.files(); }
    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }
    // The toolbar's undo: message 95 when there is nothing to undo, else question 96 and
    // DoUndo on Yes.
    void UndoCommand();
    // Redo: the grid an undo replaced comes back, without a question. False when there
    // is nothing to redo.
    bool RedoCommand();

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
    // Tells the window that the changed flag or what can be undone or redone changed.
    void stateChanged();
    // Tells the windows that the program's own fields may differ from before.
    void programFieldsChanged();

    Documents& m_owner;
    int m_usrcmp;
    StepSheetEditor& m_editor;
    bool m_changed = false;
    UndoHistory m_history;
    QString m_title;
};

} // namespace vkm
