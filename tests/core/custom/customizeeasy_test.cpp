// The easy customisation grid as data, loading a customisation file, and the transfer text
// that writes an edited function back: only the edited terminal's function byte changes.
#include "base/errorreporter.h"
#include "base/scriptedprompter.h"
#include "base/tempfolder.h"
#include "catalogue/cselections.h"
#include "catalogue/cselectkino.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"
#include "custom/customizedata.h"
#include "custom/customizeeasysheet.h"
#include "link/machinefiles.h"
#include "link/transfertext.h"
#include "testsupport.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace vkm;
using namespace vkm::test;

namespace {

const QString kSettingDir = QStringLiteral(VKM_SOURCE_DIR "/data/setting");

// Transfer text of an image starting at address 0.
QByteArray transferText(const QByteArray& image) {
    QByteArray text;
    for (int a = 0; a + 8 <= image.size(); a += 8)
        text += wRecord(a, image.mid(a, 8)).toLatin1() + "\r\n";
    return text;
}

QList<int> differences(const QByteArray& a, const QByteArray& b) {
    QList<int> out;
    for (int n = 0; n < std::min(a.size(), b.size()); ++n)
        if (a.at(n) != b.at(n))
            out << n;
    return out;
}

TEST(CustomizeEasySheet, TypedTextsAreUpperCasedAndFoundWithTheirPadding) {
    ScriptedPrompter prompter;
    CSelections inp, out;
    inp.Add(" NO", 0, "No function", "", "0", "0");
    inp.Add("AB  ", 1, "", "", "0", "0");
    inp.Add("ST ", 2, "", "", "0", "0");
    inp.Add("LONG", 3, "", "", "0", "0");
    inp.Add("X   ", 4, "", "GROUPED", "0", "0"); // a catalogue that groups still types
    out.Add(" NO", 0, "", "", "0", "0");
    out.Add("AB", 9, "", "", "0", "0");
    CCustomInps inps;
    CCustomInp in;
    in.Location = "IN01";
    in.Kino = 3;
    ASSERT_TRUE(inps.Add(in));
    in.Location = "IN02";
    in.Kino = 99; // no catalogue entry
    ASSERT_TRUE(inps.Add(in));
    CCustomOuts outs;
    CCustomOut o;
    o.Location = "OUT01";
    o.Kino = 9;
    ASSERT_TRUE(outs.Add(o));

    CustomizeEasySheet sheet(inp, out, prompter);
    sheet.fill(inps, outs);
    ASSERT_EQ(sheet.rowCount(), 3);
    EXPECT_EQ(sheet.row(0).location, "IN01");
    EXPECT_EQ(sheet.row(0).digital, "LONG");
    EXPECT_EQ(sheet.row(1).digital, "#99");
    EXPECT_EQ(sheet.row(2).inOut, 2);
    EXPECT_EQ(sheet.row(2).digital, "AB");
    EXPECT_FALSE(sheet.IsChanged());

    const struct {
        const char* typed;
        int row;
        const char* shown; // nullptr: refused
    } cases[] = {
        {"ab", 0, "AB  "},      {"st", 0, "ST "},    {"St ", 0, "ST "},   {"long", 0, "LONG"},
        {"x", 0, "X   "},       {"ab", 2, "AB"},     {"abc", 0, nullptr}, {"", 0, nullptr},
        {"st    ", 0, nullptr}, {" ab", 0, nullptr},
    };
    for (const auto& c : cases) {
        prompter.clear();
        const QString before = sheet.row(c.row).digital;
        EXPECT_EQ(sheet.enterFunction(c.row, QString::fromLatin1(c.typed)), c.shown != nullptr) << c.typed;
        if (c.shown) {
            EXPECT_EQ(sheet.row(c.row).digital, QLatin1String(c.shown)) << c.typed;
            EXPECT_TRUE(prompter.shown().empty()) << c.typed;
        } else {
            EXPECT_EQ(sheet.row(c.row).digital, before) << c.typed;
            EXPECT_EQ(prompter.numbers(), std::vector<int>{67}) << c.typed;
        }
    }
    EXPECT_TRUE(sheet.IsChanged());
    EXPECT_TRUE(sheet.row(0).changed);
    EXPECT_FALSE(sheet.row(1).changed);

    // A chosen value goes in as its text; a value the catalogue lacks changes nothing.
    prompter.clear();
    EXPECT_TRUE(sheet.enterValue(1, 2));
    EXPECT_EQ(sheet.row(1).digital, "ST ");
    EXPECT_FALSE(sheet.enterValue(1, 77));
    EXPECT_EQ(sheet.row(1).digital, "ST ");
    EXPECT_TRUE(sheet.setNoFunction(2));
    EXPECT_EQ(sheet.row(2).digital, " NO");
    EXPECT_TRUE(prompter.shown().empty());

    sheet.markSaved();
    EXPECT_FALSE(sheet.IsChanged());
    for (int r = 0; r < sheet.rowCount(); ++r)
        EXPECT_FALSE(sheet.row(r).changed) << r;

    EXPECT_TRUE(sheet.Update_Variable(inps, outs));
    EXPECT_EQ(inps.Item("IN01")->Kino, 4);
    EXPECT_EQ(inps.Item("IN02")->Kino, 2);
    EXPECT_EQ(outs.Item("OUT01")->Kino, 0);

    // A row still showing a function the catalogue does not know stops the update.
    sheet.fill(inps, outs);
    inps.Item("IN02")->Kino = 99;
    sheet.fill(inps, outs);
    prompter.clear();
    EXPECT_FALSE(sheet.Update_Variable(inps, outs));
    EXPECT_EQ(prompter.numbers(), std::vector<int>{80});
}

// The bundled terminal descriptions and catalogues, and a customisation area in which
// every byte holds something: flags and codes set, whole bytes with bit 7, and functions
// the catalogues know.
class CustomizeRoundTrip : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(cusI.ReadSet04e(kSettingDir));
        ASSERT_TRUE(cusO.ReadSet05e(kSettingDir));
        ASSERT_TRUE(selCusInp.ReadSet6_7_8_9e(kSettingDir, "Set06.e"));
        ASSERT_TRUE(selCusOut.ReadSet6_7_8_9e(kSettingDir, "Set07.e"));
        machine = QByteArray(768, '\0');
        for (int n = 0; n < machine.size(); ++n)
            machine[n] = char((n * 37 + 11) & 0xFF);
        int i = 0;
        for (const CCustomInp& t : cusI)
            machine[t.KinoAdrs] = char(selCusInp.entries().at(std::size_t(i++) % 5).value);
        for (const CCustomOut& t : cusO)
            machine[t.KinoAdrs] = char(selCusOut.entries().at(std::size_t(i++) % 5).value);
        file = scratch.write("custom.txt", transferText(machine));
    }

    CCustomInps cusI;
    CCustomOuts cusO;
    CSelections selCusInp, selCusOut;
    ScriptedPrompter prompter;
    Scratch scratch;
    QByteArray machine;
    QString file;
};

