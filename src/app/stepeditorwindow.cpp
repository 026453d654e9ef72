#include "stepeditorwindow.h"

#include "appcontext.h"
#include "commandshortcuts.h"
#include "editorcommands.h"
#include "fselcategory.h"
#include "functionchooser.h"
#include "stepdelegate.h"
#include "stepheaderview.h"
#include "steptablemodel.h"
#include "steptoolbar.h"

#include "base/prompter.h"
#include "base/settings.h"
#include "catalogue/cselections.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QInputMethod>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QScreen>
#include <QTableView>
#include <QVBoxLayout>
#include <cmath>

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

const CSelections& emptyCatalogue() {
    static const CSelections none;
    return none;
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
    const CSelections& selout = context.selout ? *context.selout : emptyCatalogue();
    const CSelections& selinp = context.selinp ? *context.selinp : emptyCatalogue();
    return std::make_unique<StepSheetEditor>(selout, selinp, *context.prompter, USRCMP == 1, inpFirst);
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
    m_editor->sheet().removeListener(m_selectionListener);
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
    m_grid->installEventFilter(this);
    // The corner above the step numbers is the header of the step column: "STEP".
    m_grid->setCornerButtonEnabled(false);
    m_corner = m_grid->findChild<QAbstractButton*>();
    if (m_corner)
        m_corner->installEventFilter(this);
    applyColumnWidths();
    ControlRemarkColumn();

    connect(m_grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { onCurrentChanged(); });
    connect(m_grid->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { onSelectionChanged(); });
    connect(m_grid, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { F2Op(index.row(), index.column()); });
    connect(m_grid->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int index, int, int size) { onSectionResized(index, size); });
    connect(m_grid, &QTableView::customContextMenuRequested, this, [this](const QPoint& pos) {
        const QModelIndex index = m_grid->indexAt(pos);
        if (index.isValid() && StepSheet::isStepRow(index.row()))
            m_contextMenu->popup(m_grid->viewport()->mapToGlobal(pos));
    });
    // The step numbers: a right click there works on whole rows.
    m_grid->verticalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_grid->verticalHeader(), &QHeaderView::customContextMenuRequested, this,
            [this](const QPoint& pos) {
                QHeaderView* steps = m_grid->verticalHeader();
                const int row = steps->logicalIndexAt(pos);
                if (!StepSheet::isStepRow(row))
                    return;
                if (!m_grid->selectionModel()->isRowSelected(row, {}))
                    m_grid->selectRow(row);
                m_contextMenu->popup(steps->viewport()->mapToGlobal(pos));
            });
    connect(m_delegate, &QAbstractItemDelegate::closeEditor, this, [this] { PrintHint(); });
    connect(m_delegate, &StepDelegate::tabbedOut, this, &StepEditorWindow::moveAcross);
    m_selectionListener = m_editor->sheet().addSelectionListener([this] { followSheetSelection(); });
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

// Current cell and selection -------------------------------------------------------------

void StepEditorWindow::onCurrentChanged() {
    const QModelIndex cur = m_grid->currentIndex();
    if (!m_syncing && cur.isValid()) {
        m_syncing = true;
        m_editor->sheet().select(cur.row(), cur.column());
        m_syncing = false;
    }
    // The input method is on only where Japanese text may be typed (the remark cell).
    const bool ime = cur.isValid() && m_editor->rules().MustIMEON(cur.row(), cur.column());
    if (m_grid->testAttribute(Qt::WA_InputMethodEnabled) != ime) {
        m_grid->setAttribute(Qt::WA_InputMethodEnabled, ime);
        QGuiApplication::inputMethod()->update(Qt::ImEnabled);
    }
    PrintHint();
}

void StepEditorWindow::onSelectionChanged() {
    if (m_syncing)
        return;
    const QModelIndex cur = m_grid->currentIndex();
    const QModelIndexList picked = m_grid->selectionModel()->selectedIndexes();
    if (!cur.isValid() || picked.isEmpty())
        return;
    int r1 = cur.row(), r2 = cur.row(), c1 = cur.column(), c2 = cur.column();
    for (const QModelIndex& i : picked) {
        r1 = std::min(r1, i.row());
        r2 = std::max(r2, i.row());
        c1 = std::min(c1, i.column());
        c2 = std::max(c2, i.column());
    }
    bool wholeRows = true;
    for (int r = r1; r <= r2 && wholeRows; ++r)
        wholeRows = m_grid->selectionModel()->isRowSelected(r, {});
    m_syncing = true;
    StepSheet& sheet = m_editor->sheet();
    // A new selection starts in free mode: whole rows are marked after it is set.
    sheet.setSelection(cur.row(), cur.column(), cur.row() == r1 ? r2 : r1, cur.column() == c1 ? c2 : c1);
    sheet.setRowSelectionMode(wholeRows);
    m_syncing = false;
}

