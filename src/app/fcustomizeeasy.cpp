#include "fcustomizeeasy.h"

#include "appcontext.h"
#include "base/paths.h"
#include "base/prompter.h"
#include "base/settings.h"
#include "catalogue/cselectkino.h"
#include "custom/customizedata.h"
#include "customizeeasycontroller.h"
#include "customizeeasymodel.h"
#include "editorresources.h"
#include "functionchooser.h"
#include "link/machinefiles.h"
#include "windowplacement.h"

#include <QAction>
#include <QCloseEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>

namespace vkm {

namespace {
// At least this much of the window stays inside the main window's client area, so that it
// can always be taken by its frame and moved back.
constexpr int kKeepInsideTwips = 1000;

QString archiveOf(const AppContext& context) {
    return context.selectKino ? context.selectKino->archivePath() : paths::settingArchive();
}
} // namespace

fCustomizeEasy::fCustomizeEasy(CustomizeEasyController& controller, QString file, QWidget* parent)
    : QWidget(parent), m_controller(controller), m_file(std::move(file)),
      m_sheet(catalogueOrEmpty(controller.context().selCusInp),
              catalogueOrEmpty(controller.context().selCusOut), *controller.context().prompter) {
    setObjectName(QStringLiteral("fCustomizeEasy"));
    AppContext& context = m_controller.context();
    // The window's own archive handler and function dialogs: the step editors' dialogs
    // keep their catalogues while this one lists the customisation catalogues.
    m_kino = std::make_unique<CSelectKino>(context.settings, *context.prompter, archiveOf(context));
    m_dialogs = std::make_unique<FunctionChooserDialogs>(context.settings, *context.prompter, this);
    m_dialogs->LoadForms(1, context.selCusInp, context.selCusOut);

    buildToolBar();
    buildGrid();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_grid, 1);

    if (context.cusI && context.cusO)
        m_sheet.fill(*context.cusI, *context.cusO);
    m_model->refresh();
    setWindowTitle(QStringLiteral("Customize ") +
                   (IsThisFileFromMachine(m_file) ? QStringLiteral("***") : QFileInfo(m_file).fileName()));
}

fCustomizeEasy::~fCustomizeEasy() {
    m_grid->setModel(nullptr);
}

void fCustomizeEasy::buildToolBar() {
    m_toolBar = new QToolBar(this);
    m_toolBar->setObjectName(QStringLiteral("tBar"));
    m_toolBar->setIconSize(QSize(19, 19));
    m_toolBar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    QAction* save = m_toolBar->addAction(editorIcon(QStringLiteral("keySAVE")), QStringLiteral("Save"));
    save->setObjectName(QStringLiteral("keySAVE"));
    save->setToolTip(QStringLiteral("Save to sewing machine"));
    connect(save, &QAction::triggered, this, &fCustomizeEasy::keySaveOp);
    QAction* no = m_toolBar->addAction(editorIcon(QStringLiteral("keyNO")), QStringLiteral("No function"));
    no->setObjectName(QStringLiteral("keyNO"));
    connect(no, &QAction::triggered, this, &fCustomizeEasy::keyNoOp);
    m_toolBar->addSeparator()->setObjectName(QStringLiteral("keySEPARATOR1"));
    QAction* close = m_toolBar->addAction(toolbarIcon(QStringLiteral("keyCLOSE")), QStringLiteral("Close"));
    close->setObjectName(QStringLiteral("keyCLOSEDUMMY"));
    connect(close, &QAction::triggered, this, &fCustomizeEasy::closeWindow);
}

void fCustomizeEasy::buildGrid() {
    m_grid = new QTableView(this);
    m_grid->setObjectName(QStringLiteral("fg"));
    m_model = new CustomizeEasyModel(m_sheet, this);
    m_grid->setModel(m_model);
    m_grid->setFont(QFont(QStringLiteral("Tahoma"), font().pointSize()));
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectItems);
    // Typing a letter starts the entry; F2 is the function dialog, not the cell editor.
    m_grid->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::DoubleClicked);
    m_grid->verticalHeader()->hide();
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);
    // The window is narrow: the terminal column takes what its names need, the function
    // column the rest, and nothing scrolls sideways.
    m_grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->horizontalHeader()->setMinimumSectionSize(0);
    m_grid->horizontalHeader()->setSectionResizeMode(CustomizeEasyModel::ColSig, QHeaderView::Fixed);
    m_grid->horizontalHeader()->setSectionResizeMode(CustomizeEasyModel::ColFunction, QHeaderView::Stretch);
    m_grid->setColumnWidth(CustomizeEasyModel::ColSig,
                           m_grid->fontMetrics().horizontalAdvance(QStringLiteral("OUT00")) + 10);
    m_grid->setWordWrap(false);
    m_grid->installEventFilter(this);
    m_grid->setCurrentIndex(m_model->index(0, CustomizeEasyModel::ColFunction));
}

