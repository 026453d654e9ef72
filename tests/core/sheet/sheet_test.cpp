#include "sheetfixture.h"

#include "model/csteps.h"

using namespace vkm;
using namespace vkm::test;

namespace {

std::shared_ptr<CStepOuts> outs(const CSelections& sel, std::initializer_list<std::array<int, 4>> list) {
    auto o = std::make_shared<CStepOuts>();
    int block = 1;
    for (const auto& a : list)
        o->Add(block++, a[0], a[1], a[2], a[3], sel);
    return o;
}

std::shared_ptr<CStepInps> inps(std::initializer_list<std::array<int, 3>> list, int counterId = 0) {
    auto i = std::make_shared<CStepInps>();
    i->CounterId = counterId;
    int block = 1;
    for (const auto& a : list)
        i->Add(block++, a[0], quint8(a[1]), a[2]);
    return i;
}

} // namespace

TEST(StepSheetLayout, ColumnsOfBothLayouts) {
    struct Case {
        bool inpFirst;
        int out1, out2, inp;
    } cases[] = {{false, 2, 6, 10}, {true, 14, 18, 2}};
    for (const Case& c : cases) {
        const StepSheet s(c.inpFirst);
        EXPECT_EQ(s.GetcolOutKino1(), c.out1);
        EXPECT_EQ(s.GetcolOutKino2(), c.out2);
        EXPECT_EQ(s.colInp(), c.inp);
        EXPECT_EQ(s.text(32, 0), "32");
        EXPECT_TRUE(s.ColIs2or3Grp(c.inp + 3));
        EXPECT_TRUE(s.ColIs2or3Grp(c.inp + 6));
        EXPECT_FALSE(s.ColIs2or3Grp(c.inp + 9));
        int kinds[StepSheet::kCols] = {};
        for (int col = 0; col < StepSheet::kCols; ++col)
            kinds[col] = s.colKind(col);
        for (int g = 0; g < 2; ++g)
            for (int i = 0; i < 4; ++i)
                EXPECT_EQ(kinds[s.outputGroupCol(g + 1) + i], KindOutKino + i);
        for (int g = 0; g < 4; ++g)
            for (int i = 0; i < 3; ++i)
                EXPECT_EQ(kinds[c.inp + 3 * g + i], KindInpKino + i);
    }
}

TEST(StepSheetDisplay, StepsAreShownAsTheMachineMeansThem) {
    for (bool inpFirst : {false, true}) {
        SheetFixture f(inpFirst);
        CSteps p;
        // TIMER of an OUT output is kept halved; STC is not.
        p.Add(outs(f.selout, {{1, 1, DelayTimer, 50}, {2, 1, DelayStc, 50}}), inps({{1, 0, RelEnd}}), "r1",
              false, false);
        // RETURN in group 1.
        p.Add(outs(f.selout, {{10, 0, 0, 0}}), nullptr, "", false, true);
        // Counter CT10 "+" 300 compared with CT11; operand 1 is a number although IN001 is 1.
        p.Add(outs(f.selout, {{1, 1, DelayStc, 3}}),
              inps({{10, 0, RelPlus}, {1, 0, RelGe}, {11, 0, RelEnd}}, 4), "", false, false);
        // Unknown output value, and inputs after END that must not show.
        p.Add(outs(f.selout, {{77, 1, DelayStc, 3}}), inps({{1, 0, RelEnd}, {2, 0, RelAnd}, {3, 0, RelEnd}}),
              "", false, false);
        f.editor->conversion().PasteData(p);
        const StepSheet& s = f.sheet();
        EXPECT_EQ(s.text(1, f.o1() + 3), "100");
        EXPECT_EQ(s.text(1, f.o2() + 3), "50");
        EXPECT_EQ(s.text(1, 1), "r1");
        EXPECT_EQ(s.data(1, f.o1()), "OUT");

        EXPECT_TRUE(s.isRowDisabled(2));
        EXPECT_EQ(s.backColor(2, 5), sheetcolor::Disabled);
        EXPECT_EQ(s.backColor(3, f.o1()), s.normalColor(f.o1()));
        for (int col :
             {f.o1() + 2, f.o1() + 3, f.o2(), f.o2() + 1, f.o2() + 2, f.o2() + 3, f.in(1), f.in(4) + 2})
            EXPECT_EQ(s.text(2, col), "***") << col;

        for (int g = 1; g <= 3; ++g)
            EXPECT_EQ(s.text(3, f.in(g) + 1), "***") << g;
        EXPECT_EQ(s.text(3, f.in(2)), "1");
        EXPECT_TRUE(s.data(3, f.in(2)).isEmpty());
        EXPECT_EQ(s.text(3, f.in(3)), "CT11");

        EXPECT_EQ(s.text(4, f.o1()), "#77");
        EXPECT_TRUE(s.data(4, f.o1()).isEmpty());
        EXPECT_TRUE(s.text(4, f.in(2)).isEmpty());
        EXPECT_TRUE(s.text(4, f.in(3) + 2).isEmpty());
    }
}