TEST_F(CustomizeRoundTrip, AnEditedFunctionChangesExactlyItsByte) {
    QByteArray image;
    ASSERT_TRUE(ReadCustomizeData(file, image, cusI, cusO, prompter));
    EXPECT_EQ(image, machine);
    EXPECT_EQ(readAll(CreateTempName(2, 0)), machine) << "eusr3.tmp holds the bytes";

    CustomizeEasySheet sheet(selCusInp, selCusOut, prompter);
    sheet.fill(cusI, cusO);
    ASSERT_EQ(sheet.rowCount(), cusI.Count() + cusO.Count());
    // IN03's function lives at 1808 in the setting files' numbering: byte 1808 - 1792 = 16.
    int in03 = -1;
    for (int r = 0; r < sheet.rowCount(); ++r)
        if (sheet.row(r).location == QLatin1String("IN03"))
            in03 = r;
    ASSERT_GE(in03, 0);
    ASSERT_TRUE(sheet.enterFunction(in03, "gp2"));

    CSelectKino kino(nullptr, prompter, bundledArchive(), scratch.file("work"));
    const QString fromMachine = GetFileNameToTransferCustom(sheet, kino, image, true, prompter);
    ASSERT_FALSE(fromMachine.isEmpty()) << prompter.texts().join(" | ").toStdString();
    EXPECT_TRUE(prompter.shown().empty());
    EXPECT_TRUE(IsThisFileFromMachine(fromMachine)) << "a VKM temporary file";
    EXPECT_TRUE(QDir(scratch.file("work")).entryList(QDir::Files).isEmpty()) << "setting files removed";

    const QByteArray text = readAll(fromMachine);
    EXPECT_EQ(text.count("\r\n"), 96);
    bool ok = false;
    const QByteArray written = parseTransferText(text, prompter, &ok);
    ASSERT_TRUE(ok);
    ASSERT_EQ(written.size(), 768);
    EXPECT_EQ(differences(written, machine), QList<int>{16});
    EXPECT_EQ(written.at(16), 65) << "GP2 is function 65 in Set06.e";

    // From a disk the text covers the whole memory: zeros past the area.
    const QString fromDisk = GetFileNameToTransferCustom(sheet, kino, image, false, prompter);
    const QByteArray whole = parseTransferText(readAll(fromDisk), prompter, &ok);
    ASSERT_TRUE(ok);
    ASSERT_EQ(whole.size(), 8192);
    EXPECT_EQ(whole.left(768), written);
    EXPECT_EQ(whole.mid(768), QByteArray(8192 - 768, '\0'));
}

