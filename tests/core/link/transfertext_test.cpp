#include "../model/programs.h"

#include "base/errorreporter.h"
#include "base/messages.h"
#include "base/scriptedprompter.h"
#include "link/memorymap.h"
#include "link/transfertext.h"
#include "testsupport.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace vkm;
using namespace vkm::test;

namespace {

QByteArray randomBytes(int n, quint32 seed) {
    QRandomGenerator rng(seed);
    QByteArray b(n, '\0');
    for (auto& c : b)
        c = char(rng.bounded(256));
    return b;
}

QList<QByteArray> records(const QByteArray& text) {
    QList<QByteArray> lines = text.split('\n');
    EXPECT_TRUE(lines.last().isEmpty()) << "every record ends with CR LF";
    lines.removeLast();
    for (auto& l : lines) {
        EXPECT_TRUE(l.endsWith('\r'));
        l.chop(1);
    }
    return lines;
}

} // namespace

TEST(TransferText, HexAndChecksum) {
    EXPECT_EQ(HexByte(0), "00");
    EXPECT_EQ(HexByte(0xAB), "AB");
    EXPECT_EQ(HexByte(7), "07");
    EXPECT_EQ(HexDigits(0x300, 4), "0300");
    EXPECT_EQ(HexDigits(0x1f68, 4), "1F68");
    EXPECT_EQ(GetStringToCheckSum("W0300010600000000000035"), "03000106000000000000");
    EXPECT_EQ(GetCheckSum("03000106000000000000"), "35");
    EXPECT_EQ(wRecord(0x0300, QByteArray::fromHex("0106000000000000")), "W0300010600000000000035");
    EXPECT_TRUE(wRecord(0x0100, QByteArray(8, '\0')).endsWith("3E"));
    EXPECT_EQ(wRecord(0x1FF8, QByteArray::fromHex("FFFFFFFFFFFFFFFF")).left(21), "W1FF8FFFFFFFFFFFFFFFF");
    EXPECT_EQ(wRecord(0, QByteArray(7, '\0')), "") << "a record holds exactly eight bytes";

    int address = -1;
    EXPECT_TRUE(isWRecord("W0300010600000000000035", &address));
    EXPECT_EQ(address, 0x0300);
    EXPECT_TRUE(isWRecord("W0300010600000000000035") && !isWRecord("W0300010600000000000036"));
    EXPECT_FALSE(isWRecord("X0300010600000000000035"));
    EXPECT_FALSE(isWRecord("W030001060000000000035"));
    EXPECT_FALSE(isWRecord("W03000106000000000000G5")) << "a checksum digit that is not hexadecimal";
}

TEST(TransferText, StepImageGives238RecordsOverBothStretches) {
    const QByteArray image = randomBytes(memmap::kStepImageBytes, 7);
    bool ok = false;
    const QByteArray text = stepImageToText(image, &ok);
    ASSERT_TRUE(ok);
    const QList<QByteArray> lines = records(text);
    ASSERT_EQ(lines.size(), 238);
    EXPECT_TRUE(lines[0].startsWith("W0300"));
    EXPECT_TRUE(lines[95].startsWith("W05F8"));
    EXPECT_TRUE(lines[96].startsWith("W1B00"));
    EXPECT_TRUE(lines[237].startsWith("W1F68"));
    for (const auto& l : lines) {
        ASSERT_EQ(l.size(), 23);
        EXPECT_EQ(GetCheckSum(GetStringToCheckSum(QString::fromLatin1(l))), QString::fromLatin1(l.right(2)));
    }
    EXPECT_EQ(lines[96].mid(5, 16), image.mid(768, 8).toHex().toUpper());
    ScriptedPrompter prompter;
    EXPECT_EQ(parseTransferText(text, prompter), image);
    EXPECT_TRUE(prompter.shown().empty());

    // Bytes past 1903 are not transferred; fewer than 1904 give nothing.
    EXPECT_EQ(stepImageToText(image + "tail"), text);
    EXPECT_TRUE(stepImageToText(image.left(1903), &ok).isEmpty());
    EXPECT_FALSE(ok);
}

