#include "base/errorreporter.h"
#include "base/scriptedprompter.h"
#include "base/settings.h"
#include "catalogue/cselections.h"
#include "catalogue/cselectkino.h"
#include "lhafixture.h"
#include "testsupport.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

using vkm::CSelectKino;
using vkm::ScriptedPrompter;
using vkm::Section;
using vkm::test::LhaMember;

namespace {

const QString kMissing = QStringLiteral("Cannot find following file. Cannot load.\n\n");

QStringList filesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
}

// The eleven members of a well-formed archive, optionally leaving one out.
std::vector<LhaMember> elevenMembers(const QString& leaveOut = {}) {
    std::vector<LhaMember> m;
    for (const QString& name : vkm::settingFileNames())
        if (name != leaveOut)
            m.push_back({name.toLatin1(), "content of " + name.toLatin1() + "\r\n"});
    return m;
}

struct KinoFixture : ::testing::Test {
    vkm::test::TempSettings store;
    vkm::test::Scratch scratch;
    ScriptedPrompter prompter;
    QString work = scratch.file("work");

    CSelectKino kinoFor(const QString& archive) {
        return CSelectKino(store.settings.get(), prompter, archive, work);
    }
};

TEST_F(KinoFixture, FirstRunCreatesBlueHeronTrueAndStoredValuesAreRead) {
    EXPECT_TRUE(kinoFor("x").BlueHeron());
    EXPECT_EQ(store.settings->read(Section::General, "BlueHeron"), "True");

    store.settings->write(Section::General, "BlueHeron", "False");
    EXPECT_FALSE(kinoFor("x").BlueHeron());
    EXPECT_TRUE(prompter.shown().empty());

    vkm::CapturingErrorSink sink;
    store.settings->write(Section::General, "BlueHeron", "perhaps");
    EXPECT_FALSE(kinoFor("x").BlueHeron());
    EXPECT_EQ(prompter.numbers(), std::vector<int>{2});
    EXPECT_EQ(sink.procedures(), QStringList{"ReadRegData"});

    CSelectKino noStore(nullptr, prompter, "x", work);
    EXPECT_TRUE(noStore.BlueHeron());
}

TEST_F(KinoFixture, BlueHeronDecidesWhetherTheUnpackedFilesStay) {
    for (const bool blueHeron : {true, false}) {
        store.settings->write(Section::General, "BlueHeron", vkm::Settings::boolText(blueHeron));
        CSelectKino kino = kinoFor(vkm::test::bundledArchive());
        ASSERT_TRUE(kino.DoneMelt()) << blueHeron;
        EXPECT_EQ(filesIn(work), vkm::settingFileNames());
        EXPECT_TRUE(kino.DeleteSettingFiles());
        EXPECT_EQ(filesIn(work).size(), blueHeron ? 0 : 11) << blueHeron;
    }
    EXPECT_TRUE(prompter.shown().empty());
}

TEST_F(KinoFixture, StaleFilesAreDeletedBeforeUnpacking) {
    // A file left from an earlier archive must not pass the presence check.
    store.settings->write(Section::General, "BlueHeron", vkm::Settings::boolText(true));
    QDir().mkpath(work);
    ASSERT_TRUE(vkm::test::writeFile(work + "/Set07.e", {}));
    const QString archive = scratch.write("no07.e", vkm::test::lhaArchive(elevenMembers("Set07.e")));
    CSelectKino kino = kinoFor(archive);
    EXPECT_FALSE(kino.DoneMelt());
    ASSERT_EQ(prompter.shown().size(), 1u);
    EXPECT_EQ(prompter.shown()[0].text, kMissing + QDir::toNativeSeparators(work + "/Set07.e"));
    EXPECT_EQ(prompter.shown()[0].style, 1);
}

TEST_F(KinoFixture, BrokenArchivesNameTheFirstMissingFile) {
    const QByteArray good = vkm::test::lhaArchive(elevenMembers());
    // Cut inside the data of the sixth member: the five before it are whole.
    const qsizetype cut = good.indexOf("content of Set06.e") + 5;
    struct Case {
        const char* what;
        QByteArray bytes;
        const char* firstMissing;
    };
    const Case cases[] = {
        {"not an archive", "this is plain text, not LHA\r\n", "Set01.e"},
        {"empty file", "", "Set01.e"},
        {"truncated inside a member", good.left(cut), "Set06.e"},
        {"truncated inside a header", good.left(good.indexOf("Set03.e") - 10), "Set03.e"},
        {"member missing", vkm::test::lhaArchive(elevenMembers("Set11.e")), "Set11.e"},
    };
    for (const auto& c : cases) {
        prompter.clear();
        QDir(work).removeRecursively();
        vkm::CapturingErrorSink sink;
        CSelectKino kino = kinoFor(scratch.write("broken.e", c.bytes));
        EXPECT_FALSE(kino.DoneMelt()) << c.what;
        ASSERT_EQ(prompter.shown().size(), 1u) << c.what;
        EXPECT_EQ(prompter.shown()[0].text, kMissing + work + "/" + c.firstMissing) << c.what;
        // a fault of the archive is only logged: the box above is the one the user sees
        EXPECT_EQ(sink.reports().empty(), c.firstMissing == QLatin1String("Set11.e")) << c.what;
        for (const auto& r : sink.reports())
            EXPECT_TRUE(r.quiet) << c.what << ": " << qPrintable(r.text);
        // no half-written member is left behind
        for (const QString& f : filesIn(work))
            EXPECT_TRUE(vkm::test::readAll(work + "/" + f).endsWith("\r\n"))
                << c.what << " " << qPrintable(f);
    }
}

