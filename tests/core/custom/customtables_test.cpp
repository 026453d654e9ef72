#include "base/errorreporter.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"
#include "custom/customfield.h"
#include "testsupport.h"

#include <gtest/gtest.h>

using vkm::CapturingErrorSink;
using vkm::CCustomInps;
using vkm::CCustomOuts;

namespace {

TEST(CustomField, AdrsToIndex) {
    struct Case {
        const char* text;
        std::optional<qint32> index;
    };
    const Case cases[] = {{"1800", 8},   {"0", 0},      {"", -1},      {"1792", 0},
                          {"2559", 767}, {"1792.5", 0}, {"1793.5", 2}, {"-5", -5},
                          {"abc", 0},    {"1800x", 8},  {"5", -1787},  {"1e30", std::nullopt}};
    for (const auto& c : cases)
        EXPECT_EQ(vkm::AdrsToIndex(QString::fromLatin1(c.text)), c.index) << c.text;
}

TEST(CustomField, MaskedReadAndWrite) {
    EXPECT_EQ(vkm::maskedValue(0xB5, 0x70), 3);
    EXPECT_EQ(vkm::replaceMasked(0xB5, 0x70, 5), 0xD5);
    EXPECT_EQ(vkm::maskedValue(0xB5, 0x00), 0);
    EXPECT_EQ(vkm::replaceMasked(0xB5, 0x00, 5), 0xB5);
    EXPECT_EQ(vkm::orMasked(0xB5, 0x00, 1), 0xB5);
    // OR keeps a set bit even when 0 is written; 1 sets a clear one
    EXPECT_EQ(vkm::orMasked(0x01, 0x01, 0), 0x01);
    EXPECT_EQ(vkm::orMasked(0x00, 0x01, 1), 0x01);
    EXPECT_EQ(vkm::orMasked(0x00, 0x80, 1), 0x80);
    // bits outside the mask are never touched
    EXPECT_EQ(vkm::replaceMasked(0x00, 0x0C, 7), 0x0C);
    for (int mask : {0x01, 0x06, 0x30, 0xC0, 0xFF})
        for (int v = 0; v < 4; ++v)
            EXPECT_EQ(vkm::maskedValue(vkm::replaceMasked(0x5A, quint8(mask), quint8(v)), quint8(mask)),
                      v & (mask >> __builtin_ctz(unsigned(mask))))
                << mask << " " << v;
}

QByteArray join(const QStringList& fields) {
    return fields.join('\t').toLatin1() + "\r\n";
}

QStringList inputFields(const QString& location) {
    // address/mask pairs, with the whole-byte addresses at fields 15 and 26
    QStringList f{location, "1800", "1801", "1",    "1802", "2",    "1802", "12", "1802",
                  "16",     "1802", "32",   "1802", "64",   "1810", "1803", "1",  "1803",
                  "2",      "1803", "4",    "1803", "48",   "1803", "192",  ""};
    return f;
}

QStringList outputFields(const QString& location) {
    return {location, "2048", "2049", "1",    "2049", "2",    "",  "0",
            "2050",   "2051", "7",    "2051", "112",  "2052", "3", "2053"};
}

TEST(CustomTables, GoodLinesGiveIndexesAndMasks) {
    CCustomInps inps;
    ASSERT_TRUE(inps.readLines(join(inputFields("IN01")) + join(inputFields("IN02"))));
    ASSERT_EQ(inps.Count(), 2);
    const vkm::CCustomInp* in = inps.Item("IN01");
    ASSERT_NE(in, nullptr);
    EXPECT_EQ(in->KinoAdrs, 8);
    EXPECT_EQ(in->LogicAdrs, 9);
    EXPECT_EQ(in->LogicBit, 1);
    EXPECT_EQ(in->AltAdrs, 10);
    EXPECT_EQ(in->RSFDosaDelayAdrs, 18);
    EXPECT_EQ(in->RSFResetStcAdrs, -1);
    EXPECT_EQ(inps.Item(2)->Location, "IN02");

    CCustomOuts outs;
    ASSERT_TRUE(outs.readLines(join(outputFields("OUT01"))));
    const vkm::CCustomOut* out = outs.Item(1);
    ASSERT_NE(out, nullptr);
    EXPECT_EQ(out->KinoAdrs, 256);
    EXPECT_EQ(out->KyoseiOffAdrs, -1);
    EXPECT_EQ(out->ZenpaBit, 0x70);
    EXPECT_EQ(out->FUMAdrs, 261);
    EXPECT_EQ(outs.Item("nothing"), nullptr);
    EXPECT_EQ(outs.Item(2), nullptr);
}

TEST(CustomTables, LinesEndAtCrLfALoneCrOrALoneLf) {
    const QByteArray in01 = inputFields("IN01").join('\t').toLatin1();
    const QByteArray in02 = inputFields("IN02").join('\t').toLatin1();
    const QByteArray out01 = outputFields("OUT01").join('\t').toLatin1();
    const QByteArray out02 = outputFields("OUT02").join('\t').toLatin1();
    for (const QByteArray& end : {QByteArray("\r"), QByteArray("\n"), QByteArray("\r\n")}) {
        CapturingErrorSink sink;
        CCustomInps inps;
        ASSERT_TRUE(inps.readLines(in01 + end + in02 + end)) << end.toHex().constData();
        EXPECT_EQ(inps.Count(), 2);
        ASSERT_NE(inps.Item("IN02"), nullptr);
        // the last field of a line is whole: no line end is left in it
        EXPECT_EQ(inps.Item("IN02")->RSFResetStcAdrs, -1);
        CCustomOuts outs;
        ASSERT_TRUE(outs.readLines(out01 + end + out02)) << end.toHex().constData();
        ASSERT_NE(outs.Item("OUT02"), nullptr);
        EXPECT_EQ(outs.Item("OUT02")->FUMAdrs, 261);
        EXPECT_TRUE(sink.reports().empty());
    }
}

TEST(CustomTables, BadLinesFailWithTheirProcedureAndKeepEarlierTerminals) {
    struct Case {
        const char* what;
        int field; // 1-based field to change, 0: drop the last field
        const char* value;
        int error;
    };
    const Case cases[] = {
        {"one field short", 0, nullptr, vkm::ErrSubscript},
        {"mask above 255", 4, "256", vkm::ErrOverflow},
        {"negative mask", 6, "-1", vkm::ErrOverflow},
        {"address beyond 32 bits", 5, "9e12", vkm::ErrOverflow},
        {"duplicate location", 1, "A", vkm::ErrDuplicateKey},
    };
    for (const auto& c : cases) {
        QStringList in = inputFields("B"), out = outputFields("B");
        for (QStringList* f : {&in, &out}) {
            if (c.field == 0)
                f->removeLast();
            else
                (*f)[c.field - 1] = c.value;
        }
        CapturingErrorSink sink;
        CCustomInps inps;
        EXPECT_FALSE(inps.readLines(join(inputFields("A")) + join(in) + join(inputFields("C")))) << c.what;
        EXPECT_EQ(inps.Count(), 1) << c.what;
        CCustomOuts outs;
        EXPECT_FALSE(outs.readLines(join(outputFields("A")) + join(out) + join(outputFields("C")))) << c.what;
        EXPECT_EQ(outs.Count(), 1) << c.what;
        EXPECT_EQ(sink.procedures(), (QStringList{"ReadSet04e", "ReadSet05e"})) << c.what;
        for (const auto& r : sink.reports())
            EXPECT_EQ(r.number, c.error) << c.what;
    }
    CapturingErrorSink sink;
    EXPECT_FALSE(CCustomInps().readLines("\r\n"));
    EXPECT_FALSE(CCustomInps().ReadSet04e(vkm::test::Scratch().path()));
    EXPECT_EQ(sink.reports().back().number, vkm::ErrFileNotFound);
}

TEST(CustomTables, BundledDescriptionsLieInsideTheCustomisationArea) {
    const QString folder = QStringLiteral(VKM_SOURCE_DIR "/data/setting");
    CapturingErrorSink sink;
    CCustomInps inps;
    CCustomOuts outs;
    ASSERT_TRUE(inps.ReadSet04e(folder));
    ASSERT_TRUE(outs.ReadSet05e(folder));
    EXPECT_TRUE(sink.reports().empty());
    EXPECT_GE(inps.Count(), 4);
    EXPECT_GE(outs.Count(), 4);
    auto inside = [](qint32 index) { return index == -1 || (index >= 0 && index < 768); };
    int emptyAddresses = 0;
    for (const auto& t : inps) {
        for (qint32 a : {t.KinoAdrs, t.LogicAdrs, t.AltAdrs, t.DosaAdrs, t.IgnoreI1Adrs, t.AlAdrs,
                         t.RSFDosaClearAdrs, t.RSFDosaDelayAdrs, t.DengenOnAdrs, t.UntenoffAdrs, t.TomeAdrs,
                         t.RSFSetAdrs, t.RSFResetAdrs, t.RSFResetStcAdrs}) {
            EXPECT_TRUE(inside(a)) << qPrintable(t.Location) << " " << a;
            emptyAddresses += a == -1;
        }
        EXPECT_GE(t.KinoAdrs, 0);
    }
    for (const auto& t : outs) {
        for (qint32 a : {t.KinoAdrs, t.LogicAdrs, t.ChopAdrs, t.KyoseiOffAdrs, t.OnDelayAdrs, t.ChopDutyAdrs,
                         t.ZenpaAdrs, t.HojiAdrs, t.FUMAdrs}) {
            EXPECT_TRUE(inside(a)) << qPrintable(t.Location) << " " << a;
            emptyAddresses += a == -1;
        }
    }
    EXPECT_GT(emptyAddresses, 0);
}

// A byte beyond a code table (a machine with more codes than this editor knows) has no text
// rather than another code's.
TEST(CustomTables, CodesBeyondTheTablesHaveNoText) {
    for (int code : {-1, 8, 255}) {
        EXPECT_EQ(CCustomOuts::GetChopDutyInfo1(code), "") << code;
        EXPECT_EQ(CCustomOuts::GetChopDutyInfo2(code), "") << code;
        EXPECT_EQ(CCustomOuts::GetZenpaInfo2(code), "") << code;
    }
    EXPECT_EQ(CCustomOuts::GetHojiInfo1(4), "");
}

} // namespace
