#include "mainwindow.h"

#include "applicationrestart.h"
#include "base/messages.h"
#include "base/prompter.h"
#include "base/settings.h"
#include "editorresources.h"
#include "fcustomizeeasy.h"
#include "fsetport.h"
#include "stepeditorwindow.h"
#include "steptoolbar.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

// The toolbar images live in a static library; its resources must be registered by hand.
static void initToolbarResources() {
    Q_INIT_RESOURCE(app);
}

namespace vkm {

MainWindow::MainWindow(Settings* settings, QWidget* parent)
    : QMainWindow(parent), m_settings(settings), m_mdi(new QMdiArea(this)) {
    initToolbarResources();
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(caption());
    m_mdi->setObjectName(QStringLiteral("mdiArea"));
    setCentralWidget(m_mdi);
    m_restart = [] { ApplicationRestart::request(); };
    buildToolBar();
}

QString MainWindow::caption() {
    return LoadMessageText(261) + QStringLiteral("Ver 2.30");
}

QAction* MainWindow::addToolButton(const QString& key, const QString& image, int captionText) {
    QAction* action = m_toolBar->addAction(toolbarIcon(image), LoadMessageText(captionText));
    action->setObjectName(key);
    m_actions.insert(key, action);
    return action;
}

void MainWindow::buildToolBar() {
    m_toolBar = addToolBar(QStringLiteral("Main"));
    m_toolBar->setObjectName(QStringLiteral("mainToolBar"));
    m_toolBar->setIconSize(QSize(19, 19));
    m_toolBar->setMovable(false);

    connect(addToolButton(QStringLiteral("keyCLOSE"), QStringLiteral("keyCLOSE"), 194), &QAction::triggered,
            this, &QWidget::close);
    connect(addToolButton(QStringLiteral("keyOption"), QStringLiteral("keyOption"), 195), &QAction::triggered,
            this, &MainWindow::popUpOptionMenu);
    connect(addToolButton(QStringLiteral("keyCUSTOMIZEEASY"), QStringLiteral("keyCUSTOMIZE"), 492),
            &QAction::triggered, this, [this] {
                if (m_customizeEasy)
                    m_customizeEasy(4);
            });
    m_toolBar->addSeparator()->setObjectName(QStringLiteral("keySEPARATOR1"));
    connect(addToolButton(QStringLiteral("keyWARRANGE"), QStringLiteral("keyWARRANGE"), 196),
            &QAction::triggered, this, &MainWindow::tileHorizontally);

    const bool captions = !m_settings || m_settings->value(keys::DoesViewButtonCaption);
    showButtonCaptions(captions);
}

QAction* MainWindow::addToggle(QMenu* menu, int captionText, const BoolKey& key, const QString& name,
                               bool view) {
    QAction* item = menu->addAction(LoadMessageText(captionText));
    item->setObjectName(name);
    item->setCheckable(true);
    m_itemKeys.insert(item, &key);
    // The check mark follows the setting, never the click itself: the setting is read,
    // negated and written, and the mark set from what was written.
    connect(item, &QAction::triggered, this, [this, &key, view] { toggle(key, view); });
    return item;
}

QMenu* MainWindow::optionMenu() {
    buildMenus();
    return m_optionMenu;
}

QMenu* MainWindow::viewMenu() {
    buildMenus();
    return m_viewMenu;
}

QAction* MainWindow::optionItem(int index) {
    buildMenus();
    return m_optionItems.value(index - 1);
}

QAction* MainWindow::viewItem(int index) {
    buildMenus();
    return m_viewItems.value(index - 1);
}

void MainWindow::buildMenus() {
    if (m_optionMenu)
        return;
    m_optionMenu = new QMenu(this);
    m_optionMenu->setObjectName(QStringLiteral("mnuOptionContent"));
    m_viewMenu = m_optionMenu->addMenu(LoadMessageText(355));
    m_viewMenu->setObjectName(QStringLiteral("mnuViewContent"));
    const std::pair<int, const BoolKey*> view[] = {{197, &keys::DoesViewRemarkColumn},
                                                   {198, &keys::DoesViewButtonCaption},
                                                   {199, &keys::DoesViewInputMethod}};
    for (const auto& [text, key] : view)
        m_viewItems << addToggle(m_viewMenu, text, *key,
                                 QStringLiteral("mnuViewContent%1").arg(m_viewItems.size() + 1), true);

    const auto name = [this] { return QStringLiteral("mnuOptionContent%1").arg(m_optionItems.size() + 1); };
    m_optionItems << addToggle(m_optionMenu, 350, keys::DoesReplaceFunction, name(), false);
    m_optionItems << addToggle(m_optionMenu, 351, keys::DoesAskInReplacing, name(), false);
    // Option 3 changes how the grid is built: it is not a plain toggle.
    QAction* locate = m_optionMenu->addAction(LoadMessageText(445));
    locate->setObjectName(name());
    locate->setCheckable(true);
    connect(locate, &QAction::triggered, this, [this] { LocateInpFirstOption(); });
    m_optionItems << locate;
    m_optionItems << addToggle(m_optionMenu, 541, keys::DoesShowMsgInFinding, name(), false);
    m_optionItems << addToggle(m_optionMenu, 542, keys::DoesShowPulseAutomatic, name(), false);
    QAction* port = m_optionMenu->addAction(LoadMessageText(567));
    port->setObjectName(name());
    connect(port, &QAction::triggered, this, [this] {
        fSetPort dialog(m_settings, this);
        dialog.exec();
    });
    m_optionItems << port;
}

void MainWindow::CheckOptionMenu() {
    buildMenus();
    for (auto it = m_itemKeys.cbegin(); it != m_itemKeys.cend(); ++it)
        it.key()->setChecked(m_settings ? m_settings->value(*it.value()) : it.value()->defaultValue);
    optionItem(3)->setChecked(m_settings ? m_settings->value(keys::DoesLocateInpFirst)
                                         : keys::DoesLocateInpFirst.defaultValue);
}

QPoint MainWindow::GetMenuPos() const {
    // The toolbar always shows the option button; were it hidden, the menu would open at
    // the toolbar's bottom-left corner.
    const QWidget* button = m_toolBar->widgetForAction(toolAction(QStringLiteral("keyOption")));
    const int left = button && button->isVisible() ? button->x() : 0;
    return m_toolBar->mapToGlobal(QPoint(left, m_toolBar->height()));
}

void MainWindow::popUpOptionMenu() {
    CheckOptionMenu();
    optionMenu()->popup(GetMenuPos());
}

void MainWindow::toggle(const BoolKey& key, bool view) {
    if (m_settings)
        m_settings->set(key, !m_settings->value(key));
    CheckOptionMenu();
    // The editing options are read whenever they are needed; the view options change what
    // the editors show now.
    if (view)
        applyViewOptions();
}

QList<StepEditorWindow*> MainWindow::editors() const {
    return findChildren<StepEditorWindow*>();
}

void MainWindow::UpdateButtonDisplay(StepEditorWindow& editor) {
    editor.ShowButtonCaption(!m_settings || m_settings->value(keys::DoesViewButtonCaption));
    // The toolbar's new height is taken now, not at the next pass of the event loop, so that
    // the grid and the hint pane are in their places when the option returns.
    QCoreApplication::sendPostedEvents(editor.toolBar(), QEvent::LayoutRequest);
    if (QLayout* layout = editor.layout()) {
        layout->invalidate();
        layout->activate();
    }
}

void MainWindow::applyViewOptions() {
    const bool captions = !m_settings || m_settings->value(keys::DoesViewButtonCaption);
    const bool hint = !m_settings || m_settings->value(keys::DoesViewInputMethod);
    showButtonCaptions(captions);
    for (StepEditorWindow* editor : editors()) {
        editor->ControlRemarkColumn();
        UpdateButtonDisplay(*editor);
        // The comparison program cannot be typed into: it never shows the input method.
        editor->setHintVisible(hint && !editor->isComparison());
    }
}

void MainWindow::LocateInpFirstOption() {
    CheckOptionMenu(); // the click does not decide the mark
    if (m_prompter)
        m_prompter->showMessage(113, 2);
    // The new column order is built at the next start: the application closes and, once
    // it has closed, starts again. The close asks every question first; a Cancel there
    // leaves the setting as it was.
    if (!close())
        return;
    if (m_settings)
        m_settings->set(keys::DoesLocateInpFirst, !m_settings->value(keys::DoesLocateInpFirst));
    CheckOptionMenu();
    if (m_restart)
        m_restart();
}

void MainWindow::showButtonCaptions(bool visible) {
    m_toolBar->setToolButtonStyle(visible ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
}

void MainWindow::tileHorizontally() {
    QList<QMdiSubWindow*> windows;
    for (QMdiSubWindow* w : m_mdi->subWindowList(QMdiArea::CreationOrder)) {
        if (w->isVisible() && !w->isMinimized())
            windows << w;
    }
    if (windows.isEmpty())
        return;
    // The user editor on top, the comparison editor below it, then the other windows in
    // the order they were opened (the comparison window is made only when first needed,
    // so its place does not follow from when it was made).
    auto rank = [](const QMdiSubWindow* w) {
        const QString name = w->widget() ? w->widget()->objectName() : QString();
        return name == QLatin1String("fStep") ? 0 : name == QLatin1String("fStepCmp") ? 1 : 2;
    };
    std::stable_sort(windows.begin(), windows.end(),
                     [&](const QMdiSubWindow* a, const QMdiSubWindow* b) { return rank(a) < rank(b); });
    const QRect area = m_mdi->viewport()->rect();
    const int count = int(windows.size());
    const int height = area.height() / count;
    for (int i = 0; i < count; ++i) {
        QMdiSubWindow* w = windows[i];
        if (w->isMaximized())
            w->showNormal();
        // The last window takes what the division left over.
        const int h = i == count - 1 ? area.height() - height * i : height;
        w->setGeometry(0, height * i, area.width(), h);
    }
}

bool MainWindow::askBeforeClosing() {
    // The customisation windows ask first: their answers change nothing before the close
    // goes through (No leaves the changes in the window, so a Cancel further on keeps
    // them). The user editor's question comes last, because its No drops the program's
    // changed mark and lets the editors close: nothing may be cancelled after it.
    QList<QPointer<fCustomizeEasy>> customize;
    for (fCustomizeEasy* w : findChildren<fCustomizeEasy*>())
        customize << w;
    for (const QPointer<fCustomizeEasy>& w : customize) {
        if (w && !w->SaveCheckCus())
            return false;
    }
    if (m_canClose && !m_canClose())
        return false;
    // Answered: closing the windows does not ask again.
    for (const QPointer<fCustomizeEasy>& w : customize) {
        if (w)
            w->discardChanges();
    }
    return true;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // Every question is asked before any window closes, so that a Cancel anywhere leaves
    // all of them open.
    if (!askBeforeClosing()) {
        event->ignore();
        return;
    }
    m_mdi->closeAllSubWindows();
    const QList<QMdiSubWindow*> left = m_mdi->subWindowList();
    if (std::any_of(left.begin(), left.end(), [](QMdiSubWindow* w) { return w->isVisible(); })) {
        event->ignore(); // a child window refused to close
        return;
    }
    event->accept();
}

} // namespace vkm
