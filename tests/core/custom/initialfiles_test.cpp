#include "base/errorreporter.h"
#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "catalogue/cselectkino.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"
#include "custom/initialfiles.h"
#include "testsupport.h"

#include <QDir>
#include <QProcess>
#include <gtest/gtest.h>

using vkm::ScriptedPrompter;

namespace {

const QString kSettingDir = QStringLiteral(VKM_SOURCE_DIR "/data/setting");

// Packs the bundled setting files with the build's packer, one of them replaced.
QString packWith(const vkm::test::Scratch& scratch, const QString& replaced, const QByteArray& content) {
    const QString src = scratch.file("src");
    QDir().mkpath(src);
    QStringList files;
    for (const QString& name : vkm::settingFileNames()) {
        QByteArray bytes = vkm::test::readAll(kSettingDir + "/" + name);
        if (name == replaced)
            bytes = content;
        files << src + "/" + name;
        if (!vkm::test::writeFile(files.last(), bytes))
            return {};
    }
    const QString out = scratch.file("VKM.e");
    const int rc =
        QProcess::execute(QStringLiteral(VKM_BIN_DIR "/../tools/lhapack"), QStringList{out} + files);
    return rc == 0 ? out : QString();
}

struct Loaded {
    vkm::CSelections selout, selinp, selCusInp, selCusOut;
    vkm::CCustomInps cusI;
    vkm::CCustomOuts cusO;
    bool run(vkm::CSelectKino& kino, ScriptedPrompter& p) {
        return vkm::ReadInitialFiles(kino, selout, selinp, cusI, cusO, selCusInp, selCusOut, p);
    }
};

TEST(ReadInitialFiles, BundledArchiveFillsEverythingAndRemovesTheFiles) {
    vkm::test::TempSettings store;
    vkm::test::Scratch scratch;
    ScriptedPrompter prompter;
    vkm::CSelectKino kino(store.settings.get(), prompter, vkm::test::bundledArchive(), scratch.file("work"));
    Loaded l;
    vkm::CapturingErrorSink sink;
    ASSERT_TRUE(l.run(kino, prompter));
    EXPECT_TRUE(prompter.shown().empty());
    EXPECT_TRUE(sink.reports().empty());
    EXPECT_GT(l.selout.Count(), 64);
    EXPECT_GT(l.selinp.Count(), 32);
    EXPECT_GT(l.selCusInp.Count(), 0);
    EXPECT_GT(l.selCusOut.Count(), 0);
    EXPECT_GT(l.cusI.Count(), 0);
    EXPECT_GT(l.cusO.Count(), 0);
    EXPECT_EQ(l.selCusOut.CategoryByDigitalOnly(" NO"), l.selCusOut.CategoryByValue(0));
    EXPECT_TRUE(QDir(scratch.file("work")).entryList(QDir::Files).isEmpty());
}

TEST(ReadInitialFiles, AFailedStepIsNamedAndTheFilesStay) {
    struct Case {
        const char* file;
        QByteArray content;
        const char* step;
    };
    const QByteArray shortCatalogueLine = "X\t1\tadvice\tOUT\r\n"; // four fields
    const Case cases[] = {
        {"Set08.e", shortCatalogueLine, "selout.ReadSet6_7_8_9e"},
        {"Set09.e", "X\t99999\tadvice\tIN\t0\t0\r\n", "selinp.ReadSet6_7_8_9e"},
        {"Set04.e", "IN01\t1792\t1793\t1\r\n", "cusI.ReadSet04e"},
        {"Set05.e", "OUT01\t2048\t2049\t300\t\t0\t\t0\t\t\t0\t\t0\t\t0\t\r\n", "cusO.ReadSet05e"},
        {"Set06.e", "X\t1\r\n", "selCusInp.ReadSet6_7_8_9e"},
        {"Set07.e", "\r\n", "selCusOut.ReadSet6_7_8_9e"},
    };
    for (const auto& c : cases) {
        vkm::test::TempSettings store;
        vkm::test::Scratch scratch;
        const QString archive = packWith(scratch, c.file, c.content);
        ASSERT_FALSE(archive.isEmpty()) << c.file;
        ScriptedPrompter prompter;
        vkm::CSelectKino kino(store.settings.get(), prompter, archive, scratch.file("work"));
        Loaded l;
        vkm::CapturingErrorSink sink;
        EXPECT_FALSE(l.run(kino, prompter)) << c.file;
        ASSERT_EQ(prompter.numbers(), (std::vector<int>{142, 19})) << c.file;
        EXPECT_EQ(prompter.shown()[0].a1, c.step);
        EXPECT_EQ(prompter.shown()[0].style, 1);
        EXPECT_EQ(prompter.shown()[1].style, 1);
        EXPECT_EQ(QDir(scratch.file("work")).entryList(QDir::Files).size(), 11) << c.file;
        EXPECT_FALSE(sink.reports().empty()) << c.file;
    }
}

TEST(ReadInitialFiles, FailedUnpackingShowsOnlyItsOwnBoxThenMessage19) {
    vkm::test::TempSettings store;
    vkm::test::Scratch scratch;
    ScriptedPrompter prompter;
    vkm::CSelectKino kino(store.settings.get(), prompter, scratch.write("VKM.e", "not an archive"),
                          scratch.file("work"));
    Loaded l;
    vkm::CapturingErrorSink sink;
    EXPECT_FALSE(l.run(kino, prompter));
    ASSERT_EQ(prompter.numbers(), (std::vector<int>{0, 19}));
    EXPECT_TRUE(prompter.shown()[0].text.endsWith("Set01.e"));
    EXPECT_EQ(l.selout.Count(), 0);
}

} // namespace
