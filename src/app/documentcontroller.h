#pragma once

#include "document/documents.h"
#include "link/commtransfer.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

class QWidget;
class QMdiArea;

namespace vkm {

struct AppContext;
class StepSheetEditor;
class fInpMemo;
class MainWindow;
class PrintController;
class StepEditorWindow;

// What the controller needs of the editor windows, filled in by whoever creates them.
struct EditorWindowHooks {
    std::function<void(int usrcmp, const QString& title)> setTitle;
    std::function<void(int usrcmp)> focusGrid;
    std::function<bool()> comparisonLoaded;
    std::function<void()> showComparison;
    std::function<void()> tileHorizontally;
    std::function<void(int usrcmp)> loadForms;
};

// The document commands of the two step editors: new, open, open for comparison, save,
// save as, read/save path, undo, memo window, password and author, the manual; the
// question before the application closes; the program named on the command line.
class DocumentController : public QObject {
    Q_OBJECT
public:
    // mdiArea: where the memo window is shown beside the editors (nullptr: a tool window).
    DocumentController(AppContext& context, StepSheetEditor& userEditor, StepSheetEditor& comparisonEditor,
                       QWidget* dialogParent = nullptr, QMdiArea* mdiArea = nullptr);
    ~DocumentController() override;

    Documents& documents() { return *m_documents; }
    void setWindowHooks(const EditorWindowHooks& hooks);

    // Makes the comparison editor's window (hidden) when a comparison program is first
    // opened.
    using ComparisonWindowFactory = std::function<StepEditorWindow*()>;

    // Connects the toolbar commands, changed flags, titles and focus of the two editor
    // windows and the close question of the main window; the machine items work in the
    // user editor only. The comparison window is connected when the factory has made it.
    void attachWindows(StepEditorWindow& user, ComparisonWindowFactory comparison, MainWindow* mainWindow);
    // The comparison editor's window; nullptr until a comparison program was opened.
    StepEditorWindow* comparisonWindow() const;

    // Runs the command of a toolbar button or menu item of the editor usrcmp. fromMenu
    // tells the memo item ("keyREM" under the info button) from the remark button of the
    // same key. True when the key is a document command (handled or disabled here).
    bool handleKey(int usrcmp, const QString& key, bool fromMenu);
    static QStringList documentKeys();

    // keySAVE2: message 160, the checks, then the program goes to the machine through the
    // transfer dialog. True when it was written.
    bool SaveToMachine();
    // The machine link of the run: the kind of the machine last read, the times and the
    // line (tests put their own behind it).
    MachineLink& machineLink() { return m_link; }

    // The memo window of the editor usrcmp (opened once; raised when open).
    fInpMemo* openMemoWindow(int usrcmp);
    fInpMemo* memoWindow() const { return m_memo; }

    // The user guide ("keyHelp") and the printable manual ("keyHelpManual"), opened with
    // the desktop's viewer. A missing file gives message 139; a manual that no program
    // could open, 157.
    void openHelp();
    void openManual();
    // Tests replace the desktop's opener of files and the look-up of the delivered files
    // (paths::dataPath).
    void setOpener(std::function<bool(const QString&)> opener) { m_opener = std::move(opener); }
    void setDataLookup(std::function<QString(const QString&)> lookup) { m_dataLookup = std::move(lookup); }

    // The print command of both editors ("keyPRINT").
    PrintController& printController() { return *m_print; }

    // The main window's close question: false keeps the application open.
    bool canCloseApplication() { return m_documents->canCloseApplication(); }
    // The user editor's own close button.
    void refuseUserEditorClose() { m_documents->refuseUserEditorClose(); }
    // Opens the program named on the command line.
    void HikisuOp(const QString& commandLine) { m_documents->HikisuOp(commandLine); }
    // Unloads the memo window and removes both editors' temporary files.
    void shutdown();

private:
    // Connects one editor window's commands (both editors alike).
    void attachWindow(int usrcmp, StepEditorWindow& window);
    StepEditorWindow* window(int usrcmp);
    // The window's unsaved-changes mark and its Redo follow the document.
    void showDocumentState(int usrcmp);
    // A file delivered with the editor (relative to the data folder), opened with the
    // desktop's viewer: message 139 when it is missing, cannotOpenMessage when no viewer
    // opened it.
    void openDeliveredFile(const char* relative, int cannotOpenMessage);

    AppContext& m_context;
    MachineLink m_link;
    std::unique_ptr<Documents> m_documents;
    std::unique_ptr<PrintController> m_print;
    QWidget* m_dialogParent;
    QMdiArea* m_mdi;
    QPointer<fInpMemo> m_memo;
    QPointer<StepEditorWindow> m_userWindow;
    QPointer<StepEditorWindow> m_comparisonWindow;
    QPointer<MainWindow> m_mainWindow; // its status bar tells where a save went
    ComparisonWindowFactory m_makeComparison;
    std::function<bool(const QString&)> m_opener;
    std::function<QString(const QString&)> m_dataLookup;
    bool m_shutDown = false;
    bool m_applicationClosing = false; // the close question was answered: the editors may go
};

} // namespace vkm
