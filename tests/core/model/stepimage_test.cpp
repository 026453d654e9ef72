#include "programs.h"

#include "base/errorreporter.h"
#include "testsupport.h"

#include <gtest/gtest.h>

using namespace vkm;
using namespace vkm::test;

namespace {

QByteArray hex(const char* text) {
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

QByteArray imageOf(const CSteps& p, const Catalogues& c) {
    bool ok = false;
    const QByteArray image = p.toImage(c.selinp, fixedClock(), &ok);
    EXPECT_TRUE(ok);
    return image;
}

QByteArray stepRecord(const QByteArray& image, int row) {
    return image.mid(64 + (row - 1) * 22, 22);
}

} // namespace

TEST(EncodeWord, WorkedExamples) {
    EXPECT_EQ(EncodeWord("AB", true, QDateTime(QDate(2026, 1, 1), QTime(12, 5, 37))),
              hex("C0 BF 0000000000000000000000000000 C5 C0 C2 BE"));
    EXPECT_EQ(EncodeWord("K9", false, QDateTime(QDate(2026, 11, 16), QTime(0, 0))),
              hex("B0 C2 000000000000 C3 C5 C3 BF C4 C4 C4 BF"));
    EXPECT_EQ(DecodeWord(hex("C0 BF 0000000000000000000000000000 C5 C0 C2 BE"), true), "AB");
    EXPECT_EQ(DecodeWord(hex("B0 C2 000000000000 C3 C5 C3 BF C4 C4 C4 BF"), false), "K9");
    EXPECT_EQ(DecodeWord(QByteArray(20, '\0'), true), "");
    EXPECT_EQ(DecodeWord(QByteArray(16, '\0'), false), "");
}

TEST(EncodeWord, BadCharactersAndBlocksAreReported) {
    CapturingErrorSink sink;
    // 242 - 1 + 15 passes 255: a control character cannot be scrambled.
    EXPECT_TRUE(EncodeWord(QString("A") + QChar(1), true, fixedTime()).isEmpty());
    EXPECT_EQ(sink.procedures(), QStringList{"EncodeWord"});
    sink.clear();
    bool ok = true;
    // Key digits 9999 (bytes BC) give a sum of 36 the text bytes fall below.
    QByteArray block(20, '\0');
    block[0] = 0x10;
    block.replace(16, 4, hex("BCBCBCBC"));
    EXPECT_EQ(DecodeWord(block, true, &ok), "");
    EXPECT_FALSE(ok);
    EXPECT_EQ(sink.procedures(), QStringList{"DecodeWord"});
}

TEST(StepImage, WorkedStepRecordAndItsReading) {
    const Catalogues c = testCatalogues();
    CSteps p;
    addRow(p, c, {{0x0105, LogicHigh, DelayTimer, 50}}, {{3, StatePosEdg, RelEnd}});
    const QByteArray image = imageOf(p, c);
    EXPECT_EQ(stepRecord(image, 1),
              hex("05 01 01 32 00 | 00 00 F0 00 00 | 03 00 21 | 00 00 23 | 00 00 23 | 00 00 23"
                  "")
                  .replace('|', ""));
    CSteps back;
    ASSERT_TRUE(back.fromImage(image, c.selout, c.selinp));
    ASSERT_EQ(back.Count(), 32);
    const auto step = back.Item(1);
    ASSERT_TRUE(step->outs && step->inps);
    EXPECT_FALSE(step->NOP);
    ASSERT_EQ(step->outs->Count(), 1);
    EXPECT_EQ(step->outs->Item("1")->Kino, 0x0105);
    EXPECT_EQ(step->outs->Item("1")->DelayEtc, 50);
    EXPECT_EQ(step->outs->Item("2"), nullptr);
    ASSERT_EQ(step->inps->Count(), 4);
    for (int b = 2; b <= 4; ++b) {
        const auto inp = step->inps->Item(QString::number(b));
        EXPECT_EQ(inp->Kino, 0);
        EXPECT_EQ(inp->Jyotai, 3);
        EXPECT_EQ(inp->Rel, RelEnd);
    }
    // The rest of the 32 rows of a zero-filled area read as steps of function 0.
    EXPECT_FALSE(back.Item(2)->NOP);
}

TEST(StepImage, NewEmptyProgramFileIs1904BytesWithTagAndMemoFileName) {
    const Catalogues c = testCatalogues();
    Scratch s;
    CSteps p;
    p.MemoFile = "NOTE1.TXT";
    ASSERT_TRUE(p.SaveData(s.file("a.bin"), true, c.selout, c.selinp, fixedClock()));
    const QByteArray image = readAll(s.file("a.bin"));
    ASSERT_EQ(image.size(), 1904);
    EXPECT_EQ(image.left(4), "0106");
    QByteArray header(60, '\0');
    header.replace(36, 5, "NOTE1");
    header.replace(44, 3, "TXT");
    EXPECT_EQ(image.mid(4, 60), header);
    EXPECT_EQ(image.mid(64).count('\0'), 1904 - 64);
    CSteps back;
    ASSERT_TRUE(back.ReadData(s.file("a.bin"), c.selout, c.selinp));
    EXPECT_EQ(back.MemoFile, "NOTE1.TXT");
    p.MemoFile = "NOEXT";
    ASSERT_TRUE(p.SaveData(s.file("a.bin"), true, c.selout, c.selinp, fixedClock()));
    ASSERT_TRUE(back.ReadData(s.file("a.bin"), c.selout, c.selinp));
    EXPECT_EQ(back.MemoFile, "") << "a name without extension is not a memo file";
}

TEST(StepImage, EmptyOutputsAndInputsAfterEnd) {
    const Catalogues c = testCatalogues();
    CSteps p;
    // Inputs 3 and 4 hold functions the machine must never see: they follow END.
    auto row =
        addRow(p, c, {{-1}, {256, LogicHigh, DelayTimer, 1}},
               {{3, StatePosLev, RelAnd}, {256, StatePosEdg, RelEnd}, {257, 1, RelOr}, {3, 2, RelAnd}});
    const QByteArray rec = stepRecord(imageOf(p, c), 1);
    EXPECT_EQ(rec.left(5), hex("0000F00000"));
    EXPECT_EQ(rec.mid(5, 5), hex("00 01 01 01 00"));
    EXPECT_EQ(rec.mid(10), hex("030000 000121 000023 000023"));
    // The first output empty: the whole step is empty, whatever the second holds.
    CSteps back;
    ASSERT_TRUE(back.fromImage(imageOf(p, c), c.selout, c.selinp));
    EXPECT_TRUE(back.Item(1)->NOP);
    EXPECT_EQ(back.Item(1)->outs, nullptr);
    EXPECT_EQ(back.Item(1)->inps, nullptr);
}

TEST(StepImage, DisabledRowsAndFlagBytes) {
    const Catalogues c = testCatalogues();
    struct Case {
        bool disabled;
        int logic, delayKind;
        int flag;
    };
    const Case cases[] = {{false, LogicHigh, DelayStc, 0x21},
                          {true, LogicHigh, DelayStc, 0x31},
                          {true, LogicClr, DelayAngle3, 0x97},
                          {false, LogicNot, DelayTimer, 0x02}};
    for (const auto& tc : cases) {
        CSteps p;
        addRow(p, c, {{256, tc.logic, tc.delayKind, 9}, {768, LogicInc, DelayTimer, 0}}, {{3, 0, RelEnd}}, {},
               tc.disabled);
        const QByteArray rec = stepRecord(imageOf(p, c), 1);
        EXPECT_EQ(quint8(rec[2]), tc.flag);
        EXPECT_EQ(quint8(rec[7]), tc.disabled ? 0x14 : 0x04) << "the mark is in both outputs";
        CSteps back;
        ASSERT_TRUE(back.fromImage(imageOf(p, c), c.selout, c.selinp));
        EXPECT_EQ(back.Item(1)->GyoMuko, tc.disabled);
        EXPECT_EQ(back.Item(1)->outs->Item("1")->Logic, tc.logic);
        EXPECT_EQ(back.Item(1)->outs->Item("1")->DelayKind, tc.delayKind);
    }
    // The mark on the second output alone is enough.
    QByteArray image = imageOf(CSteps(), c);
    image.replace(64, 22, hex("0001 01 0000  0101 11 0000  030021 000023 000023 000023"));
    CSteps back;
    ASSERT_TRUE(back.fromImage(image, c.selout, c.selinp));
    EXPECT_TRUE(back.Item(1)->GyoMuko);
}

TEST(StepImage, CounterStepCarriesCounterIdInEveryStateByte) {
    const Catalogues c = testCatalogues();
    for (int id : {0, 5, 10, 15}) {
        CSteps p;
        addRow(p, c, {{256, LogicHigh, DelayTimer, 0}},
               {{16, 0, RelPlus}, {768, 0, RelGe}, {40000, 0, RelEnd}}, {}, false, id);
        const QByteArray rec = stepRecord(imageOf(p, c), 1);
        EXPECT_EQ(quint8(rec[12]), 0x70 | id);
        EXPECT_EQ(quint8(rec[15]), 0x30 | id);
        EXPECT_EQ(quint8(rec[18]), 0x20 | id);
        EXPECT_EQ(rec.mid(16, 2), hex("409C")) << "operand 40000 as its low 16 bits";
        CSteps back;
        ASSERT_TRUE(back.fromImage(imageOf(p, c), c.selout, c.selinp));
        const auto inps = back.Item(1)->inps;
        EXPECT_EQ(inps->CounterId, id);
        for (int b = 1; b <= 3; ++b)
            EXPECT_EQ(inps->Item(QString::number(b))->Jyotai, id & 3);
        EXPECT_EQ(inps->Item("4")->Jyotai, 3) << "after END the input is written empty";
        EXPECT_EQ(inps->Item("3")->Kino, qint16(40000)) << "read back as signed 16 bits";
        EXPECT_EQ(inps->Item("1")->Rel, RelPlus);
    }
}

TEST(StepImage, AuthorPasswordAndTextsAreCutToTheirFields) {
    const Catalogues c = testCatalogues();
    struct Case {
        const char* author;
        const char* password;
        const char* authorBack;
        const char* passwordBack;
    };
    const Case cases[] = {{"ABCDEFGHIJKLMNOP", "12345678", "ABCDEFGHIJKLMNOP", "12345678"},
                          {"ABCDEFGHIJKLMNOPQRS", "123456789A", "ABCDEFGHIJKLMNOP", "12345678"},
                          {"", "x", "", "x"},
                          {"a b", "", "a b", ""},
                          {"A\x1A\x7F", "\x1A", "A\x1A\x7F", "\x1A"}};
    for (const auto& tc : cases) {
        CSteps p;
        p.Author = tc.author;
        p.Password = tc.password;
        p.Memo = "  " + QString(500, 'M') + "  ";
        addRow(p, c, {{256, 1, 0, 0}}, {{3, 0, RelEnd}}, "   a remark longer than twenty bytes ");
        const QByteArray image = imageOf(p, c);
        if (!*tc.author) {
            EXPECT_EQ(image.mid(4, 20), QByteArray(20, '\0'));
        }
        if (!*tc.password) {
            EXPECT_EQ(image.mid(24, 16), QByteArray(16, '\0'));
        }
        EXPECT_EQ(image.mid(768, 20), "a remark longer than");
        EXPECT_EQ(image.mid(1408, 496), QByteArray(496, 'M'));
        CSteps back;
        ASSERT_TRUE(back.fromImage(image, c.selout, c.selinp));
        EXPECT_EQ(back.Author, tc.authorBack);
        EXPECT_EQ(back.Password, tc.passwordBack);
        EXPECT_EQ(back.Item(1)->Remark, "a remark longer than");
        EXPECT_EQ(back.Memo, QString(496, 'M'));
    }
}

TEST(StepImage, RemarksArePlacedByRow) {
    const Catalogues c = testCatalogues();
    CSteps p;
    for (int n = 1; n <= 5; ++n)
        addRow(p, c, {{256, 1, 0, 0}}, {{3, 0, RelEnd}});
    p.Item(1)->Remark = "five";
    p.Item(1)->Row = 5;
    p.Item(5)->Remark = "one";
    p.Item(5)->Row = 1;
    const QByteArray image = imageOf(p, c);
    EXPECT_EQ(image.mid(768 + 80, 20), QByteArray("five").leftJustified(20, '\0'));
    EXPECT_EQ(image.mid(768, 20), QByteArray("one").leftJustified(20, '\0'));
}

TEST(StepImage, WritesInPlaceUnlessDeletedFirst) {
    const Catalogues c = testCatalogues();
    Scratch s;
    const QByteArray old = QByteArray(2100, '\x5A');
    CSteps p;
    addRow(p, c, {{256, 1, 0, 0}}, {{3, 0, RelEnd}});
    const QByteArray fresh = imageOf(p, c);

    s.write("keep.bin", old);
    ASSERT_TRUE(p.SaveData(s.file("keep.bin"), false, c.selout, c.selinp, fixedClock()));
    const QByteArray kept = readAll(s.file("keep.bin"));
    ASSERT_EQ(kept.size(), 2100);
    EXPECT_EQ(kept.mid(1904), old.mid(1904)) << "the tail past the image stays";
    EXPECT_EQ(kept.mid(64 + 22, 768 - 86), old.mid(64 + 22, 768 - 86)) << "rows the program lacks stay";
    EXPECT_EQ(kept.left(64 + 22), fresh.left(64 + 22));
    EXPECT_EQ(kept.mid(768, 1136), fresh.mid(768, 1136));

    s.write("del.bin", old);
    ASSERT_TRUE(p.SaveData(s.file("del.bin"), true, c.selout, c.selinp, fixedClock()));
    EXPECT_EQ(readAll(s.file("del.bin")), fresh);
}

TEST(StepImage, FailuresAreReportedByTheFailingPart) {
    const Catalogues c = testCatalogues();
    CapturingErrorSink sink;
    struct Case {
        const char* name;
        std::function<void(CSteps&)> build;
        const char* procedure;
    };
    const Case cases[] = {
        {"value above 16 bits",
         [&](CSteps& p) {
             addRow(p, c, {{256, 1, 0, 65536}}, {{3, 0, RelEnd}});
         },
         "WriteStep"},
        {"first input unknown",
         [&](CSteps& p) {
             addRow(p, c, {{256, 1, 0, 0}}, {{4242, 0, RelEnd}});
         },
         "WriteStep"},
        {"input beyond 16 bits",
         [&](CSteps& p) {
             addRow(p, c, {{256, 1, 0, 0}}, {{3, 0, RelAnd}, {70000, 0, 2}});
         },
         "WriteStep"},
        {"author not scrambled", [&](CSteps& p) { p.Author = QString(QChar(1)); }, "EncodeWord"},
        {"flag that would read as empty",
         [&](CSteps& p) {
             addRow(p, c, {{256, 1, 14, 0}}, {{3, 0, RelEnd}}, {}, true);
         },
         "WriteStep"},
    };
    for (const auto& tc : cases) {
        sink.clear();
        CSteps p;
        tc.build(p);
        bool ok = true;
        EXPECT_TRUE(p.toImage(c.selinp, fixedClock(), &ok).isEmpty()) << tc.name;
        EXPECT_FALSE(ok) << tc.name;
        EXPECT_EQ(sink.procedures(), QStringList{tc.procedure}) << tc.name;
    }
    // Short images: the part that runs past the end names itself.
    const QByteArray full = imageOf(buildProgram(Shape::Texts, c), c);
    const std::pair<int, const char*> cuts[] = {{30, "DecodeWord"},
                                                {45, "ReadMemoFile"},
                                                {100, "GetOutputCols"},
                                                {772, "ReadRem"},
                                                {1903, "ReadMemo"}};
    for (const auto& [size, procedure] : cuts) {
        sink.clear();
        CSteps back = buildProgram(Shape::Full, c);
        EXPECT_FALSE(back.fromImage(full.left(size), c.selout, c.selinp)) << size;
        EXPECT_EQ(back.Count(), 0) << size;
        EXPECT_EQ(sink.procedures(), QStringList{procedure}) << size;
    }
    sink.clear();
    CSteps p;
    EXPECT_FALSE(p.ReadData("/nonexistent/eusr2.tmp", c.selout, c.selinp));
    EXPECT_FALSE(p.SaveData("/nonexistent/eusr2.tmp", true, c.selout, c.selinp, fixedClock()));
    EXPECT_EQ(sink.procedures(), (QStringList{"ReadData", "SaveData"}));
}

TEST(StepImage, UnknownFieldValuesSurviveReadingAndWriting) {
    const Catalogues c = testCatalogues();
    CSteps empty;
    QByteArray image = imageOf(padRows(empty), c);
    // Delay kind bits 101 (no such kind), logic 15, relation 15, a function nobody knows.
    image.replace(64, 22, hex("3412 AF FFFF  0000F00000  0300F1 3412F2 000023 000023"));
    CSteps back;
    ASSERT_TRUE(back.fromImage(image, c.selout, c.selinp));
    const auto out = back.Item(1)->outs->Item("1");
    EXPECT_EQ(out->DelayKind, 10);
    EXPECT_EQ(out->Logic, 15);
    EXPECT_EQ(out->DelayEtc, 65535);
    EXPECT_EQ(back.Item(1)->inps->Item("1")->Rel, 15);
    EXPECT_EQ(imageOf(back, c).mid(64, 22), image.mid(64, 22));
}

TEST(StepImage, ImageModelImageIsByteIdentical) {
    const Catalogues c = testCatalogues();
    Scratch s;
    for (const Shape shape : kAllShapes) {
        const CSteps p = buildProgram(shape, c);
        ASSERT_TRUE(p.SaveData(s.file("eusr2.tmp"), true, c.selout, c.selinp, fixedClock()));
        const QByteArray first = readAll(s.file("eusr2.tmp"));
        ASSERT_EQ(first.size(), 1904);
        CSteps back;
        ASSERT_TRUE(back.ReadData(s.file("eusr2.tmp"), c.selout, c.selinp)) << int(shape);
        EXPECT_EQ(back.Author, p.Author);
        EXPECT_EQ(back.Password, p.Password);
        EXPECT_EQ(back.MemoFile, p.MemoFile);
        EXPECT_EQ(back.Memo, p.Memo);
        for (int n = 1; n <= p.Count(); ++n)
            EXPECT_EQ(back.Item(n)->Remark, p.Item(n)->Remark.trimmed()) << n;
        ASSERT_TRUE(back.SaveData(s.file("again.tmp"), true, c.selout, c.selinp, fixedClock()));
        EXPECT_EQ(readAll(s.file("again.tmp")), first) << int(shape);
    }
}

TEST(StepImage, LegacyCodePageTexts) {
    const Catalogues c = testCatalogues();
    CSteps p;
    addRow(p, c, {{256, 1, 0, 0}}, {{3, 0, RelEnd}}, QString::fromUtf8("糸切り"));
    p.Memo = QString::fromUtf8("メモ");
    const QByteArray image = imageOf(p, c);
    EXPECT_EQ(image.mid(768, 6), hex("8E 85 90 D8 82 E8"));
    CSteps back;
    ASSERT_TRUE(back.fromImage(image, c.selout, c.selinp));
    EXPECT_EQ(back.Item(1)->Remark, QString::fromUtf8("糸切り"));
    EXPECT_EQ(back.Memo, QString::fromUtf8("メモ"));
}
