#include "base/scriptedprompter.h"

#include "base/messages.h"

#include <cstdio>

namespace vkm {

namespace {
bool asks(int style) {
    const BoxStyle s = boxStyle(style);
    return s.valid && s.buttons != BoxButtons::Ok && s.buttons != BoxButtons::None;
}

// What nobody at the keyboard answers: No, or Cancel where the box has no No.
Answer refusal(int style) {
    return boxStyle(style).buttons == BoxButtons::OkCancel ? Answer::Cancel : Answer::No;
}

ScriptedPrompter::UnscriptedHandler& unscriptedHandler() {
    static ScriptedPrompter::UnscriptedHandler handler;
    return handler;
}
} // namespace

void ScriptedPrompter::setUnscriptedHandler(UnscriptedHandler handler) {
    unscriptedHandler() = std::move(handler);
}

void ScriptedPrompter::unscripted(const QString& what) {
    ++m_unscripted;
    if (unscriptedHandler())
        unscriptedHandler()(what);
}

Answer ScriptedPrompter::answerFor(int style, const QString& text) {
    if (!asks(style))
        return Answer::None;
    if (!m_answers.empty()) {
        const Answer a = m_answers.front();
        m_answers.pop_front();
        return a;
    }
    if (m_default)
        return *m_default;
    unscripted(QStringLiteral("question without a scripted answer: ") + text);
    return refusal(style);
}

Answer ScriptedPrompter::showMessage(int number, int style, const QString& a1, const QString& a2,
                                     const QString& a3) {
    m_shown.push_back({number, style, messageText(number, a1, a2, a3), a1, a2, a3});
    return answerFor(style, m_shown.back().text);
}

Answer ScriptedPrompter::showText(const QString& text, int style) {
    m_shown.push_back({0, style, text, {}, {}, {}});
    return answerFor(style, text);
}

Answer ScriptedPrompter::askRetry(const QString& text) {
    m_shown.push_back({0, kRetryStyle, text, {}, {}, {}});
    if (!m_answers.empty()) {
        const Answer a = m_answers.front();
        m_answers.pop_front();
        return a == Answer::Retry ? Answer::Retry : Answer::Cancel;
    }
    if (m_default)
        return *m_default == Answer::Retry ? Answer::Retry : Answer::Cancel;
    unscripted(QStringLiteral("retry question without a scripted answer: ") + text);
    return Answer::Cancel;
}

std::optional<QString> ScriptedPrompter::inputText(const QString&, const QString& prompt, const QString&) {
    m_prompts << prompt;
    if (m_inputs.empty()) {
        if (!m_cancelDialogs)
            unscripted(QStringLiteral("input box without a scripted answer: ") + prompt);
        return std::nullopt;
    }
    auto v = m_inputs.front();
    m_inputs.pop_front();
    return v;
}

QString ScriptedPrompter::openFileName(const FileDialogRequest& request) {
    m_requests.push_back(request);
    if (m_files.empty()) {
        if (!m_cancelDialogs)
            unscripted(QStringLiteral("file dialog without a scripted answer: ") + request.title);
        return {};
    }
    const QString f = m_files.front();
    m_files.pop_front();
    return f;
}

QString ScriptedPrompter::saveFileName(const FileDialogRequest& request) {
    return openFileName(request);
}

QString ScriptedPrompter::existingFolder(const QString& title, const QString& startDir) {
    return openFileName({title, startDir, {}, {}, {}});
}

std::vector<int> ScriptedPrompter::numbers() const {
    std::vector<int> out;
    for (const auto& s : m_shown)
        out.push_back(s.number);
    return out;
}

QStringList ScriptedPrompter::texts() const {
    QStringList out;
    for (const auto& s : m_shown)
        out << s.text;
    return out;
}

void ScriptedPrompter::clear() {
    m_shown.clear();
    m_requests.clear();
    m_prompts.clear();
}

Answer ConsolePrompter::showMessage(int number, int style, const QString& a1, const QString& a2,
                                    const QString& a3) {
    if (!boxStyle(style).valid)
        return Answer::None;
    return showText(messageText(number, a1, a2, a3), style);
}

Answer ConsolePrompter::showText(const QString& text, int style) {
    if (!textBoxStyle(style).valid)
        return Answer::None;
    m_last = text;
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    if (!asks(style))
        return Answer::None;
    if (!m_answers.empty()) {
        const Answer a = m_answers.front();
        m_answers.pop_front();
        return a;
    }
    return refusal(style);
}

Answer ConsolePrompter::askRetry(const QString& text) {
    m_last = text;
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    if (!m_answers.empty()) {
        const Answer a = m_answers.front();
        m_answers.pop_front();
        return a == Answer::Retry ? Answer::Retry : Answer::Cancel;
    }
    return Answer::Cancel;
}

} // namespace vkm
