#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace vkm {

// What the document operations ask of the windows around them. Every hook may be empty;
// an empty hook does nothing (and answers "not open" / "not loaded" / cancelled).
struct DocumentHooks {
    // Window title of the editor of program usrcmp (0 user, 1 comparison).
    std::function<void(int usrcmp, const QString& title)> titleChanged;
    // The changed flag or what can be undone or redone in that editor changed.
    std::function<void(int usrcmp)> stateChanged;
    // The program's own fields (author, password, memo, memo file) of usrcmp may have
    // changed: it was opened or made new, or the password or memo window stored new ones.
    std::function<void(int usrcmp)> programFieldsChanged;
    // The user program was saved to path.
    std::function<void(const QString& path)> saved;
    // Gives that editor's grid the keyboard focus.
    std::function<void(int usrcmp)> focusGrid;
    // The memo window is open: a new program is refused while it is.
    std::function<bool()> memoWindowOpen;
    // The comparison editor has been loaded (shown) already.
    std::function<bool()> comparisonLoaded;
    // Loads and shows the comparison editor (first open of a comparison program).
    std::function<void()> showComparison;
    // The main window arranges its editors one above the other.
    std::function<void()> tileHorizontally;
    // The function selection dialogs are prepared for the editor of usrcmp.
    std::function<void(int usrcmp)> loadForms;
    // Reads the program from the machine into a transfer text file; "" when nothing was read.
    std::function<QString(int usrcmp)> readFromMachine;
    // The password and author dialog: returns "password" TAB "author" as the dialog ends.
    std::function<QString(int usrcmp, const QString& password, const QString& author)> inputPassword;
};

} // namespace vkm