TEST(ParseData, RecordsChecksumsAndLineRules) {
    struct Case {
        const char* name;
        QByteArray text;
        QByteArray bytes;
        int checksumErrors;
    };
    const QByteArray good = "W0300010600000000000035";
    const QByteArray other = wRecord(0x308, QByteArray::fromHex("1122334455667788")).toLatin1();
    const QByteArray goodBytes = QByteArray::fromHex("0106000000000000");
    const QByteArray otherBytes = QByteArray::fromHex("1122334455667788");
    const Case cases[] = {
        {"one good record", good + "\r\n", goodBytes, 0},
        {"no final line end", good, goodBytes, 0},
        {"LF only", good + "\n" + other + "\n", goodBytes + otherBytes, 0},
        {"bad checksum kept", "W0300010600000000000036\r\n", goodBytes, 1},
        {"lower-case checksum", good.left(21) + "3e\r\n" + other, goodBytes + otherBytes, 1},
        {"two bad records", "W0300010600000000000036\r\nW030001060000000000003A\r\n", goodBytes + goodBytes,
         2},
        {"22 and 24 characters skipped", good.left(22) + "\r\n" + good + "X\r\n" + other + "\r\n", otherBytes,
         0},
        {"empty line ends", good + "\r\n\r\n" + other + "\r\n", goodBytes, 0},
        {"leading empty line", "\r\n" + good, {}, 0},
        {"empty text", {}, {}, 0},
        {"address not used", other + "\r\n" + good + "\r\n", otherBytes + goodBytes, 0},
    };
    for (const auto& tc : cases) {
        ScriptedPrompter prompter;
        bool ok = false;
        EXPECT_EQ(parseTransferText(tc.text, prompter, &ok), tc.bytes) << tc.name;
        EXPECT_TRUE(ok) << tc.name;
        ASSERT_EQ(int(prompter.shown().size()), tc.checksumErrors) << tc.name;
        for (const auto& shown : prompter.shown()) {
            EXPECT_EQ(shown.text, "checksum error");
            EXPECT_EQ(shown.style, 1);
        }
    }
}

TEST(ParseData, BadDataAndUnreadableFilesAreReported) {
    CapturingErrorSink sink;
    ScriptedPrompter prompter;
    bool ok = true;
    EXPECT_TRUE(parseTransferText("W03000106000000000G0035\r\n", prompter, &ok).isEmpty());
    EXPECT_FALSE(ok);
    EXPECT_TRUE(ParseData("/nonexistent/file.gsp", prompter, &ok).isEmpty());
    EXPECT_FALSE(ok);
    EXPECT_EQ(sink.procedures(), (QStringList{"ParseData", "ParseData"}));
}

TEST(ParseData, LargeInputsGiveWholeRecordsOrNothing) {
    // Megabytes of random bytes with rare line breaks, and many valid records run together
    // without one: every line is read once (how long it takes is bench material), only
    // whole 23-character records give bytes, eight each, and a line of records run
    // together is no record at all.
    ScriptedPrompter prompter;
    bool ok = false;
    const QByteArray junk = parseTransferText(randomBytes(4 << 20, 99), prompter, &ok);
    EXPECT_EQ(junk.size() % 8, 0);
    const QByteArray records = stepImageToText(randomBytes(1904, 3)).repeated(200).replace("\r\n", "");
    ok = false;
    EXPECT_TRUE(parseTransferText(records, prompter, &ok).isEmpty());
    EXPECT_TRUE(ok);
}

