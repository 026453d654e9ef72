#include "documentcontroller.h"

#include "appcontext.h"
#include "base/paths.h"
#include "base/prompter.h"
#include "document/machinesend.h"
#include "fcomm.h"
#include "finpmemo.h"
#include "finppassword.h"
#include "mainwindow.h"
#include "printcontroller.h"
#include "stepeditorwindow.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <QTableView>
#include <QUrl>

namespace vkm {

DocumentController::DocumentController(AppContext& context, StepSheetEditor& userEditor,
                                       StepSheetEditor& comparisonEditor, QWidget* dialogParent,
                                       QMdiArea* mdiArea)
    : m_context(context),
      m_documents(std::make_unique<Documents>(*context.prompter, context.settings, *context.selout,
                                              *context.selinp, userEditor, comparisonEditor,
                                              context.initialPath)),
      m_dialogParent(dialogParent), m_mdi(mdiArea) {
    DocumentHooks& hooks = m_documents->hooks();
    hooks.memoWindowOpen = [this] { return !m_memo.isNull(); };
    hooks.inputPassword = [this](int usrcmp, const QString& password, const QString& author) {
        return fInpPassword::InpPwd(usrcmp, password, author, *m_context.prompter, m_dialogParent);
    };
    hooks.readFromMachine = [this](int) {
        return fComm::readFromMachine(m_link, *m_context.prompter, m_context.settings,
                                      CommTransfer::StepProgram, false, m_dialogParent);
    };
    m_opener = [](const QString& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); };
    m_dataLookup = [](const QString& relative) { return paths::dataPath(relative); };
    m_print = std::make_unique<PrintController>(context, *m_documents, dialogParent);
}

DocumentController::~DocumentController() {
    shutdown();
}

void DocumentController::setWindowHooks(const EditorWindowHooks& w) {
    DocumentHooks& hooks = m_documents->hooks();
    hooks.titleChanged = w.setTitle;
    hooks.focusGrid = w.focusGrid;
    hooks.comparisonLoaded = w.comparisonLoaded;
    hooks.showComparison = w.showComparison;
    hooks.tileHorizontally = w.tileHorizontally;
    hooks.loadForms = w.loadForms;
}

void DocumentController::attachWindow(int usrcmp, StepEditorWindow& w) {
    connect(&w, &StepEditorWindow::commandTriggered, this,
            [this, usrcmp](const QString& key) { handleKey(usrcmp, key, false); });
    connect(&w, &StepEditorWindow::menuTriggered, this,
            [this, usrcmp](const QString&, const QString& item) { handleKey(usrcmp, item, true); });
    // Programs come from and go to the machine through the user editor only.
    for (const char* button : {"keyOPEN", "keySAVE"}) {
        for (const char* item : {"keyREAD_USER2", "keyREAD_HIKAKU2", "keySAVE2"}) {
            if (QAction* a = w.menuAction(QLatin1String(button), QLatin1String(item)))
                a->setEnabled(usrcmp == 0);
        }
    }
}

StepEditorWindow* DocumentController::comparisonWindow() const {
    return m_comparisonWindow.data();
}

StepEditorWindow* DocumentController::window(int usrcmp) {
    if (usrcmp == 0)
        return m_userWindow;
    if (!m_comparisonWindow && m_makeComparison) {
        m_comparisonWindow = m_makeComparison();
        if (m_comparisonWindow) {
            attachWindow(1, *m_comparisonWindow);
            // Closing the comparison window unloads it: its temporary image goes with it.
            connect(m_comparisonWindow, &StepEditorWindow::closed, this,
                    [this] { m_documents->comparison().DeleteTemporaryFiles(); });
        }
    }
    return m_comparisonWindow;
}

