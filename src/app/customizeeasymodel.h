#pragma once

#include <QAbstractTableModel>

namespace vkm {

class CustomizeEasySheet;

// Shows the easy customisation grid to a QTableView: column 0 "Sig." the terminal,
// column 1 "Function" its function's digital text. Input rows and output rows have their
// own background; the terminal cell of an edited row is marked until the next save. The
// model only adapts: a typed function goes to the sheet, which takes it or refuses it with
// its own message.
class CustomizeEasyModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { ColSig = 0, ColFunction = 1 };
    static const QColor kInputBack;
    static const QColor kOutputBack;
    static const QColor kChangedMark;

    explicit CustomizeEasyModel(CustomizeEasySheet& sheet, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // The sheet changed outside an edit (a chosen function, a save, a new fill).
    void refresh();
    void refreshRow(int row);

private:
    CustomizeEasySheet& m_sheet;
};

} // namespace vkm
