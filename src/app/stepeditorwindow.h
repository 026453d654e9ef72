#pragma once

#include "sheet/stepsheeteditor.h"

#include <QWidget>
#include <functional>
#include <memory>

class QAbstractButton;
class QLabel;
class QMenu;
class QTableView;

namespace vkm {

struct AppContext;
class EditorCommands;
class FunctionChooserDialogs;
class StepDelegate;
class StepGridInput;
class StepTableModel;
class StepToolBar;

// The step editor window (fStep): the toolbar, the step grid and the hint pane. One
// window holds the user program (USRCMP 0), another the comparison program (USRCMP 1),
// which cannot be edited. The window forwards keys, clicks and typed text to its sheet
// editor and shows what that says; it decides no editing rule itself.
class StepEditorWindow : public QWidget {
    Q_OBJECT
public:
    // A window with a sheet editor of its own.
    StepEditorWindow(AppContext& context, int USRCMP, QWidget* parent = nullptr);
    // A window that shows a sheet editor owned elsewhere (which must outlive it): the
    // comparison program's sheet exists from the start, its window only once a comparison
    // program is opened.
    StepEditorWindow(AppContext& context, int USRCMP, StepSheetEditor& editor, QWidget* parent = nullptr);
    ~StepEditorWindow() override;

    // The sheet editor of the program USRCMP, over the context's catalogues and settings.
    static std::unique_ptr<StepSheetEditor> makeEditor(AppContext& context, int USRCMP);

    int USRCMP() const { return m_usrcmp; }
    bool isComparison() const { return m_usrcmp == 1; }
    StepSheetEditor& editor() { return *m_editor; }
    QTableView* grid() const { return m_grid; }
    StepTableModel* model() const { return m_model; }
    StepToolBar* toolBar() const { return m_toolBar; }
    QMenu* contextMenu() const { return m_contextMenu; }
    // Cut, copy, paste, insert, rem, the find and the pulse window.
    EditorCommands* commands() const { return m_commands.get(); }

    // Toolbar buttons and drop-down items, for the document to enable and connect.
    QAction* action(const QString& key) const;
    QAction* menuAction(const QString& buttonKey, const QString& itemKey) const;
    static QString GetButtonCaption(const QString& key);
    void ShowButtonCaption(bool show);

    // The function dialogs this window opens on F2; replaced by tests with a script.
    void setFunctionChooser(FunctionChooser chooser);
    void setCategoryChooser(CategoryChooser chooser);
    FunctionChooserDialogs* functionDialogs() const { return m_dialogs.get(); }

    // Title: file name, "***" for a program read from the machine, "Refer:" in front for
    // the comparison window, " written by " and the author when there is one.
    void setDocumentPath(const QString& path);
    void setFromMachine(bool fromMachine);
    void setAuthor(const QString& author);
    QString CreateMyCaption() const;
    // Sets the window title to a caption, marked when the program has unsaved changes
    // (setWindowModified).
    void setCaption(const QString& caption);
    // Redo is offered while the document has something to redo.
    void setRedoAvailable(bool available);

    // The changed flag of the document (set by every accepted edit).
    bool IsChanged() const { return m_changed; }
    void setChanged(bool changed) { m_changed = changed; }

    // Hint pane.
    bool HintVisible() const;
    void setHintVisible(bool visible);
    QString hintText() const;
    void PrintHint();

    // Remark column width from the settings (twips), hidden when switched off.
    void ControlRemarkColumn();
    int twipsToPixels(int twips) const;
    int pixelsToTwips(int pixels) const;

    // Warns (message 70) when the screen shows fewer than 16 bits of colour.
    void CheckColorCount();

    // F2 or a double click on a cell.
    void F2Op(int row, int col);

    // Asked when the window is about to close; false keeps it open (the user editor
    // cannot be closed on its own).
    void setCloseGuard(std::function<bool()> guard) { m_closeGuard = std::move(guard); }

Q_SIGNALS:
    void commandTriggered(const QString& key);
    // The window was closed (its close was not refused).
    void closed();
    void menuTriggered(const QString& buttonKey, const QString& itemKey);
    void changed();
    void pulseRefreshRequested(int row);
    void functionChanged(int row, int col);
    // Emitted (directly) before the editor clears a block, so that the document can take
    // its undo snapshot of the sheet as it was.
    void snapshotRequested();
    // An accepted cell edit changed the sheet; cellsBefore is the sheet as it found it.
    void cellEdited(const QByteArray& cellsBefore);
    // The window is being destroyed and the editor it owns (with its sheet) goes with it;
    // emitted first thing, while the sheet is still whole. Never for a borrowed editor.
    void ownEditorGoing();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    StepEditorWindow(AppContext& context, int USRCMP, StepSheetEditor* external, QWidget* parent);
    void buildGrid();
    void buildHintPane();
    void buildContextMenu();
    void connectToolbar();
    // Ends an open cell edit before the command key runs; false when the command must
    // not run (the typed text was refused).
    bool finishCellEdit(const QString& key);
    void applyColumnWidths();
    void wireHooks();
    void onSectionResized(int logicalIndex, int newSize);
    void updateTitle();
    void paintCorner();

    AppContext& m_context;
    int m_usrcmp;
    std::unique_ptr<StepSheetEditor> m_ownEditor;
    StepSheetEditor* m_editor = nullptr;
    std::unique_ptr<FunctionChooserDialogs> m_dialogs;
    FunctionChooser m_chooser;
    CategoryChooser m_categoryChooser;
    StepToolBar* m_toolBar = nullptr;
    QTableView* m_grid = nullptr;
    StepTableModel* m_model = nullptr;
    StepDelegate* m_delegate = nullptr;
    QWidget* m_picHint = nullptr;
    QLabel* m_lblHint = nullptr;
    QMenu* m_contextMenu = nullptr;
    QString m_path;
    QString m_author;
    bool m_fromMachine = false;
    bool m_changed = false;
    bool m_layingOut = false; // column widths set by the window, not the user
    std::function<bool()> m_closeGuard;
    QAbstractButton* m_corner = nullptr; // the corner above the step numbers
    std::unique_ptr<EditorCommands> m_commands;
    // Keys, clicks and typed text in the grid, and the current cell kept with the sheet's.
    std::unique_ptr<StepGridInput> m_input;
};

} // namespace vkm
