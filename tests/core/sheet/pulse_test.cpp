// Pulse pairs: two output actions of one row read and written as one pulse.
#include "sheetfixture.h"

#include "sheet/pulsegeometry.h"

using namespace vkm;
using namespace vkm::test;

namespace {

struct PulseFixture : SheetFixture {
    PulseFixture() {
        selout.Add("Y012", 12, "", "OUT", "0", "0");
        selout.Add("SHARED", 13, "", "COUNT", "0", "99");
        selout.Add("SHARED", 14, "", "RGST", "0", "0");
    }
    PulsePair& pulse() { return editor->pulse(); }
    QStringList outputs(int row) {
        QStringList cells;
        for (int g = 1; g <= 2; ++g)
            for (int i = 0; i < 4; ++i)
                cells << sheet().text(row, out(g) + i);
        return cells;
    }
    static PulseValues values(const QString& kino, int logic, int kind, const QString& d1,
                              const QString& d2) {
        return {kino, "OUT", logic, kind, d1, d2};
    }
};

} // namespace

TEST(PulsePair, APairIsReadAsOnePulseAndWrittenBackUnchanged) {
    PulseFixture f;
    f.putOut(5, 1, "Y012", "1", "2", "100");
    f.putOut(5, 2, "Y012", "0", "2", "150");
    ASSERT_TRUE(f.pulse().isPulseRow(5));
    EXPECT_TRUE(f.pulse().CanInputPulse(5, f.o2() + 3));
    EXPECT_FALSE(f.pulse().CanInputPulse(5, f.in(1)));
    const PulseValues v = f.pulse().PasteValue(5);
    EXPECT_EQ(v.kino, "Y012");
    EXPECT_EQ(v.category, "OUT");
    EXPECT_EQ(PulsePair::logicNames().value(v.logic), "ON PULSE");
    EXPECT_EQ(PulsePair::kindNames().value(v.kind), "STC");
    EXPECT_EQ(v.delay1, "100");
    EXPECT_EQ(v.delay2, "50");

    const QStringList before = f.outputs(5);
    EXPECT_EQ(f.pulse().Decide(v, 5), PulseField::None);
    EXPECT_EQ(f.outputs(5), before);
    EXPECT_EQ(f.snapshots, 1);
    EXPECT_TRUE(f.prompter.shown().empty());
}

TEST(PulsePair, EachLogicAndKindIsWrittenAsItsPair) {
    PulseFixture f;
    f.putSimpleRow(7);
    f.pulse().SetValue(7, PulseFixture::values("Y012", 2, 4, "30", "12"));
    EXPECT_EQ(f.outputs(7), (QStringList{"Y012", "2", "8", "30", "Y012", "2", "8", "42"}));
    EXPECT_EQ(f.sheet().data(7, f.o2()), "OUT");
    EXPECT_EQ(PulsePair::kindNames().value(f.pulse().PasteValue(7).kind), "ANGLE3");
    f.pulse().SetValue(7, PulseFixture::values("OUT002", 1, 0, "0", "2"));
    EXPECT_EQ(f.outputs(7), (QStringList{"OUT002", "0", "0", "0", "OUT002", "1", "0", "2"}));
    EXPECT_EQ(PulsePair::logicNames().value(f.pulse().PasteValue(7).logic), "OFF PULSE");
    EXPECT_GT(f.changedCount, 0);

    // No logic chosen: the logic cells keep what they hold.
    f.pulse().SetValue(7, PulseFixture::values("OUT002", -1, 1, "6", "4"));
    EXPECT_EQ(f.outputs(7), (QStringList{"OUT002", "0", "2", "6", "OUT002", "1", "2", "10"}));

    // A pulse written over a jump takes the whole row back from it.
    f.putOut(8, 1, "J001", "3", "***", "***");
    f.putOut(8, 2, "***", "***", "***", "***");
    f.pulse().SetValue(8, PulseFixture::values("Y012", 0, 0, "10", "20"));
    EXPECT_EQ(f.outputs(8), (QStringList{"Y012", "1", "0", "10", "Y012", "0", "0", "30"}));
}

