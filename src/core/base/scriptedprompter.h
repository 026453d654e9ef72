#pragma once

#include "base/prompter.h"

#include <QStringList>
#include <deque>
#include <vector>

namespace vkm {

// A prompter that answers from a script and records what was shown: used by the
// tests of every flow and by headless tools.
class ScriptedPrompter : public Prompter {
public:
    struct Shown {
        int number = 0; // 0 for a plain text
        int style = 0;
        QString text; // the composed text
        QString a1, a2, a3;
    };

    // Answers handed out in order to showMessage/showText calls of styles that ask.
    // When the script is empty, a question gets defaultAnswer (No unless set).
    void queueAnswer(Answer a) { m_answers.push_back(a); }
    void setDefaultAnswer(Answer a) { m_default = a; }
    // Answers for input boxes (nullopt = Cancel); empty script: Cancel.
    void queueInput(std::optional<QString> text) { m_inputs.push_back(std::move(text)); }
    // Answers for file and folder dialogs ("" = Cancel); empty script: Cancel.
    void queueFileName(const QString& path) { m_files.push_back(path); }

    Answer showMessage(int number, int style, const QString& a1 = {}, const QString& a2 = {},
                       const QString& a3 = {}) override;
    Answer showText(const QString& text, int style) override;
    std::optional<QString> inputText(const QString& title, const QString& prompt,
                                     const QString& defaultText) override;
    QString openFileName(const FileDialogRequest& request) override;
    QString saveFileName(const FileDialogRequest& request) override;
    QString existingFolder(const QString& title, const QString& startDir) override;

    const std::vector<Shown>& shown() const { return m_shown; }
    std::vector<int> numbers() const;
    int lastNumber() const { return m_shown.empty() ? -1 : m_shown.back().number; }
    const std::vector<FileDialogRequest>& fileRequests() const { return m_requests; }
    const QStringList& inputPrompts() const { return m_prompts; }
    void clear();

private:
    Answer answerFor(int style);
    std::deque<Answer> m_answers;
    std::deque<std::optional<QString>> m_inputs;
    std::deque<QString> m_files;
    Answer m_default = Answer::No;
    std::vector<Shown> m_shown;
    std::vector<FileDialogRequest> m_requests;
    QStringList m_prompts;
};

// Writes every message to stderr and answers questions with their default button
// (for the command-line tool).
class ConsolePrompter : public Prompter {
public:
    Answer showMessage(int number, int style, const QString& a1 = {}, const QString& a2 = {},
                       const QString& a3 = {}) override;
    Answer showText(const QString& text, int style) override;
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
};

} // namespace vkm
