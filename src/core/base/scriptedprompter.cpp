#include "base/scriptedprompter.h"

#include "base/messages.h"

#include <cstdio>

namespace vkm {

namespace {
bool asks(int style) {
    const BoxStyle s = boxStyle(style);
    return s.valid && s.buttons != BoxButtons::Ok && s.buttons != BoxButtons::None;
}

// The answer a box gives when its default button is pressed.
Answer defaultButton(int style) {
    const BoxStyle s = boxStyle(style);
    switch (s.buttons) {
    case BoxButtons::YesNo:
        return s.secondButtonDefault ? Answer::No : Answer::Yes;
    case BoxButtons::YesNoCancel:
        return Answer::Yes;
    case BoxButtons::OkCancel:
        return Answer::Ok;
    default:
        return Answer::None;
    }
}
} // namespace

Answer ScriptedPrompter::answerFor(int style) {
    if (!asks(style))
        return Answer::None;
    if (!m_answers.empty()) {
        const Answer a = m_answers.front();
        m_answers.pop_front();
        return a;
    }
    return m_default;
}

Answer ScriptedPrompter::showMessage(int number, int style, const QString& a1, const QString& a2,
                                     const QString& a3) {
    m_shown.push_back({number, style, messageText(number, a1, a2, a3), a1, a2, a3});
    return answerFor(style);
}

Answer ScriptedPrompter::showText(const QString& text, int style) {
    m_shown.push_back({0, style, text, {}, {}, {}});
    return answerFor(style);
}

std::optional<QString> ScriptedPrompter::inputText(const QString&, const QString& prompt, const QString&) {
    m_prompts << prompt;
    if (m_inputs.empty())
        return std::nullopt;
    auto v = m_inputs.front();
    m_inputs.pop_front();
    return v;
}

QString ScriptedPrompter::openFileName(const FileDialogRequest& request) {
    m_requests.push_back(request);
    if (m_files.empty())
        return {};
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

void ScriptedPrompter::clear() {
    m_shown.clear();
    m_requests.clear();
    m_prompts.clear();
}

Answer ConsolePrompter::showMessage(int number, int style, const QString& a1, const QString& a2,
                                    const QString& a3) {
    return showText(messageText(number, a1, a2, a3), style);
}

Answer ConsolePrompter::showText(const QString& text, int style) {
    if (!boxStyle(style).valid)
        return Answer::None;
    m_last = text;
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    return defaultButton(style);
}

} // namespace vkm