TEST(PulsePair, RowsThatAreNoPulse) {
    struct Case {
        const char* what;
        QStringList g1, g2;
    };
    const std::vector<Case> cases = {
        {"both high", {"Y012", "1", "2", "100"}, {"Y012", "1", "2", "150"}},
        {"different kinds", {"Y012", "1", "2", "100"}, {"Y012", "0", "0", "150"}},
        {"different functions", {"Y012", "1", "2", "100"}, {"OUT001", "0", "2", "150"}},
        {"no second group", {"Y012", "1", "2", "100"}, {"", "", "", ""}},
        {"a jump", {"J001", "3", "***", "***"}, {"***", "***", "***", "***"}},
    };
    for (const Case& c : cases) {
        PulseFixture f;
        f.putOut(5, 1, c.g1[0], c.g1[1], c.g1[2], c.g1[3]);
        f.putOut(5, 2, c.g2[0], c.g2[1], c.g2[2], c.g2[3]);
        EXPECT_FALSE(f.pulse().isPulseRow(5)) << c.what;
        EXPECT_FALSE(f.pulse().CanInputPulse(5, f.o1())) << c.what;
        EXPECT_EQ(f.pulse().PasteValue(5).kino, "") << c.what;
    }
}

TEST(PulsePair, DelaysMustLieInTheKindsRangeAtBothEnds) {
    struct Case {
        int kind;
        QString d1, d2;
        PulseField failed;
        QString message; // "" none
    };
    const std::vector<Case> cases = {
        {0, "130000", "0", PulseField::None, ""},
        {0, "129999", "2", PulseField::Delay2,
         "Value is out of range.\n\nMin = 0, Max = 130000(Delay1 + Delay2)"},
        {0, "130001", "0", PulseField::Delay1, "Value is out of range.\n\nMin = 0, Max = 130000"},
        {1, "9000", "999", PulseField::None, ""},
        {1, "9000", "1000", PulseField::Delay2,
         "Value is out of range.\n\nMin = 0, Max = 9999(Delay1 + Delay2)"},
        {2, "3600", "1", PulseField::Delay2,
         "Value is out of range.\n\nMin = 0, Max = 3600(Delay1 + Delay2)"},
        {-1, "1", "1", PulseField::DelayKind, "Input kind of delay at first."},
        {0, " ", "1", PulseField::Delay1, "Input all values."},
        {0, "1", "", PulseField::Delay2, "Input all values."},
    };
    for (const Case& c : cases) {
        PulseFixture f;
        const PulseValues v = PulseFixture::values("Y012", 0, c.kind, c.d1, c.d2);
        EXPECT_EQ(f.pulse().ExactValue(v), c.failed) << c.d1.toStdString() << "+" << c.d2.toStdString();
        EXPECT_EQ(f.prompter.texts(), c.message.isEmpty() ? QStringList{} : QStringList{c.message})
            << c.d1.toStdString() << "+" << c.d2.toStdString();
    }
    PulseFixture f;
    EXPECT_EQ(f.pulse().ExactValue(PulseFixture::values(" ", 0, 0, "1", "1")), PulseField::Kino);
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{146});
}

TEST(PulsePair, DecideOnTheHeaderRowWritesNothing) {
    PulseFixture f;
    const QByteArray before = f.sheet().saveCells();
    EXPECT_EQ(f.pulse().Decide(PulseFixture::values("Y012", 0, 1, "1", "1"), 0), PulseField::None);
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{147});
    EXPECT_EQ(f.sheet().saveCells(), before);
    EXPECT_EQ(f.changedCount, 0);
}

