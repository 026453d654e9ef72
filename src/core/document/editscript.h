#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace vkm {

class EditSession;
class SheetLayout;

// One action of a script, ready to run on the session.
using EditAction = std::function<void(EditSession& session)>;

// What a verb makes of the rest of its line: the action to run, or an empty action and
// the reason the line is not understood in `error`.
using EditVerb = std::function<EditAction(const QString& args, const EditSession& session, QString& error)>;

// A script of editor actions, one a line, as a user gives them in the step editor window:
// "VERB ARGUMENTS". Blank lines and lines starting with '#' are skipped. The whole script
// is read before anything runs, so a line that is not understood changes nothing.
//
// Verbs are added by name; each reads its own arguments. The helpers below read the
// arguments verbs share: a step (1 to 32) and a column named independently of the layout
// ("remark", "out1", "out1.logic", "out1.kind", "out1.delay", "out2"..., "in1",
// "in1.state", "in1.rel" ... "in4.rel", "step" for the step number column) or given as its
// grid column number.
class EditScript {
public:
    void addVerb(const QString& name, EditVerb verb);
    bool hasVerb(const QString& name) const { return m_verbs.count(name) > 0; }

    // Reads a script; false with "line N: reason" in error for the first line that is not
    // understood (nothing of the script is kept then).
    bool read(const QString& text, const EditSession& session, QString& error);
    // Runs what was read, line by line. An action that fails (EditSession::fail) ends the
    // run: false, with "line N: reason" in error when given.
    bool run(EditSession& session, QString* error = nullptr) const;
    int actionCount() const { return int(m_actions.size()); }

    // Splits off the first count words (separated by one blank or tab); the rest of the
    // text after the blank that follows them goes to rest. False when there are fewer words.
    static bool splitWords(const QString& args, int count, QStringList& words, QString* rest = nullptr);
    static std::optional<int> parseRow(const QString& word, QString& error);
    static std::optional<int> parseColumn(const QString& word, const SheetLayout& layout, QString& error);
    // The name a script gives a column, as parseColumn reads it ("out2.delay", "in3.rel",
    // "remark", "step").
    static QString columnName(const SheetLayout& layout, int col);
    // True when nothing but blanks follows the arguments; else false with the reason.
    static bool nothingMore(const QString& rest, QString& error);
    // "\n" is a line break and "\\" a backslash in a text argument.
    static QString unescaped(const QString& text);

private:
    struct Line {
        int number; // in the script, from 1
        EditAction action;
    };
    std::map<QString, EditVerb> m_verbs;
    std::vector<Line> m_actions;
};

// The verbs of the step editor window: type, space, delete, choose (cells) and undo,
// redo, author, password, memo (the document). Row commands come as verbs of their own.
void addCellVerbs(EditScript& script);
void addDocumentVerbs(EditScript& script);
// copy, cut, paste, insert, rem, clear-rem, find, replace and the clipboard's file verbs.
void addRowVerbs(EditScript& script);
// A script that knows every verb of the step editor window.
EditScript stepEditorScript();

} // namespace vkm
