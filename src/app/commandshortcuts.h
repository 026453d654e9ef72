#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

namespace vkm {

// The keys of the step editor's toolbar commands, in one table that the toolbar, its
// drop-down menus, the context menu and the tool tips all read. A command key is a
// toolbar button key ("keyNew") or a drop-down item key ("keySAVEAS").
//
// Two kinds of entries: commands the window runs through a shortcut of its own (New,
// Open, Save, Save as, Print, Undo, Redo, Insert, Help, the difference marks), and keys
// the grid handles itself (Ctrl+F, Ctrl+C, Ctrl+X, Ctrl+V), which are only shown. The
// platform's standard keys come first where Qt has one (so that a desktop's own
// conventions hold), followed by the keys every technician types on any desktop.
namespace shortcuts {

// Every key of the command (empty for a command without keys).
QList<QKeySequence> keys(const QString& commandKey);
// True when the window itself binds the keys (false: the grid handles them, or none).
bool boundByWindow(const QString& commandKey);
// The first key as the menus show it ("Ctrl+S"), "" when none.
QString text(const QString& commandKey);
// A tool tip with the key behind it: "Save (Ctrl+S)".
QString withKey(const QString& tip, const QString& commandKey);

} // namespace shortcuts
} // namespace vkm
