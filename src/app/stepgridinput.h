#pragma once

#include "sheet/cellentry.h"

#include <QObject>
#include <optional>

class QKeyEvent;
class QTableView;

namespace vkm {

class StepDelegate;
class StepEditorWindow;
class StepSheetEditor;
class StepTableModel;

// What the user does in a step editor window's grid: keys, typed and composed text,
// double clicks and right clicks, Tab out of a cell editor. Each goes to the window's
// sheet editor, and a cell editor opens where the sheet editor lets an edit start. The
// view's current cell and selection and the sheet's follow each other both ways. Made by
// the window once its grid, model and delegate exist; it lives no longer than they do.
class StepGridInput : public QObject {
    Q_OBJECT
public:
    StepGridInput(StepEditorWindow& window, StepDelegate& delegate);
    ~StepGridInput() override;

    // F2 or a double click on a cell.
    void F2Op(int row, int col);
    // Moves the current cell one visible column right (+1) or left (-1), as the arrow keys do.
    void moveAcross(int direction);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectGrid();
    bool handleGridKey(QKeyEvent* key);
    void typeText(const QString& text);
    void openCellEditor(int row, int col, const StartEditResult& start,
                        const std::optional<QString>& initialText);
    void popUpContextMenu(const QPoint& pos);
    void popUpRowMenu(const QPoint& pos);
    void onCurrentChanged();
    void onSelectionChanged();
    void followSheetSelection();

    StepEditorWindow& m_window;
    StepSheetEditor& m_editor;
    QTableView* m_grid;
    StepTableModel* m_model;
    StepDelegate& m_delegate;
    int m_selectionListener = 0;
    bool m_syncing = false; // the view follows the sheet's selection
};

} // namespace vkm