void DocumentController::attachWindows(StepEditorWindow& user, ComparisonWindowFactory comparison,
                                       MainWindow* mainWindow) {
    m_userWindow = &user;
    m_makeComparison = std::move(comparison);
    attachWindow(0, user);
    connect(&user, &StepEditorWindow::changed, this, [this] { m_documents->user().setChanged(true); });
    // Clearing a block of cells takes an undo snapshot of the sheet as it was.
    connect(&user, &StepEditorWindow::snapshotRequested, this, [this] { m_documents->user().SaveCurrent(); });
    // An accepted cell edit can be undone: the sheet as it was is kept in memory.
    connect(&user, &StepEditorWindow::cellEdited, this,
            [this](const QByteArray& cellsBefore) { m_documents->user().recordCellEdit(cellsBefore); });
    // The user editor closes only with the application, once its question was answered.
    user.setCloseGuard([this] {
        if (m_applicationClosing)
            return true;
        refuseUserEditorClose();
        return false;
    });
    EditorWindowHooks hooks;
    hooks.setTitle = [this](int usrcmp, const QString& title) {
        if (StepEditorWindow* w = window(usrcmp))
            w->setCaption(title);
    };
    hooks.focusGrid = [this](int usrcmp) {
        if (StepEditorWindow* w = window(usrcmp))
            w->grid()->setFocus();
    };
    hooks.comparisonLoaded = [this] { return m_comparisonWindow && m_comparisonWindow->isVisible(); };
    hooks.showComparison = [this] {
        StepEditorWindow* comparison = window(1);
        if (!comparison)
            return;
        auto* frame = qobject_cast<QMdiSubWindow*>(comparison->parentWidget());
        // A closed sub-window leaves the area's list of windows: it is put back, so that
        // arranging the windows places it again.
        if (frame && m_mdi && !m_mdi->subWindowList().contains(frame))
            m_mdi->addSubWindow(frame);
        if (frame)
            frame->show();
        comparison->show();
    };
    if (mainWindow) {
        hooks.tileHorizontally = [mainWindow] { mainWindow->tileHorizontally(); };
        mainWindow->setCanClose([this] {
            m_applicationClosing = canCloseApplication();
            return m_applicationClosing;
        });
    }
    setWindowHooks(hooks);
    m_mainWindow = mainWindow;
    // The status bar is there from the start, so that the first save does not shrink the
    // area the editors are arranged in.
    if (mainWindow)
        mainWindow->statusBar();
    DocumentHooks& state = m_documents->hooks();
    state.stateChanged = [this](int usrcmp) { showDocumentState(usrcmp); };
    state.saved = [this](const QString& path) {
        if (m_mainWindow)
            m_mainWindow->statusBar()->showMessage(
                QStringLiteral("Saved to %1").arg(QDir::toNativeSeparators(path)));
    };
    showDocumentState(0);
}

void DocumentController::showDocumentState(int usrcmp) {
    // The comparison window is not made for this: it shows its state once it exists.
    StepEditorWindow* w = usrcmp == 0 ? m_userWindow.data() : m_comparisonWindow.data();
    if (!w)
        return;
    const StepDocument& doc = m_documents->document(usrcmp);
    w->setWindowModified(doc.IsChanged());
    w->setRedoAvailable(doc.canRedo());
}

QStringList DocumentController::documentKeys() {
    return {
        QStringLiteral("keyNew"),          QStringLiteral("keyOPEN"),       QStringLiteral("keyREAD_USER1"),
        QStringLiteral("keyREAD_HIKAKU1"), QStringLiteral("keySAVE"),       QStringLiteral("keyOVERWRITE"),
        QStringLiteral("keySAVEAS"),       QStringLiteral("InitialPath"),   QStringLiteral("keyUNDO"),
        QStringLiteral("keyPASS"),         QStringLiteral("keyHelpManual"), QStringLiteral("keyREAD_USER2"),
        QStringLiteral("keyREAD_HIKAKU2"), QStringLiteral("keySAVE2"),      QStringLiteral("keyHelp"),
        QStringLiteral("keyREDO")};
}

