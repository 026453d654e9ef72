#include "mainwindow.h"

#include "base/messages.h"
#include "base/settings.h"
#include "fsetport.h"

#include <QAction>
#include <QCloseEvent>
#include <QIcon>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPixmap>
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
    buildToolBar();
}

QString MainWindow::caption() {
    return LoadMessageText(261) + QStringLiteral("Ver 2.30");
}

QAction* MainWindow::addToolButton(const QString& key, const QString& image, int captionText) {
    auto* action =
        // From a pixmap read as PNG: the resource names carry no suffix, and QIcon would
        // otherwise look each one up in the MIME database and Qt ask every image plugin.
        m_toolBar->addAction(QIcon(QPixmap(QStringLiteral(":/toolbar/") + image, "PNG")),
                             LoadMessageText(captionText));
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
    buildOptionMenu(addToolButton(QStringLiteral("keyOption"), QStringLiteral("keyOption"), 195));
    // The easy customisation arrives with its own window; until then the button keeps its
    // place but cannot be pressed.
    addToolButton(QStringLiteral("keyCUSTOMIZEEASY"), QStringLiteral("keyCUSTOMIZE"), 492)->setEnabled(false);
    m_toolBar->addSeparator()->setObjectName(QStringLiteral("keySEPARATOR1"));
    connect(addToolButton(QStringLiteral("keyWARRANGE"), QStringLiteral("keyWARRANGE"), 196),
            &QAction::triggered, this, &MainWindow::tileHorizontally);

    const bool captions = !m_settings || m_settings->value(keys::DoesViewButtonCaption);
    showButtonCaptions(captions);
}

void MainWindow::buildOptionMenu(QAction* option) {
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mnuOptionContent"));
    // The editing options join this menu with their settings page; the port is set here.
    QAction* port = menu->addAction(LoadMessageText(567));
    port->setObjectName(QStringLiteral("mnuOptionContent6"));
    connect(port, &QAction::triggered, this, [this] {
        fSetPort dialog(m_settings, this);
        dialog.exec();
    });
    option->setMenu(menu);
    if (auto* button = qobject_cast<QToolButton*>(m_toolBar->widgetForAction(option)))
        button->setPopupMode(QToolButton::InstantPopup);
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

void MainWindow::closeEvent(QCloseEvent* event) {
    if (m_canClose && !m_canClose()) {
        event->ignore();
        return;
    }
    m_mdi->closeAllSubWindows();
    const QList<QMdiSubWindow*> left = m_mdi->subWindowList();
    if (std::any_of(left.begin(), left.end(), [](QMdiSubWindow* w) { return w->isVisible(); })) {
        event->ignore(); // a child window refused (its own unsaved-changes question)
        return;
    }
    event->accept();
}

} // namespace vkm
