#pragma once

#include "base/prompter.h"

#include <QTextStream>
#include <deque>

namespace vkm {

// Shows every message as one line of a transcript, for a run without a user: "message N:
// TEXT" for a numbered message, "message: TEXT" for a fixed text, line breaks written as
// "\n". A question gets the answers it was given, in order, then No (Cancel where the box
// has no No), and its line ends with " -> " and that answer. Input boxes and file dialogs
// are cancelled and say so.
class TranscriptPrompter : public Prompter {
public:
    explicit TranscriptPrompter(QTextStream& out);

    // Yes, No or Cancel; a box without the button given takes the nearest (Yes is OK,
    // No is Cancel in an OK/Cancel box). toAll: Yes or No given as All Yes or All No,
    // which only the renumbering question offers; any other question takes it as Yes or No.
    void queueAnswer(Answer a, bool toAll = false) { m_answers.push_back({a, toAll}); }
    // The renumbering question whether oldDigital is replaced by newDigital, written as
    // message 84 is, answered with a ReplaceAnswer; ReplaceNo when no answer is left (or
    // the answer is Cancel).
    int confirmReplace(const QString& oldDigital, const QString& newDigital);

    Answer showMessage(int number, int style, const QString& a1 = {}, const QString& a2 = {},
                       const QString& a3 = {}) override;
    Answer showText(const QString& text, int style) override;
    std::optional<QString> inputText(const QString& title, const QString& prompt,
                                     const QString& defaultText) override;
    QString openFileName(const FileDialogRequest& request) override;
    QString saveFileName(const FileDialogRequest& request) override;
    QString existingFolder(const QString& title, const QString& startDir) override;
    // Retry when the next answer given is Yes, else Cancel.
    Answer askRetry(const QString& text) override;

    // One line as it is written: line breaks as "\n", backslashes doubled.
    static QString escaped(const QString& text);

private:
    Answer show(const QString& head, const QString& text, int style);

    struct Given {
        Answer answer;
        bool toAll;
    };
    QTextStream& m_out;
    std::deque<Given> m_answers;
};

} // namespace vkm