TEST(TransferText, TextImageTextRoundTripIsByteIdentical) {
    const Catalogues c = testCatalogues();
    std::vector<QByteArray> images;
    for (quint32 seed = 1; seed <= 20; ++seed)
        images.push_back(randomBytes(1904, seed));
    for (const Shape shape : kAllShapes)
        images.push_back(buildProgram(shape, c).toImage(c.selinp, fixedClock(), nullptr));
    for (const auto& image : images) {
        const QByteArray text = stepImageToText(image);
        ScriptedPrompter prompter;
        const QByteArray parsed = parseTransferText(text, prompter);
        EXPECT_EQ(parsed, image);
        EXPECT_EQ(stepImageToText(parsed), text);
    }
}

TEST(SaveAsText, RangesPaddingAndTheOversizeNotice) {
    Scratch s;
    const QString src768 = s.write("c768.bin", randomBytes(768, 5));
    ScriptedPrompter prompter;
    ASSERT_TRUE(SaveAsText(src768, s.file("all.txt"), 0, 8192, prompter));
    QList<QByteArray> lines = records(readAll(s.file("all.txt")));
    ASSERT_EQ(lines.size(), 1024);
    EXPECT_TRUE(lines[0].startsWith("W0000"));
    EXPECT_TRUE(lines[1023].startsWith("W1FF8"));
    EXPECT_EQ(lines[95].mid(5, 16), readAll(src768).right(8).toHex().toUpper());
    for (int i = 96; i < 1024; ++i)
        ASSERT_EQ(lines[i].mid(5, 16), "0000000000000000") << i;
    EXPECT_TRUE(prompter.shown().empty());

    ASSERT_TRUE(SaveAsText(src768, s.file("own.txt"), 0, 768, prompter));
    lines = records(readAll(s.file("own.txt")));
    ASSERT_EQ(lines.size(), 96);
    EXPECT_TRUE(lines[95].startsWith("W02F8"));
    EXPECT_TRUE(prompter.shown().empty());

    // A source longer than the range: the notice, and the range is still written.
    const QString src800 = s.write("c800.bin", randomBytes(800, 6));
    ASSERT_TRUE(SaveAsText(src800, s.file("long.txt"), 0, 768, prompter));
    ASSERT_EQ(prompter.shown().size(), 1u);
    EXPECT_EQ(prompter.shown()[0].text, "SaveAsText UBound(byt) is larger than lEndAdrs!");
    // a fixed text in a plain box, not a numbered message and not one of the ten styles
    EXPECT_EQ(prompter.shown()[0].number, 0);
    EXPECT_EQ(prompter.shown()[0].style, vkm::kPlainBox);
    EXPECT_EQ(records(readAll(s.file("long.txt"))).size(), 96);

    // A record cut by the end of the source fails and leaves no destination.
    CapturingErrorSink sink;
    const QString src13 = s.write("c13.bin", randomBytes(13, 8));
    s.write("cut.txt", "old");
    EXPECT_FALSE(SaveAsText(src13, s.file("cut.txt"), 0, 768, prompter));
    EXPECT_FALSE(QFile::exists(s.file("cut.txt")));
    EXPECT_EQ(sink.procedures(), QStringList{"SaveAsText"});
}

TEST(SaveAsTextStep, FilesAndShortSources) {
    Scratch s;
    const QByteArray image = randomBytes(1904, 11);
    const QString src = s.write("eusr2.tmp", image);
    s.write("out.gsp", QByteArray(9000, 'x'));
    ASSERT_TRUE(SaveAsTextStep(src, s.file("out.gsp")));
    EXPECT_EQ(readAll(s.file("out.gsp")), stepImageToText(image)) << "replaced, not overwritten in place";
    EXPECT_EQ(readAll(s.file("out.gsp")).size(), 238 * 25);

    CapturingErrorSink sink;
    const QString shortSrc = s.write("short.tmp", image.left(1900));
    EXPECT_FALSE(SaveAsTextStep(shortSrc, s.file("out.gsp")));
    EXPECT_FALSE(QFile::exists(s.file("out.gsp")));
    EXPECT_FALSE(SaveAsTextStep(s.file("missing.tmp"), s.file("x.gsp")));
    EXPECT_EQ(sink.procedures(), (QStringList{"SaveAsTextStep", "SaveAsTextStep"}));
}