TEST(StepSheetSnapshot, RestoresEveryCellAndRefusesBadBytes) {
    SheetFixture f;
    f.putSimpleRow(3);
    f.sheet().setText(5, 1, QString(10, QChar(0x3042)));
    f.editor->conversion().DoGyoMuko(5, true);
    const QByteArray snap = f.sheet().saveCells();

    SheetFixture g;
    g.sheet().setText(1, 1, "to be replaced");
    g.editor->conversion().DoGyoMuko(7, true);
    ASSERT_TRUE(g.sheet().loadCells(snap));
    EXPECT_EQ(g.sheet().saveCells(), snap);
    EXPECT_TRUE(g.sheet().isRowDisabled(5));
    EXPECT_FALSE(g.sheet().isRowDisabled(7));
    EXPECT_EQ(g.sheet().data(3, g.o1()), "OUT");
    EXPECT_TRUE(g.sheet().text(1, 1).isEmpty());

    const QByteArray current = g.sheet().saveCells();
    QByteArray flipped = snap;
    flipped[2] = char(flipped[2] ^ 0x40);
    const QByteArray bad[] = {QByteArray(),
                              QByteArray("garbage"),
                              snap.left(snap.size() - 3),
                              snap + "x",
                              flipped,
                              SheetFixture(true).sheet().saveCells()};
    for (const QByteArray& b : bad) {
        EXPECT_FALSE(g.sheet().loadCells(b)) << b.size();
        EXPECT_EQ(g.sheet().saveCells(), current);
    }
}

TEST(StepSheetNotify, BatchesReportOneRectangle) {
    StepSheet s;
    std::vector<CellRect> seen;
    s.addChangeListener([&](const CellRect& r) { seen.push_back(r); });
    s.setText(2, 3, "a");
    s.setText(2, 3, "a"); // no change, no report
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_TRUE(seen[0].contains(2, 3));
    const quint64 rev = s.revision();
    {
        StepSheet::Batch b(s);
        s.setText(4, 5, "x");
        s.setRowDisabled(9, true);
    }
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_TRUE(seen[1].contains(4, 5));
    EXPECT_TRUE(seen[1].contains(9, 21));
    EXPECT_FALSE(seen[1].contains(10, 5));
    EXPECT_GT(s.revision(), rev);
}

// The grid, a find window and a pulse window follow the same sheet; one that goes stops
// hearing, the others go on.
TEST(StepSheetNotify, EveryListenerHearsUntilItIsRemoved) {
    StepSheet s;
    int changesA = 0, changesB = 0, moves = 0;
    const auto a = s.addChangeListener([&](const CellRect&) { ++changesA; });
    s.addChangeListener([&](const CellRect&) { ++changesB; });
    const auto m = s.addSelectionListener([&] { ++moves; });
    s.setText(1, 1, "x");
    s.select(3, 4);
    EXPECT_EQ(changesA, 1);
    EXPECT_EQ(changesB, 1);
    EXPECT_EQ(moves, 1);
    s.removeListener(a);
    s.removeListener(m);
    s.setText(1, 1, "y");
    s.select(5, 6);
    EXPECT_EQ(changesA, 1);
    EXPECT_EQ(changesB, 2);
    EXPECT_EQ(moves, 1);
    // A listener may remove itself while it is told.
    StepSheet::ListenerId self = 0;
    int once = 0;
    self = s.addChangeListener([&](const CellRect&) {
        ++once;
        s.removeListener(self);
    });
    s.setText(2, 2, "a");
    s.setText(2, 2, "b");
    EXPECT_EQ(once, 1);
    EXPECT_EQ(changesB, 4);
}