TEST(PulsePair, OnlyInputsOutputsAndRegistersCanPulse) {
    PulseFixture f;
    EXPECT_EQ(f.pulse().checkKino(" y012 "), std::optional<QString>("OUT"));
    EXPECT_EQ(f.pulse().checkKino(""), std::optional<QString>(""));
    EXPECT_EQ(f.pulse().checkKino("SHARED"), std::optional<QString>("RGST")) << "the category that can pulse";
    EXPECT_TRUE(f.prompter.shown().empty());
    EXPECT_FALSE(f.pulse().checkKino("NOSUCH"));
    EXPECT_FALSE(f.pulse().checkKino("CNT01"));
    EXPECT_EQ(f.prompter.numbers(), (std::vector<int>{67, 145}));
    EXPECT_EQ(f.prompter.texts().back(),
              "Value is not valid. Following category can be input.\n\nIN\nOUT\nRGST");

    f.prompter.clear();
    EXPECT_EQ(f.pulse().chosenFunction(4), (std::optional<std::pair<QString, QString>>({"RG01", "RGST"})));
    EXPECT_FALSE(f.pulse().chosenFunction(jumpTarget(1)));
    EXPECT_EQ(f.prompter.numbers(), std::vector<int>{145});

    // Leaving a delay box: the kind first, then the range.
    f.prompter.clear();
    EXPECT_EQ(f.pulse().checkDelayBox(PulseFixture::values("Y012", 0, -1, "5", ""), 1),
              PulseField::DelayKind);
    EXPECT_EQ(f.pulse().checkDelayBox(PulseFixture::values("Y012", 0, 2, "3601", ""), 1), PulseField::Delay1);
    EXPECT_EQ(f.pulse().checkDelayBox(PulseFixture::values("Y012", 0, 2, "3000", "601"), 2),
              PulseField::Delay2);
    EXPECT_EQ(f.pulse().checkDelayBox(PulseFixture::values("Y012", 0, 2, "3000", "600"), 2),
              PulseField::None);
    EXPECT_EQ(f.pulse().checkDelayBox(PulseFixture::values("Y012", 0, -1, "", ""), 1), PulseField::None);
    EXPECT_EQ(f.prompter.numbers(), (std::vector<int>{148, 43, 161}));
}

TEST(PulsePair, TheWindowFollowsTheCurrentCell) {
    using F = PulseFollow;
    // loaded, automatic, a pulse at the cell -> what the window does
    EXPECT_EQ(PulsePair::PulseOp(false, true, true), F::Open);
    EXPECT_EQ(PulsePair::PulseOp(true, true, true), F::Fill);
    EXPECT_EQ(PulsePair::PulseOp(true, true, false), F::Clear);
    EXPECT_EQ(PulsePair::PulseOp(false, true, false), F::Nothing);
    EXPECT_EQ(PulsePair::PulseOp(false, false, true), F::Nothing);
    EXPECT_EQ(PulsePair::PulseOp(true, false, true), F::Fill);
    EXPECT_EQ(PulsePair::PulseOp(true, false, false), F::Clear);
}

TEST(PulseGeometry, SymbolAndFirstPlacement) {
    const QPoint o(100, 50);
    const QList<QLine> on = pulseSymbol(0, o);
    EXPECT_EQ(on, (QList<QLine>{{100, 50, 180, 50},
                                {180, 50, 180, 10},
                                {180, 10, 260, 10},
                                {260, 10, 260, 50},
                                {260, 50, 340, 50}}));
    const QList<QLine> off = pulseSymbol(1, o);
    EXPECT_EQ(off[2], QLine(180, 90, 260, 90));
    EXPECT_EQ(pulseSymbol(2, o).size(), 8);
    EXPECT_EQ(pulseSymbol(-1, o), (QList<QLine>{{100, 50, 180, 50}, {180, 50, 340, 50}}));

    // Not placed yet: the bottom right of the area, to be stored.
    const PulsePlacement first = placePulseWindow(keys::kPulseNotPlaced, 0, 15000, 9000, 4000, 3000);
    EXPECT_EQ(first.left, 11000);
    EXPECT_EQ(first.top, 6000);
    EXPECT_TRUE(first.store);
    const PulsePlacement kept = placePulseWindow(2000, 3000, 15000, 9000, 4000, 3000);
    EXPECT_EQ(std::tuple(kept.left, kept.top, kept.store), std::tuple(2000, 3000, false));
    // Beyond a smaller area: back inside.
    const PulsePlacement back = placePulseWindow(16000, 9500, 15000, 9000, 4000, 3000);
    EXPECT_EQ(std::tuple(back.left, back.top), std::tuple(14000, 8000));
}
