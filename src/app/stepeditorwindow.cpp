#include "stepeditorwindow.h"

#include "appcontext.h"
#include "commandshortcuts.h"
#include "editorcommands.h"
#include "fselcategory.h"
#include "functionchooser.h"
#include "stepdelegate.h"
#include "stepgridinput.h"
#include "stepheaderview.h"
#include "steptablemodel.h"
#include "steptoolbar.h"

#include "base/prompter.h"
#include "base/settings.h"
#include "catalogue/cselections.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QScreen>
#include <QTableView>
#include <QVBoxLayout>

namespace vkm {

namespace {
constexpr int kStepColumnTwips = 555;
constexpr int kRowHeight = 24;

// Data column widths in pixels by column kind: wide enough for a cell picture or a
// function name with its category above it.
int columnWidth(int kind) {
    switch (kind) {
    case KindOutKino:
    case KindInpKino:
        return 56;
    case KindLogic:
        return 54;
    case KindDelayKind:
        return 62;
    case KindDelayValue:
        return 48;
    case KindState:
        return 64;
    case KindRel:
        return 48;
    default:
        return 60;
    }
}
} // namespace

void StepEditorWindow::paintCorner() {
    QPainter painter(m_corner);
    const QRect r = m_corner->rect();
    const QVariant back = m_model->headerData(0, Qt::Horizontal, Qt::BackgroundRole);
    const QVariant fore = m_model->headerData(0, Qt::Horizontal, Qt::ForegroundRole);
    painter.fillRect(r, back.isValid() ? back.value<QColor>() : palette().button().color());
    painter.setPen(QColor::fromRgb(sheetcolor::CellBorder));
    painter.drawLine(r.bottomLeft(), r.bottomRight());
    painter.drawLine(r.topRight(), r.bottomRight());
    QFont f = font();
    f.setBold(true);
    painter.setFont(f);
    painter.setPen(fore.isValid() ? fore.value<QColor>() : palette().buttonText().color());
    painter.drawText(r, Qt::AlignCenter, m_model->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString());
}

void StepEditorWindow::closeEvent(QCloseEvent* event) {
    if (m_closeGuard && !m_closeGuard()) {
        event->ignore();
        m_grid->setFocus();
        return;
    }
    QWidget::closeEvent(event);
    Q_EMIT closed();
}

std::unique_ptr<StepSheetEditor> StepEditorWindow::makeEditor(AppContext& context, int USRCMP) {
    const bool inpFirst = context.settings && context.settings->value(keys::DoesLocateInpFirst);
    return std::make_unique<StepSheetEditor>(catalogueOrEmpty(context.selout),
                                             catalogueOrEmpty(context.selinp), *context.prompter, USRCMP == 1,
                                             inpFirst);
}

StepEditorWindow::StepEditorWindow(AppContext& context, int USRCMP, QWidget* parent)
    : StepEditorWindow(context, USRCMP, nullptr, parent) {}

StepEditorWindow::StepEditorWindow(AppContext& context, int USRCMP, StepSheetEditor& editor, QWidget* parent)
    : StepEditorWindow(context, USRCMP, &editor, parent) {}

StepEditorWindow::StepEditorWindow(AppContext& context, int USRCMP, StepSheetEditor* external,
                                   QWidget* parent)
    : QWidget(parent), m_context(context), m_usrcmp(USRCMP) {
    setObjectName(isComparison() ? QStringLiteral("fStepCmp") : QStringLiteral("fStep"));
    if (!external)
        m_ownEditor = makeEditor(m_context, USRCMP);
    m_editor = external ? external : m_ownEditor.get();

    m_toolBar = new StepToolBar(this);
    // The toolbar's keys work wherever the focus is in this window: the grid, an open
    // cell editor, the toolbar.
    addActions(m_toolBar->shortcutActions());
    buildGrid();
    buildHintPane();
    buildContextMenu();
    connectToolbar();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_picHint);

