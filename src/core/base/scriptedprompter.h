#pragma once

#include "base/prompter.h"

#include <QStringList>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace vkm {

// A prompter that answers from a script and records what was shown: used by the tests of
// every flow. A question, input box or file dialog that finds its script empty is an
// unscripted question: it is answered No or Cancel and reported to the unscripted handler
// (the test programs install one that fails the running test), unless the script has a
// default answer for it.
class ScriptedPrompter : public Prompter {
public:
    struct Shown {
        int number = 0; // 0 for a plain text
        int style = 0;
        QString text; // the composed text
        QString a1, a2, a3;
    };

    // Style recorded for askRetry questions (no message style has Retry and Cancel).
    static constexpr int kRetryStyle = -1;

    // Answers handed out in order to showMessage/showText calls of styles that ask, and to
    // askRetry (Retry or Cancel).
    void queueAnswer(Answer a) { m_answers.push_back(a); }
    // The answer to every question once the script is empty (instead of a report).
    void setDefaultAnswer(Answer a) { m_default = a; }
    // Answers for input boxes (nullopt = Cancel).
    void queueInput(std::optional<QString> text) { m_inputs.push_back(std::move(text)); }
    // Answers for file and folder dialogs ("" = Cancel).
    void queueFileName(const QString& path) { m_files.push_back(path); }
    // Input boxes and file dialogs with an empty script are cancelled without a report.
    void setCancelDialogsByDefault(bool on) { m_cancelDialogs = on; }

    // Called with a description of every unscripted question, in every ScriptedPrompter.
    using UnscriptedHandler = std::function<void(const QString& what)>;
    static void setUnscriptedHandler(UnscriptedHandler handler);
    // How many unscripted questions this prompter met.
    int unscriptedCount() const { return m_unscripted; }
    // Answers still waiting in the script (a test can expect all of them used).
    std::size_t pendingAnswers() const { return m_answers.size() + m_inputs.size() + m_files.size(); }

    Answer showMessage(int number, int style, const QString& a1 = {}, const QString& a2 = {},
                       const QString& a3 = {}) override;
    Answer showText(const QString& text, int style) override;
    Answer askRetry(const QString& text) override;
    std::optional<QString> inputText(const QString& title, const QString& prompt,
                                     const QString& defaultText) override;
    QString openFileName(const FileDialogRequest& request) override;
    QString saveFileName(const FileDialogRequest& request) override;
    QString existingFolder(const QString& title, const QString& startDir) override;

    const std::vector<Shown>& shown() const { return m_shown; }
    std::vector<int> numbers() const;
    // The texts shown, in order (numbered messages composed with their arguments).
    QStringList texts() const;
    int lastNumber() const { return m_shown.empty() ? -1 : m_shown.back().number; }
    const std::vector<FileDialogRequest>& fileRequests() const { return m_requests; }
    const QStringList& inputPrompts() const { return m_prompts; }
    void clear();

private:
    Answer answerFor(int style, const QString& text);
    void unscripted(const QString& what);
    std::deque<Answer> m_answers;
    std::deque<std::optional<QString>> m_inputs;
    std::deque<QString> m_files;
    std::optional<Answer> m_default;
    bool m_cancelDialogs = false;
    int m_unscripted = 0;
    std::vector<Shown> m_shown;
    std::vector<FileDialogRequest> m_requests;
    QStringList m_prompts;
};

// Writes every message to stderr and answers questions for a user who is not there (the
// command-line tool): the answers it was given, in order, then No (Cancel where the box
// has no No, and for Retry questions). Input boxes and file dialogs are cancelled.
class ConsolePrompter : public Prompter {
public:
    void queueAnswer(Answer a) { m_answers.push_back(a); }
    Answer showMessage(int number, int style, const QString& a1 = {}, const QString& a2 = {},
                       const QString& a3 = {}) override;
    Answer showText(const QString& text, int style) override;
    Answer askRetry(const QString& text) override;
    std::optional<QString> inputText(const QString&, const QString&, const QString&) override {
        return std::nullopt;
    }
    QString openFileName(const FileDialogRequest&) override { return {}; }
    QString saveFileName(const FileDialogRequest&) override { return {}; }
    QString existingFolder(const QString&, const QString&) override { return {}; }
    // The last text shown (the CLI prints it as its error).
    QString lastText() const { return m_last; }

private:
    QString m_last;
    std::deque<Answer> m_answers;
};

} // namespace vkm