TEST_F(KinoFixture, UpperCaseMemberNamesLoadUnderTheirOwnSpelling) {
    // DOS-era packers store the names in capitals; any mix of case names the same file.
    std::vector<LhaMember> members = elevenMembers();
    for (LhaMember& m : members)
        m.name = m.name.toUpper();
    members[4].name = "sEt05.e";
    store.settings->write(Section::General, "BlueHeron", vkm::Settings::boolText(true));
    CSelectKino kino = kinoFor(scratch.write("upper.e", vkm::test::lhaArchive(members)));
    ASSERT_TRUE(kino.DoneMelt());
    EXPECT_TRUE(prompter.shown().empty());
    EXPECT_EQ(filesIn(work), vkm::settingFileNames());
    EXPECT_EQ(vkm::test::readAll(work + "/Set05.e"), "content of Set05.e\r\n");
    EXPECT_EQ(vkm::test::readAll(work + "/Set11.e"), "content of Set11.e\r\n");
    kino.DeleteSettingFiles();
    EXPECT_TRUE(filesIn(work).isEmpty());
}

TEST_F(KinoFixture, DamagedMembersAreSkippedAndTheRestIsUnpacked) {
    // A member whose data does not match its CRC and one beyond the size cap: both are
    // left out, everything after them still comes out, and the user sees one box, the
    // presence check's, naming the first setting file that is missing.
    std::vector<LhaMember> members = elevenMembers();
    members[2].wrongCrc = true;                              // Set03.e
    members[9].data = QByteArray(16 * 1024 * 1024 + 1, 'x'); // Set10.e
    members.insert(members.begin() + 5, LhaMember{"NOTES.TXT", "damaged\r\n", {}, true});
    vkm::CapturingErrorSink sink;
    CSelectKino kino = kinoFor(scratch.write("damaged.e", vkm::test::lhaArchive(members)));
    EXPECT_FALSE(kino.DoneMelt());
    ASSERT_EQ(prompter.shown().size(), 1u);
    EXPECT_EQ(prompter.shown()[0].text, kMissing + work + "/Set03.e");
    EXPECT_EQ(kino.skippedMembers(), (QStringList{"Set03.e", "NOTES.TXT", "Set10.e"}));
    QStringList expected = vkm::settingFileNames();
    expected.removeAll("Set03.e");
    expected.removeAll("Set10.e");
    EXPECT_EQ(filesIn(work), expected);
    EXPECT_EQ(vkm::test::readAll(work + "/Set11.e"), "content of Set11.e\r\n");
    // Each damaged member is in the log, and none of them is shown.
    ASSERT_EQ(sink.reports().size(), 3u);
    for (const auto& r : sink.reports()) {
        EXPECT_EQ(r.procedure, "MeltSettingFiles");
        EXPECT_TRUE(r.quiet) << qPrintable(r.text);
    }
    EXPECT_TRUE(sink.reports()[0].text.startsWith("Set03.e: ")) << qPrintable(sink.reports()[0].text);

    // A damaged member that is not a setting file costs nothing but its log line.
    members = elevenMembers();
    members.push_back({"NOTES.TXT", "damaged\r\n", {}, true});
    prompter.clear();
    sink.clear();
    CSelectKino extra = kinoFor(scratch.write("extra.e", vkm::test::lhaArchive(members)));
    EXPECT_TRUE(extra.DoneMelt());
    EXPECT_TRUE(prompter.shown().empty());
    EXPECT_EQ(extra.skippedMembers(), QStringList{"NOTES.TXT"});
    ASSERT_EQ(sink.reports().size(), 1u);
    EXPECT_TRUE(sink.reports()[0].quiet);
}

