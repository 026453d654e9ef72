#pragma once

#include <QString>

namespace vkm {

class Prompter;
class CSteps;

// Limits of the two words a program carries. The machine keeps them in fixed fields of
// the step image (8 and 16 text bytes), scrambled letter by letter, so only single-byte
// letters and digits survive the round trip.
constexpr int kPasswordMaxLength = 8;
constexpr int kAuthorMaxLength = 16;

// At most 8 characters, each a single-byte letter or digit. "" passes as well (the
// caller decides whether an empty word is allowed).
bool ExactPassword(const QString& text);
// The same with at most 16 characters.
bool ExactAuthor(const QString& text);

// Which box of the password and author dialog a failed check points at.
enum class AccountField { None, Password, Author };

// The checks of the password and author dialog: a non-empty password must pass
// ExactPassword (else message 120), a non-empty author ExactAuthor (else message 121).
// Returns the field that failed, None when both are acceptable.
AccountField ExactInput(const QString& password, const QString& author, Prompter& prompter);

// The password prompt when a program is opened: passes when the program has no password
// or ask is false; otherwise asks until the exact (case-sensitive) password is typed.
// A wrong answer shows message 99 and asks again; an empty answer or Cancel fails.
bool ExactPassword(const CSteps& program, bool ask, Prompter& prompter);

// Stores the answer of the dialog ("password" TAB "author", both trimmed) in the program.
// Returns true when either value differs from what the program held.
bool storePasswordAuthor(CSteps& program, const QString& dialogAnswer);

} // namespace vkm
