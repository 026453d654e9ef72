#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

class QAction;

namespace vkm {

// The keys of the step editor's toolbar commands, in one table that the toolbar, its
// drop-down menus, the context menu and the tool tips all read. A command key is a
// toolbar button key ("keyNew") or a drop-down item key ("keySAVEAS").
//
// Two kinds of entries: commands the window runs through a shortcut of its own (New,
// Open, Save, Save as, Print, Undo, Redo, Insert, Help, the difference marks and the
// moves between differences), and keys the grid handles itself (Ctrl+F, Ctrl+C, Ctrl+X,
// Ctrl+V), which the grid looks up here when they are pressed in it. The platform's
// standard keys come first where Qt has one (so that a desktop's own conventions hold),
// followed by the keys every technician types on any desktop.
namespace shortcuts {

// Every key of the command (empty for a command without keys).
QList<QKeySequence> keys(const QString& commandKey);
// Gives the action the keys of a command the window binds, answered only inside the
// window that holds the action. False (the action left alone) for a command the grid
// handles itself, or one the table does not hold.
bool bind(QAction* action, const QString& commandKey);
// The command of a key the grid handles itself ("keyCOPY" for Ctrl+C), "" for any other.
QString gridCommand(QKeyCombination key);
// The first key as the menus show it ("Ctrl+S"), "" when none.
QString text(const QString& commandKey);
// A tool tip with the key behind it: "Save (Ctrl+S)".
QString withKey(const QString& tip, const QString& commandKey);

} // namespace shortcuts
} // namespace vkm