TEST_F(CustomizeRoundTrip, AFileThatDoesNotCoverTheTerminalsChangesNothing) {
    QByteArray image = "held";
    const quint8 kinoBefore = cusO.Item(cusO.Count())->Kino;
    CapturingErrorSink sink;
    // The last output terminal lies beyond a file of 400 bytes.
    const QString shortFile = scratch.write("short.txt", transferText(machine.left(400)));
    EXPECT_FALSE(ReadCustomizeData(shortFile, image, cusI, cusO, prompter));
    EXPECT_EQ(image, "held");
    EXPECT_EQ(cusO.Item(cusO.Count())->Kino, kinoBefore);
    EXPECT_EQ(cusI.Item(1)->Kino, 0) << "the inputs that could be read were not kept either";
    EXPECT_EQ(sink.procedures(), QStringList{"ReadData(output)"});

    EXPECT_FALSE(ReadCustomizeData(scratch.file("missing.txt"), image, cusI, cusO, prompter));
    const QString notHex = scratch.write("nothex.txt", "W0000ZZ00000000000000FF\r\n");
    EXPECT_FALSE(ReadCustomizeData(notHex, image, cusI, cusO, prompter));
    EXPECT_EQ(image, "held");

    // A record with a wrong checksum is reported and used all the same.
    prompter.clear();
    QByteArray text = transferText(machine);
    text[21] = text[21] == '0' ? '1' : '0';
    EXPECT_TRUE(ReadCustomizeData(scratch.write("sum.txt", text), image, cusI, cusO, prompter));
    EXPECT_EQ(prompter.texts(), QStringList{"checksum error"});
    EXPECT_EQ(image.size(), 768);
}

TEST_F(CustomizeRoundTrip, NothingIsBuiltWithoutTheArchiveOrWithAnUnknownFunction) {
    QByteArray image;
    ASSERT_TRUE(ReadCustomizeData(file, image, cusI, cusO, prompter));
    CustomizeEasySheet sheet(selCusInp, selCusOut, prompter);
    sheet.fill(cusI, cusO);

    CapturingErrorSink sink;
    CSelectKino missing(nullptr, prompter, scratch.file("no-VKM.e"), scratch.file("work"));
    EXPECT_EQ(GetFileNameToTransferCustom(sheet, missing, image, true, prompter), "");
    ASSERT_EQ(prompter.shown().size(), 1u);
    EXPECT_TRUE(prompter.texts().first().startsWith("Cannot find following file. Cannot load."));

    // A terminal whose function the catalogue lacks: message 80, no file.
    machine[16] = char(120);
    ASSERT_TRUE(
        ReadCustomizeData(scratch.write("unknown.txt", transferText(machine)), image, cusI, cusO, prompter));
    sheet.fill(cusI, cusO);
    prompter.clear();
    CSelectKino kino(nullptr, prompter, bundledArchive(), scratch.file("work"));
    const QStringList before = QDir(TempFolder::instance().path()).entryList(QDir::Files);
    EXPECT_EQ(GetFileNameToTransferCustom(sheet, kino, image, true, prompter), "");
    EXPECT_EQ(prompter.numbers(), std::vector<int>{80});
    EXPECT_EQ(QDir(TempFolder::instance().path()).entryList(QDir::Files), before) << "no file left behind";
}

} // namespace