TEST(StepSheetRoundTrip, ProgramThroughTheSheetAndBack) {
    for (bool inpFirst : {false, true}) {
        SCOPED_TRACE(inpFirst);
        SheetFixture f(inpFirst);
        CSteps p;
        p.Author = "AUTH";
        p.Password = "PW";
        p.Memo = "memo";
        p.MemoFile = "A.TXT";
        p.Add(outs(f.selout, {{1, 1, DelayTimer, 50}, {3, 0, DelayStc, 7}}),
              inps({{1, 1, RelAnd}, {2, 3, RelOr}, {3, 0, RelAnd}, {4, 2, RelEnd}}), "first", false, false);
        p.Add(outs(f.selout, {{qint16(jumpTarget(2)), 3, 0, 0}, {-1, 0, 0, 0}}), inps({{5, 3, RelEnd}}), "",
              false, true);
        p.Add(outs(f.selout, {{5, 6, 0, 1234}, {-1, 0, 0, 0}}), inps({{40, 0, RelGe}, {7, 0, RelEnd}}, 0), "",
              false, false);
        p.Add(outs(f.selout, {{10, 11, 0, 0}}), nullptr, "ret", false, false);
        p.Add(std::make_shared<CStepOuts>(), std::make_shared<CStepInps>(), "only remark", false, true);
        p.Add(outs(f.selout, {{qint16(callTarget(1)), 10, 0, 0}, {-1, 0, 0, 0}}),
              inps({{10, 0, RelMinus}, {11, 0, RelLe}, {65535, 0, RelEnd}}, 3), "", false, false);
        f.editor->conversion().PasteData(p);
        ASSERT_TRUE(f.editor->ExactInput()) << f.editor->lastCheckFailure().message;
        CSteps q;
        ASSERT_TRUE(f.editor->conversion().Update_step(p, q));
        EXPECT_EQ(q.Author, "AUTH");
        EXPECT_EQ(q.Password, "PW");
        EXPECT_EQ(q.Memo, "memo");
        EXPECT_EQ(q.MemoFile, "A.TXT");
        ASSERT_EQ(q.Count(), 32);

        auto out = [&](int row, int block) { return q.Item(row)->outs->Item(QString::number(block)); };
        auto in = [&](int row, int block) { return q.Item(row)->inps->Item(QString::number(block)); };
        EXPECT_EQ(out(1, 1)->DelayEtc, 50);
        EXPECT_EQ(out(1, 2)->Kino, 3);
        EXPECT_EQ(out(1, 2)->DelayEtc, 7);
        EXPECT_EQ(in(1, 2)->Jyotai, 3);
        EXPECT_EQ(in(1, 4)->Rel, RelEnd);
        EXPECT_EQ(q.Item(1)->Remark, "first");

        EXPECT_TRUE(q.Item(2)->GyoMuko);
        EXPECT_EQ(out(2, 1)->Kino, jumpTarget(2));
        EXPECT_EQ(out(2, 1)->Logic, LogicJmp);
        EXPECT_EQ(out(2, 2)->Kino, -1);
        EXPECT_EQ(in(2, 1)->Kino, 5);
        EXPECT_EQ(in(2, 2)->Rel, RelEnd) << "empty records after END";
        EXPECT_EQ(q.Item(2)->inps->Count(), 4);

        EXPECT_EQ(q.Item(3)->inps->CounterId, 0);
        EXPECT_EQ(in(3, 1)->Kino, 40);
        EXPECT_EQ(in(3, 2)->Kino, 7);
        EXPECT_EQ(out(3, 1)->DelayEtc, 1234);

        EXPECT_EQ(out(4, 1)->Logic, LogicRet);
        EXPECT_EQ(out(4, 2)->Kino, -1);
        for (int b = 1; b <= 4; ++b) {
            EXPECT_EQ(in(4, b)->Kino, 0);
            EXPECT_EQ(in(4, b)->Jyotai, 3);
            EXPECT_EQ(in(4, b)->Rel, RelEnd);
        }
        EXPECT_EQ(q.Item(4)->Remark, "ret");

        EXPECT_EQ(q.Item(5)->Remark, "only remark");
        EXPECT_EQ(q.Item(5)->outs->Count(), 0);
        EXPECT_TRUE(q.Item(5)->GyoMuko);
        EXPECT_FALSE(q.Item(5)->NOP);

        EXPECT_EQ(q.Item(6)->inps->CounterId, 3);
        EXPECT_EQ(in(6, 1)->Rel, RelMinus);
        EXPECT_EQ(in(6, 2)->Kino, 11);
        EXPECT_EQ(in(6, 3)->Kino, 65535) << "operands are unsigned";
        EXPECT_EQ(out(6, 1)->Logic, LogicCall);

        for (int r = 7; r <= 32; ++r) {
            EXPECT_TRUE(q.Item(r)->NOP);
            EXPECT_EQ(q.Item(r)->outs, nullptr);
        }

        // The saved program shows the same sheet again.
        const QByteArray shown = f.sheet().saveCells();
        f.editor->conversion().PasteData(q);
        EXPECT_EQ(f.sheet().saveCells(), shown);
    }
}

TEST(StepSheetRoundTrip, UnknownFunctionBlocksTheSave) {
    SheetFixture f;
    CSteps p;
    p.Add(outs(f.selout, {{1, 1, DelayStc, 5}}), inps({{99, 0, RelEnd}}), "", false, false);
    f.editor->conversion().PasteData(p);
    EXPECT_EQ(f.sheet().text(1, f.in(1)), "#99");
    CSteps q;
    q.Author = "untouched";
    EXPECT_FALSE(f.editor->conversion().Update_step(p, q));
    EXPECT_EQ(q.Author, "untouched");
    EXPECT_EQ(q.Count(), 0);
}

TEST(StepSheetRoundTrip, EmptySheetSavesThirtyTwoNopSteps) {
    SheetFixture f;
    EXPECT_TRUE(f.editor->ExactInput());
    CSteps q;
    ASSERT_TRUE(f.editor->conversion().Update_step(CSteps(), q));
    ASSERT_EQ(q.Count(), 32);
    for (int r = 1; r <= 32; ++r)
        EXPECT_TRUE(q.Item(r)->NOP);
}
