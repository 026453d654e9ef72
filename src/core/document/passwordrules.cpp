#include "document/passwordrules.h"

#include "base/legacytext.h"
#include "base/messages.h"
#include "base/prompter.h"
#include "model/csteps.h"

namespace vkm {

namespace {

// The letter test of the machine tools accepts the plain Latin letters only: other
// letters of the code page cannot be scrambled into the image's word fields.
bool isWordCharacter(QChar c) {
    const char16_t u = c.unicode();
    const bool letter = (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z');
    const bool digit = u >= '0' && u <= '9';
    return (letter || digit) && LegacyText::isSingleByte(c);
}

bool isWord(const QString& text, int maxLength) {
    if (text.size() > maxLength)
        return false;
    for (QChar c : text) {
        if (!isWordCharacter(c))
            return false;
    }
    return true;
}

} // namespace

bool ExactPassword(const QString& text) {
    return isWord(text, kPasswordMaxLength);
}

bool ExactAuthor(const QString& text) {
    return isWord(text, kAuthorMaxLength);
}

AccountField ExactInput(const QString& password, const QString& author, Prompter& prompter) {
    if (!password.isEmpty() && !ExactPassword(password)) {
        prompter.showMessage(120, 2);
        return AccountField::Password;
    }
    if (!author.isEmpty() && !ExactAuthor(author)) {
        prompter.showMessage(121, 2);
        return AccountField::Author;
    }
    return AccountField::None;
}

bool ExactPassword(const CSteps& program, bool ask, Prompter& prompter) {
    if (program.Password.isEmpty() || !ask)
        return true;
    for (;;) {
        const std::optional<QString> answer =
            prompter.inputText(messageBoxTitle(), LoadMessageText(413), QString());
        if (!answer || answer->isEmpty())
            return false;
        if (*answer == program.Password)
            return true;
        prompter.showMessage(99, 2);
    }
}

bool storePasswordAuthor(CSteps& program, const QString& dialogAnswer) {
    const int tab = dialogAnswer.indexOf(QLatin1Char('\t'));
    const QString password = (tab < 0 ? dialogAnswer : dialogAnswer.left(tab)).trimmed();
    const QString author = (tab < 0 ? QString() : dialogAnswer.mid(tab + 1)).trimmed();
    const bool changed = password != program.Password || author != program.Author;
    program.Password = password;
    program.Author = author;
    return changed;
}

} // namespace vkm
