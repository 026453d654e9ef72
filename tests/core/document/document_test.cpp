#include "documentfixture.h"

#include "link/machinefiles.h"

#include <QDir>
#include <QFile>
#include <csignal>
#include <sys/resource.h>

namespace vkm::test {
namespace {

using DocumentOpen = DocumentFixture;
using DocumentSave = DocumentFixture;
using DocumentUndo = DocumentFixture;
using DocumentLife = DocumentFixture;

QString remarkOfRow1(const StepSheetEditor& e) {
    return e.sheet().text(1, StepSheet::GetcolRemark());
}

TEST_F(DocumentOpen, AcceptsGspInAnyCaseAndRefusesOtherExtensionsAndSizes) {
    const QString good = writeProgram(QStringLiteral("lower.gsp"), QStringLiteral("lower"));
    QByteArray text = readAll(good);
    ASSERT_EQ(text.size(), 5950);
    const QString upper = scratch.write(QStringLiteral("PADDED.GSP"), text + QByteArray(450, '\n'));
    struct Case {
        QString path;
        std::vector<int> messages;
        QString remark; // what row 1 shows afterwards
    };
    const std::vector<Case> cases = {
        {good, {}, QStringLiteral("lower")},
        {scratch.write(QStringLiteral("prog.txt"), text), {8}, QStringLiteral("lower")},
        {scratch.write(QStringLiteral("short.gsp"), text.left(5949)), {155}, QStringLiteral("lower")},
        {upper, {}, QStringLiteral("lower")},
    };
    QString expectedPath;
    for (const Case& c : cases) {
        prompter.clear();
        prompter.queueFileName(c.path);
        const bool opened = docs->user().ReadStep(0, 0, QString());
        EXPECT_EQ(opened, c.messages.empty()) << c.path.toStdString();
        EXPECT_EQ(prompter.numbers(), c.messages) << c.path.toStdString();
        EXPECT_EQ(remarkOfRow1(*userEditor), c.remark);
        if (c.messages.empty())
            expectedPath = c.path;
        EXPECT_EQ(docs->userFilePath(), expectedPath) << "a refused file leaves the path alone";
        ASSERT_EQ(prompter.fileRequests().size(), 1u);
        EXPECT_EQ(prompter.fileRequests()[0].title, QStringLiteral("Open user file."));
        EXPECT_EQ(prompter.fileRequests()[0].filter, QStringLiteral("gsp file (*.gsp)"));
    }
    prompter.clear();
    prompter.queueFileName(scratch.write(QStringLiteral("short2.gsp"), text.left(5949)));
    docs->user().ReadStep(0, 0, QString());
    ASSERT_EQ(prompter.shown().size(), 1u);
    EXPECT_EQ(prompter.shown()[0].a1, QStringLiteral("5950"));
    EXPECT_TRUE(prompter.shown()[0].text.contains(QStringLiteral("5950 byte")));
}

TEST_F(DocumentOpen, PasswordIsAskedCaseSensitivelyAndGivingUpStartsANewProgram) {
    const QString plain = writeProgram(QStringLiteral("plain.gsp"), QStringLiteral("before"));
    const QString locked =
        writeProgram(QStringLiteral("locked.gsp"), QStringLiteral("locked"), QStringLiteral("abc"));
    ASSERT_TRUE(docs->user().ReadStep(0, 0, plain));
    EXPECT_TRUE(prompter.inputPrompts().isEmpty());

    prompter.queueInput(QStringLiteral("ABC"));
    prompter.queueInput(QString());
    EXPECT_FALSE(docs->user().ReadStep(0, 0, locked));
    EXPECT_EQ(prompter.numbers(), std::vector<int>({99, 100}));
    EXPECT_EQ(prompter.shown()[1].style, 1);
    EXPECT_TRUE(remarkOfRow1(*userEditor).isEmpty()) << "a new program replaces the grid";
    EXPECT_TRUE(docs->userFilePath().isEmpty());
    EXPECT_EQ(docs->user().title(), QStringLiteral("STEP"));

    prompter.clear();
    prompter.queueInput(QStringLiteral("abc"));
    ASSERT_TRUE(docs->user().ReadStep(0, 0, locked));
    EXPECT_EQ(remarkOfRow1(*userEditor), QStringLiteral("locked"));
    EXPECT_EQ(docs->userProgram().Password, QStringLiteral("abc"));
    EXPECT_FALSE(docs->user().IsChanged());
}

TEST_F(DocumentOpen, ComparisonProgramOpensBesideTheUserProgramOnce) {
    int shows = 0;
    bool loaded = false;
    docs->hooks().showComparison = [&] {
        ++shows;
        loaded = true;
    };
    docs->hooks().comparisonLoaded = [&] { return loaded; };
    const QString user = writeProgram(QStringLiteral("user.gsp"), QStringLiteral("mine"));
    const QString other =
        writeProgram(QStringLiteral("other.gsp"), QStringLiteral("theirs"), {}, QStringLiteral("Ann"));
    ASSERT_TRUE(docs->user().ReadStep(0, 0, user));
    prompter.queueFileName(other);
    ASSERT_TRUE(docs->user().ReadStep(1, 0, QString()));
    EXPECT_EQ(prompter.fileRequests().back().title, QStringLiteral("Open comparative file."));
    EXPECT_EQ(remarkOfRow1(*comparisonEditor), QStringLiteral("theirs"));
    EXPECT_EQ(remarkOfRow1(*userEditor), QStringLiteral("mine"));
    EXPECT_EQ(docs->comparison().title(), QStringLiteral("Refer:other.gsp written by Ann"));
    EXPECT_EQ(docs->comparisonFilePath(), other);
    EXPECT_EQ(docs->userFilePath(), user);
    ASSERT_TRUE(docs->user().ReadStep(1, 0, other));
    EXPECT_EQ(shows, 1);
    EXPECT_EQ(tiles.size(), 1);
    // The comparison program can neither be saved nor undone.
    EXPECT_FALSE(docs->comparison().SaveStepData(false));
    EXPECT_FALSE(docs->comparison().SaveCurrent());
}

TEST_F(DocumentOpen, FileThatCannotBeReadKeepsTheOpenProgram) {
    const QString good = writeProgram(QStringLiteral("good.gsp"), QStringLiteral("kept"));
    ASSERT_TRUE(docs->user().ReadStep(0, 0, good));
    QByteArray broken(5950, 'x');
    const QString bad = scratch.write(QStringLiteral("bad.gsp"), broken);
    EXPECT_FALSE(docs->user().ReadStep(0, 0, bad));
    EXPECT_EQ(prompter.lastNumber(), 4);
    EXPECT_EQ(remarkOfRow1(*userEditor), QStringLiteral("kept"));
    EXPECT_EQ(docs->userProgram().Item(1)->Remark, QStringLiteral("kept"));
    EXPECT_EQ(docs->userFilePath(), good);
}

TEST_F(DocumentSave, SavesWithoutADialogWhenThePathIsSetAndTheFileReadsBack) {
    const QString path = writeProgram(QStringLiteral("prog.gsp"), QStringLiteral("old"));
    ASSERT_TRUE(docs->user().ReadStep(0, 0, path));
    ASSERT_TRUE(userEditor->entry().enterText(1, StepSheet::GetcolRemark(), QStringLiteral("new")));
    EXPECT_TRUE(docs->user().IsChanged());
    ASSERT_TRUE(docs->user().SaveStepData(false));
    EXPECT_TRUE(prompter.fileRequests().empty());
    EXPECT_FALSE(docs->user().IsChanged());
    EXPECT_EQ(readAll(path).size(), 5950);

    CSteps back;
    ASSERT_TRUE(ReadStepData(0, path, back, selout, selinp, prompter));
    EXPECT_EQ(back.Item(1)->Remark, QStringLiteral("new"));
    EXPECT_EQ(back.Item(1)->outs->Item(QStringLiteral("1"))->DelayEtc, 5);
}

TEST_F(DocumentSave, ProgramFromTheMachineOrSaveAsAlwaysAsksForAName) {
    const QString machine = NewTempFile(QStringLiteral("VKM"));
    QFile::remove(machine);
    ASSERT_TRUE(QFile::copy(writeProgram(QStringLiteral("m.gsp"), QStringLiteral("machine")), machine));
    ASSERT_TRUE(docs->user().ReadStep(0, 0, machine));
    EXPECT_EQ(docs->user().title(), QStringLiteral("***"));

    prompter.queueFileName(QString()); // Cancel
    EXPECT_FALSE(docs->user().SaveStepData(false));
    EXPECT_EQ(docs->userFilePath(), machine);

    const QString target = scratch.file(QStringLiteral("fromvkm.gsp"));
    prompter.queueFileName(target);
    ASSERT_TRUE(docs->user().SaveStepData(false));
    ASSERT_EQ(prompter.fileRequests().size(), 2u);
    const FileDialogRequest& r = prompter.fileRequests().back();
    EXPECT_EQ(r.title, QStringLiteral("Specify saving filename"));
    EXPECT_EQ(r.filter, QStringLiteral("gsp file(*.gsp)"));
    EXPECT_EQ(r.defaultSuffix, QStringLiteral("gsp"));
    EXPECT_TRUE(r.proposedName.isEmpty()) << "a machine file proposes no name";
    EXPECT_EQ(r.startDir, scratch.path());
    EXPECT_EQ(docs->userFilePath(), target);
    EXPECT_EQ(docs->user().title(), QStringLiteral("fromvkm.gsp"));

    const QString copy = scratch.file(QStringLiteral("copy.gsp"));
    prompter.queueFileName(copy);
    ASSERT_TRUE(docs->user().SaveStepData(true));
    EXPECT_EQ(prompter.fileRequests().back().proposedName, QStringLiteral("fromvkm.gsp"));
    EXPECT_EQ(readAll(copy), readAll(target));
}

TEST_F(DocumentSave, AFailedWriteLeavesThePreviousFileByteIdentical) {
    const QString path = writeProgram(QStringLiteral("keep.gsp"), QStringLiteral("original"));
    const QByteArray before = readAll(path);
    ASSERT_TRUE(docs->user().ReadStep(0, 0, path));
    ASSERT_TRUE(userEditor->entry().enterText(1, StepSheet::GetcolRemark(), QStringLiteral("edited")));

    // Files may grow to 3000 bytes only: the 1904-byte image is written, the 5950 bytes
    // of transfer text are not.
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = old;
    small.rlim_cur = 3000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool saved = docs->user().SaveStepData(false);
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, previousHandler);