    if (!isComparison()) {
        m_dialogs = std::make_unique<FunctionChooserDialogs>(m_context.settings, *m_context.prompter, this);
        m_dialogs->LoadForms(3, m_context.selinp, m_context.selout);
        m_chooser = m_dialogs->functionChooser();
        m_categoryChooser = m_dialogs->categoryChooser();
    }
    wireHooks();
    m_commands = std::make_unique<EditorCommands>(m_context, *this);

    const bool captions = !m_context.settings || m_context.settings->value(keys::DoesViewButtonCaption);
    ShowButtonCaption(captions);
    const bool hint =
        !isComparison() && (!m_context.settings || m_context.settings->value(keys::DoesViewInputMethod));
    setHintVisible(hint);
    if (isComparison()) {
        for (const char* key : {"keyNew", "keyOPEN", "keySAVE", "keyCUT", "keyPASTE", "keyROWINSERT",
                                "keyUNDO", "keyREDO", "keyPULSE", "keyREM"}) {
            QAction* a = action(QString::fromLatin1(key));
            a->setEnabled(false);
            // The items of a disabled button's menu go with it, and so do their keys.
            if (a->menu())
                for (QAction* item : a->menu()->actions())
                    item->setEnabled(false);
        }
        menuAction(QStringLiteral("keyFUZOKU"), QStringLiteral("keyPASS"))->setEnabled(false);
    }
    updateTitle();
    m_grid->setCurrentIndex(m_model->index(1, 1));
    PrintHint();
    if (!isComparison())
        CheckColorCount();
}

StepEditorWindow::~StepEditorWindow() {
    if (m_ownEditor)
        Q_EMIT ownEditorGoing();
    m_commands.reset();
    m_input.reset();
    // The model listens to the sheet; it goes before the editor that owns the sheet.
    m_grid->setModel(nullptr);
    delete m_model;
    m_model = nullptr;
}

void StepEditorWindow::buildGrid() {
    m_grid = new QTableView(this);
    m_grid->setObjectName(QStringLiteral("fg"));
    m_grid->setHorizontalHeader(new StepHeaderView(Qt::Horizontal, m_grid));
    m_grid->setVerticalHeader(new StepHeaderView(Qt::Vertical, m_grid));
    // Both header thicknesses are fixed before the model comes: the headers then never
    // measure their texts for a size hint.
    m_grid->horizontalHeader()->setFixedHeight(32); // room for "Delay Value" on two lines
    m_grid->verticalHeader()->setFixedWidth(twipsToPixels(kStepColumnTwips));
    m_model = new StepTableModel(*m_editor, nullptr);
    m_delegate = new StepDelegate(m_grid);
    m_grid->setModel(m_model);
    m_grid->setItemDelegate(m_delegate);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionMode(QAbstractItemView::ContiguousSelection);
    m_grid->setShowGrid(false);
    m_grid->setWordWrap(false);
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    m_grid->setAttribute(Qt::WA_InputMethodEnabled, true);
    m_grid->setRowHidden(0, true);    // shown as the horizontal header
    m_grid->setColumnHidden(0, true); // shown as the vertical header
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->verticalHeader()->setDefaultSectionSize(kRowHeight);
    m_grid->horizontalHeader()->setMinimumSectionSize(0);
    // The corner above the step numbers is the header of the step column: "STEP".
    m_grid->setCornerButtonEnabled(false);
    m_corner = m_grid->findChild<QAbstractButton*>();
    if (m_corner)
        m_corner->installEventFilter(this);
    applyColumnWidths();
    ControlRemarkColumn();
    connect(m_grid->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int index, int, int size) { onSectionResized(index, size); });
    m_input = std::make_unique<StepGridInput>(*this, *m_delegate);
}

void StepEditorWindow::applyColumnWidths() {
    m_layingOut = true;
    for (int col = 2; col < StepSheet::kCols; ++col)
        m_grid->setColumnWidth(col, columnWidth(m_editor->sheet().colKind(col)));
    m_layingOut = false;
}