TEST_F(KinoFixture, MemberPathsNeverLeaveTheWorkingFolder) {
    const QString outside = scratch.file("outside");
    std::vector<LhaMember> members = elevenMembers("Set01.e");
    members.push_back({"../evil", "up"});
    members.push_back({"..\\wevil", "up backslash"});
    members.push_back({(outside + "/abs").toLocal8Bit(), "absolute"});
    members.push_back({"Set01.e", "from a folder",
                       "sub\xff"
                       "dir\xff"});
    members.push_back({"..", "dots only"});
    const QString archive = scratch.write("hostile.e", vkm::test::lhaArchive(members));

    CSelectKino kino = kinoFor(archive);
    ASSERT_TRUE(kino.DoneMelt());
    // Everything lands flat in the working folder, by base name.
    EXPECT_EQ(filesIn(scratch.path()), (QStringList{"hostile.e", "work"}));
    EXPECT_EQ(vkm::test::readAll(work + "/evil"), "up");
    EXPECT_EQ(vkm::test::readAll(work + "/wevil"), "up backslash");
    EXPECT_EQ(vkm::test::readAll(work + "/abs"), "absolute");
    EXPECT_EQ(vkm::test::readAll(work + "/Set01.e"), "from a folder");
    EXPECT_FALSE(QFileInfo::exists(outside));
    EXPECT_EQ(filesIn(work).size(), 14); // ten settings files, four renamed members, ".." skipped
}

TEST_F(KinoFixture, BundledArchiveUnpacksToTheCatalogues) {
    CSelectKino kino = kinoFor(vkm::test::bundledArchive());
    ASSERT_TRUE(kino.DoneMelt());
    vkm::CapturingErrorSink sink;
    vkm::CSelections selout, selinp, cusin;
    ASSERT_TRUE(selout.ReadSet6_7_8_9e(work, "Set08.e"));
    ASSERT_TRUE(selinp.ReadSet6_7_8_9e(work, "Set09.e"));
    ASSERT_TRUE(cusin.ReadSet6_7_8_9e(work, "Set06.e"));
    EXPECT_TRUE(sink.reports().empty());

    for (int n : {1, 17, 32}) {
        const QString name = QStringLiteral("%1").arg(n, 3, 10, QLatin1Char('0'));
        EXPECT_EQ(selout.ValueByDigital("JMP", "J" + name), qint16(0x8000 + n - 1));
        EXPECT_EQ(selout.ValueByDigital("CALL", "C" + name), qint16(0xC000 + n - 1));
        EXPECT_EQ(selinp.ValueByDigital("STEP", "S" + name), qint16(0x8000 + n - 1));
    }
    EXPECT_EQ(selout.CategoryByDigitalOnly("EMAKE"), "OUT");
    EXPECT_EQ(selinp.CountByDigital("M01"), 2);
    QStringList all = selout.categories() + selinp.categories();
    all.removeDuplicates();
    all.sort();
    EXPECT_EQ(all, (QStringList{"ALL", "CALL", "COUNT", "IN", "JMP", "MODE", "OUT", "OUT_S", "RETURN", "RGST",
                                "STEP", "SUB"}));
    // counters on both sides, one numbered below 32 and one at 32 or above, with limits
    qint32 mn = -1, mx = -1;
    selinp.MinMaxByDigital("COUNT", "CN40", mn, mx);
    EXPECT_EQ(mx, 65535);
    EXPECT_EQ(selinp.ValueByDigital("COUNT", "CN40"), 40);
    mn = mx = -1;
    selout.MinMaxByDigital("COUNT", "CN16", mn, mx);
    EXPECT_EQ(mx, 9999);
    EXPECT_EQ(selout.ValueByDigital("COUNT", "CN16"), 16);
    EXPECT_EQ(cusin.ValueByDigital("NONE", " NO"), 0);
    // the code page 932 advice texts decode
    bool japanese = false;
    for (const auto& e : selinp.entries())
        japanese = japanese || e.Advice.contains(QString::fromUtf8("スイッチ"));
    EXPECT_TRUE(japanese);
}

TEST(CheckArchivePresent, MissingArchiveShowsItsPath) {
    vkm::test::Scratch dir;
    ScriptedPrompter prompter;
    EXPECT_FALSE(vkm::checkArchivePresent(dir.file("VKM.e"), prompter));
    ASSERT_EQ(prompter.shown().size(), 1u);
    EXPECT_EQ(prompter.shown()[0].text, kMissing + dir.file("VKM.e"));
    EXPECT_EQ(prompter.shown()[0].style, 1);

    QDir(dir.path()).mkdir("folder.e");
    EXPECT_FALSE(vkm::checkArchivePresent(dir.file("folder.e"), prompter));
    prompter.clear();
    EXPECT_TRUE(vkm::checkArchivePresent(vkm::test::bundledArchive(), prompter));
    EXPECT_TRUE(prompter.shown().empty());
}

} // namespace
