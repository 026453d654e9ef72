#pragma once

#include <QString>

namespace vkm {

// Text of resource string 1000 + m of the message table ("" when there is none).
QString LoadMessageText(int m);

// The text of message number n with its arguments, composed as the message routine
// shows it ("" for a number outside the table).
QString messageText(int number, const QString& a1 = {}, const QString& a2 = {}, const QString& a3 = {});

// The title of every message box: the executable's base name.
QString messageBoxTitle();

// Box kinds of the ten message styles.
enum class BoxIcon { None, Critical, Exclamation, Question, Information };
enum class BoxButtons { None, Ok, YesNo, YesNoCancel, OkCancel };
struct BoxStyle {
    BoxIcon icon = BoxIcon::None;
    BoxButtons buttons = BoxButtons::None;
    bool secondButtonDefault = false; // style 7: No is the default
    bool valid = false;               // styles outside 1..10 show nothing
};
BoxStyle boxStyle(int style);

// A fixed text that is not a numbered message (Prompter::showText) may also stand in a
// plain box: no icon, OK only. Numbered messages never use it: their styles are 1..10.
inline constexpr int kPlainBox = 0;
// The box of a fixed text: kPlainBox or one of the ten styles.
BoxStyle textBoxStyle(int style);

} // namespace vkm
