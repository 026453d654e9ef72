#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <deque>
#include <optional>

namespace vkm {

// The user editor's undo and redo history. Each undo step is the sheet as it was before
// one change (StepSheet::saveCells), newest first when undoing: a change of many cells
// (paste, insert, cut, Delete, a replacement, a pulse) keeps its step in a "~pl" file,
// an edit of one cell keeps it in memory. Undoing a step hands its cells back (its file
// is read and removed); the caller pushes the sheet it replaces onto the redo side, which
// lives in memory only and is emptied by the next change.
//
// Files are never dropped: the machine tools keep every snapshot file until the history
// is cleared. Cell edits are many and small, so at most kMaxMemorySteps of them are kept
// on each side; beyond that the oldest in-memory step goes, and undoing across the gap
// then takes back two changes at once (each step is a whole sheet, so nothing is mixed).
class UndoHistory {
public:
    static constexpr int kMaxMemorySteps = 200;

    UndoHistory() = default;
    ~UndoHistory();
    UndoHistory(const UndoHistory&) = delete;
    UndoHistory& operator=(const UndoHistory&) = delete;

    bool canUndo() const { return !m_undo.empty(); }
    bool canRedo() const { return !m_redo.empty(); }

    // A new change: its step goes on top and the redo side is emptied.
    void addSnapshotFile(const QString& path);
    void addCells(const QByteArray& cellsBefore);

    // The newest undo step's cells; its file (if any) is removed. nullopt when there is
    // nothing to undo, or (the step gone all the same) when its file cannot be read.
    std::optional<QByteArray> takeUndo(bool* unreadable = nullptr);
    // The sheet an undo replaced, for Redo.
    void addRedo(const QByteArray& cells);
    // The newest redo step; nullopt when there is none.
    std::optional<QByteArray> takeRedo();
    // The sheet a redo replaced goes back on the undo side (the redo side is kept).
    void addUndoKeepingRedo(const QByteArray& cells);

    // Removes every snapshot file and forgets both sides.
    void clear();
    // The snapshot files of the undo side, oldest first.
    QStringList files() const;
    // The newest snapshot file ("" when there is none).
    QString lastFile() const;

private:
    struct Step {
        QString file;     // set: the cells are in this file
        QByteArray cells; // otherwise here
    };
    void pushUndo(Step step);
    static void capMemory(std::deque<Step>& steps);

    std::deque<Step> m_undo; // oldest first
    std::deque<QByteArray> m_redo;
};

} // namespace vkm
