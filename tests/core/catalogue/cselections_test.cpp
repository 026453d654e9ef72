#include "base/errorreporter.h"
#include "catalogue/choosecategory.h"
#include "catalogue/cselections.h"
#include "testsupport.h"

#include <gtest/gtest.h>

using vkm::CapturingErrorSink;
using vkm::CSelections;

namespace {

// A six-field line of an output/input catalogue.
QByteArray line6(const char* digital, const char* value, const char* category, const char* mn = "0",
                 const char* mx = "0") {
    return QByteArray(digital) + '\t' + value + "\tadvice\t" + category + '\t' + mn + '\t' + mx + "\r\n";
}

struct ValueCase {
    const char* field;
    qint16 expected;
};

TEST(CSelectionsRead, ValueFieldIsLeadingNumberRoundedHalfToEven) {
    const ValueCase cases[] = {{"12.5", 12},       {"13.5", 14},     {"abc", 0},  {"", 0},      {" 7x", 7},
                               {"-32768", -32768}, {"32767", 32767}, {"-0.5", 0}, {"2.5e1", 25}};
    for (const auto& c : cases) {
        CSelections sels;
        ASSERT_TRUE(sels.readLines(line6("F", c.field, "OUT"), "Set08.e")) << c.field;
        ASSERT_EQ(sels.Count(), 1);
        EXPECT_EQ(sels.Item(1)->value, c.expected) << c.field;
        EXPECT_EQ(sels.ValueByDigital("OUT", "F"), c.expected) << c.field;
    }
}

TEST(CSelectionsRead, BadLinesStopTheReadAndKeepEarlierEntries) {
    struct Case {
        const char* what;
        QByteArray badLine;
        const char* file;
    };
    const Case cases[] = {
        {"value beyond 16 bits", line6("B", "32768", "OUT"), "Set08.e"},
        {"value below 16 bits", line6("B", "-32769", "OUT"), "Set09.e"},
        {"four fields in Set08", "B\t5\tadvice\tOUT\r\n", "Set08.e"},
        {"five fields in Set09", "B\t5\tadvice\tCOUNT\t0\r\n", "Set09.e"},
        {"three fields in Set06", "B\t5\tadvice\r\n", "Set06.e"},
        {"empty line", "\r\n", "Set08.e"},
    };
    for (const auto& c : cases) {
        CapturingErrorSink sink;
        CSelections sels;
        const QByteArray content = line6("A", "1", "OUT") + c.badLine + line6("C", "3", "OUT");
        EXPECT_FALSE(sels.readLines(content, c.file)) << c.what;
        EXPECT_EQ(sels.Count(), 1) << c.what;
        EXPECT_EQ(sels.ValueByDigital("OUT", "A"), 1) << c.what;
        EXPECT_EQ(sels.ValueByDigital("OUT", "C"), -1) << c.what << ": read went past the bad line";
        EXPECT_EQ(sink.procedures(), QStringList{"ReadSet6_7_8_9e"}) << c.what;
    }
}

TEST(CSelectionsRead, FourFieldLayoutOnlyOutsideSet08AndSet09) {
    const QByteArray four = "CN\t7\tcounter\tCOUNT\r\n";
    CSelections set06;
    EXPECT_TRUE(set06.readLines(four, "Set06.e"));
    EXPECT_EQ(set06.ValueByDigital("COUNT", "CN"), 7);
    // min and max are taken as "0": a COUNT entry without limits
    EXPECT_TRUE(set06.dicMinMax().isEmpty());

    CapturingErrorSink sink;
    CSelections set08;
    EXPECT_FALSE(set08.readLines(four, "Set08.e"));
    EXPECT_FALSE(set08.readLines(four, "set09.E")); // names compare without case
    // fields past the layout are ignored
    CSelections extra;
    EXPECT_TRUE(extra.readLines("X\t9\ta\tIN\t1\t2\tmore\r\n", "Set06.e"));
    EXPECT_TRUE(extra.readLines("Y\t10\ta\tIN\t1\t2\tmore\r\n", "Set08.e"));
    EXPECT_EQ(extra.Count(), 2);
}

TEST(CSelectionsRead, LineEndsDigitalTextAndCodePage) {
    CSelections sels;
    // CR LF, a bare LF, no final line break; blanks of the digital text are part of it;
    // the advice is code page 932 ("押え")
    const QByteArray content =
        QByteArray(" NO\t0\t\x89\x9f\x82\xa6\tNONE\r\n") + "ST \t1\tstart\tSTD\n" + "X\t2\tlast\tSTD";
    ASSERT_TRUE(sels.readLines(content, "Set06.e"));
    ASSERT_EQ(sels.Count(), 3);
    EXPECT_EQ(sels.Item(1)->Digital, " NO");
    EXPECT_EQ(sels.Item(1)->Advice, QString::fromUtf8("押え"));
    EXPECT_EQ(sels.Item(2)->Digital, "ST ");
    EXPECT_EQ(sels.ValueByDigital("NONE", "NO"), -1);
    EXPECT_EQ(sels.ValueByDigital("NONE", " NO"), 0);
    EXPECT_EQ(sels.Item(3)->Advice, "last");
    EXPECT_TRUE(CSelections().readLines({}, "Set08.e")); // an empty file is a whole file

    // Files saved on other systems: a lone CR ends a line as CR LF does, a lone LF too,
    // and a CR LF pair is one break, never an empty line between.
    struct Case {
        const char* what;
        QByteArray content;
    };
    const Case ends[] = {
        {"lone CR", "A\t1\ta\tSTD\rB\t2\tb\tSTD\rC\t3\tc\tSTD\r"},
        {"mixed", "A\t1\ta\tSTD\r\nB\t2\tb\tSTD\rC\t3\tc\tSTD\n"},
        {"CR at the very end", "A\t1\ta\tSTD\nB\t2\tb\tSTD\r\nC\t3\tc\tSTD\r"},
    };
    for (const auto& c : ends) {
        CapturingErrorSink sink;
        CSelections mixed;
        ASSERT_TRUE(mixed.readLines(c.content, "Set06.e")) << c.what;
        ASSERT_EQ(mixed.Count(), 3) << c.what;
        EXPECT_EQ(mixed.Item(1)->Category, "STD") << c.what;
        EXPECT_EQ(mixed.Item(3)->Advice, "c") << c.what;
        EXPECT_TRUE(sink.reports().empty()) << c.what;
    }
    // Two breaks in a row are still an empty line, whatever their kind.
    CapturingErrorSink sink;
    CSelections empty;
    EXPECT_FALSE(empty.readLines("A\t1\ta\tSTD\r\rB\t2\tb\tSTD\r", "Set06.e"));
    EXPECT_EQ(empty.Count(), 1);
}

TEST(CSelectionsRead, MissingFileIsReported) {
    vkm::test::Scratch dir;
    CapturingErrorSink sink;
    CSelections sels;
    EXPECT_FALSE(sels.ReadSet6_7_8_9e(dir.path(), "Set08.e"));
    ASSERT_EQ(sink.reports().size(), 1u);
    EXPECT_EQ(sink.reports()[0].number, vkm::ErrFileNotFound);
    EXPECT_EQ(sink.reports()[0].procedure, "ReadSet6_7_8_9e");

    dir.write("Set08.e", line6("Y001", "256", "OUT"));
    EXPECT_TRUE(sels.ReadSet6_7_8_9e(dir.path(), "Set08.e"));
    EXPECT_EQ(sels.ValueByDigital("OUT", "Y001"), 256);
}

TEST(CSelectionsAdd, DefaultCategoryAndMinMax) {
    CSelections sels;
    sels.Add("NC", 5, "", "", "0", "50");
    sels.Add("C0", 6, "", "COUNT", "0", "0");
    sels.Add("C99", 7, "", "COUNT", "0", "99");
    sels.Add("CR", 8, "", "COUNT", "1.5", "99.5");
    sels.Add("NOTC", 9, "", "count", "0", "99"); // only "COUNT" exactly keeps limits

    EXPECT_EQ(sels.CategoryByValue(5), vkm::kDefaultCategory);
    EXPECT_EQ(sels.ValueByDigital("", "NC"), 5);
    EXPECT_EQ(sels.ValueByDigital(vkm::kDefaultCategory, "NC"), 5);

    struct Bounds {
        const char* category;
        const char* digital;
        qint32 min, max;
    };
    const Bounds cases[] = {
        {"", "NC", -7, -7},      // no default category substituted here
        {"COUNT", "C0", -7, -7}, // 0,0 registers nothing: the caller's bounds stand
        {"COUNT", "C99", 0, 99},   {"COUNT", "CR", 2, 100}, // each part rounded half to even
        {"count", "NOTC", -7, -7}, {"COUNT", "UNKNOWN", -7, -7},
    };
    for (const auto& c : cases) {
        qint32 mn = -7, mx = -7;
        sels.MinMaxByDigital(c.category, c.digital, mn, mx);
        EXPECT_EQ(mn, c.min) << c.digital;
        EXPECT_EQ(mx, c.max) << c.digital;
    }
    EXPECT_EQ(sels.dicMinMax().value("COUNT_C99"), "0,99");
    EXPECT_EQ(sels.dicMinMax().size(), 2);
}

TEST(CSelectionsAdd, DuplicatesRegisterPartlyAndReadingGoesOn) {
    CapturingErrorSink sink;
    CSelections sels;
    const QByteArray content = line6("Y001", "256", "OUT") +
                               line6("Y002", "256", "OUT")    // value taken: nothing registered
                               + line6("Y001", "300", "OUT")  // pair taken: listed, not in dicDigital
                               + line6("Y003", "258", "OUT"); // reading went on
    EXPECT_TRUE(sels.readLines(content, "Set08.e"));
    EXPECT_EQ(sink.procedures(), (QStringList{"Add", "Add"}));

    EXPECT_EQ(sels.Count(), 3);
    EXPECT_EQ(sels.ValueByDigital("OUT", "Y002"), -1);
    EXPECT_EQ(sels.CountByDigital("Y002"), 0);
    EXPECT_EQ(sels.ValueByDigital("OUT", "Y001"), 256);
    ASSERT_NE(sels.Item("300"), nullptr);
    EXPECT_EQ(sels.Item("300")->Digital, "Y001");
    EXPECT_EQ(sels.CategoryByValue(300), "OUT");
    EXPECT_FALSE(sels.hasValue(300)); // dicValue is filled after dicDigital
    EXPECT_EQ(sels.CountByDigital("Y001"), 2);
    EXPECT_EQ(sels.ValueByDigital("OUT", "Y003"), 258);
    EXPECT_TRUE(sels.hasValue(258));
}

TEST(CSelectionsLookup, UnknownSharedAndCaseSensitive) {
    CSelections sels;
    sels.Add("M01", 300, "switch", "IN", "0", "0");
    sels.Add("M01", 512, "mode", "MODE", "0", "0");
    sels.Add("X001", 256, "", "IN", "0", "0");

    EXPECT_EQ(sels.ValueByDigital("IN", "nothing"), -1);
    EXPECT_EQ(sels.CategoryByValue(12345), "");
    EXPECT_EQ(sels.CategoryByDigitalOnly("nothing"), "");
    EXPECT_EQ(sels.GetSelection(12345), "?");
    EXPECT_EQ(sels.CountByDigital("nothing"), 0);

    EXPECT_EQ(sels.CountByDigital("M01"), 2);
    EXPECT_EQ(sels.CategoryByDigitalOnly("M01"), "IN");
    EXPECT_EQ(sels.categoriesOfDigital("M01"), (QStringList{"IN", "MODE"}));
    EXPECT_EQ(sels.ValueByDigital("MODE", "M01"), 512);

    EXPECT_EQ(sels.ValueByDigital("IN", "x001"), -1);
    EXPECT_EQ(sels.ValueByDigital("in", "X001"), -1);
    EXPECT_EQ(sels.CountByDigital("m01"), 0);
    EXPECT_EQ(sels.CategoryByDigitalOnly("x001"), "");
    EXPECT_EQ(sels.categories(), (QStringList{"IN", "MODE"}));
}

TEST(CSelectionsLookup, SignedAndUnsignedFormsOfAValue) {
    CSelections sels;
    sels.Add("J001", -32768, "", "JMP", "0", "0");
    sels.Add("NONE", -1, "", "OUT", "0", "0");
    EXPECT_EQ(sels.CategoryByValue(-32768), "JMP");
    EXPECT_EQ(sels.CategoryByValue(32768), "JMP");
    EXPECT_EQ(sels.CategoryByValue(65535), "OUT");
    EXPECT_TRUE(sels.hasValue(0x8000));
    EXPECT_EQ(sels.CategoryByValue(65536), "");
    EXPECT_EQ(sels.CategoryByValue(-32769), "");
    EXPECT_FALSE(sels.hasValue(65536));
    EXPECT_EQ(sels.Item("-32768")->Digital, "J001");
}

TEST(CSelectionsAdd2, SelectionLabelsAndRemove) {
    CapturingErrorSink sink;
    CSelections sels;
    sels.Add("A", 1, "", "OUT", "0", "0");
    ASSERT_NE(sels.Add2("first", 7), nullptr);
    ASSERT_NE(sels.Add2("second", 7), nullptr);
    EXPECT_EQ(sels.Add2("first", 8), nullptr); // a label is a key: taken
    EXPECT_EQ(sink.procedures(), QStringList{"Add2"});

    EXPECT_EQ(sels.GetSelection(7), "second"); // the last in file order
    EXPECT_EQ(sels.GetSelection(1), "");
    EXPECT_FALSE(sels.hasValue(7)); // Add2 touches no dictionary
    EXPECT_EQ(sels.dicDigital().size(), 1);
    EXPECT_EQ(sels.Item("first")->value, 7);

    sels.Remove(1);
    EXPECT_EQ(sels.Count(), 2);
    EXPECT_EQ(sels.Item(1)->Selection, "first");
    EXPECT_EQ(sels.Item("1"), nullptr);
    EXPECT_EQ(sels.CountByDigital("A"), 0);
    sels.Remove("second");
    EXPECT_EQ(sels.GetSelection(7), "first");
    // the dictionaries keep what Remove does not touch
    EXPECT_EQ(sels.ValueByDigital("OUT", "A"), 1);
    EXPECT_EQ(sels.Item(0), nullptr);
    EXPECT_EQ(sels.Item(3), nullptr);
}

TEST(ChooseCategory, CountDecidesWhetherToAsk) {
    CSelections sels;
    sels.Add("M01", 300, "", "IN", "0", "0");
    sels.Add("M01", 512, "", "MODE", "0", "0");
    sels.Add("X001", 256, "", "IN", "0", "0");
    int asked = 0;
    QString askedFor;
    const vkm::CategoryChooser chooser = [&](const CSelections&, const QString& digital) {
        ++asked;
        askedFor = digital;
        return QStringLiteral("MODE");
    };
    EXPECT_EQ(vkm::ChooseCategory(sels, "none", chooser), "");
    EXPECT_EQ(vkm::ChooseCategory(sels, "X001", chooser), "IN");
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(vkm::ChooseCategory(sels, "M01", chooser), "MODE");
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(askedFor, "M01");
    EXPECT_EQ(vkm::ChooseCategory(sels, "M01", nullptr), "IN");
}

} // namespace
