#pragma once

#include "document/documenthooks.h"
#include "document/stepdocument.h"
#include "model/csteps.h"

#include <QString>
#include <memory>

namespace vkm {

class Prompter;
class Settings;
class CSelections;
class StepSheetEditor;

// The two documents of a run and what they share: the user and the comparison program,
// their file paths and the folder the dialogs start in.
class Documents {
public:
    // settings may be null (no InitialPath is stored then).
    Documents(Prompter& prompter, Settings* settings, const CSelections& selout, const CSelections& selinp,
              StepSheetEditor& userEditor, StepSheetEditor& comparisonEditor, QString initialPath = {});
    ~Documents();

    StepDocument& user() { return *m_user; }
    StepDocument& comparison() { return *m_comparison; }
    StepDocument& document(int usrcmp) { return usrcmp == 0 ? *m_user : *m_comparison; }

    CSteps& userProgram() { return m_userProgram; }
    CSteps& comparisonProgram() { return m_comparisonProgram; }
    CSteps& program(int usrcmp) { return usrcmp == 0 ? m_userProgram : m_comparisonProgram; }
    QString& filePath(int usrcmp) { return usrcmp == 0 ? m_userFilePath : m_comparisonFilePath; }
    QString userFilePath() const { return m_userFilePath; }
    QString comparisonFilePath() const { return m_comparisonFilePath; }

    QString initialPath() const { return m_initialPath; }
    // Stores the initial path in "FileInfo"/InitialPath.
    void SaveInitialPath(const QString& path);
    // The InitialPath command: folder dialog (text 189); a chosen folder becomes the
    // initial path. False when cancelled.
    bool InitialPathCommand();

    // Opens the file named on the command line (quoted or not) as the user program.
    bool HikisuOp(const QString& commandLine);
    static QString commandLineFile(const QString& commandLine);

    // Closing the application: the question about unsaved changes of the user program.
    // False (stay open) when it was cancelled or the save failed.
    bool canCloseApplication();
    // The user editor's own close button: message 62, and it stays.
    void refuseUserEditorClose();
    // Unload: both editors remove their temporary files.
    void shutdown();

    Prompter& prompter() { return m_prompter; }
    const CSelections& selout() const { return m_selout; }
    const CSelections& selinp() const { return m_selinp; }
    DocumentHooks& hooks() { return m_hooks; }
    void setHooks(DocumentHooks hooks) { m_hooks = std::move(hooks); }
    void setClock(Clock clock) { m_clock = std::move(clock); }
    const Clock& clock() const { return m_clock; }

private:
    Prompter& m_prompter;
    Settings* m_settings;
    const CSelections& m_selout;
    const CSelections& m_selinp;
    CSteps m_userProgram;
    CSteps m_comparisonProgram;
    QString m_userFilePath;
    QString m_comparisonFilePath;
    QString m_initialPath;
    DocumentHooks m_hooks;
    Clock m_clock = systemClock();
    std::unique_ptr<StepDocument> m_user;
    std::unique_ptr<StepDocument> m_comparison;
};

// The acceptance test of a step program file: extension GSP (any case; message 8) and a
// size of 5950 or 6400 bytes (message 155 naming 5950). An empty path passes silently.
bool ExactFile(const QString& path, Prompter& prompter);

} // namespace vkm
