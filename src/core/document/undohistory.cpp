#include "document/undohistory.h"

#include <QFile>
#include <algorithm>

namespace vkm {

UndoHistory::~UndoHistory() {
    clear();
}

void UndoHistory::pushUndo(Step step) {
    m_undo.push_back(std::move(step));
    capMemory(m_undo);
}

void UndoHistory::capMemory(std::deque<Step>& steps) {
    const auto inMemory = [](const Step& s) { return s.file.isEmpty(); };
    if (std::count_if(steps.begin(), steps.end(), inMemory) > kMaxMemorySteps)
        steps.erase(std::find_if(steps.begin(), steps.end(), inMemory));
}

void UndoHistory::addSnapshotFile(const QString& path) {
    m_redo.clear();
    pushUndo({path, {}});
}

void UndoHistory::addCells(const QByteArray& cellsBefore) {
    m_redo.clear();
    pushUndo({{}, cellsBefore});
}

void UndoHistory::addUndoKeepingRedo(const QByteArray& cells) {
    pushUndo({{}, cells});
}

std::optional<QByteArray> UndoHistory::takeUndo(bool* unreadable) {
    if (unreadable)
        *unreadable = false;
    if (m_undo.empty())
        return std::nullopt;
    Step step = std::move(m_undo.back());
    m_undo.pop_back();
    if (step.file.isEmpty())
        return step.cells;
    QFile file(step.file);
    const bool read = file.open(QIODevice::ReadOnly);
    QByteArray cells = read ? file.readAll() : QByteArray();
    file.close();
    QFile::remove(step.file);
    if (!read) {
        if (unreadable)
            *unreadable = true;
        return std::nullopt;
    }
    return cells;
}

void UndoHistory::addRedo(const QByteArray& cells) {
    m_redo.push_back(cells);
    if (int(m_redo.size()) > kMaxMemorySteps)
        m_redo.pop_front();
}

std::optional<QByteArray> UndoHistory::takeRedo() {
    if (m_redo.empty())
        return std::nullopt;
    QByteArray cells = std::move(m_redo.back());
    m_redo.pop_back();
    return cells;
}

void UndoHistory::clear() {
    for (const Step& s : m_undo)
        if (!s.file.isEmpty())
            QFile::remove(s.file);
    m_undo.clear();
    m_redo.clear();
}

QStringList UndoHistory::files() const {
    QStringList paths;
    for (const Step& s : m_undo)
        if (!s.file.isEmpty())
            paths << s.file;
    return paths;
}

QString UndoHistory::lastFile() const {
    for (auto it = m_undo.rbegin(); it != m_undo.rend(); ++it)
        if (!it->file.isEmpty())
            return it->file;
    return {};
}

} // namespace vkm
