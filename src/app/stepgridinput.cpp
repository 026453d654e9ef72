#include "stepgridinput.h"

#include "commandshortcuts.h"
#include "stepdelegate.h"
#include "stepeditorwindow.h"
#include "steptablemodel.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QInputMethod>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>

namespace vkm {

StepGridInput::StepGridInput(StepEditorWindow& window, StepDelegate& delegate)
    : m_window(window), m_editor(window.editor()), m_grid(window.grid()), m_model(window.model()),
      m_delegate(delegate) {
    m_grid->installEventFilter(this);
    connectGrid();
}

StepGridInput::~StepGridInput() {
    m_editor.sheet().removeListener(m_selectionListener);
}

void StepGridInput::connectGrid() {
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { onCurrentChanged(); });
    connect(m_grid->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { onSelectionChanged(); });
    connect(m_grid, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { F2Op(index.row(), index.column()); });
    connect(m_grid, &QTableView::customContextMenuRequested, this, &StepGridInput::popUpContextMenu);
    // The step numbers: a right click there works on whole rows.
    m_grid->verticalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_grid->verticalHeader(), &QHeaderView::customContextMenuRequested, this,
            &StepGridInput::popUpRowMenu);
    connect(&m_delegate, &QAbstractItemDelegate::closeEditor, this, [this] { m_window.PrintHint(); });
    connect(&m_delegate, &StepDelegate::tabbedOut, this, &StepGridInput::moveAcross);
    m_selectionListener = m_editor.sheet().addSelectionListener([this] { followSheetSelection(); });
}

void StepGridInput::popUpContextMenu(const QPoint& pos) {
    const QModelIndex index = m_grid->indexAt(pos);
    if (index.isValid() && StepSheet::isStepRow(index.row()))
        m_window.contextMenu()->popup(m_grid->viewport()->mapToGlobal(pos));
}

void StepGridInput::popUpRowMenu(const QPoint& pos) {
    QHeaderView* steps = m_grid->verticalHeader();
    const int row = steps->logicalIndexAt(pos);
    if (!StepSheet::isStepRow(row))
        return;
    if (!m_grid->selectionModel()->isRowSelected(row, {}))
        m_grid->selectRow(row);
    m_window.contextMenu()->popup(steps->viewport()->mapToGlobal(pos));
}

// Current cell and selection -------------------------------------------------------------

void StepGridInput::onCurrentChanged() {
    const QModelIndex cur = m_grid->currentIndex();
    if (!m_syncing && cur.isValid()) {
        m_syncing = true;
        m_editor.sheet().select(cur.row(), cur.column());
        m_syncing = false;
    }
    // The input method is on only where Japanese text may be typed (the remark cell).
    const bool ime = cur.isValid() && m_editor.rules().MustIMEON(cur.row(), cur.column());
    if (m_grid->testAttribute(Qt::WA_InputMethodEnabled) != ime) {
        m_grid->setAttribute(Qt::WA_InputMethodEnabled, ime);
        QGuiApplication::inputMethod()->update(Qt::ImEnabled);
    }
    m_window.PrintHint();
}

void StepGridInput::onSelectionChanged() {
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
    StepSheet& sheet = m_editor.sheet();
    // A new selection starts in free mode: whole rows are marked after it is set.
    sheet.setSelection(cur.row(), cur.column(), cur.row() == r1 ? r2 : r1, cur.column() == c1 ? c2 : c1);
    sheet.setRowSelectionMode(wholeRows);
    m_syncing = false;
}

void StepGridInput::followSheetSelection() {
    if (m_syncing)
        return;
    m_syncing = true;
    const StepSheet& sheet = m_editor.sheet();
    const CellRect r = sheet.selection();
    m_grid->setCurrentIndex(m_model->index(sheet.row(), sheet.col()));
    if (!r.isEmpty())
        m_grid->selectionModel()->select(
            QItemSelection(m_model->index(r.row1, r.col1), m_model->index(r.row2, r.col2)),
            QItemSelectionModel::ClearAndSelect);
    m_grid->scrollTo(m_model->index(sheet.row(), sheet.col()));
    m_syncing = false;
    m_window.PrintHint();
}

// Keys and editing -----------------------------------------------------------------------

void StepGridInput::openCellEditor(int row, int col, const StartEditResult& start,
                                   const std::optional<QString>& initialText) {
    // The sheet editor said how the cell is entered when it let the edit start.
    m_delegate.prepare(start.editor == CellEditor::Combo ? CellEditor::Combo : CellEditor::Text,
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

void StepGridInput::moveAcross(int direction) {
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

void StepGridInput::F2Op(int row, int col) {
    if (!StepSheet::isStepRow(row) || col < 1)
        return;
    const F2Result f2 = m_editor.entry().F2InputOp(row, col);
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
    m_window.PrintHint();
}

bool StepGridInput::handleGridKey(QKeyEvent* key) {
    const QModelIndex cur = m_grid->currentIndex();
    const int row = cur.row();
    const int col = cur.column();
    if (key->modifiers() == Qt::ControlModifier) {
        // Find, copy, cut and paste are the grid's own keys; they run the toolbar's command.
        const QString command = shortcuts::gridCommand(key->keyCombination());
        if (command.isEmpty())
            return false;
        m_window.action(command)->trigger(); // a disabled command does nothing
        return true;
    }
    if (!cur.isValid())
        return false;
    switch (key->key()) {
    case Qt::Key_F2:
        F2Op(row, col);
        return true;
    case Qt::Key_Delete:
        m_editor.clearing().DeleteOp();
        m_window.PrintHint();
        return true;
    case Qt::Key_Space:
        m_editor.entry().SpaceOp(row, col);
        m_window.PrintHint();
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

void StepGridInput::typeText(const QString& text) {
    const QModelIndex cur = m_grid->currentIndex();
    if (!cur.isValid() || text.isEmpty())
        return;
    const StartEditResult start = m_editor.entry().typeCharacter(cur.row(), cur.column(), text.at(0));
    if (start.allowed)
        openCellEditor(cur.row(), cur.column(), start, text);
    m_window.PrintHint();
}

bool StepGridInput::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_grid)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress && handleGridKey(static_cast<QKeyEvent*>(event)))
        return true;
    if (event->type() == QEvent::InputMethod) {
        // Text composed with the input method arrives as one commit, not as key presses.
        const QString text = static_cast<QInputMethodEvent*>(event)->commitString();
        if (!text.isEmpty()) {
            typeText(text);
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vkm