void fCustomizeEasy::Initialize() {
    placeWindow();
    m_grid->setCurrentIndex(m_model->index(0, CustomizeEasyModel::ColFunction));
}

QAction* fCustomizeEasy::action(const QString& key) const {
    for (QAction* a : m_toolBar->actions())
        if (a->objectName() == key)
            return a;
    return nullptr;
}

void fCustomizeEasy::placeWindow() {
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    QMdiArea* area = frame ? frame->mdiArea() : nullptr;
    Settings* settings = m_controller.context().settings;
    if (!frame || !area || !settings)
        return;
    const double dpi = logicalDpiX();
    QRect r = storedPlacement(settings, keys::CustomEasy, dpi);
    const QSize client = area->viewport()->size();
    const int inside = twipsToPixels(kKeepInsideTwips, dpi);
    // Pulled back when the stored place lies beyond the main window, now perhaps smaller or
    // on another screen; likewise when it lies before its top or left edge.
    r.moveTop(std::max(std::min(r.top(), client.height() - inside), inside - r.height()));
    r.moveLeft(std::max(std::min(r.left(), client.width() - inside), inside - r.width()));
    frame->setGeometry(r);
}

void fCustomizeEasy::SaveFormPosition() {
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    Settings* settings = m_controller.context().settings;
    if (!frame || !settings)
        return;
    storePlacement(*settings, keys::CustomEasy, frame->geometry(), logicalDpiX());
}

int fCustomizeEasy::currentRow() const {
    const QModelIndex cur = m_grid->currentIndex();
    return cur.isValid() ? cur.row() : -1;
}

qint16 fCustomizeEasy::GetCrntValue(int In_or_Out, const QString& digital) const {
    return m_sheet.GetCrntValue(In_or_Out, digital);
}

void fCustomizeEasy::F2Op() {
    const int r = currentRow();
    if (r < 0)
        return;
    const CustomizeRow& row = m_sheet.row(r);
    const qint16 chosen = m_dialogs->GetKinoValue(row.inOut, GetCrntValue(row.inOut, row.digital));
    // Cancel leaves the row as it was.
    if (m_dialogs->lastWasChosen() && m_sheet.enterValue(r, chosen))
        m_model->refreshRow(r);
    m_grid->setFocus();
}

void fCustomizeEasy::keyNoOp() {
    const int r = currentRow();
    if (r >= 0 && m_sheet.setNoFunction(r))
        m_model->refreshRow(r);
    m_grid->setFocus();
}

void fCustomizeEasy::keySaveOp() {
    if (m_controller.context().prompter->showMessage(160, 10) != Answer::Ok)
        return;
    SaveCustomData232C();
    m_grid->setFocus();
}

QString fCustomizeEasy::GetFileNameToTransferCustom() {
    return vkm::GetFileNameToTransferCustom(m_sheet, *m_kino, m_controller.image(),
                                            IsThisFileFromMachine(m_file), *m_controller.context().prompter);
}

bool fCustomizeEasy::SaveCustomData232C() {
    if (!m_controller.readBeforeSave())
        return false;
    const QString file = GetFileNameToTransferCustom();
    if (file.isEmpty() || !m_controller.writeToMachine(file))
        return false;
    m_sheet.markSaved();
    m_model->refresh();
    return true;
}

bool fCustomizeEasy::SaveCheckCus() {
    if (!IsChanged())
        return true;
    switch (m_controller.context().prompter->showMessage(143, 6)) {
    case Answer::Yes:
        return SaveCustomData232C();
    case Answer::No:
        return true;
    default:
        return false;
    }
}

void fCustomizeEasy::discardChanges() {
    m_sheet.discardChanges();
}

bool fCustomizeEasy::closeWindow() {
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
        return frame->close();
    return close();
}

void fCustomizeEasy::closeEvent(QCloseEvent* event) {
    if (!SaveCheckCus()) {
        event->ignore();
        return;
    }
    // Answered: a second close of the frame does not ask again.
    discardChanges();
    m_dialogs->UnLoadForms();
    SaveFormPosition();
    QWidget::closeEvent(event);
}

bool fCustomizeEasy::eventFilter(QObject* watched, QEvent* event) {
    // Keys typed into an open cell editor go to the editor, not to the grid.
    if (watched == m_grid && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_F2) {
        F2Op();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace vkm
