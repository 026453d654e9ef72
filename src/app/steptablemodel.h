#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <functional>

namespace vkm {

class StepSheetEditor;

// Shows a step editor's sheet to a QTableView, one model cell per sheet cell (row 0 is
// the header row and column 0 the step numbers; the view shows them as its headers). The
// model only adapts: an edit goes to the editor's validation, which changes the sheet or
// refuses with its own message, and the sheet's change notifications become dataChanged.
class StepTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Role {
        KindRole = Qt::UserRole, // column kind (0..8)
        CategoryRole,            // cell data: the category of a function cell
        CellTextRole,            // the cell's stored text ("1" for a logic of HIGH, "***", ...)
        HeaderFontRole,          // font family a header is drawn in ("" = the view's)
    };

    explicit StepTableModel(StepSheetEditor& editor, QObject* parent = nullptr);
    ~StepTableModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // The text typed in a cell editor: validated by the editor; false when refused.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    StepSheetEditor& editor() const { return m_editor; }
    // Cells painted with a mark colour laid over their own colour (the step number of a
    // marked row in column 0); an empty function marks nothing. marksChanged repaints them.
    void setCellMarks(std::function<bool(int row, int col)> marked, const QColor& colour);
    void marksChanged();
    // After setData refused a text: what the cell editor is to show again.
    QString refusedText() const { return m_refusedText; }

private:
    StepSheetEditor& m_editor;
    int m_listener = 0; // the sheet's change listener
    QString m_refusedText;
    std::function<bool(int row, int col)> m_marked;
    QColor m_markColour;
    QColor background(int row, int col) const;
};

} // namespace vkm
