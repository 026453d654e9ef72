#pragma once

#include <QHash>
#include <QMainWindow>
#include <functional>

class QAction;
class QMdiArea;
class QToolBar;

namespace vkm {

class Settings;

// The frame of the editor: a multiple-document area that holds the two step editors and
// the other child windows, with the small main toolbar (close, options, easy
// customisation, arrange windows).
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // settings: read for the toolbar texts option; may be nullptr (texts shown).
    explicit MainWindow(Settings* settings = nullptr, QWidget* parent = nullptr);

    QMdiArea* mdiArea() const { return m_mdi; }
    QToolBar* mainToolBar() const { return m_toolBar; }
    // The toolbar action of a button key ("keyCLOSE", "keyOption", "keyCUSTOMIZEEASY",
    // "keyWARRANGE"); nullptr for another key.
    QAction* toolAction(const QString& key) const { return m_actions.value(key); }

    // Child windows stacked one above the other, each the full width of the area, in the
    // order they were opened; minimised and hidden ones are left alone.
    void tileHorizontally();

    // Toolbar texts shown or hidden ("General"/DoesViewButtonCaption).
    void showButtonCaptions(bool visible);

    // Asked before the window closes; false keeps it open (the user editor plugs in its
    // unsaved-changes question here).
    void setCanClose(std::function<bool()> canClose) { m_canClose = std::move(canClose); }

    // The caption: message text 261 followed by the version.
    static QString caption();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildToolBar();
    void buildOptionMenu(QAction* option);
    QAction* addToolButton(const QString& key, const QString& image, int captionText);

    Settings* m_settings;
    QMdiArea* m_mdi;
    QToolBar* m_toolBar = nullptr;
    QHash<QString, QAction*> m_actions;
    std::function<bool()> m_canClose;
};

} // namespace vkm
