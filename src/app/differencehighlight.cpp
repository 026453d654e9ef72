#include "differencehighlight.h"

#include "commandshortcuts.h"
#include "stepeditorwindow.h"
#include "steptablemodel.h"
#include "steptoolbar.h"

#include "sheet/stepsheeteditor.h"

#include <QAction>
#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QStatusBar>
#include <QTableView>
#include <algorithm>

namespace vkm {

namespace {

std::size_t cellIndex(int row, int col) {
    return std::size_t(row * StepSheet::kCols + col);
}

// The toggle's picture: two small grids side by side, the same cell marked in both.
QIcon differenceIcon() {
    QPixmap pm(24, 24);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    for (int side = 0; side < 2; ++side) {
        const QRect grid(1 + side * 12, 4, 10, 16);
        p.fillRect(grid, Qt::white);
        p.fillRect(QRect(grid.left() + 1, grid.top() + 6, 8, 4), DifferenceHighlight::markColour());
        p.setPen(QColor(0x40, 0x40, 0x40));
        p.drawRect(grid.adjusted(0, 0, -1, -1));
        p.drawLine(grid.left(), grid.top() + 5, grid.right(), grid.top() + 5);
        p.drawLine(grid.left(), grid.top() + 10, grid.right(), grid.top() + 10);
    }
    return QIcon(pm);
}

} // namespace

DifferenceHighlight::DifferenceHighlight(StepSheetEditor& user, StepSheetEditor& comparison, QObject* parent)
    : QObject(parent), m_user(user), m_comparison(comparison) {
    // Every change of either grid (an edit, a paste, rows inserted or cut, a program opened,
    // New, Undo) comes through here, after the sheet's own batch has ended.
    m_userListener = m_user.sheet().addChangeListener([this](const CellRect&) { recompute(); });
    m_comparisonListener = m_comparison.sheet().addChangeListener([this](const CellRect&) { recompute(); });
    recompute();
}

DifferenceHighlight::~DifferenceHighlight() {
    stopListening();
    // The windows may outlive this: their models stop asking for marks.
    for (Attached& a : m_windows)
        if (a.window && a.window->model())
            a.window->model()->setCellMarks({}, QColor());
}

QColor DifferenceHighlight::markColour() {
    return QColor(0xFF, 0x99, 0x00); // amber, laid half over the cell's own colour
}

QString DifferenceHighlight::countText(int cells, const QStringList& programFields) {
    QString text = cells == 0   ? tr("No differing cells")
                   : cells == 1 ? tr("1 differing cell")
                                : tr("%1 differing cells").arg(cells);
    if (!programFields.isEmpty())
        text += (programFields.size() == 1 ? tr(" (%1 differs too)") : tr(" (%1 differ too)"))
                    .arg(programFields.join(QStringLiteral(", ")));
    return text;
}

void DifferenceHighlight::setPrograms(const CSteps* user, const CSteps* comparison) {
    m_userProgram = user;
    m_comparisonProgram = comparison;
    recompute();
}

void DifferenceHighlight::programFieldsChanged() {
    recompute();
}

void DifferenceHighlight::attach(StepEditorWindow& window) {
    if (find(window))
        return;
    Attached a;
    a.window = &window;
    a.id = &window;
    StepToolBar* bar = window.toolBar();
    bar->addSeparator();
    a.toggle = bar->addAction(differenceIcon(), tr("Diff"));
    a.toggle->setObjectName(QStringLiteral("keyDIFF"));
    a.toggle->setCheckable(true);
    a.toggle->setToolTip(
        shortcuts::withKey(tr("Mark the cells that differ from the other program"), a.toggle->objectName()) +
        tr("; F7 next, Shift+F7 previous difference"));
    a.next = new QAction(tr("Next difference"), &window);
    a.next->setObjectName(QStringLiteral("keyNEXTDIFF"));
    a.previous = new QAction(tr("Previous difference"), &window);
    a.previous->setObjectName(QStringLiteral("keyPREVDIFF"));
    // The keys work where the window's other command keys do: anywhere in the window, and
    // only there, as the other editor has commands of the same keys.
    for (QAction* command : {a.toggle.data(), a.next.data(), a.previous.data()}) {
        shortcuts::bind(command, command->objectName());
        window.addAction(command);
    }
    // The count goes into a status bar of the window's own, below the hint pane.
    a.status = new QStatusBar(&window);
    a.status->setObjectName(QStringLiteral("differenceStatus"));
    a.status->setSizeGripEnabled(false);
    a.count = new QLabel(a.status);
    a.count->setObjectName(QStringLiteral("lblDifferences"));
    a.status->addWidget(a.count, 1);
    a.status->hide();
    if (auto* box = qobject_cast<QBoxLayout*>(window.layout()))
        box->addWidget(a.status);

    StepEditorWindow* w = &window;
    connect(a.toggle, &QAction::toggled, this, [this, w] {
        if (Attached* at = find(*w))
            refresh(*at);
    });
    connect(a.next, &QAction::triggered, this, [this, w] { moveToDifference(*w, 1); });
    connect(a.previous, &QAction::triggered, this, [this, w] { moveToDifference(*w, -1); });
    connect(&window, &QObject::destroyed, this, [this](QObject* gone) { detach(gone); });
    if (&window.editor() == &m_user || &window.editor() == &m_comparison)
        connect(&window, &StepEditorWindow::ownEditorGoing, this, [this] { stopListening(); });
    window.model()->setCellMarks([this, w](int row, int col) { return isMarked(*w, row, col); },
                                 markColour());
    if (window.isComparison()) {
        window.installEventFilter(this);
        connect(&window, &StepEditorWindow::closed, this, [this] { setComparisonLoaded(false); });
    }
    m_windows.push_back(a);
    if (window.isComparison() && window.isVisible())
        setComparisonLoaded(true);
    else
        refresh(m_windows.back());
}

void DifferenceHighlight::detach(const QObject* window) {
    m_windows.erase(
        std::remove_if(m_windows.begin(), m_windows.end(),
                       [window](const Attached& a) { return a.id == window || a.window.isNull(); }),
        m_windows.end());
}

bool DifferenceHighlight::eventFilter(QObject* watched, QEvent* event) {
    // The comparison window is shown when a comparison program has been opened into it.
    if (event->type() == QEvent::Show) {
        const auto* w = qobject_cast<StepEditorWindow*>(watched);
        if (w && w->isComparison())
            setComparisonLoaded(true);
    }
    return QObject::eventFilter(watched, event);
}

void DifferenceHighlight::setComparisonLoaded(bool loaded) {
    if (m_loaded == loaded)
        return;
    m_loaded = loaded;
    for (Attached& a : m_windows) {
        if (!loaded && a.toggle && a.toggle->isChecked()) {
            const QSignalBlocker quiet(a.toggle);
            a.toggle->setChecked(false);
        }
        refresh(a);
    }
}

DifferenceHighlight::Attached* DifferenceHighlight::find(const StepEditorWindow& window) {
    for (Attached& a : m_windows)
        if (a.id == &window)
            return &a;
    return nullptr;
}

const DifferenceHighlight::Attached* DifferenceHighlight::find(const StepEditorWindow& window) const {
    for (const Attached& a : m_windows)
        if (a.id == &window)
            return &a;
    return nullptr;
}

bool DifferenceHighlight::isShown(const StepEditorWindow& window) const {
    const Attached* a = find(window);
    return m_loaded && a && a->toggle && a->toggle->isChecked();
}

bool DifferenceHighlight::isMarked(const StepEditorWindow& window, int row, int col) const {
    return StepSheet::isValidCell(row, col) && m_marked[cellIndex(row, col)] && isShown(window);
}

QString DifferenceHighlight::statusText(const StepEditorWindow& window) const {
    const Attached* a = find(window);
    return a && isShown(window) ? a->count->text() : QString();
}

QAction* DifferenceHighlight::action(const StepEditorWindow& window, const QString& key) const {
    const Attached* a = find(window);
    if (!a)
        return nullptr;
    for (QAction* act : {a->toggle.data(), a->next.data(), a->previous.data()})
        if (act && act->objectName() == key)
            return act;
    return nullptr;
}

void DifferenceHighlight::stopListening() {
    if (!m_listening)
        return;
    m_listening = false;
    m_user.sheet().removeListener(m_userListener);
    m_comparison.sheet().removeListener(m_comparisonListener);
}

void DifferenceHighlight::recompute() {
    if (!m_listening)
        return;
    std::vector<SheetCell> cells = programcompare::differingCells(m_user.sheet(), m_comparison.sheet());
    QStringList fields;
    if (m_userProgram && m_comparisonProgram)
        for (const programcompare::FieldDifference& f :
             programcompare::programFieldDifferences(*m_userProgram, *m_comparisonProgram))
            fields << f.field;
    if (cells == m_cells && fields == m_programFields)
        return;
    m_programFields = std::move(fields);
    m_cells = std::move(cells);
    m_marked.fill(false);
    for (const SheetCell& c : m_cells)
        m_marked[cellIndex(c.row, c.col)] = true;
    for (Attached& a : m_windows)
        refresh(a);
}

void DifferenceHighlight::refresh(Attached& a) {
    if (!a.window || !a.toggle || !a.next || !a.previous)
        return;
    a.toggle->setEnabled(m_loaded);
    a.next->setEnabled(m_loaded);
    a.previous->setEnabled(m_loaded);
    const bool shown = isShown(*a.window);
    a.count->setText(countText(int(m_cells.size()), m_programFields));
    a.status->setVisible(shown);
    a.window->model()->marksChanged();
}

SheetCell DifferenceHighlight::landing(const StepEditorWindow& window, const SheetCell& cell) const {
    const QTableView* grid = window.grid();
    if (cell.col > 0 && !grid->isColumnHidden(cell.col))
        return cell;
    int col = 1;
    while (col < StepSheet::kCols - 1 && grid->isColumnHidden(col))
        ++col;
    return {cell.row, col};
}

bool DifferenceHighlight::moveToDifference(StepEditorWindow& window, int direction) {
    if (!m_loaded || m_cells.empty())
        return false;
    std::vector<std::size_t> stops;
    for (const SheetCell& c : m_cells) {
        const SheetCell at = landing(window, c);
        stops.push_back(cellIndex(at.row, at.col));
    }
    // A row's step column and a hidden remark lead to the same cell.
    std::sort(stops.begin(), stops.end());
    stops.erase(std::unique(stops.begin(), stops.end()), stops.end());
    const QModelIndex cur = window.grid()->currentIndex();
    const std::size_t here = cur.isValid() ? cellIndex(cur.row(), cur.column()) : 0;
    std::size_t target = 0;
    if (direction > 0) {
        const auto it = std::upper_bound(stops.begin(), stops.end(), here);
        target = it == stops.end() ? stops.front() : *it;
    } else {
        const auto it = std::lower_bound(stops.begin(), stops.end(), here);
        target = it == stops.begin() ? stops.back() : *(it - 1);
    }
    const QModelIndex index =
        window.model()->index(int(target) / StepSheet::kCols, int(target) % StepSheet::kCols);
    window.grid()->setCurrentIndex(index);
    window.grid()->scrollTo(index);
    window.grid()->setFocus();
    return true;
}

} // namespace vkm
