#pragma once

#include "sheet/stepsheeteditor.h"

#include <QSet>
#include <QStyledItemDelegate>
#include <optional>

namespace vkm {

// Draws and edits the cells of the step grid: pictures for logic, delay kind, state and
// relation cells, the small grey category name in function cells, silver cell borders;
// a line edit for text and function cells and a drop-down list for combo cells. Which
// editor a cell gets is decided by the sheet editor; the window hands it over with
// prepare() before it opens the cell.
class StepDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit StepDelegate(QObject* parent = nullptr);

    // The editor for the next cell that is opened, its combo list ("#v;name|...") and the
    // text it starts with (a typed character), if any.
    void prepare(CellEditor editor, const QString& comboList, std::optional<QString> initialText);

    // Picture resource of a cell kind and value ("" for kinds without pictures).
    static QString picturePath(int kind, const QString& text);
    // The font of the small category text (Tahoma where it exists).
    static QFont categoryFont();

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

    // Ends an open cell edit as Enter does: false (the editor kept open with the cell's
    // text and the message shown) when the text is refused.
    bool commitAndClose(QWidget* editor);
    // Closes an open cell editor without storing what it holds.
    void abandon(QWidget* editor);

Q_SIGNALS:
    // Tab (+1) or Shift+Tab (-1) ended an edit: the current cell moves one column, and
    // the next cell opens only when the user starts editing it.
    void tabbedOut(int direction);

protected:
    // Enter or Tab on a refused text keeps the cell editor open with the text the cell
    // restores, so that the user can correct it; leaving the cell otherwise ends the edit.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool drawPicture(QPainter* painter, const QRect& rect, const QString& path) const;
    void drawBorders(QPainter* painter, const QRect& rect, const QModelIndex& index) const;

    CellEditor m_editor = CellEditor::Text;
    QString m_comboList;
    mutable std::optional<QString> m_initialText;
    mutable QSet<QString> m_reportedMissing;
    mutable bool m_refused = false; // the last commit was refused
    mutable QString m_restoreText;  // what the refused editor shows again
    bool m_committing = false;      // a commit (and its message box) is under way
};

} // namespace vkm