void StepEditorWindow::buildHintPane() {
    m_picHint = new QWidget(this);
    m_picHint->setObjectName(QStringLiteral("picHint"));
    auto* caption = new QLabel(QStringLiteral("Input method:"), m_picHint);
    caption->setObjectName(QStringLiteral("lblHintCaption"));
    m_lblHint = new QLabel(m_picHint);
    m_lblHint->setObjectName(QStringLiteral("lblHint"));
    auto* layout = new QHBoxLayout(m_picHint);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(caption);
    layout->addWidget(m_lblHint, 1);
}

void StepEditorWindow::buildContextMenu() {
    m_contextMenu = new QMenu(this);
    m_contextMenu->setObjectName(QStringLiteral("mnuRightClick"));
    const std::pair<const char*, const char*> items[] = {
        {"&Delete", "keyCUT"}, {"&Copy", "keyCOPY"}, {"&Paste", "keyPASTE"}, {"&Insert", "keyROWINSERT"}};
    for (const auto& [text, key] : items) {
        const QString command = QString::fromLatin1(key);
        // The entry shows the key of its command; the key itself is the grid's or the
        // toolbar's, so that it is bound once.
        const QString keyText = shortcuts::text(command);
        QAction* a = m_contextMenu->addAction(QString::fromLatin1(text) +
                                              (keyText.isEmpty() ? QString() : QLatin1Char('\t') + keyText));
        a->setObjectName(command);
        connect(a, &QAction::triggered, this, [this, command] { action(command)->trigger(); });
    }
    // Each entry is as available as the toolbar command it runs.
    connect(m_contextMenu, &QMenu::aboutToShow, this, [this] {
        for (QAction* a : m_contextMenu->actions())
            a->setEnabled(action(a->objectName())->isEnabled());
    });
}

bool StepEditorWindow::finishCellEdit(const QString& key) {
    QWidget* open = m_grid->indexWidget(m_grid->currentIndex());
    if (!open)
        return true;
    // Undo and redo work on the grid: what the open editor holds is dropped, as its own
    // undo would drop it. Every other command ends the edit as leaving the cell does and
    // does not run when the text is refused.
    if (key == QLatin1String("keyUNDO") || key == QLatin1String("keyREDO")) {
        m_delegate->abandon(open);
        m_grid->setFocus();
        return true;
    }
    return m_delegate->commitAndClose(open);
}

void StepEditorWindow::connectToolbar() {
    connect(m_toolBar, &StepToolBar::commandTriggered, this, [this](const QString& key) {
        if (!finishCellEdit(key))
            return;
        if (key == QLatin1String("keyFUZOKU")) {
            m_context.prompter->showMessage(98, 2);
            return;
        }
        Q_EMIT commandTriggered(key);
    });
    connect(m_toolBar, &StepToolBar::menuTriggered, this, [this](const QString& button, const QString& item) {
        if (finishCellEdit(item))
            Q_EMIT menuTriggered(button, item);
    });
}

void StepEditorWindow::wireHooks() {
    EditorHooks hooks;
    hooks.chooseFunction = [this](int inOut, int orgValue, int row) -> std::optional<int> {
        if (!m_chooser)
            return std::nullopt;
        const std::optional<int> chosen = m_chooser(inOut, orgValue, row);
        m_grid->setFocus();
        return chosen;
    };
    hooks.chooseCategory = [this](const CSelections& sels, const QString& digital) {
        return m_categoryChooser ? m_categoryChooser(sels, digital) : sels.CategoryByDigitalOnly(digital);
    };
    hooks.changed = [this] {
        m_changed = true;
        Q_EMIT changed();
    };
    hooks.pulseRefresh = [this](int row) { Q_EMIT pulseRefreshRequested(row); };
    hooks.functionChanged = [this](int row, int col) { Q_EMIT functionChanged(row, col); };
    hooks.snapshot = [this] { Q_EMIT snapshotRequested(); };
    hooks.cellEdited = [this](const QByteArray& cellsBefore) { Q_EMIT cellEdited(cellsBefore); };
    m_editor->setHooks(std::move(hooks));
}

void StepEditorWindow::setFunctionChooser(FunctionChooser chooser) {
    m_chooser = std::move(chooser);
}

void StepEditorWindow::setCategoryChooser(CategoryChooser chooser) {
    m_categoryChooser = std::move(chooser);
}

