#pragma once

#include <QHash>
#include <QMainWindow>
#include <functional>

class QAction;
class QMdiArea;
class QMenu;
class QToolBar;

namespace vkm {

class Prompter;
class Settings;
class StepEditorWindow;
struct BoolKey;

// The frame of the editor: a multiple-document area that holds the two step editors and
// the other child windows, with the small main toolbar (close, options, easy
// customisation, arrange windows) and the option menu, whose first item is the view menu.
// Options are per-user settings: a toggle is written at once and, for the view items,
// applied to both step editors at once.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // settings: where the options are kept; nullptr shows the defaults and toggles nothing.
    explicit MainWindow(Settings* settings = nullptr, QWidget* parent = nullptr);

    // Messages of the window (the restart notice of option 3).
    void setPrompter(Prompter* prompter) { m_prompter = prompter; }

    QMdiArea* mdiArea() const { return m_mdi; }
    QToolBar* mainToolBar() const { return m_toolBar; }
    // The toolbar action of a button key ("keyCLOSE", "keyOption", "keyCUSTOMIZEEASY",
    // "keyWARRANGE"); nullptr for another key.
    QAction* toolAction(const QString& key) const { return m_actions.value(key); }
    // The option menu is made the first time it is needed (its button, or a caller asking
    // for it or its items): showing the window needs none of it.
    QMenu* optionMenu();
    QMenu* viewMenu();
    // Option item 1..6 (the last one is the port setting) and view item 1..3; nullptr
    // outside.
    QAction* optionItem(int index);
    QAction* viewItem(int index);

    // Child windows stacked one above the other, each the full width of the area, in the
    // order they were opened; minimised and hidden ones are left alone.
    void tileHorizontally();

    // Toolbar texts shown or hidden ("General"/DoesViewButtonCaption).
    void showButtonCaptions(bool visible);
    // Check marks of the option and view items from the settings.
    void CheckOptionMenu();
    // Where the option menu pops up: below the option button, at its left edge (global
    // coordinates).
    QPoint GetMenuPos() const;
    // The option button: fresh check marks, then the menu below the button.
    void popUpOptionMenu();
    // The toolbar text option applied to one step editor, which is then laid out again.
    void UpdateButtonDisplay(StepEditorWindow& editor);

    // Asked before the window closes; false keeps it open (the user editor plugs in its
    // unsaved-changes question here).
    void setCanClose(std::function<bool()> canClose) { m_canClose = std::move(canClose); }
    // Called once the window has closed for option 3, so that the application starts
    // again; by default the restart is requested from ApplicationRestart (tests replace it).
    void setRestartHook(std::function<void()> restart) { m_restart = std::move(restart); }
    // The easy customisation button, with the kind it passes (4).
    void setCustomizeEasyHandler(std::function<void(int kind)> handler) {
        m_customizeEasy = std::move(handler);
    }

    // The caption: message text 261 followed by the version.
    static QString caption();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildToolBar();
    // Makes the option menu and its items once.
    void buildMenus();
    QAction* addToolButton(const QString& key, const QString& image, int captionText);
    QAction* addToggle(QMenu* menu, int captionText, const BoolKey& key, const QString& name, bool view);
    void toggle(const BoolKey& key, bool view);
    void applyViewOptions();
    // Option 3: the column order changes at the next start.
    void LocateInpFirstOption();
    // The questions of the application's close (the open customisation windows', then the
    // user editor's), asked before anything closes; false on a Cancel.
    bool askBeforeClosing();
    QList<StepEditorWindow*> editors() const;

    Settings* m_settings;
    Prompter* m_prompter = nullptr;
    QMdiArea* m_mdi;
    QToolBar* m_toolBar = nullptr;
    QMenu* m_optionMenu = nullptr;
    QMenu* m_viewMenu = nullptr;
    QHash<QString, QAction*> m_actions;
    QList<QAction*> m_optionItems;
    QList<QAction*> m_viewItems;
    QHash<QAction*, const BoolKey*> m_itemKeys;
    std::function<bool()> m_canClose;
    std::function<void()> m_restart;
    std::function<void(int)> m_customizeEasy;
};

} // namespace vkm
