#include "startup.h"

#include "base/hikisu.h"
#include "base/messages.h"
#include "base/paths.h"
#include "base/regdata.h"
#include "base/settings.h"
#include "base/tempfolder.h"
#include "catalogue/cselections.h"
#include "catalogue/cselectkino.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"
#include "custom/initialfiles.h"
#include "customizeeasycontroller.h"
#include "differencehighlight.h"
#include "documentcontroller.h"
#include "errordialogsink.h"
#include "finpmemo.h"
#include "guiprompter.h"
#include "mainwindow.h"
#include "sheet/stepsheeteditor.h"
#include "stepeditorwindow.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QLockFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QStandardPaths>
#include <QTableView>

namespace vkm {

namespace {
constexpr int kMinimumScreenWidth = 1024;

int primaryScreenWidth() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().width() : 0;
}

// The programs' own fields (author, memo, memo file, password) are compared beside the
// grids; the documents say when they may have changed.
void watchProgramFields(DifferenceHighlight& differences, Documents& documents) {
    differences.setPrograms(&documents.userProgram(), &documents.comparisonProgram());
    documents.hooks().programFieldsChanged = [d = &differences](int) { d->programFieldsChanged(); };
}

} // namespace

Startup::Startup(StartupOptions options) : m_options(std::move(options)) {}

Startup::~Startup() {
    ReleaseActiveX();
}

QString Startup::defaultLockFile() {
    // One lock per user, in a folder that is the user's own: the runtime folder (Qt
    // accepts it only when it belongs to the user and nobody else may enter it), else the
    // per-user data folder. Never the shared temporary folder, where the first user's
    // lock would keep every other user of the machine out. The name carries the
    // executable's name so that differently named copies do not block each other.
    QString dir = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (dir.isEmpty()) {
        dir = paths::userDataFolder();
        QDir().mkpath(dir);
    }
    return dir + QLatin1Char('/') + messageBoxTitle() + QStringLiteral(".lock");
}

int Startup::pixelsToTwips(int pixels) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return vkm::pixelsToTwips(pixels, screen ? screen->logicalDotsPerInchX() : 96.0);
}

bool Startup::run() {
    m_context.prompter = m_options.prompter;
    if (!m_context.prompter) {
        m_ownPrompter = std::make_unique<GuiPrompter>();
        m_context.prompter = m_ownPrompter.get();
    }
    // Every temporary file of the run lives in the private folder: without it there is
    // nowhere safe to unpack, open or save, so the start ends here with the reason. This
    // comes before the lock: finding the lock's folder falls back on the temporary folder
    // too, and an unusable TMPDIR would put that at the root of the file system.
    if (!TempFolder::instance().isValid()) {
        m_context.prompter->showText(TempFolder::instance().failureText(), 1);
        return false;
    }
    if (!acquireInstanceLock()) {
        m_context.prompter->showMessage(83, 2);
        return false;
    }
    CreateActiveX();
    if (!InitMainWindow())
        return false;
    if (!checkArchivePresent(m_selectKino->archivePath(), *m_context.prompter))
        return false;
    InitSettings();
    placeMainWindow();
    readInitialFiles();
    m_userEditor = createUserEditor();
    showMainWindow();
    m_window->tileHorizontally();
    HikisuOp(m_options.commandLine);
    return true;
}

bool Startup::acquireInstanceLock() {
    const QString path = m_options.lockFile.isEmpty() ? defaultLockFile() : m_options.lockFile;
    m_lock = std::make_unique<QLockFile>(path);
    m_lock->setStaleLockTime(0); // a crashed run's lock is taken over once its process is gone
    return m_lock->tryLock(0);
}

void Startup::CreateActiveX() {
    m_context.settings = m_options.settings;
    if (!m_context.settings) {
        m_ownSettings = std::make_unique<Settings>(messageBoxTitle());
        m_context.settings = m_ownSettings.get();
    }
    if (m_options.installErrorSink) {
        m_errorSink = std::make_unique<ErrorDialogSink>(*m_context.prompter, paths::errorLogFile());
        ErrorReporter::setSink(m_errorSink.get());
    }
    m_selout = std::make_unique<CSelections>();
    m_selinp = std::make_unique<CSelections>();
    m_selectKino = std::make_unique<CSelectKino>(m_context.settings, *m_context.prompter,
                                                 paths::settingArchive(m_options.archiveOverride));
    m_cusI = std::make_unique<CCustomInps>();
    m_cusO = std::make_unique<CCustomOuts>();
    m_selCusInp = std::make_unique<CSelections>();
    m_selCusOut = std::make_unique<CSelections>();
    m_context.selout = m_selout.get();
    m_context.selinp = m_selinp.get();
    m_context.selectKino = m_selectKino.get();
    m_context.cusI = m_cusI.get();
    m_context.cusO = m_cusO.get();
    m_context.selCusInp = m_selCusInp.get();
    m_context.selCusOut = m_selCusOut.get();
}

bool Startup::InitMainWindow() {
    m_window = std::make_unique<MainWindow>(m_context.settings);
    m_window->setPrompter(m_context.prompter);
    if (auto* gui = dynamic_cast<GuiPrompter*>(m_context.prompter))
        gui->setParentWidget(m_window.get());
    const int width = m_options.screenWidth ? m_options.screenWidth() : primaryScreenWidth();
    if (width < kMinimumScreenWidth) {
        m_context.prompter->showMessage(132, 2);
        return false;
    }
    return true;
}