QAction* StepEditorWindow::action(const QString& key) const {
    return m_toolBar->action(key);
}

QAction* StepEditorWindow::menuAction(const QString& buttonKey, const QString& itemKey) const {
    return m_toolBar->menuAction(buttonKey, itemKey);
}

QString StepEditorWindow::GetButtonCaption(const QString& key) {
    return StepToolBar::GetButtonCaption(key);
}

void StepEditorWindow::ShowButtonCaption(bool show) {
    m_toolBar->ShowButtonCaption(show);
}

// Title ---------------------------------------------------------------------------

void StepEditorWindow::setDocumentPath(const QString& path) {
    m_path = path;
    updateTitle();
}

void StepEditorWindow::setFromMachine(bool fromMachine) {
    m_fromMachine = fromMachine;
    updateTitle();
}

void StepEditorWindow::setAuthor(const QString& author) {
    m_author = author;
    updateTitle();
}

QString StepEditorWindow::CreateMyCaption() const {
    QString caption = m_fromMachine ? QStringLiteral("***") : QFileInfo(m_path).fileName();
    if (isComparison())
        caption.prepend(QStringLiteral("Refer:"));
    if (!m_author.isEmpty())
        caption += QStringLiteral(" written by ") + m_author;
    return caption;
}

void StepEditorWindow::updateTitle() {
    setCaption(CreateMyCaption());
}

void StepEditorWindow::setCaption(const QString& caption) {
    // "[*]" shows the mark of unsaved changes (setWindowModified) and nothing otherwise.
    setWindowTitle(caption + QStringLiteral("[*]"));
}

void StepEditorWindow::setRedoAvailable(bool available) {
    action(QStringLiteral("keyREDO"))->setEnabled(available && !isComparison());
}

// Hint pane, remark column, colours --------------------------------------------------

bool StepEditorWindow::HintVisible() const {
    return !m_picHint->isHidden();
}

void StepEditorWindow::setHintVisible(bool visible) {
    m_picHint->setVisible(visible);
}

QString StepEditorWindow::hintText() const {
    return m_lblHint->text();
}

void StepEditorWindow::PrintHint() {
    const QModelIndex cur = m_grid->currentIndex();
    m_lblHint->setText(cur.isValid() ? m_editor->rules().hintText(cur.row(), cur.column()) : QString());
}

int StepEditorWindow::twipsToPixels(int twips) const {
    return vkm::twipsToPixels(twips, logicalDpiX());
}

int StepEditorWindow::pixelsToTwips(int pixels) const {
    return vkm::pixelsToTwips(pixels, logicalDpiX());
}

void StepEditorWindow::ControlRemarkColumn() {
    m_layingOut = true;
    m_grid->verticalHeader()->setFixedWidth(twipsToPixels(kStepColumnTwips));
    Settings* s = m_context.settings;
    const bool show = s ? s->value(keys::DoesViewRemarkColumn) : keys::DoesViewRemarkColumn.defaultValue;
    const int twips = s ? s->value(keys::RemarkColumnWidth) : keys::RemarkColumnWidth.defaultValue;
    const int col = StepSheet::GetcolRemark();
    m_grid->setColumnHidden(col, !show);
    if (show)
        m_grid->setColumnWidth(col, twipsToPixels(twips > 0 ? twips : keys::RemarkColumnWidth.defaultValue));
    m_layingOut = false;
}

void StepEditorWindow::onSectionResized(int logicalIndex, int newSize) {
    if (m_layingOut || logicalIndex != StepSheet::GetcolRemark() || newSize <= 0 || !m_context.settings)
        return;
    m_context.settings->set(keys::RemarkColumnWidth, pixelsToTwips(newSize));
}

void StepEditorWindow::CheckColorCount() {
    const QScreen* s = screen();
    if (s && s->depth() < 16)
        m_context.prompter->showMessage(70, 2);
}

void StepEditorWindow::F2Op(int row, int col) {
    m_input->F2Op(row, col);
}

bool StepEditorWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_corner && event->type() == QEvent::Paint) {
        paintCorner();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace vkm
