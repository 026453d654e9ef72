#pragma once

#include <QString>
#include <optional>

namespace vkm {

// The answer a message box gives back. None for boxes that only inform.
enum class Answer { None, Ok, Cancel, Yes, No, Retry };

// The renumbering question (whether a step reference takes its new number) answers for
// the rest of the renumbering too: the codes its dialog and the hooks that ask it return.
enum ReplaceAnswer { ReplaceYes = 1, ReplaceNo = 2, ReplaceAllYes = 3, ReplaceAllNo = 4 };

struct FileDialogRequest {
    QString title;
    QString startDir;
    QString proposedName;  // file name proposed in the dialog, may be empty
    QString filter;        // Qt filter text, for example "gsp file (*.gsp)"
    QString defaultSuffix; // without the point
};

// Every message box, question, input box and file dialog of the system goes through
// this interface. The GUI shows real dialogs; tests and the CLI script or print them.
class Prompter {
public:
    virtual ~Prompter() = default;

    // A numbered message of the message table (see messages.h) in one of the ten box
    // styles. Returns Ok/Cancel/Yes/No for the styles that ask, None otherwise.
    virtual Answer showMessage(int number, int style, const QString& a1 = {}, const QString& a2 = {},
                               const QString& a3 = {}) = 0;

    // A fixed text that is not in the numbered table ("checksum error", the archive
    // presence check, the local messages of a dialog). Same styles as showMessage.
    virtual Answer showText(const QString& text, int style) = 0;

    // A question with Retry and Cancel and the exclamation icon, which none of the ten
    // message styles offers (the serial link asks it when the machine does not answer).
    // Returns Retry or Cancel.
    virtual Answer askRetry(const QString& text) = 0;

    // Input box. nullopt when the user cancels.
    virtual std::optional<QString> inputText(const QString& title, const QString& prompt,
                                             const QString& defaultText) = 0;

    // File and folder dialogs. An empty result means the user cancelled.
    virtual QString openFileName(const FileDialogRequest& request) = 0;
    virtual QString saveFileName(const FileDialogRequest& request) = 0;
    virtual QString existingFolder(const QString& title, const QString& startDir) = 0;
};

} // namespace vkm
