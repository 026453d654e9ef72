#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <utility>

namespace vkm {

class CSelections;
class Documents;
class SheetLayout;
class StepDocument;
class StepSheetEditor;

// The user editor as a script drives it: the user program's document and sheet editor,
// with the window's part played headless. A changed cell marks the document changed, a
// cleared block takes its undo snapshot first, F2 on a function cell gets the answer the
// script gave for the selection dialog, and a digital text several categories share is
// taken in its first category (the line the category dialog highlights).
class EditSession {
public:
    explicit EditSession(Documents& documents);
    EditSession(const EditSession&) = delete;
    EditSession& operator=(const EditSession&) = delete;

    Documents& documents() { return m_documents; }
    StepDocument& document();
    StepSheetEditor& editor();
    const SheetLayout& layout() const;
    // The functions of a side: 1 input, 2 output.
    const CSelections& catalogue(int side) const;

    // Makes the cell current, as clicking it does.
    void goTo(int row, int col);
    // What the function selection dialog answers at the next F2 (nullopt: Cancel).
    void setNextChoice(std::optional<int> value) { m_nextChoice = value; }
    // The password and author dialog, filled in and confirmed with OK: its checks, then the
    // program keeps the values (a refused value changes nothing, as Cancel would).
    void enterAccount(const std::optional<QString>& password, const std::optional<QString>& author);
    // The memo window, filled in and confirmed with OK.
    bool enterMemo(const QString& memo);
    // The editor's save to path (no dialog).
    bool save(const QString& path);
    // A line of the session's own output (what a search found), beside the messages the
    // prompter prints.
    void setOutput(std::function<void(const QString& line)> output) { m_output = std::move(output); }
    void print(const QString& line) const;
    // An action that could not be done at all (a file it needs cannot be read or written):
    // the script ends there as failed, and the program is not saved. The first reason is
    // kept until it is taken.
    void fail(const QString& reason);
    QString takeFailure() { return std::exchange(m_failure, QString()); }
    // The renumbering question (old and new function; a ReplaceAnswer comes back),
    // for a run that can answer All Yes and All No; without it the editor asks Yes or No.
    void setReplaceConfirmation(std::function<int(const QString& oldDigital, const QString& newDigital)> ask);

private:
    Documents& m_documents;
    std::optional<int> m_nextChoice;
    std::function<void(const QString&)> m_output;
    QString m_failure;
};

} // namespace vkm