    EXPECT_FALSE(saved) << "size on disk: " << readAll(path).size();
    EXPECT_EQ(prompter.lastNumber(), 79);
    EXPECT_EQ(readAll(path), before);
    EXPECT_TRUE(docs->user().IsChanged());
    EXPECT_EQ(docs->userFilePath(), path);
    EXPECT_FALSE(errors.reports().empty());
    EXPECT_EQ(QDir(scratch.path()).entryList(QDir::Files).filter(QStringLiteral("keep")).size(), 1)
        << "no half-written file beside the program";
}

TEST_F(DocumentSave, ChecksAndTheGridDecideBeforeAnythingIsWritten) {
    const QString path = writeProgram(QStringLiteral("chk.gsp"), QStringLiteral("x"));
    const QByteArray before = readAll(path);
    ASSERT_TRUE(docs->user().ReadStep(0, 0, path));
    // An output without its logic and delay fails the checks.
    userEditor->sheet().setText(1, userEditor->sheet().GetcolOutKino1() + 1, QString());
    docs->user().setChanged(true);
    EXPECT_FALSE(docs->user().SaveStepData(false));
    EXPECT_FALSE(prompter.numbers().empty());
    EXPECT_EQ(readAll(path), before);
    EXPECT_TRUE(docs->user().IsChanged());
}

TEST_F(DocumentUndo, OpeningAUserProgramClearsTheUndoListAndItsFiles) {
    const QString path = writeProgram(QStringLiteral("o.gsp"), QStringLiteral("a"));
    ASSERT_TRUE(docs->user().ReadStep(0, 0, path));
    ASSERT_TRUE(docs->user().SaveCurrent());
    ASSERT_TRUE(docs->user().SaveCurrent());
    const QStringList snapshots = docs->user().undoFiles();
    ASSERT_TRUE(docs->user().ReadStep(0, 0, path));
    EXPECT_TRUE(docs->user().undoFiles().isEmpty());
    for (const QString& s : snapshots)
        EXPECT_FALSE(QFileInfo::exists(s)) << s.toStdString();
    EXPECT_EQ(docs->user().GetLastTempFile(), QString());
}

TEST_F(DocumentLife, NewAndClosingAskAboutUnsavedChanges) {
    bool memoOpen = true;
    docs->hooks().memoWindowOpen = [&] { return memoOpen; };
    const QString path = writeProgram(QStringLiteral("n.gsp"), QStringLiteral("keep"));
    ASSERT_TRUE(docs->user().ReadStep(0, 0, path));
    docs->user().setChanged(true);

    EXPECT_FALSE(docs->user().NewOp());
    EXPECT_EQ(prompter.numbers(), std::vector<int>({72}));
    memoOpen = false;

    prompter.clear();
    prompter.queueAnswer(Answer::Cancel);
    EXPECT_FALSE(docs->user().NewOp());
    EXPECT_EQ(prompter.numbers(), std::vector<int>({13}));
    EXPECT_EQ(prompter.shown()[0].style, 6);
    EXPECT_EQ(remarkOfRow1(*userEditor), QStringLiteral("keep"));

    prompter.queueAnswer(Answer::Cancel);
    EXPECT_FALSE(docs->canCloseApplication()) << "Cancel keeps the application open";
    EXPECT_TRUE(docs->user().IsChanged());

    prompter.queueAnswer(Answer::No);
    EXPECT_TRUE(docs->canCloseApplication());
    EXPECT_FALSE(docs->user().IsChanged()) << "closing clears the flag on No";

    docs->user().setChanged(true);
    prompter.queueAnswer(Answer::No);
    ASSERT_TRUE(docs->user().NewOp());
    EXPECT_TRUE(remarkOfRow1(*userEditor).isEmpty());
    EXPECT_TRUE(docs->userFilePath().isEmpty());
    EXPECT_EQ(docs->userProgram().Count(), 0);
    EXPECT_FALSE(docs->user().IsChanged());
    EXPECT_FALSE(tiles.isEmpty());

    docs->user().setChanged(true);
    prompter.queueAnswer(Answer::Yes); // save, but the dialog is cancelled: a new path is needed
    prompter.queueFileName(QString());
    EXPECT_FALSE(docs->canCloseApplication());
}

TEST_F(DocumentLife, PasswordDialogAndMemoWindowMarkTheProgramChanged) {
    QString shownTitle;
    docs->hooks().titleChanged = [&](int, const QString& t) { shownTitle = t; };
    QStringList dialogAnswers = {QStringLiteral("pw\tAnn"), QStringLiteral(" pw \t Ann ")};
    docs->hooks().inputPassword = [&](int, const QString&, const QString&) {
        return dialogAnswers.takeFirst();
    };
    ASSERT_TRUE(docs->user().ReadStep(0, 0, writeProgram(QStringLiteral("p.gsp"), QStringLiteral("r"))));
    docs->user().InputPassword();
    EXPECT_TRUE(docs->user().IsChanged());
    EXPECT_EQ(shownTitle, QStringLiteral("p.gsp written by Ann"));
    docs->user().setChanged(false);
    docs->user().InputPassword();
    EXPECT_FALSE(docs->user().IsChanged()) << "the same values after trimming are no change";

    docs->userProgram().MemoFile = QStringLiteral("A.TXT");
    EXPECT_TRUE(docs->user().storeMemoWindow(QString(), QStringLiteral("A.TXT")));
    EXPECT_FALSE(docs->user().IsChanged());
    EXPECT_TRUE(docs->user().storeMemoWindow(QString(), QStringLiteral("B.TXT")));
    EXPECT_TRUE(docs->user().IsChanged());
    docs->user().setChanged(false);
    EXPECT_FALSE(docs->user().storeMemoWindow(QString(497, QLatin1Char('m')), QStringLiteral("B.TXT")));
    EXPECT_FALSE(docs->user().IsChanged());
    EXPECT_EQ(prompter.lastNumber(), 56);
}

TEST_F(DocumentLife, CommandLineOpensTheNamedFileQuotedOrNot) {
    const QString path = writeProgram(QStringLiteral("cmd line.gsp"), QStringLiteral("cmd"));
    EXPECT_FALSE(docs->HikisuOp(scratch.file(QStringLiteral("missing.gsp"))));
    EXPECT_FALSE(docs->HikisuOp(QString()));
    EXPECT_TRUE(prompter.numbers().empty());
    EXPECT_TRUE(docs->HikisuOp(QLatin1Char('"') + path + QStringLiteral("\" --more")));
    EXPECT_EQ(docs->userFilePath(), path);
    EXPECT_EQ(Documents::commandLineFile(QStringLiteral("/a/b.gsp")), QStringLiteral("/a/b.gsp"));
    EXPECT_EQ(Documents::commandLineFile(QStringLiteral("\"/a b/c.gsp\" x")), QStringLiteral("/a b/c.gsp"));
}

TEST_F(DocumentLife, InitialPathIsChosenWithAFolderDialogAndStored) {
    TempSettings ts;
    Documents withSettings(prompter, ts.settings.get(), selout, selinp, *userEditor, *comparisonEditor,
                           "/start");
    prompter.queueFileName(QString()); // Cancel
    EXPECT_FALSE(withSettings.InitialPathCommand());
    EXPECT_EQ(withSettings.initialPath(), QStringLiteral("/start"));
    prompter.queueFileName(scratch.path());
    EXPECT_TRUE(withSettings.InitialPathCommand());
    EXPECT_EQ(ts.settings->read(Section::FileInfo, QStringLiteral("InitialPath")), scratch.path());
    EXPECT_EQ(withSettings.initialPath(), scratch.path());
}

TEST_F(DocumentLife, NothingIsLeftInTheTemporaryFolderAfterShutDown) {
    docs->hooks().comparisonLoaded = [] { return true; };
    const QString path = writeProgram(QStringLiteral("t.gsp"), QStringLiteral("t"));
    ASSERT_TRUE(docs->user().ReadStep(0, 0, path));
    ASSERT_TRUE(docs->user().ReadStep(1, 0, path));
    ASSERT_TRUE(docs->user().SaveCurrent());
    ASSERT_TRUE(userEditor->entry().enterText(1, StepSheet::GetcolRemark(), QStringLiteral("t2")));
    ASSERT_TRUE(docs->user().SaveStepData(false));
    QFile::copy(path, NewTempFile(QStringLiteral("VKM")) + QStringLiteral(".x"));
    EXPECT_FALSE(tempFiles().isEmpty());
    docs->shutdown();
    const QStringList left = tempFiles();
    EXPECT_EQ(left.size(), 1) << left.join(u',').toStdString();
    EXPECT_TRUE(left.value(0).endsWith(QStringLiteral(".x"))) << "only files of others stay";
}

} // namespace
} // namespace vkm::test
