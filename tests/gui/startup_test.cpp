#include "base/errorreporter.h"
#include "base/messages.h"
#include "base/scriptedprompter.h"
#include "base/settings.h"
#include "base/tempfolder.h"
#include "catalogue/cselections.h"
#include "documentcontroller.h"
#include "errordialogsink.h"
#include "finpmemo.h"
#include "guiprompter.h"
#include "link/machinefiles.h"
#include "mainwindow.h"
#include "sheet/stepsheet.h"
#include "startup.h"
#include "startuprig.h"
#include "stepeditorwindow.h"
#include "testsupport.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <gtest/gtest.h>

using namespace vkm;
using vkm::test::StartupRig;

namespace {

QStringList actionNames(const QToolBar* bar) {
    QStringList out;
    for (const QAction* a : bar->actions())
        out << a->objectName();
    return out;
}

} // namespace

TEST(Startup, NormalStartBuildsTheMainWindow) {
    StartupRig rig;
    QString opened;
    Startup startup(rig.options);
    startup.setOpenProgram([&](const QString& path) { opened = path; });
    ASSERT_TRUE(startup.run());
    EXPECT_TRUE(rig.prompter.shown().empty()) << qPrintable(rig.prompter.shown().front().text);
    EXPECT_TRUE(rig.errors.reports().empty());

    MainWindow* window = startup.mainWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->windowTitle(), QStringLiteral("VKM Step Ver 2.30"));
    EXPECT_EQ(window->frameGeometry(), QGuiApplication::primaryScreen()->availableGeometry());

    const QToolBar* bar = window->mainToolBar();
    EXPECT_EQ(actionNames(bar),
              (QStringList{"keyCLOSE", "keyOption", "keyCUSTOMIZEEASY", "keySEPARATOR1", "keyWARRANGE"}));
    for (const char* key : {"keyCLOSE", "keyOption", "keyCUSTOMIZEEASY", "keyWARRANGE"}) {
        const QAction* a = window->toolAction(QLatin1String(key));
        ASSERT_NE(a, nullptr) << key;
        EXPECT_TRUE(a->isEnabled()) << key;
        EXPECT_FALSE(a->text().isEmpty()) << key;
        EXPECT_FALSE(a->icon().pixmap(19, 19).isNull()) << key;
    }
    EXPECT_TRUE(bar->actions().at(3)->isSeparator());
    EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);

    // Catalogues read, settings made sure of, the user editor shown over the full width.
    EXPECT_TRUE(startup.initialFilesRead());
    EXPECT_GT(startup.context().selout->Count(), 0);
    EXPECT_GT(startup.context().selinp->Count(), 0);
    EXPECT_EQ(rig.store.settings->read(Section::Location, QStringLiteral("Memo_Width")),
              QStringLiteral("10200"));
    EXPECT_EQ(startup.context().initialPath, rig.store.settings->ReadReg(0, QStringLiteral("InitialPath")));
    ASSERT_NE(startup.userEditor(), nullptr);
    EXPECT_EQ(startup.userEditor()->windowTitle(), QStringLiteral("STEP[*]"));
    EXPECT_TRUE(startup.userEditor()->isVisible());
    EXPECT_EQ(startup.userEditor()->width(), window->mdiArea()->viewport()->width());
    EXPECT_TRUE(opened.isEmpty());
}

