#include "base/transcriptprompter.h"

#include "base/messages.h"

namespace vkm {

namespace {
QString answerName(Answer a) {
    switch (a) {
    case Answer::Ok:
        return QStringLiteral("ok");
    case Answer::Cancel:
        return QStringLiteral("cancel");
    case Answer::Yes:
        return QStringLiteral("yes");
    case Answer::No:
        return QStringLiteral("no");
    case Answer::Retry:
        return QStringLiteral("retry");
    case Answer::None:
        break;
    }
    return {};
}

// The answer a box of these buttons gives for the one wanted.
Answer fitted(Answer wanted, BoxButtons buttons) {
    const bool positive = wanted == Answer::Yes || wanted == Answer::Ok;
    switch (buttons) {
    case BoxButtons::OkCancel:
        return positive ? Answer::Ok : Answer::Cancel;
    case BoxButtons::YesNo:
        return positive ? Answer::Yes : Answer::No;
    case BoxButtons::YesNoCancel:
        return wanted == Answer::Ok ? Answer::Yes : wanted;
    default:
        return Answer::None;
    }
}
} // namespace

TranscriptPrompter::TranscriptPrompter(QTextStream& out) : m_out(out) {}

QString TranscriptPrompter::escaped(const QString& text) {
    QString out = text;
    out.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    out.replace(QLatin1String("\r\n"), QLatin1String("\\n"));
    out.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    out.replace(QLatin1Char('\r'), QLatin1String("\\n"));
    return out;
}

Answer TranscriptPrompter::show(const QString& head, const QString& text, int style) {
    const BoxStyle box = boxStyle(style);
    if (!box.valid)
        return Answer::None;
    m_out << head << ": " << escaped(text);
    Answer answer = Answer::None;
    if (box.buttons != BoxButtons::Ok && box.buttons != BoxButtons::None) {
        // Nobody at the keyboard: No, or Cancel where the box has no No.
        Answer wanted = box.buttons == BoxButtons::OkCancel ? Answer::Cancel : Answer::No;
        if (!m_answers.empty()) {
            wanted = m_answers.front().answer;
            m_answers.pop_front();
        }
        answer = fitted(wanted, box.buttons);
        m_out << " -> " << answerName(answer);
    }
    m_out << '\n';
    m_out.flush();
    return answer;
}

Answer TranscriptPrompter::showMessage(int number, int style, const QString& a1, const QString& a2,
                                       const QString& a3) {
    return show(QStringLiteral("message ") + QString::number(number), messageText(number, a1, a2, a3), style);
}

Answer TranscriptPrompter::showText(const QString& text, int style) {
    return show(QStringLiteral("message"), text, style);
}

int TranscriptPrompter::confirmReplace(const QString& oldDigital, const QString& newDigital) {
    int ret = ReplaceNo;
    if (!m_answers.empty()) {
        const Given given = m_answers.front();
        m_answers.pop_front();
        if (given.answer == Answer::Yes || given.answer == Answer::Ok)
            ret = given.toAll ? ReplaceAllYes : ReplaceYes;
        else if (given.answer == Answer::No)
            ret = given.toAll ? ReplaceAllNo : ReplaceNo;
    }
    static const char* const names[] = {"", "yes", "no", "all-yes", "all-no"};
    // The same question as message 84, with the two answers the dialog adds.
    m_out << "message 84: " << escaped(messageText(84, oldDigital, newDigital)) << " -> "
          << QLatin1String(names[ret]) << '\n';
    m_out.flush();
    return ret;
}

std::optional<QString> TranscriptPrompter::inputText(const QString&, const QString& prompt, const QString&) {
    m_out << "input: " << escaped(prompt) << " -> cancel\n";
    m_out.flush();
    return std::nullopt;
}

QString TranscriptPrompter::openFileName(const FileDialogRequest& request) {
    m_out << "file: " << escaped(request.title) << " -> cancel\n";
    m_out.flush();
    return {};
}

QString TranscriptPrompter::saveFileName(const FileDialogRequest& request) {
    return openFileName(request);
}

Answer TranscriptPrompter::askRetry(const QString& text) {
    Answer answer = Answer::Cancel;
    if (!m_answers.empty()) {
        if (m_answers.front().answer == Answer::Yes)
            answer = Answer::Retry;
        m_answers.pop_front();
    }
    m_out << "message: " << escaped(text) << " -> " << answerName(answer) << '\n';
    m_out.flush();
    return answer;
}

QString TranscriptPrompter::existingFolder(const QString& title, const QString&) {
    m_out << "folder: " << escaped(title) << " -> cancel\n";
    m_out.flush();
    return {};
}

} // namespace vkm
