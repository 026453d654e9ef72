#pragma once

#include <QHash>
#include <QToolBar>

namespace vkm {

// The toolbar of a step editor window: New, Open, Save, Find, Print, Cut, Copy, Paste,
// Insert, Undo, Redo, Pulse, Rem, Info and Help, with the drop-down menus of Open, Save
// and Info. It only announces what was pressed; the window and the document decide what
// it does. Buttons whose work is not part of the editor yet stay disabled. The keys of
// the commands (commandshortcuts.h) are bound to these actions and shown in the tool tips
// and menus.
class StepToolBar : public QToolBar {
    Q_OBJECT
public:
    explicit StepToolBar(QWidget* parent = nullptr);

    // Caption of a button key ("UNKNOWN" for keys that are not on the toolbar).
    static QString GetButtonCaption(const QString& key);
    // Keys of the buttons, left to right.
    static QStringList buttonKeys();

    // Captions on the buttons (true) or in their tool tips only (false).
    void ShowButtonCaption(bool show);
    bool captionsShown() const { return m_captions; }

    // A button by its key, and a drop-down item by its button's key and its own key.
    QAction* action(const QString& key) const { return m_buttons.value(key); }
    QAction* menuAction(const QString& buttonKey, const QString& itemKey) const;
    // The buttons and items that carry keys: the window adds them to itself, so that the
    // keys work wherever the focus is inside it.
    const QList<QAction*>& shortcutActions() const { return m_shortcutActions; }

Q_SIGNALS:
    // A button without a menu was pressed.
    void commandTriggered(const QString& key);
    // A drop-down item was chosen (the Open and Save buttons themselves run their first item).
    void menuTriggered(const QString& buttonKey, const QString& itemKey);

private:
    QAction* addButton(const QString& key, const QString& imageKey);
    void addMenuItem(const QString& buttonKey, const QString& itemKey, const QString& text);
    void addMenuSeparator(const QString& buttonKey);
    void bindShortcuts();

    QHash<QString, QAction*> m_buttons;
    QHash<QString, QAction*> m_items; // "buttonKey/itemKey"
    QList<QAction*> m_shortcutActions;
    bool m_captions = true;
};

} // namespace vkm
