#pragma once

#include "appcontext.h"

#include <QString>
#include <functional>
#include <memory>

class QLockFile;
class QMdiSubWindow;

namespace vkm {

class CCustomInps;
class CustomizeEasyController;
class DifferenceHighlight;
class DocumentController;
class StepEditorWindow;
class CCustomOuts;
class CSelectKino;
class CSelections;
class ErrorDialogSink;
class GuiPrompter;
class MainWindow;
class Settings;
class StepSheetEditor;

struct StartupOptions {
    QString archiveOverride; // --archive PATH; empty: the usual places
    QString commandLine;     // what is left of the command line, for the program to open
    // Injected by tests; nullptr: the user's native store and real dialogs.
    Settings* settings = nullptr;
    Prompter* prompter = nullptr;
    // The per-user lock against a second instance; empty: in the user's runtime folder.
    QString lockFile;
    // Width of the screen in pixels; empty: the primary screen's.
    std::function<int()> screenWidth;
    // Error reports go to a dialog and the per-user log; off in tests that capture them.
    bool installErrorSink = true;
};

// Brings the editor up in the machine tools' order and takes it down again: refuses a
// second instance and narrow screens, checks the setting archive, makes sure of the
// settings, reads the catalogues, shows the user editor and opens the program named on the
// command line. Owns the shared objects for the whole run and releases them in the order
// they were created.
class Startup {
public:
    explicit Startup(StartupOptions options = {});
    ~Startup();
    Startup(const Startup&) = delete;
    Startup& operator=(const Startup&) = delete;

    // Runs the start-up. False when the program must end (a message has been shown).
    bool run();

    MainWindow* mainWindow() const { return m_window.get(); }
    AppContext& context() { return m_context; }
    QMdiSubWindow* userEditor() const { return m_userEditor; }
    StepEditorWindow* userEditorWindow() const { return m_userWindow; }
    // nullptr until a comparison program is first opened.
    StepEditorWindow* comparisonEditorWindow() const;
    DocumentController* documents() const { return m_documents.get(); }
    // The easy customisation of the main window.
    CustomizeEasyController* customizeEasy() const { return m_customize.get(); }
    // The marks of the differences between the user and the comparison program.
    DifferenceHighlight* differences() const { return m_differences.get(); }
    // True when every initial file was read.
    bool initialFilesRead() const { return m_initialFilesRead; }

    // Opens a program file as the user program (the document side plugs in here).
    void setOpenProgram(std::function<void(const QString&)> open) { m_openProgram = std::move(open); }

    // `HikisuOp`: opens the file the command line names, when it exists.
    void HikisuOp(const QString& commandLine);

    static QString defaultLockFile();
    // Pixels to twips on the screen of the main window.
    static int pixelsToTwips(int pixels);

private:
    bool acquireInstanceLock();
    void CreateActiveX();
    bool InitMainWindow();
    void InitSettings();
    void placeMainWindow();
    void showMainWindow();
    void readInitialFiles();
    // The user editor (shown), the comparison program's sheet (its window is made when a
    // comparison program is first opened), and the document commands of both.
    QMdiSubWindow* createUserEditor();
    StepEditorWindow* makeComparisonWindow();
    void ReleaseActiveX();

    StartupOptions m_options;
    AppContext m_context;
    std::unique_ptr<QLockFile> m_lock;
    std::unique_ptr<Settings> m_ownSettings;
    std::unique_ptr<GuiPrompter> m_ownPrompter;
    std::unique_ptr<ErrorDialogSink> m_errorSink;
    std::unique_ptr<CSelections> m_selout;
    std::unique_ptr<CSelections> m_selinp;
    std::unique_ptr<CSelectKino> m_selectKino;
    std::unique_ptr<CCustomInps> m_cusI;
    std::unique_ptr<CCustomOuts> m_cusO;
    std::unique_ptr<CSelections> m_selCusInp;
    std::unique_ptr<CSelections> m_selCusOut;
    std::unique_ptr<StepSheetEditor> m_comparisonEditor; // outlives the windows
    std::unique_ptr<MainWindow> m_window;
    QMdiSubWindow* m_userEditor = nullptr;
    StepEditorWindow* m_userWindow = nullptr;
    std::unique_ptr<DocumentController> m_documents;
    std::unique_ptr<CustomizeEasyController> m_customize;
    std::unique_ptr<DifferenceHighlight> m_differences;
    bool m_initialFilesRead = false;
    std::function<void(const QString&)> m_openProgram;
};

} // namespace vkm
