#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

namespace vkm {

struct AppContext;
class FunctionChooserDialogs;
class StepEditorWindow;
class fFind;
class fPulse;

// The commands of a step editor window that work on more than one cell and its tool
// windows: cut, copy, paste, insert and rem on the selection (the clipboard is the
// desktop's), the find window, and the pulse window that follows the current cell. The
// sheet editor decides; this connects the buttons, keys and windows to it.
class EditorCommands : public QObject {
    Q_OBJECT
public:
    EditorCommands(AppContext& context, StepEditorWindow& window);
    ~EditorCommands() override;

    // Runs a toolbar command; false for a key that is not one of these.
    bool run(const QString& key);

    // keyFind: the find window on the current cell.
    fFind* FindOp();
    // keyPULSE: the pulse window for the current row.
    fPulse* openPulse();
    // After the current cell moved or a cell was edited: the pulse window follows.
    void PulseOp(int row, int col);

    fFind* findWindow() const;
    fPulse* pulseWindow() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void wireEditor();
    void reportReplaced();

    AppContext& m_context;
    StepEditorWindow& m_window;
    QPointer<fFind> m_find;
    QPointer<fPulse> m_pulse;
    // The comparison window has no selection dialogs of its own: the find window's browse
    // buttons get these.
    std::unique_ptr<FunctionChooserDialogs> m_browseDialogs;
    int m_selectionListener = 0;
    int m_replacedCount = 0; // told when the editor is active again
};

} // namespace vkm
