#include "commandshortcuts.h"

#include <QAction>

namespace vkm::shortcuts {

namespace {
struct Entry {
    const char* command;
    QKeySequence::StandardKey standard;
    QList<QKeySequence> own; // added where the platform's list lacks them
    bool window;             // bound by the window (false: the grid's own key)
};

const QList<Entry>& table() {
    static const QList<Entry> entries = {
        {"keyNew", QKeySequence::New, {QKeySequence(Qt::CTRL | Qt::Key_N)}, true},
        {"keyREAD_USER1", QKeySequence::Open, {QKeySequence(Qt::CTRL | Qt::Key_O)}, true},
        {"keyOVERWRITE", QKeySequence::Save, {QKeySequence(Qt::CTRL | Qt::Key_S)}, true},
        {"keySAVEAS", QKeySequence::SaveAs, {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)}, true},
        {"keyPRINT", QKeySequence::Print, {QKeySequence(Qt::CTRL | Qt::Key_P)}, true},
        {"keyUNDO", QKeySequence::Undo, {QKeySequence(Qt::CTRL | Qt::Key_Z)}, true},
        {"keyREDO",
         QKeySequence::Redo,
         {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)},
         true},
        {"keyROWINSERT", QKeySequence::UnknownKey, {QKeySequence(Qt::Key_Insert)}, true},
        {"keyHelp", QKeySequence::HelpContents, {QKeySequence(Qt::Key_F1)}, true},
        {"keyDIFF", QKeySequence::UnknownKey, {QKeySequence(Qt::CTRL | Qt::Key_D)}, true},
        {"keyNEXTDIFF", QKeySequence::UnknownKey, {QKeySequence(Qt::Key_F7)}, true},
        {"keyPREVDIFF", QKeySequence::UnknownKey, {QKeySequence(Qt::SHIFT | Qt::Key_F7)}, true},
        {"keyFind", QKeySequence::UnknownKey, {QKeySequence(Qt::CTRL | Qt::Key_F)}, false},
        {"keyCOPY", QKeySequence::UnknownKey, {QKeySequence(Qt::CTRL | Qt::Key_C)}, false},
        {"keyCUT", QKeySequence::UnknownKey, {QKeySequence(Qt::CTRL | Qt::Key_X)}, false},
        {"keyPASTE", QKeySequence::UnknownKey, {QKeySequence(Qt::CTRL | Qt::Key_V)}, false},
    };
    return entries;
}

const Entry* find(const QString& commandKey) {
    for (const Entry& e : table())
        if (commandKey == QLatin1String(e.command))
            return &e;
    return nullptr;
}
} // namespace

QList<QKeySequence> keys(const QString& commandKey) {
    const Entry* e = find(commandKey);
    if (!e)
        return {};
    QList<QKeySequence> all = e->standard == QKeySequence::UnknownKey
                                  ? QList<QKeySequence>()
                                  : QKeySequence::keyBindings(e->standard);
    for (const QKeySequence& k : e->own)
        if (!all.contains(k))
            all << k;
    return all;
}

bool bind(QAction* action, const QString& commandKey) {
    const Entry* e = find(commandKey);
    if (!action || !e || !e->window)
        return false;
    action->setShortcuts(keys(commandKey));
    // Each editor window answers its own keys: the one with the focus runs them.
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    return true;
}

QString gridCommand(QKeyCombination key) {
    const QKeySequence pressed(key);
    for (const Entry& e : table())
        if (!e.window && keys(QLatin1String(e.command)).contains(pressed))
            return QLatin1String(e.command);
    return {};
}

QString text(const QString& commandKey) {
    const QList<QKeySequence> all = keys(commandKey);
    return all.isEmpty() ? QString() : all.first().toString(QKeySequence::NativeText);
}

QString withKey(const QString& tip, const QString& commandKey) {
    const QString key = text(commandKey);
    return key.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, key);
}

} // namespace vkm::shortcuts
