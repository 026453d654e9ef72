#include "customizeeasymodel.h"

#include "custom/customizeeasysheet.h"

#include <QColor>
#include <QRegularExpression>

namespace vkm {

const QColor CustomizeEasyModel::kInputBack = QColor(255, 228, 225);
const QColor CustomizeEasyModel::kOutputBack = QColor(224, 255, 255);
const QColor CustomizeEasyModel::kChangedMark = QColor(255, 215, 0);

CustomizeEasyModel::CustomizeEasyModel(CustomizeEasySheet& sheet, QObject* parent)
    : QAbstractTableModel(parent), m_sheet(sheet) {}

int CustomizeEasyModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_sheet.rowCount();
}

int CustomizeEasyModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 2;
}

QVariant CustomizeEasyModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_sheet.rowCount())
        return {};
    const CustomizeRow& r = m_sheet.row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == ColSig ? r.location : r.digital;
    case Qt::EditRole:
        // The padding is the catalogue's, not the user's: the editor starts with the letters.
        return index.column() == ColSig ? r.location : QString(r.digital).remove(QRegularExpression(" +$"));
    case Qt::BackgroundRole:
        if (index.column() == ColSig && r.changed)
            return kChangedMark;
        return r.inOut == 1 ? kInputBack : kOutputBack;
    case Qt::ForegroundRole:
        return QColor(Qt::black);
    default:
        return {};
    }
}

QVariant CustomizeEasyModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    return section == ColSig ? QStringLiteral("Sig.") : QStringLiteral("Function");
}

Qt::ItemFlags CustomizeEasyModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (index.isValid() && index.column() == ColFunction)
        f |= Qt::ItemIsEditable;
    return f;
}

bool CustomizeEasyModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid() || index.column() != ColFunction)
        return false;
    const bool taken = m_sheet.enterFunction(index.row(), value.toString());
    refreshRow(index.row());
    return taken;
}

void CustomizeEasyModel::refresh() {
    beginResetModel();
    endResetModel();
}

void CustomizeEasyModel::refreshRow(int row) {
    Q_EMIT dataChanged(index(row, 0), index(row, 1));
}

} // namespace vkm
