#include "steptoolbar.h"

#include "commandshortcuts.h"
#include "editorresources.h"

#include <QMenu>
#include <QToolButton>

namespace vkm {

namespace {
struct Button {
    const char* key;
    const char* caption;
};
// Left to right; an empty key is a separator.
const Button kButtons[] = {
    {"keyNew", "New"},
    {"keyOPEN", "Open"},
    {"keySAVE", "Save"},
    {"", ""},
    {"keyFind", "Find"},
    {"keyPRINT", "Print"},
    {"", ""},
    {"keyCUT", "Cut"},
    {"keyCOPY", "Copy"},
    {"keyPASTE", "Paste"},
    {"keyROWINSERT", "Insert"},
    {"keyUNDO", "Undo"},
    {"keyREDO", "Redo"},
    {"", ""},
    {"keyPULSE", "Pulse"},
    {"", ""},
    {"keyREM", "Rem"},
    {"", ""},
    {"keyFUZOKU", "Info"},
    {"", ""},
    {"keyHelp", "Help"},
};

const QString kFindTip = QStringLiteral("Find function / replace(CTRL+F)");

// The command a button runs and whose keys it shows: Open and Save run their first item.
QString commandOfButton(const QString& key) {
    if (key == QLatin1String("keyOPEN"))
        return QStringLiteral("keyREAD_USER1");
    if (key == QLatin1String("keySAVE"))
        return QStringLiteral("keyOVERWRITE");
    return key;
}

QString toolTipOf(const QString& key) {
    if (key == QLatin1String("keyFind"))
        return kFindTip; // names its key already
    return shortcuts::withKey(StepToolBar::GetButtonCaption(key), commandOfButton(key));
}
} // namespace

QString StepToolBar::GetButtonCaption(const QString& key) {
    for (const Button& b : kButtons)
        if (*b.key && key == QLatin1String(b.key))
            return QString::fromLatin1(b.caption);
    return QStringLiteral("UNKNOWN");
}

QStringList StepToolBar::buttonKeys() {
    QStringList keys;
    for (const Button& b : kButtons)
        if (*b.key)
            keys << QString::fromLatin1(b.key);
    return keys;
}

StepToolBar::StepToolBar(QWidget* parent) : QToolBar(parent) {
    ensureEditorResources();
    setObjectName(QStringLiteral("tBar"));
    setIconSize(QSize(24, 24));
    for (const Button& b : kButtons) {
        if (!*b.key) {
            addSeparator();
            continue;
        }
        const QString key = QString::fromLatin1(b.key);
        const QString image = key == QLatin1String("keyROWINSERT") ? QStringLiteral("keyINSERT")
                              : key == QLatin1String("keyFUZOKU")  ? QStringLiteral("keyMEMO")
                                                                   : key;
        addButton(key, image);
    }
    addMenuItem("keyOPEN", "keyREAD_USER1", "&1  Open...");
    addMenuItem("keyOPEN", "keyREAD_USER2", "&2  Open(From sewing machine)...");
    addMenuSeparator("keyOPEN");
    addMenuItem("keyOPEN", "keyREAD_HIKAKU1", "&3  Open comparative file...");
    addMenuItem("keyOPEN", "keyREAD_HIKAKU2", "&4  Open comparative file(From sewing machine)...");
    addMenuSeparator("keyOPEN");
    addMenuItem("keyOPEN", "InitialPath", "&3  Read/Save path setting");
    addMenuItem("keySAVE", "keyOVERWRITE", "&1  Save");
    addMenuItem("keySAVE", "keySAVEAS", "&2  Save as ...");
    addMenuItem("keySAVE", "keySAVE2", "&3  Save(To sewing machine)");
    addMenuItem("keyFUZOKU", "keyREM", "&1  Input note");
    addMenuItem("keyFUZOKU", "keyPASS", "&2  Pasword, Author");
    addMenuItem("keyFUZOKU", "keyHelpManual", "&3  Manual (PDF)");

    // The machine items stay off until a document controller takes the window on and turns
    // them on where they can work (the user editor's).
    menuAction("keyOPEN", "keyREAD_USER2")->setEnabled(false);
    menuAction("keyOPEN", "keyREAD_HIKAKU2")->setEnabled(false);
    menuAction("keySAVE", "keySAVE2")->setEnabled(false);
    // Nothing is undone yet: the document enables Redo after an undo.
    m_buttons.value(QStringLiteral("keyREDO"))->setEnabled(false);
    bindShortcuts();
    ShowButtonCaption(true);
}

void StepToolBar::bindShortcuts() {
    const auto bind = [this](QAction* a, const QString& command) {
        if (shortcuts::bind(a, command))
            m_shortcutActions << a;
    };
    for (auto it = m_buttons.cbegin(); it != m_buttons.cend(); ++it)
        if (commandOfButton(it.key()) == it.key())
            bind(it.value(), it.key());
    for (auto it = m_items.cbegin(); it != m_items.cend(); ++it)
        bind(it.value(), it.value()->objectName());
}

QAction* StepToolBar::addButton(const QString& key, const QString& imageKey) {
    QAction* a = addAction(editorIcon(imageKey), GetButtonCaption(key));
    a->setObjectName(key);
    a->setToolTip(toolTipOf(key));
    m_buttons.insert(key, a);
    connect(a, &QAction::triggered, this, [this, key] {
        // Open and Save run their first item; Info only points at its menu.
        const QString command = commandOfButton(key);
        if (command != key)
            Q_EMIT menuTriggered(key, command);
        else
            Q_EMIT commandTriggered(key);
    });
    return a;
}

void StepToolBar::addMenuItem(const QString& buttonKey, const QString& itemKey, const QString& text) {
    QAction* button = m_buttons.value(buttonKey);
    QMenu* menu = button->menu();
    if (!menu) {
        menu = new QMenu(this);
        button->setMenu(menu);
        if (auto* tb = qobject_cast<QToolButton*>(widgetForAction(button)))
            tb->setPopupMode(QToolButton::MenuButtonPopup);
    }
    QAction* item = menu->addAction(text);
    item->setObjectName(itemKey);
    m_items.insert(buttonKey + '/' + itemKey, item);
    connect(item, &QAction::triggered, this,
            [this, buttonKey, itemKey] { Q_EMIT menuTriggered(buttonKey, itemKey); });
}

void StepToolBar::addMenuSeparator(const QString& buttonKey) {
    if (QMenu* menu = m_buttons.value(buttonKey)->menu())
        menu->addSeparator();
}

QAction* StepToolBar::menuAction(const QString& buttonKey, const QString& itemKey) const {
    return m_items.value(buttonKey + '/' + itemKey);
}

void StepToolBar::ShowButtonCaption(bool show) {
    m_captions = show;
    // The tool tips name every button with its key whether captions show or not: they
    // were set with the buttons and stay.
    setToolButtonStyle(show ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
}

} // namespace vkm