TEST(Startup, ComparisonWindowComesWithTheFirstComparisonProgramAndTakesItsImageAlong) {
    StartupRig rig;
    Startup startup(rig.options);
    ASSERT_TRUE(startup.run());
    QMdiArea* mdi = startup.mainWindow()->mdiArea();
    // At start only the user editor exists; the function dialogs wait for their first use.
    EXPECT_EQ(startup.comparisonEditorWindow(), nullptr);
    EXPECT_EQ(startup.mainWindow()->findChildren<StepEditorWindow*>().size(), 1);
    EXPECT_TRUE(startup.mainWindow()->findChildren<QDialog*>().isEmpty());

    const QString image = CreateTempName(1, 1);
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        rig.prompter.queueFileName(test::testData(QStringLiteral("gsp/flow.gsp")));
        ASSERT_TRUE(startup.documents()->handleKey(0, QStringLiteral("keyREAD_HIKAKU1"), true));
        StepEditorWindow* comparison = startup.comparisonEditorWindow();
        ASSERT_NE(comparison, nullptr);
        EXPECT_TRUE(comparison->isVisible());
        EXPECT_EQ(comparison->windowTitle(), QStringLiteral("Refer:flow.gsp[*]"));
        EXPECT_FALSE(comparison->editor()
                         .sheet()
                         .text(StepSheet::kFirstStepRow, comparison->editor().sheet().GetcolOutKino1())
                         .isEmpty());
        // Tiled: the user editor above, the comparison below, each the full width.
        QMdiSubWindow* frame = qobject_cast<QMdiSubWindow*>(comparison->parentWidget());
        ASSERT_NE(frame, nullptr);
        EXPECT_EQ(frame->y(), startup.userEditor()->height());
        EXPECT_EQ(frame->width(), mdi->viewport()->width());
        EXPECT_TRUE(QFileInfo::exists(image));

        // Closing the comparison window deletes its temporary image; the user editor stays.
        frame->close();
        EXPECT_FALSE(comparison->isVisible());
        EXPECT_FALSE(QFileInfo::exists(image));
        EXPECT_TRUE(startup.userEditor()->isVisible());
        EXPECT_EQ(startup.comparisonEditorWindow(), comparison) << "made once, shown again";
    }
    EXPECT_TRUE(rig.prompter.shown().empty());
    // Only the user editor offers the machine's items.
    const std::pair<const char*, const char*> items[] = {
        {"keyOPEN", "keyREAD_USER2"}, {"keyOPEN", "keyREAD_HIKAKU2"}, {"keySAVE", "keySAVE2"}};
    for (const auto& [button, item] : items) {
        SCOPED_TRACE(item);
        EXPECT_TRUE(
            startup.userEditorWindow()->menuAction(QLatin1String(button), QLatin1String(item))->isEnabled());
        EXPECT_FALSE(startup.comparisonEditorWindow()
                         ->menuAction(QLatin1String(button), QLatin1String(item))
                         ->isEnabled());
    }
}

TEST(Startup, RefusalsEndTheStartWithTheirMessage) {
    const QString missingArchive = QStringLiteral("/nonexistent/folder/VKM.e");
    const struct {
        const char* name;
        std::function<void(StartupRig&)> setUp;
        int number;
        int style;
        QString text;
    } cases[] = {
        {"narrow screen", [](StartupRig& r) { r.options.screenWidth = [] { return 1023; }; }, 132, 2,
         QStringLiteral("CRT resolution must be kept more than 1024*768.")},
        {"missing archive", [&](StartupRig& r) { r.options.archiveOverride = missingArchive; }, 0, 1,
         QStringLiteral("Cannot find following file. Cannot load.\n\n") + missingArchive},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        StartupRig rig;
        c.setUp(rig);
        Startup startup(rig.options);
        EXPECT_FALSE(startup.run());
        ASSERT_EQ(rig.prompter.shown().size(), 1u);
        EXPECT_EQ(rig.prompter.shown()[0].number, c.number);
        EXPECT_EQ(rig.prompter.shown()[0].style, c.style);
        EXPECT_EQ(rig.prompter.shown()[0].text, c.text);
        // Refused before the settings were made sure of.
        EXPECT_FALSE(rig.store.settings->contains(Section::Location, QStringLiteral("Memo_Width")));
    }
    // A screen of exactly 1024 pixels is wide enough.
    StartupRig rig;
    rig.options.screenWidth = [] { return 1024; };
    Startup startup(rig.options);
    EXPECT_TRUE(startup.run());
}

TEST(Startup, SecondInstanceIsRefused) {
    StartupRig rig;
    Startup first(rig.options);
    ASSERT_TRUE(first.run());

    StartupRig second;
    second.options.lockFile = rig.options.lockFile;
    Startup again(second.options);
    EXPECT_FALSE(again.run());
    EXPECT_EQ(second.prompter.numbers(), std::vector<int>{83});
    EXPECT_EQ(second.prompter.shown()[0].text, QStringLiteral("This S/W runs already!\""));
    EXPECT_EQ(again.mainWindow(), nullptr);
}