void Startup::InitSettings() {
    Settings& settings = *m_context.settings;
    // The easy customisation window opens inside the right edge of the main window, which
    // is about to fill the work area.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int widthPixels = screen ? screen->availableGeometry().width() : m_window->width();
    if (!settings.CheckRegData(pixelsToTwips(widthPixels)))
        m_context.prompter->showMessage(2, 1);
    settings.writeCompanionPath(QDir::toNativeSeparators(paths::exeFolder()));
    m_context.initialPath = settings.value(keys::InitialPath);
    if (!applyCodePageSetting(settings))
        reportError(ErrInvalidCall, QStringLiteral("InitSettings"),
                    QStringLiteral("Unknown code page: ") + settings.value(keys::CodePage));
}

void Startup::placeMainWindow() {
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        m_window->setGeometry(screen->availableGeometry());
}

// Shown once everything in it exists, so that it is laid out and painted once.
void Startup::showMainWindow() {
    m_window->show();
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    // The whole window, frame included, fills the work area; the frame's size is known
    // only once the window exists on the screen.
    const QRect area = screen->availableGeometry();
    const QMargins frame(m_window->geometry().left() - m_window->frameGeometry().left(),
                         m_window->geometry().top() - m_window->frameGeometry().top(),
                         m_window->frameGeometry().right() - m_window->geometry().right(),
                         m_window->frameGeometry().bottom() - m_window->geometry().bottom());
    if (!frame.isNull())
        m_window->setGeometry(area.marginsRemoved(frame));
}

void Startup::readInitialFiles() {
    m_initialFilesRead = ReadInitialFiles(*m_selectKino, *m_selout, *m_selinp, *m_cusI, *m_cusO, *m_selCusInp,
                                          *m_selCusOut, *m_context.prompter);
}

QMdiSubWindow* Startup::createUserEditor() {
    QMdiArea* mdi = m_window->mdiArea();
    m_userWindow = new StepEditorWindow(m_context, 0);
    QMdiSubWindow* window = mdi->addSubWindow(m_userWindow);
    // The comparison editor's sheet exists from the start; its window is shown only when a
    // comparison program is opened, and is made then, so that the first appearance of the
    // editor does not wait for a second grid nobody sees.
    m_comparisonEditor = StepEditorWindow::makeEditor(m_context, 1);
    m_documents = std::make_unique<DocumentController>(m_context, m_userWindow->editor(), *m_comparisonEditor,
                                                       m_window.get(), mdi);
    m_documents->attachWindows(
        *m_userWindow, [this] { return makeComparisonWindow(); }, m_window.get());
    m_differences = std::make_unique<DifferenceHighlight>(m_userWindow->editor(), *m_comparisonEditor);
    m_differences->attach(*m_userWindow);
    watchProgramFields(*m_differences, m_documents->documents());
    m_customize =
        std::make_unique<CustomizeEasyController>(m_context, m_documents->machineLink(), mdi, m_window.get());
    m_window->setCustomizeEasyHandler([this](int kind) { m_customize->ReadCustomizeEasy(kind); });
    if (!m_openProgram)
        m_openProgram = [this](const QString& file) { m_documents->documents().user().ReadStep(0, 0, file); };
    // The user editor starts with an empty program, as after "New".
    m_documents->documents().user().NewOp();
    window->show();
    m_userWindow->grid()->setFocus();
    return window;
}

StepEditorWindow* Startup::makeComparisonWindow() {
    auto* comparison = new StepEditorWindow(m_context, 1, *m_comparisonEditor);
    m_window->mdiArea()->addSubWindow(comparison)->hide();
    if (m_differences)
        m_differences->attach(*comparison);
    return comparison;
}

StepEditorWindow* Startup::comparisonEditorWindow() const {
    return m_documents ? m_documents->comparisonWindow() : nullptr;
}

void Startup::HikisuOp(const QString& commandLine) {
    const QString file = hikisuFileName(commandLine);
    if (!file.isEmpty() && m_openProgram)
        m_openProgram(file);
}

void Startup::ReleaseActiveX() {
    // The documents first (their temporary files go with them), then the windows: they
    // hold pointers to the shared objects below.
    if (m_documents)
        m_documents->shutdown();
    m_customize.reset(); // its window first: it reads the machine through the documents' link
    if (m_documents)
        m_documents->documents().hooks().programFieldsChanged = nullptr;
    m_differences.reset(); // it listens to both editors' sheets
    m_documents.reset();
    m_userEditor = nullptr;
    m_userWindow = nullptr;
    m_window.reset();
    m_comparisonEditor.reset();
    if (m_errorSink && ErrorReporter::sink() == m_errorSink.get())
        ErrorReporter::setSink(nullptr);
    m_errorSink.reset();
    m_selout.reset();
    m_selinp.reset();
    m_selectKino.reset();
    m_cusI.reset();
    m_cusO.reset();
    m_selCusInp.reset();
    m_selCusOut.reset();
    m_context = AppContext{};
    m_ownSettings.reset();
    m_ownPrompter.reset();
    m_lock.reset();
}

} // namespace vkm
