#pragma once

#include "sheet/programcompare.h"
#include "sheet/stepsheet.h"

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <array>
#include <vector>

class QAction;
class QLabel;
class QStatusBar;

namespace vkm {

class CSteps;
class StepEditorWindow;
class StepSheetEditor;

// The differences between the user program and the comparison program in both editor
// windows: a toolbar toggle in each window marks every cell that differs from the other
// program at the same row and column, F7 and Shift+F7 move to the next and the previous
// differing cell (wrapping round), and the window's status bar counts them and names the
// program's own fields (author, memo, ...) that differ as well. The marks follow every
// change of either sheet at once. All of it is available only while a comparison program
// is loaded, that is while the comparison window is open.
class DifferenceHighlight : public QObject {
    Q_OBJECT
public:
    // The windows come later (attach) and may go before this. A window that owns one of the
    // two editors takes it along when it is destroyed: from then on nothing is compared.
    DifferenceHighlight(StepSheetEditor& user, StepSheetEditor& comparison, QObject* parent = nullptr);
    ~DifferenceHighlight() override;

    // Adds the toggle, the F7 / Shift+F7 commands and the count to an editor window. The
    // comparison window also tells, by being shown and closed, whether a comparison
    // program is loaded.
    void attach(StepEditorWindow& window);

    // The two programs, whose own fields are compared beside the grids (without them only
    // cells are counted); they must outlive this. Those fields change outside the grids
    // (the password dialog, the memo window, a program opened or made new), so the owner
    // calls programFieldsChanged whenever one of them may have changed; every change of
    // either grid reads them again as well.
    void setPrograms(const CSteps* user, const CSteps* comparison);
    void programFieldsChanged();
    // The program's own fields that differ, named as the listing of vkmstep-cli names them.
    const QStringList& differingProgramFields() const { return m_programFields; }

    bool comparisonLoaded() const { return m_loaded; }
    void setComparisonLoaded(bool loaded);

    // The differing cells in reading order (the step column of a row whose disabled state
    // differs), whether they are shown or not.
    const std::vector<SheetCell>& differences() const { return m_cells; }
    // The marks are shown in the window (its toggle is on).
    bool isShown(const StepEditorWindow& window) const;
    bool isMarked(const StepEditorWindow& window, int row, int col) const;
    // What the window's status bar says ("" while its toggle is off).
    QString statusText(const StepEditorWindow& window) const;

    // The window's commands, by the keys they carry: "keyDIFF" (the toggle), "keyNEXTDIFF"
    // (F7) and "keyPREVDIFF" (Shift+F7).
    QAction* action(const StepEditorWindow& window, const QString& key) const;
    // Makes the next (+1) or the previous (-1) differing cell current in the window,
    // wrapping round at either end. False when there is none.
    bool moveToDifference(StepEditorWindow& window, int direction);

    static QColor markColour();
    // What the status bar says: "3 differing cells", "1 differing cell", "No differing
    // cells", followed by the program's own fields that differ, if any:
    // "No differing cells (author, memo differ too)".
    static QString countText(int cells, const QStringList& programFields = {});

private:
    struct Attached {
        QPointer<StepEditorWindow> window;
        // The window's identity, compared without a cast: a window being destroyed is
        // no longer a StepEditorWindow by the time its destroyed() signal arrives.
        const QObject* id = nullptr;
        QPointer<QAction> toggle;
        QPointer<QAction> next;
        QPointer<QAction> previous;
        QStatusBar* status = nullptr;
        QLabel* count = nullptr;
    };
    bool eventFilter(QObject* watched, QEvent* event) override;
    void recompute();
    // Leaves both sheets alone from now on (one of them is about to go).
    void stopListening();
    void refresh(Attached& a);
    void detach(const QObject* window);
    Attached* find(const StepEditorWindow& window);
    const Attached* find(const StepEditorWindow& window) const;
    // Where the cursor goes for a difference: a cell the window hides, and the step column,
    // lead to the first shown column of the row.
    SheetCell landing(const StepEditorWindow& window, const SheetCell& cell) const;

    StepSheetEditor& m_user;
    StepSheetEditor& m_comparison;
    int m_userListener = 0;
    int m_comparisonListener = 0;
    bool m_listening = true;
    bool m_loaded = false;
    const CSteps* m_userProgram = nullptr;
    const CSteps* m_comparisonProgram = nullptr;
    std::vector<SheetCell> m_cells;
    QStringList m_programFields;
    std::array<bool, std::size_t(StepSheet::kRows* StepSheet::kCols)> m_marked{};
    std::vector<Attached> m_windows;
};

} // namespace vkm