TEST(Startup, UnusableTemporaryFolderEndsTheStartWithOneMessage) {
    StartupRig rig;
    // The lock's own folder is not given: without a runtime folder, finding one must not
    // make a folder under the unusable TMPDIR either (Qt would put it at the root).
    rig.options.lockFile.clear();
    const QString missing = rig.store.scratch.file(QStringLiteral("no/such"));
    const QStringList atRoot = QDir(QStringLiteral("/")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    {
        test::EnvOverride noRuntime("XDG_RUNTIME_DIR", QByteArray());
        test::EnvOverride data("XDG_DATA_HOME",
                               QFile::encodeName(rig.store.scratch.file(QStringLiteral("data"))));
        test::EnvOverride tmpdir("TMPDIR", QFile::encodeName(missing));
        TempFolder::instance().recreate();
        Startup startup(rig.options);
        EXPECT_FALSE(startup.run());
        ASSERT_EQ(rig.prompter.shown().size(), 1u);
        EXPECT_EQ(rig.prompter.shown()[0].number, 0);
        EXPECT_EQ(rig.prompter.shown()[0].style, 1);
        EXPECT_TRUE(rig.prompter.shown()[0].text.startsWith(
            QStringLiteral("Cannot create a temporary folder in:\n\n") + QDir::toNativeSeparators(missing)))
            << qPrintable(rig.prompter.shown()[0].text);
        EXPECT_EQ(startup.mainWindow(), nullptr);
        // Stopped before anything was unpacked or stored, and nothing made at the root.
        EXPECT_FALSE(rig.store.settings->contains(Section::Location, QStringLiteral("Memo_Width")));
        EXPECT_EQ(QDir(QStringLiteral("/")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), atRoot);
    }
    TempFolder::instance().recreate();
    ASSERT_TRUE(TempFolder::instance().isValid());
}

TEST(Startup, TheInstanceLockIsTheUsersOwn) {
    test::Scratch scratch;
    const QString data = scratch.file(QStringLiteral("data"));
    const QString tmp = scratch.file(QStringLiteral("tmp"));
    QDir().mkpath(tmp);
    test::EnvOverride dataHome("XDG_DATA_HOME", QFile::encodeName(data));
    test::EnvOverride tmpdir("TMPDIR", QFile::encodeName(tmp));
    {
        // The user's runtime folder when there is one.
        const QString run = scratch.file(QStringLiteral("run"));
        QDir().mkpath(run);
        QFile::setPermissions(run, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        test::EnvOverride runtime("XDG_RUNTIME_DIR", QFile::encodeName(run));
        EXPECT_EQ(QFileInfo(Startup::defaultLockFile()).absolutePath(), run);
    }
    {
        // No usable runtime folder (the variable names a file, and the temporary folder
        // holds a file where the fallback runtime folder would be made): the per-user data
        // folder, never the temporary folder every user shares.
        const QString notAFolder = scratch.write(QStringLiteral("runtime-file"), "x");
        for (const QString& user :
             {qEnvironmentVariable("USER"), qEnvironmentVariable("LOGNAME"), QStringLiteral("root")})
            if (!user.isEmpty())
                scratch.write(QStringLiteral("tmp/runtime-") + user, "x");
        test::EnvOverride runtime("XDG_RUNTIME_DIR", QFile::encodeName(notAFolder));
        const QString lock = Startup::defaultLockFile();
        EXPECT_FALSE(lock.startsWith(tmp)) << qPrintable(lock);
        EXPECT_FALSE(lock.startsWith(QDir::tempPath())) << qPrintable(lock);
        EXPECT_TRUE(lock.startsWith(data + QLatin1Char('/'))) << qPrintable(lock);
        EXPECT_TRUE(QFileInfo(QFileInfo(lock).absolutePath()).isDir()) << qPrintable(lock);
        QLockFile file(lock);
        EXPECT_TRUE(file.tryLock(0));
    }
}

TEST(Startup, FailuresThatLetTheStartGoOn) {
    {
        SCOPED_TRACE("settings store cannot be written");
        StartupRig rig;
        const QString blocker = rig.store.scratch.write(QStringLiteral("blocker"), "x");
        auto broken = Settings::inFile(blocker + QStringLiteral("/settings.ini"));
        rig.options.settings = broken.get();
        Startup startup(rig.options);
        EXPECT_TRUE(startup.run());
        EXPECT_EQ(rig.prompter.numbers().at(0), 2);
        EXPECT_EQ(rig.prompter.shown()[0].style, 1);
        EXPECT_NE(startup.mainWindow(), nullptr);
    }
    {
        SCOPED_TRACE("archive that is no archive");
        StartupRig rig;
        rig.options.archiveOverride = rig.store.scratch.write(QStringLiteral("VKM.e"), QByteArray(300, 'z'));
        Startup startup(rig.options);
        EXPECT_TRUE(startup.run());
        EXPECT_FALSE(startup.initialFilesRead());
        ASSERT_FALSE(rig.prompter.shown().empty());
        EXPECT_EQ(rig.prompter.lastNumber(), 19);
        EXPECT_NE(startup.userEditor(), nullptr);
    }
}

TEST(Startup, CommandLineOpensAnExistingFileOnly) {
    test::Scratch scratch;
    const QString program = scratch.write(QStringLiteral("my prog.gsp"), "x");
    const struct {
        QString line;
        QString opened;
    } cases[] = {
        {"\"" + program + "\" /extra", program},
        {scratch.file(QStringLiteral("gone.gsp")), QString()},
        {QString(), QString()},
    };
    for (const auto& c : cases) {
        StartupRig rig;
        rig.options.commandLine = c.line;
        QStringList opened;
        Startup startup(rig.options);
        startup.setOpenProgram([&](const QString& path) { opened << path; });
        ASSERT_TRUE(startup.run());
        EXPECT_EQ(opened, c.opened.isEmpty() ? QStringList() : QStringList{c.opened}) << qPrintable(c.line);
        EXPECT_TRUE(rig.prompter.shown().empty());
    }
}

TEST(MainWindow, ArrangeStacksChildWindowsFullWidth) {
    MainWindow window;
    window.resize(1000, 800);
    window.show();
    QList<QMdiSubWindow*> children;
    for (int i = 0; i < 3; ++i) {
        children << window.mdiArea()->addSubWindow(new QWidget);
        children.back()->setGeometry(10 * i, 10 * i, 200, 150);
        children.back()->show();
    }
    auto* hidden = window.mdiArea()->addSubWindow(new QWidget);
    hidden->hide();
    window.toolAction(QStringLiteral("keyWARRANGE"))->trigger();

    const QRect area = window.mdiArea()->viewport()->rect();
    int top = 0;
    for (QMdiSubWindow* w : children) {
        EXPECT_EQ(w->x(), 0);
        EXPECT_EQ(w->y(), top);
        EXPECT_EQ(w->width(), area.width());
        EXPECT_GE(w->height(), area.height() / 3);
        top += w->height();
    }
    EXPECT_EQ(top, area.height());
    EXPECT_FALSE(hidden->isVisible());
}

TEST(MainWindow, CloseAsksTheHookAndFollowsCaptionSetting) {
    test::TempSettings store;
    store.settings->write(Section::General, QStringLiteral("DoesViewButtonCaption"),
                          Settings::boolText(false));
    MainWindow window(store.settings.get());
    EXPECT_EQ(window.mainToolBar()->toolButtonStyle(), Qt::ToolButtonIconOnly);
    window.show();
    window.mdiArea()->addSubWindow(new QWidget)->show();

    bool allow = false;
    int asked = 0;
    window.setCanClose([&] {
        ++asked;
        return allow;
    });
    window.toolAction(QStringLiteral("keyCLOSE"))->trigger();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(asked, 1);
    allow = true;
    window.toolAction(QStringLiteral("keyCLOSE"))->trigger();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(asked, 2);
}

// Ten styles of boxes, each with the program's title and a default button among its own;
// the unsaved-changes question (style 6) can be cancelled.
TEST(GuiPrompter, BoxesOfTheTenStylesOnly) {
    for (int style = 1; style <= 10; ++style) {
        SCOPED_TRACE(style);
        auto box = GuiPrompter::createBox(QStringLiteral("text"), style);
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(box->standardButtons() & box->standardButton(box->defaultButton()));
        EXPECT_EQ(box->windowTitle(), QStringLiteral("test_gui"));
    }
    EXPECT_TRUE(GuiPrompter::createBox(QStringLiteral("x"), 6)->standardButtons() & QMessageBox::Cancel);
    // The plain box of fixed texts: no icon, OK only.
    auto plain = GuiPrompter::createBox(QStringLiteral("x"), kPlainBox);
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(plain->icon(), QMessageBox::NoIcon);
    EXPECT_EQ(plain->standardButtons(), QMessageBox::Ok);
    EXPECT_EQ(GuiPrompter::createBox(QStringLiteral("x"), 11), nullptr);
    EXPECT_EQ(GuiPrompter::createBox(QStringLiteral("x"), -3), nullptr);
}

TEST(GuiPrompter, EnterAnswersWithTheDefaultButton) {
    GuiPrompter prompter;
    const struct {
        int style;
        Answer answer;
    } cases[] = {{7, Answer::No}, {3, Answer::Yes}, {9, Answer::Ok}, {2, Answer::None}};
    for (const auto& c : cases) {
        QString seen;
        QTimer::singleShot(0, [&] {
            QWidget* box = QApplication::activeModalWidget();
            if (!box)
                return;
            seen = static_cast<QMessageBox*>(box)->text();
            QTest::keyClick(box, Qt::Key_Return);
        });
        EXPECT_EQ(prompter.showMessage(96, c.style), c.answer) << c.style;
        EXPECT_EQ(seen, QStringLiteral("Do you undo ?"));
    }
    EXPECT_EQ(prompter.showMessage(96, 42), Answer::None); // no box at all
    // A numbered message never takes the plain box of fixed texts: style 0 shows nothing.
    bool boxShown = false;
    QTimer::singleShot(0, [&] {
        if (QWidget* box = QApplication::activeModalWidget()) {
            boxShown = true;
            QTest::keyClick(box, Qt::Key_Return);
        }
    });
    EXPECT_EQ(prompter.showMessage(96, kPlainBox), Answer::None);
    QApplication::processEvents();
    EXPECT_FALSE(boxShown);
}

TEST(GuiPrompter, FileFilterConversion) {
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"gsp file (*.gsp)|*.gsp", "gsp file (*.gsp)"},
        {"gsp file(*.gsp)|*.gsp", "gsp file(*.gsp)"},
        {"Text|*.txt;*.log|All|*.*", "Text (*.txt *.log);;All (*.*)"},
        {"Excel file (*.xlsx)", "Excel file (*.xlsx)"},
        {"", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GuiPrompter::qtFileFilter(QLatin1String(c.in)), QLatin1String(c.out)) << c.in;
}

TEST(ErrorDialogSink, ReportIsLoggedAndShown) {
    test::Scratch scratch;
    ScriptedPrompter prompter;
    const QString log = scratch.file(QStringLiteral("error.log"));
    ErrorDialogSink sink(prompter, log);
    ErrorReporter::setSink(&sink);
    reportError(ErrFileNotFound, QStringLiteral("ReadData"));
    // A quiet report goes to the log only: its consequence has a message of its own.
    reportQuietly(ErrIO, QStringLiteral("MeltSettingFiles"), QStringLiteral("Set03.e: LHa data CRC error"));
    ErrorReporter::setSink(nullptr);

    EXPECT_TRUE(test::readAll(log).contains("\t57\tMeltSettingFiles\tSet03.e: LHa data CRC error"));
    ASSERT_EQ(prompter.shown().size(), 1u);
    EXPECT_EQ(prompter.shown()[0].style, 1);
    const QString text = prompter.shown()[0].text;
    EXPECT_TRUE(text.contains(QStringLiteral("53"))) << qPrintable(text);
    EXPECT_TRUE(text.contains(QStringLiteral("File not found")));
    EXPECT_TRUE(text.contains(QStringLiteral("ReadData")));
    EXPECT_TRUE(test::readAll(log).contains("\t53\tReadData\tFile not found"));
}
