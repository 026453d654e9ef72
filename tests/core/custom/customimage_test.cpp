// Terminal values read from and written into a customisation image: masked codes, flags,
// whole bytes, the function byte, missing addresses and addresses beyond the image.
#include "base/errorreporter.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"

#include <gtest/gtest.h>

using vkm::CapturingErrorSink;
using vkm::CCustomInp;
using vkm::CCustomInps;
using vkm::CCustomOut;
using vkm::CCustomOuts;

namespace {

// A terminal whose every property has its own byte: the function at base, then one byte per
// property in the order given, each bit field under the given mask (a whole byte has none).
template <class T>
T terminalAt(const char* location, int base, quint8 mask,
             std::initializer_list<std::pair<qint32 T::*, quint8 T::*>> fields) {
    T t;
    t.Location = QLatin1String(location);
    t.KinoAdrs = base;
    for (const auto& [address, bit] : fields) {
        t.*address = ++base;
        if (bit)
            t.*bit = mask;
    }
    return t;
}

CCustomInp inputAt(const char* location, int base, quint8 mask) {
    using I = CCustomInp;
    return terminalAt<I>(location, base, mask,
                         {{&I::LogicAdrs, &I::LogicBit},
                          {&I::AltAdrs, &I::AltBit},
                          {&I::DosaAdrs, &I::DosaBit},
                          {&I::IgnoreI1Adrs, &I::IgnoreI1Bit},
                          {&I::AlAdrs, &I::AlBit},
                          {&I::RSFDosaClearAdrs, &I::RSFDosaClearBit},
                          {&I::RSFDosaDelayAdrs, nullptr},
                          {&I::DengenOnAdrs, &I::DengenOnBit},
                          {&I::UntenoffAdrs, &I::UntenoffBit},
                          {&I::TomeAdrs, &I::TomeBit},
                          {&I::RSFSetAdrs, &I::RSFSetBit},
                          {&I::RSFResetAdrs, &I::RSFResetBit},
                          {&I::RSFResetStcAdrs, nullptr}});
}

CCustomOut outputAt(const char* location, int base, quint8 mask) {
    using O = CCustomOut;
    return terminalAt<O>(location, base, mask,
                         {{&O::LogicAdrs, &O::LogicBit},
                          {&O::ChopAdrs, &O::ChopBit},
                          {&O::KyoseiOffAdrs, &O::KyoseiOffBit},
                          {&O::OnDelayAdrs, nullptr},
                          {&O::ChopDutyAdrs, &O::ChopDutyBit},
                          {&O::ZenpaAdrs, &O::ZenpaBit},
                          {&O::HojiAdrs, &O::HojiBit},
                          {&O::FUMAdrs, nullptr}});
}

// One input terminal at byte 0 and one output terminal at byte 16 of a 32-byte image.
struct InAndOut {
    explicit InAndOut(quint8 mask) {
        EXPECT_TRUE(inps.Add(inputAt("IN", 0, mask)));
        EXPECT_TRUE(outs.Add(outputAt("OUT", 16, mask)));
    }
    void read(const QByteArray& image) {
        ASSERT_TRUE(inps.ReadData(image));
        ASSERT_TRUE(outs.ReadData(image));
    }
    void save(QByteArray& image) {
        ASSERT_TRUE(inps.SaveCustomizeData(image));
        ASSERT_TRUE(outs.SaveCustomizeData(image));
    }
    CCustomInps inps;
    CCustomOuts outs;
    CCustomInp& in() { return *inps.Item(1); }
    CCustomOut& out() { return *outs.Item(1); }
};

quint8 at(const QByteArray& image, int index) {
    return quint8(image.at(index));
}

TEST(CustomImage, CodesUnderAMaskAreReadShiftedAndReplacedOnWriting) {
    // 0xB5 = 1011 0101: under 0x70 lies 011 = 3; writing 5 (101) there gives 1101 0101.
    InAndOut t(0x70);
    QByteArray image(32, char(0xB5));
    t.read(image);
    CCustomInp& in = t.in();
    CCustomOut& out = t.out();
    for (quint8 v : {in.Dosa, in.RSFSet, in.RSFReset, out.ChopDuty, out.Zenpa, out.Hoji})
        EXPECT_EQ(v, 3);
    in.Dosa = in.RSFSet = in.RSFReset = 5;
    out.ChopDuty = out.Zenpa = out.Hoji = 5;
    t.save(image);
    for (int index : {3, 11, 12, 16 + 5, 16 + 6, 16 + 7})
        EXPECT_EQ(at(image, index), 0xD5) << index;
    // Read back, the codes are what was written.
    t.read(image);
    EXPECT_EQ(t.out().Zenpa, 5);
}

TEST(CustomImage, FlagsAreOredIntoTheByteAndNeverCleared) {
    InAndOut t(0x04);
    QByteArray image(32, char(0x04));
    t.read(image);
    CCustomInp& in = t.in();
    CCustomOut& out = t.out();
    EXPECT_EQ(in.Logic, 1);
    EXPECT_EQ(out.KyoseiOff, 1);
    // Writing 0 into a set flag leaves it set; writing 1 into a clear flag sets it, next to
    // bits that were set already.
    const std::pair<quint8, char> cases[] = {{0, 0x04}, {1, char(0x81)}};
    for (const auto& [flag, before] : cases) {
        image = QByteArray(32, before);
        in.Logic = in.Alt = in.IgnoreI1 = in.Al = in.RSFDosaClear = in.DengenOn = in.Untenoff = in.Tome =
            flag;
        out.Logic = out.Chop = out.KyoseiOff = flag;
        t.save(image);
        for (int index : {1, 2, 4, 5, 6, 8, 9, 10, 17, 18, 19})
            EXPECT_EQ(at(image, index), quint8(before) | 0x04) << "flag " << int(flag) << ", byte " << index;
    }
}

TEST(CustomImage, FunctionByteLosesBitSevenAndWholeBytesStayWhole) {
    InAndOut t(0x01);
    QByteArray image(32, '\0');
    image[0] = char(0x85);
    image[16] = char(0x85);
    image[7] = char(0xC8);      // RSFDosaDelay
    image[13] = char(0x99);     // RSFResetStc
    image[16 + 4] = char(0xFE); // OnDelay
    image[16 + 8] = char(0x80); // FUM
    t.read(image);
    const CCustomInp& in = t.in();
    const CCustomOut& out = t.out();
    EXPECT_EQ(QList<int>({in.Kino, out.Kino, in.RSFDosaDelay, in.RSFResetStc, out.OnDelay, out.FUM}),
              QList<int>({5, 5, 0xC8, 0x99, 0xFE, 0x80}));
    t.save(image);
    EXPECT_EQ(QList<int>({at(image, 0), at(image, 16), at(image, 7), at(image, 16 + 8)}),
              QList<int>({0x05, 0x05, 0xC8, 0x80}));

    // The listing names every value property, and tells the one the image has no place for.
    QStringList names;
    for (const auto& v : out.valueProperties())
        names << QString::fromLatin1(v.name) + (v.present ? "" : "-");
    EXPECT_EQ(names, (QStringList{"Kino", "Logic", "Chop", "KyoseiOff", "OffDelay-", "OnDelay", "ChopDuty",
                                  "Zenpa", "Hoji", "FUM"}));
    EXPECT_EQ(in.valueProperties().size(), 14u);
}

TEST(CustomImage, EmptyAddressesAreNeitherReadNorWritten) {
    CCustomInp in = inputAt("IN", 0, 0xFF);
    in.AltAdrs = in.DosaAdrs = in.RSFDosaDelayAdrs = in.RSFSetAdrs = -1;
    CCustomOut out = outputAt("OUT", 16, 0xFF);
    out.ChopAdrs = out.OnDelayAdrs = out.HojiAdrs = -1;
    CCustomInps inps;
    ASSERT_TRUE(inps.Add(in));
    CCustomOuts outs;
    ASSERT_TRUE(outs.Add(out));
    for (auto& t : inps)
        t.Alt = t.Dosa = t.RSFDosaDelay = t.RSFSet = 7;
    for (auto& t : outs)
        t.Chop = t.OnDelay = t.Hoji = 7;
    QByteArray image(32, char(0x33));
    ASSERT_TRUE(inps.ReadData(image));
    ASSERT_TRUE(outs.ReadData(image));
    const CCustomInp& i = *inps.Item(1);
    EXPECT_EQ(QList<int>({i.Alt, i.Dosa, i.RSFDosaDelay, i.RSFSet, i.RSFReset}),
              QList<int>({7, 7, 7, 7, 0x33}));
    const CCustomOut& o = *outs.Item(1);
    EXPECT_EQ(QList<int>({o.Chop, o.OnDelay, o.Hoji, o.Zenpa}), QList<int>({7, 7, 7, 0x33}));

    // Writing values that differ from the bytes: only the bytes with an address change.
    for (auto& t : inps) {
        t.Kino = 1;
        t.Dosa = t.RSFReset = 0;
    }
    QByteArray written = image;
    ASSERT_TRUE(inps.SaveCustomizeData(written));
    QList<int> changedIndexes;
    for (int n = 0; n < written.size(); ++n)
        if (written.at(n) != image.at(n))
            changedIndexes << n;
    // The function (0) and the replaced RSFReset code (12); Dosa (3) has no address.
    EXPECT_EQ(changedIndexes, QList<int>({0, 12}));
}

TEST(CustomImage, AddressBeyondTheImageStopsWithAReportAndKeepsEarlierTerminals) {
    struct Case {
        const char* what;
        int lastIndex; // the bad terminal's byte that lies beyond a 32-byte image
    };
    for (const Case& c : {Case{"next byte", 32}, Case{"far away", 100000}, Case{"negative", -5}}) {
        SCOPED_TRACE(c.what);
        CCustomInps inps;
        ASSERT_TRUE(inps.Add(inputAt("A", 0, 0x01)));
        CCustomInp bad = inputAt("B", 14, 0x01);
        bad.RSFResetStcAdrs = c.lastIndex;
        ASSERT_TRUE(inps.Add(bad));
        CCustomOuts outs;
        ASSERT_TRUE(outs.Add(outputAt("A", 0, 0x01)));
        CCustomOut badOut = outputAt("B", 14, 0x01);
        badOut.FUMAdrs = c.lastIndex;
        ASSERT_TRUE(outs.Add(badOut));

        QByteArray image(32, char(0x01));
        CapturingErrorSink sink;
        EXPECT_FALSE(inps.ReadData(image));
        EXPECT_FALSE(outs.ReadData(image));
        EXPECT_EQ(inps.Item("A")->Kino, 1) << "the terminal before keeps its new value";
        EXPECT_EQ(outs.Item("A")->Logic, 1);
        EXPECT_FALSE(inps.SaveCustomizeData(image));
        EXPECT_FALSE(outs.SaveCustomizeData(image));
        EXPECT_EQ(image.size(), 32) << "the image never grows";
        EXPECT_EQ(sink.procedures(), (QStringList{"ReadData", "ReadData(output)", "SaveCustomizeData(input)",
                                                  "SaveCustomizeData(output)"}));
        for (const auto& r : sink.reports())
            EXPECT_TRUE(r.text.endsWith("(terminal B)")) << r.text.toStdString();
    }

    // The function and logic have no "missing" address: -1 there is outside the image too.
    CCustomInps inps;
    CCustomInp noFunction = inputAt("A", 0, 0x01);
    noFunction.KinoAdrs = -1;
    ASSERT_TRUE(inps.Add(noFunction));
    CapturingErrorSink sink;
    QByteArray image(32, '\0');
    EXPECT_FALSE(inps.ReadData(image));
    EXPECT_FALSE(inps.SaveCustomizeData(image));
    EXPECT_EQ(image, QByteArray(32, '\0'));
}

TEST(CustomImage, HoldModesHaveFourTextsOfTheirOwn) {
    QStringList texts;
    for (int i = 0; i < 4; ++i) {
        texts << CCustomOuts::GetHojiInfo2(i);
        EXPECT_TRUE(texts.last().startsWith(CCustomOuts::GetHojiInfo1(i) + ':')) << i;
    }
    texts.removeDuplicates();
    EXPECT_EQ(texts.size(), 4);
    EXPECT_EQ(CCustomOuts::GetHojiInfo2(-1), "");
}

} // namespace
