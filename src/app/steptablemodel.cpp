#include "steptablemodel.h"

#include "sheet/stepsheeteditor.h"

#include <QColor>
#include <QFont>

namespace vkm {

StepTableModel::StepTableModel(StepSheetEditor& editor, QObject* parent)
    : QAbstractTableModel(parent), m_editor(editor) {
    m_listener = m_editor.sheet().addChangeListener([this](const CellRect& r) {
        if (r.isEmpty())
            return;
        const int r1 = std::max(r.row1, 0), c1 = std::max(r.col1, 0);
        const int r2 = std::min(r.row2, StepSheet::kRows - 1), c2 = std::min(r.col2, StepSheet::kCols - 1);
        if (r1 > r2 || c1 > c2)
            return;
        Q_EMIT dataChanged(index(r1, c1), index(r2, c2));
        if (r1 == 0)
            Q_EMIT headerDataChanged(Qt::Horizontal, c1, c2);
    });
}

StepTableModel::~StepTableModel() {
    m_editor.sheet().removeListener(m_listener);
}

int StepTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : StepSheet::kRows;
}

int StepTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : StepSheet::kCols;
}

QVariant StepTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const StepSheet& sheet = m_editor.sheet();
    const int row = index.row();
    const int col = index.column();
    const int kind = sheet.colKind(col);
    switch (role) {
    case Qt::DisplayRole:
        // A combo cell shows the name of its value (the delegate draws its picture).
        return m_editor.rules().displayText(row, col);
    case Qt::EditRole:
    case CellTextRole:
        return sheet.text(row, col);
    case Qt::BackgroundRole:
        return background(row, col);
    case Qt::ForegroundRole:
        return QColor::fromRgb(sheet.foreColor(row, col));
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(row == 0 || col == 0 ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
    case KindRole:
        return kind;
    case CategoryRole:
        return sheet.data(row, col);
    case HeaderFontRole:
        return row == 0 ? sheet.headerFont(col) : QString();
    default:
        return {};
    }
}

QVariant StepTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const StepSheet& sheet = m_editor.sheet();
    if (section < 0)
        return {};
    if (orientation == Qt::Horizontal) {
        if (section >= StepSheet::kCols)
            return {};
        switch (role) {
        case Qt::DisplayRole:
            return sheet.headerText(section);
        case Qt::BackgroundRole:
            return QColor::fromRgb(sheet.backColor(0, section));
        case Qt::ForegroundRole:
            return QColor::fromRgb(sheet.foreColor(0, section));
        case HeaderFontRole:
            return sheet.headerFont(section);
        case KindRole:
            return sheet.colKind(section);
        default:
            return {};
        }
    }
    if (section >= StepSheet::kRows)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return sheet.text(section, 0);
    case Qt::BackgroundRole:
        return background(section, 0);
    case Qt::ForegroundRole:
        return QColor::fromRgb(sheet.foreColor(section, 0));
    default:
        return {};
    }
}

QColor StepTableModel::background(int row, int col) const {
    const QColor own = QColor::fromRgb(m_editor.sheet().backColor(row, col));
    if (!m_marked || !m_marked(row, col))
        return own;
    // Half and half: the mark stands out and the group colours still show through it.
    return QColor((own.red() + m_markColour.red()) / 2, (own.green() + m_markColour.green()) / 2,
                  (own.blue() + m_markColour.blue()) / 2);
}

void StepTableModel::setCellMarks(std::function<bool(int row, int col)> marked, const QColor& colour) {
    m_marked = std::move(marked);
    m_markColour = colour;
    marksChanged();
}

void StepTableModel::marksChanged() {
    Q_EMIT dataChanged(index(StepSheet::kFirstStepRow, 0),
                       index(StepSheet::kLastStepRow, StepSheet::kCols - 1), {Qt::BackgroundRole});
    Q_EMIT headerDataChanged(Qt::Vertical, StepSheet::kFirstStepRow, StepSheet::kLastStepRow);
}

Qt::ItemFlags StepTableModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!m_editor.isComparison() && StepSheet::isStepRow(index.row()) && index.column() >= 1)
        f |= Qt::ItemIsEditable;
    return f;
}

bool StepTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid() || !checkIndex(index, CheckIndexOption::IndexIsValid) ||
        !(flags(index) & Qt::ItemIsEditable))
        return false;
    const ValidateResult r = m_editor.entry().fg_ValidateEdit(index.row(), index.column(), value.toString());
    if (!r.accepted) {
        m_refusedText = r.text;
        return false;
    }
    m_editor.entry().fg_AfterEdit(index.row(), index.column());
    // The sheet notifies its own changes; this covers an accepted text equal to the old one.
    Q_EMIT dataChanged(index, index);
    return true;
}

} // namespace vkm