bool DocumentController::handleKey(int usrcmp, const QString& key, bool fromMenu) {
    if (key == QLatin1String("keyREM")) {
        if (!fromMenu)
            return false; // the remark button of the grid, not the memo
        openMemoWindow(usrcmp);
        return true;
    }
    if (key == QLatin1String("keyPRINT")) {
        m_print->PrintOp(usrcmp); // both editors print
        return true;
    }
    if (!documentKeys().contains(key))
        return false;
    StepDocument& doc = m_documents->document(usrcmp);
    // The comparison editor shows a program; only copying, finding, printing, the memo,
    // the password dialog (read-only), the help and the manual work there.
    const bool userOnly = key != QLatin1String("keyPASS") && key != QLatin1String("keyHelpManual") &&
                          key != QLatin1String("keyHelp");
    if (usrcmp != 0 && userOnly)
        return true;
    if (key == QLatin1String("keyNew")) {
        doc.NewOp();
    } else if (key == QLatin1String("keyOPEN") || key == QLatin1String("keyREAD_USER1")) {
        bool cancel = false;
        doc.SaveCheck(cancel, false);
        if (!cancel)
            doc.ReadStep(0, 0, QString());
    } else if (key == QLatin1String("keyREAD_USER2")) {
        bool cancel = false;
        doc.SaveCheck(cancel, false);
        if (!cancel)
            doc.ReadStep(0, 1, QString());
    } else if (key == QLatin1String("keyREAD_HIKAKU1")) {
        doc.ReadStep(1, 0, QString());
    } else if (key == QLatin1String("keyREAD_HIKAKU2")) {
        doc.ReadStep(1, 1, QString());
    } else if (key == QLatin1String("keySAVE2")) {
        SaveToMachine();
    } else if (key == QLatin1String("keySAVE") || key == QLatin1String("keyOVERWRITE")) {
        doc.SaveStepData(false);
    } else if (key == QLatin1String("keySAVEAS")) {
        doc.SaveStepData(true);
    } else if (key == QLatin1String("InitialPath")) {
        m_documents->InitialPathCommand();
    } else if (key == QLatin1String("keyUNDO")) {
        doc.UndoCommand();
    } else if (key == QLatin1String("keyREDO")) {
        doc.RedoCommand();
    } else if (key == QLatin1String("keyPASS")) {
        doc.InputPassword();
    } else if (key == QLatin1String("keyHelpManual")) {
        openManual();
    } else if (key == QLatin1String("keyHelp")) {
        openHelp();
    }
    return true;
}

bool DocumentController::SaveToMachine() {
    StepDocument& doc = m_documents->user();
    const QString file =
        ProgramFileToSend(doc.editor(), doc.program(), *m_context.prompter, m_documents->clock());
    if (file.isEmpty())
        return false;
    return fComm::writeToMachine(m_link, *m_context.prompter, m_context.settings, CommTransfer::StepProgram,
                                 file, m_dialogParent);
}

fInpMemo* DocumentController::openMemoWindow(int usrcmp) {
    if (m_memo) {
        if (auto* sub = qobject_cast<QMdiSubWindow*>(m_memo->parentWidget()))
            m_mdi->setActiveSubWindow(sub);
        m_memo->raise();
        return m_memo;
    }
    auto* memo = new fInpMemo(*m_documents, usrcmp, m_context.settings);
    memo->setAttribute(Qt::WA_DeleteOnClose);
    m_memo = memo;
    if (m_mdi) {
        const QSize stored = memo->size(); // Memo_Width and Memo_Height
        // The note is read beside the grid while the steps are edited: it stays in front
        // of the editor windows when one of them is clicked.
        QMdiSubWindow* sub = m_mdi->addSubWindow(memo, Qt::SubWindow | Qt::WindowStaysOnTopHint);
        sub->setAttribute(Qt::WA_DeleteOnClose);
        connect(memo, &fInpMemo::closed, sub, &QWidget::close);
        sub->show();
        // The stored size is the note's own, without the frame around it.
        if (sub->layout())
            sub->layout()->activate();
        sub->resize(sub->size() + stored - memo->size());
    } else {
        memo->setParent(m_dialogParent, Qt::Tool);
        memo->show();
    }
    return memo;
}

void DocumentController::openHelp() {
    openDeliveredFile(paths::kHelpIndex, 139);
}

void DocumentController::openManual() {
    // The manual is there: only a missing PDF viewer can keep it closed.
    openDeliveredFile(paths::kHelpManual, 157);
}

void DocumentController::openDeliveredFile(const char* relative, int cannotOpenMessage) {
    const QString path = m_dataLookup(QLatin1String(relative));
    if (!QFileInfo(path).isFile())
        m_context.prompter->showMessage(139, 2);
    else if (!m_opener(path))
        m_context.prompter->showMessage(cannotOpenMessage, 2);
}

void DocumentController::shutdown() {
    if (m_shutDown)
        return;
    m_shutDown = true;
    if (m_memo)
        m_memo->close(); // stores its size and font size on the way out
    m_documents->shutdown();
}

} // namespace vkm
