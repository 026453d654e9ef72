#include "../model/programs.h"

#include "base/errorreporter.h"
#include "base/scriptedprompter.h"
#include "base/tempfolder.h"
#include "link/machinefiles.h"
#include "link/transfertext.h"
#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

using namespace vkm;
using namespace vkm::test;

namespace {

QString temp(const QString& name) {
    return TempFolder::instance().filePath(name);
}

void touch(const QString& path) {
    ASSERT_TRUE(writeFile(path, "x"));
}

// Makes a folder refuse new files, also for root (which ignores the permission bits).
bool lockFolder(const QString& dir) {
    QFile::setPermissions(dir, QFile::ReadOwner | QFile::ExeOwner);
    QFile probe(dir + "/probe");
    if (!probe.open(QIODevice::WriteOnly))
        return true;
    probe.close();
    probe.remove();
    return QProcess::execute("chattr", {"+i", dir}) == 0;
}

void unlockFolder(const QString& dir) {
    QProcess::execute("chattr", {"-i", dir});
    QFile::setPermissions(dir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// A prompter that makes the drive ready while the "Insert fd !" box is up.
class InsertingPrompter : public ScriptedPrompter {
public:
    explicit InsertingPrompter(QString dir) : m_dir(std::move(dir)) {}
    Answer showMessage(int number, int style, const QString& a1, const QString& a2,
                       const QString& a3) override {
        QDir().mkpath(m_dir);
        queueAnswer(Answer::Ok); // the disk is in: OK
        return ScriptedPrompter::showMessage(number, style, a1, a2, a3);
    }

private:
    QString m_dir;
};

} // namespace

TEST(MachineFiles, FixedTemporaryNames) {
    EXPECT_EQ(CreateTempName(1, eUSR), temp("eusr2.tmp"));
    EXPECT_EQ(CreateTempName(1, eCMP), temp("ecmp2.tmp"));
    EXPECT_EQ(CreateTempName(2, eUSR), temp("eusr3.tmp"));
    EXPECT_EQ(CreateTempName(2, eCMP), temp("eusr3.tmp"));
    EXPECT_EQ(CreateTempName(3, eUSR), "");
    const QString a = NewTempFile(), b = NewTempFile();
    EXPECT_NE(a, b);
    EXPECT_TRUE(IsThisFileFromMachine(a));
    EXPECT_TRUE(QFile::exists(a));
}

TEST(MachineFiles, FilesReadFromTheMachine) {
    Scratch s;
    struct Case {
        QString path;
        bool expected;
    };
    const Case cases[] = {
        {temp("VKM0001.tmp"), true},
        {temp("vkmabc.TMP"), true},
        {TempFolder::instance().path() + "/./VKM2.tmp", true},
        {s.file("VKM0001.tmp"), false}, // right name, wrong folder
        {temp("prog.gsp"), false},      // right folder, wrong name
        {temp("VKM0001.gsp"), false},
        {temp("VK0001.tmp"), false},
        {temp("eusr2.tmp"), false},
    };
    for (const auto& tc : cases)
        EXPECT_EQ(IsThisFileFromMachine(tc.path), tc.expected) << qPrintable(tc.path);
}

TEST(MachineFiles, DeleteVKMTemporaryFilesTouchesOnlyItsFolder) {
    Scratch s;
    touch(temp("VKM9001.tmp"));
    touch(temp("vkm9002.TMP"));
    touch(temp("eusr2.tmp"));
    touch(temp("VKM9003.gsp"));
    touch(s.file("VKM0001.tmp"));
    DeleteVKMTemporaryFiles();
    EXPECT_FALSE(QFile::exists(temp("VKM9001.tmp")));
    EXPECT_FALSE(QFile::exists(temp("vkm9002.TMP")));
    EXPECT_TRUE(QFile::exists(temp("eusr2.tmp")));
    EXPECT_TRUE(QFile::exists(temp("VKM9003.gsp")));
    EXPECT_TRUE(QFile::exists(s.file("VKM0001.tmp")));
    EXPECT_TRUE(Del(temp("VKM9003.gsp")));
    EXPECT_TRUE(Del(temp("VKM9003.gsp"))) << "a missing file is fine";
}

TEST(MachineFiles, FreeSpaceAndDriveReadiness) {
    Scratch s;
    const QString src = s.write("src.bin", QByteArray(100, 'a'));
    s.write("exists.gsp", "old");
    EXPECT_TRUE(CheckFreeSpace(src, s.file("exists.gsp")));
    EXPECT_TRUE(CheckFreeSpace(src, s.file("new.gsp")));
    EXPECT_TRUE(CheckFreeSpace(src, "//server/share/new.gsp"));
    EXPECT_TRUE(CheckFreeSpace(src, "\\\\server\\share\\new.gsp"));

    ScriptedPrompter prompter;
    EXPECT_TRUE(BeReadyDrive(s.file("new.gsp"), prompter));
    EXPECT_TRUE(BeReadyDrive(s.path(), prompter));
    EXPECT_TRUE(BeReadyDrive("//server/share/x.gsp", prompter));
    EXPECT_TRUE(prompter.shown().empty());

    prompter.queueAnswer(Answer::Ok);
    prompter.queueAnswer(Answer::Cancel);
    EXPECT_FALSE(BeReadyDrive(s.file("fd/new.gsp"), prompter));
    EXPECT_EQ(prompter.numbers(), (std::vector<int>{69, 69}));
    EXPECT_EQ(prompter.shown()[0].style, 10);

    InsertingPrompter inserting(s.file("fd"));
    EXPECT_TRUE(BeReadyDrive(s.file("fd/new.gsp"), inserting));
    EXPECT_EQ(inserting.numbers(), std::vector<int>{69});
}

TEST(CopyFiles, WritesTheTransferTextOfTheImage) {
    Scratch s;
    const Catalogues c = testCatalogues();
    const QString image = s.file("eusr2.tmp");
    ASSERT_TRUE(buildProgram(Shape::Texts, c).SaveData(image, true, c.selout, c.selinp, fixedClock()));
    ScriptedPrompter prompter;
    s.write("prog.gsp", QByteArray(7000, 'o'));
    ASSERT_TRUE(CopyFiles(image, s.file("prog.gsp"), prompter));
    EXPECT_EQ(readAll(s.file("prog.gsp")), stepImageToText(readAll(image)));
    EXPECT_EQ(readAll(s.file("prog.gsp")).size(), 5950);
    EXPECT_TRUE(QFile::exists(s.file("steptext.tmp"))) << "the text is made beside the image";
    EXPECT_TRUE(prompter.shown().empty());

    EXPECT_FALSE(CopyFiles(image, "   ", prompter));
    EXPECT_EQ(prompter.numbers(), std::vector<int>{93});
    prompter.clear();
    EXPECT_FALSE(CopyFiles(image, s.file("no/such/folder/prog.gsp"), prompter));
    EXPECT_EQ(prompter.numbers(), std::vector<int>{90}) << "a volume that cannot be found has no space";
}

TEST(CopyFiles, AFailingWriteLeavesTheOldFileIntact) {
    Scratch s;
    const Catalogues c = testCatalogues();
    const QString image = s.file("eusr2.tmp");
    ASSERT_TRUE(buildProgram(Shape::Full, c).SaveData(image, true, c.selout, c.selinp, fixedClock()));
    const QByteArray old = stepImageToText(QByteArray(1904, '\x11'));
    CapturingErrorSink sink;
    ScriptedPrompter prompter;

    // A name so long that no companion file can be made beside it.
    const QString longName = s.file(QString(250, 'p') + ".gsp");
    s.write(QString(250, 'p') + ".gsp", old);
    EXPECT_FALSE(CopyFiles(image, longName, prompter));
    EXPECT_EQ(readAll(longName), old);

    // A folder that refuses new files.
    QDir().mkpath(s.file("locked"));
    const QString dest = s.file("locked/prog.gsp");
    s.write("locked/prog.gsp", old);
    if (!lockFolder(s.file("locked")))
        GTEST_SKIP() << "cannot make a folder read-only here";
    const bool copied = CopyFiles(image, dest, prompter);
    unlockFolder(s.file("locked"));
    EXPECT_FALSE(copied);
    EXPECT_EQ(readAll(dest), old);
    EXPECT_EQ(sink.procedures(), (QStringList{"CopyFiles", "CopyFiles"}));
    EXPECT_TRUE(prompter.shown().empty());
}

TEST(ReadStepData, ReadsAProgramFileThroughTheTemporaryImage) {
    Scratch s;
    const Catalogues c = testCatalogues();
    const CSteps original = buildProgram(Shape::Texts, c);
    const QByteArray image = original.toImage(c.selinp, fixedClock(), nullptr);
    const QString gsp = s.write("prog.gsp", stepImageToText(image));
    QFile::setPermissions(gsp, QFile::ReadOwner); // read-only source: the copy must still be replaceable
    ScriptedPrompter prompter;
    for (int kind : {eUSR, eCMP}) {
        CSteps p;
        ASSERT_TRUE(ReadStepData(kind, gsp, p, c.selout, c.selinp, prompter));
        EXPECT_EQ(p.Author, original.Author);
        EXPECT_EQ(p.Item(1)->Remark, "needle up");
        EXPECT_EQ(readAll(CreateTempName(1, kind)), image) << "the temporary copy holds the image";
        ASSERT_TRUE(ReadStepData(kind, gsp, p, c.selout, c.selinp, prompter)) << "a second read overwrites";
    }
    EXPECT_TRUE(prompter.shown().empty());

    CapturingErrorSink sink;
    CSteps p;
    EXPECT_FALSE(ReadStepData(eUSR, s.file("missing.gsp"), p, c.selout, c.selinp, prompter));
    const QString cut = s.write("cut.gsp", stepImageToText(image).left(25 * 100));
    EXPECT_FALSE(ReadStepData(eUSR, cut, p, c.selout, c.selinp, prompter));
    EXPECT_EQ(sink.procedures(), QStringList{"ReadRem"});
}

TEST(TransferFile, PreparesTheProgramForSending) {
    const Catalogues c = testCatalogues();
    const CSteps p = buildProgram(Shape::Counters, c);
    ScriptedPrompter prompter;
    const QString path = transferFileForProgram(p, c.selout, c.selinp, prompter, fixedClock());
    ASSERT_FALSE(path.isEmpty());
    EXPECT_TRUE(IsThisFileFromMachine(path));
    EXPECT_EQ(readAll(path), stepImageToText(p.toImage(c.selinp, fixedClock(), nullptr)));

    CapturingErrorSink sink;
    CSteps bad;
    addRow(bad, c, {{256, 1, 0, 70000}}, {{3, 0, RelEnd}});
    EXPECT_EQ(transferFileForProgram(bad, c.selout, c.selinp, prompter, fixedClock()), "");
    EXPECT_EQ(prompter.numbers(), std::vector<int>{50});
    EXPECT_EQ(prompter.shown()[0].style, 1);
}

TEST(MachineFiles, WithoutAPrivateFolderNothingIsNamedOrDeletedElsewhere) {
    Scratch scratch;
    // A file of another program in the current folder, named as ours would be.
    const QString cwd = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(scratch.path()));
    touch(scratch.file("VKM0001.tmp"));
    {
        EnvOverride env("TMPDIR", QFile::encodeName(scratch.file("missing")));
        TempFolder::instance().recreate();
    }
    EXPECT_TRUE(CreateTempName(1, 0).isEmpty());
    EXPECT_TRUE(CreateTempName(1, 1).isEmpty());
    EXPECT_TRUE(CreateTempName(2, 0).isEmpty());
    EXPECT_TRUE(NewTempFile("VKM").isEmpty());
    EXPECT_FALSE(IsThisFileFromMachine(scratch.file("VKM0001.tmp")));
    DeleteVKMTemporaryFiles();
    EXPECT_TRUE(QFile::exists(scratch.file("VKM0001.tmp")));
    // Reading a program has nowhere to put its copy: it fails instead of writing elsewhere.
    EXPECT_TRUE(CopyFromFDToHD(0, testData("gsp/flow.gsp"), 1).isEmpty());
    QDir::setCurrent(cwd);
    TempFolder::instance().recreate();
    EXPECT_TRUE(TempFolder::instance().isValid());
}

TEST(TransferFile, PreparesACustomisationImageOverTheRangeItCameFrom) {
    ScriptedPrompter prompter;
    QByteArray image(768, '\x11');
    const QString fromMachine = transferFileForCustomImage(image, true, prompter);
    ASSERT_FALSE(fromMachine.isEmpty());
    const QByteArray text = readAll(fromMachine);
    EXPECT_EQ(text.count('\n'), 96);
    bool ok = false;
    EXPECT_EQ(parseTransferText(text, prompter, &ok), image);

    // From a disk: the whole memory, the image's bytes first and zeros after them.
    const QByteArray whole = readAll(transferFileForCustomImage(image, false, prompter));
    EXPECT_EQ(whole.count('\n'), 1024);
    EXPECT_EQ(parseTransferText(whole, prompter, &ok), image + QByteArray(8192 - 768, '\0'));
    EXPECT_TRUE(prompter.shown().empty());

    // A record cut by the image's end cannot be converted.
    CapturingErrorSink sink;
    EXPECT_EQ(transferFileForCustomImage(QByteArray(13, '\1'), true, prompter), "");
    EXPECT_EQ(prompter.numbers(), std::vector<int>{141});
}