void StepEditorWindow::followSheetSelection() {
    if (m_syncing)
        return;
    m_syncing = true;
    const StepSheet& sheet = m_editor->sheet();
    const CellRect r = sheet.selection();
    m_grid->setCurrentIndex(m_model->index(sheet.row(), sheet.col()));
    if (!r.isEmpty())
        m_grid->selectionModel()->select(
            QItemSelection(m_model->index(r.row1, r.col1), m_model->index(r.row2, r.col2)),
            QItemSelectionModel::ClearAndSelect);
    m_grid->scrollTo(m_model->index(sheet.row(), sheet.col()));
    m_syncing = false;
    PrintHint();
}

// Keys and editing -----------------------------------------------------------------------

void StepEditorWindow::openCellEditor(int row, int col, const StartEditResult& start,
                                      const std::optional<QString>& initialText) {
    // The sheet editor said how the cell is entered when it let the edit start.
    m_delegate->prepare(start.editor == CellEditor::Combo ? CellEditor::Combo : CellEditor::Text,
                        start.comboList, initialText);
    const QModelIndex index = m_model->index(row, col);
    m_grid->setCurrentIndex(index);
    m_grid->edit(index);
    if (!initialText)
        return;
    // The view selects the whole text of a new editor; the typed character must not be
    // replaced by the next key, so the cursor goes behind it instead.
    QWidget* w = m_grid->indexWidget(index);
    auto* line = qobject_cast<QLineEdit*>(w);
    if (!line && w)
        line = w->findChild<QLineEdit*>();
    if (line) {
        line->deselect();
        line->end(false);
    }
}

void StepEditorWindow::moveAcross(int direction) {
    const QModelIndex cur = m_grid->currentIndex();
    if (!cur.isValid())
        return;
    int col = cur.column() + direction;
    while (col >= 1 && col < StepSheet::kCols && m_grid->isColumnHidden(col))
        col += direction;
    if (col < 1 || col >= StepSheet::kCols)
        return;
    m_grid->setCurrentIndex(m_model->index(cur.row(), col));
    m_grid->setFocus();
}

void StepEditorWindow::F2Op(int row, int col) {
    if (!StepSheet::isStepRow(row) || col < 1)
        return;
    const F2Result f2 = m_editor->entry().F2InputOp(row, col);
    switch (f2.action) {
    case F2Action::StartEdit:
        openCellEditor(row, col, f2.start, std::nullopt);
        break;
    case F2Action::FunctionWritten:
        m_grid->setFocus();
        break;
    case F2Action::Nothing:
        break;
    }
    PrintHint();
}

bool StepEditorWindow::handleGridKey(QKeyEvent* key) {
    const QModelIndex cur = m_grid->currentIndex();
    const int row = cur.row();
    const int col = cur.column();
    if (key->modifiers() == Qt::ControlModifier) {
        static const QHash<int, QString> commands = {{Qt::Key_F, QStringLiteral("keyFind")},
                                                     {Qt::Key_C, QStringLiteral("keyCOPY")},
                                                     {Qt::Key_X, QStringLiteral("keyCUT")},
                                                     {Qt::Key_V, QStringLiteral("keyPASTE")}};
        const auto it = commands.constFind(key->key());
        if (it == commands.constEnd())
            return false;
        action(it.value())->trigger(); // a disabled command does nothing
        return true;
    }
    if (!cur.isValid())
        return false;
    switch (key->key()) {
    case Qt::Key_F2:
        F2Op(row, col);
        return true;
    case Qt::Key_Delete:
        m_editor->clearing().DeleteOp();
        PrintHint();
        return true;
    case Qt::Key_Space:
        m_editor->entry().SpaceOp(row, col);
        PrintHint();
        return true;
    case Qt::Key_Tab:
        moveAcross(1);
        return true;
    case Qt::Key_Backtab:
        moveAcross(-1);
        return true;
    default:
        break;
    }
    const QString text = key->text();
    if (text.isEmpty() || (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
        return false;
    const QChar ch = text.at(0);
    if (ch.unicode() < 33 || ch.unicode() == 127)
        return false;
    typeText(text);
    return true;
}

void StepEditorWindow::typeText(const QString& text) {
    const QModelIndex cur = m_grid->currentIndex();
    if (!cur.isValid() || text.isEmpty())
        return;
    const StartEditResult start = m_editor->entry().typeCharacter(cur.row(), cur.column(), text.at(0));
    if (start.allowed)
        openCellEditor(cur.row(), cur.column(), start, text);
    PrintHint();
}

bool StepEditorWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_corner && event->type() == QEvent::Paint) {
        paintCorner();
        return true;
    }
    if (watched == m_grid && event->type() == QEvent::KeyPress &&
        handleGridKey(static_cast<QKeyEvent*>(event)))
        return true;
    if (watched == m_grid && event->type() == QEvent::InputMethod) {
        // Text composed with the input method arrives as one commit, not as key presses.
        const QString text = static_cast<QInputMethodEvent*>(event)->commitString();
        if (!text.isEmpty()) {
            typeText(text);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace vkm
