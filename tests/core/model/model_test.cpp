#include "programs.h"

#include "model/cstepinps.h"
#include "model/cstepouts.h"
#include "model/steprules.h"

#include <QSet>
#include <gtest/gtest.h>

using namespace vkm;
using namespace vkm::test;

// The names themselves are the code's table (the printout and the windows show them); what is
// behaviour: each logic reads back from its name, "RET" is only a display form, names are
// matched exactly, and codes without a name have none.
TEST(CodeTexts, NamesReadBackAndCodesWithoutANameHaveNone) {
    for (int code = 0; code <= 10; ++code)
        EXPECT_EQ(CStepOuts::LogicByName(CStepOuts::LogicJ(code)), code);
    EXPECT_EQ(CStepOuts::LogicByName("RETURN"), 11);
    EXPECT_EQ(CStepOuts::LogicByName("RET"), 0);
    EXPECT_EQ(CStepOuts::LogicByName("high"), 0);
    for (int code : {-1, 12})
        EXPECT_EQ(CStepOuts::LogicJ(code), "") << code;
    for (int code : {1, 3, 10})
        EXPECT_EQ(CStepOuts::DelayKindJ(code), "") << code;
    EXPECT_EQ(CStepInps::RelJ(9), "");
    EXPECT_EQ(CStepInps::JyotaiJ(4), "");
}

TEST(CStepOutsAdd, CategoryForcesFlowControlLogic) {
    const Catalogues c = testCatalogues();
    struct Case {
        int kino;
        int given;
        int expected;
    };
    const Case cases[] = {
        {jumpTarget(4), LogicLow, LogicJmp},
        {28672, LogicHigh, LogicSub},
        {callTarget(32), LogicLow, LogicCall},
        {28673, LogicInc, LogicRet},
        {256, LogicNot, LogicNot},
        {768, LogicAdd, LogicAdd},
        {4321, LogicClr, LogicClr}, // a function the catalogue does not know keeps its logic
    };
    for (const auto& tc : cases) {
        CStepOuts outs;
        const auto out = outs.Add(1, tc.kino, tc.given, DelayStc, 7, c.selout);
        ASSERT_TRUE(out);
        EXPECT_EQ(out->Logic, tc.expected) << tc.kino;
        EXPECT_EQ(out->DelayKind, DelayStc);
        EXPECT_EQ(out->DelayEtc, 7);
    }
    // 16 bits kept: 0xFFFF is the empty marker -1, 0x8000 the first jump target.
    CStepOuts outs;
    EXPECT_EQ(outs.Add(1, 0xFFFF, 0, 0, 0, c.selout)->Kino, -1);
    const auto jump = outs.Add(2, 0x8000, 0, 0, 0, c.selout);
    EXPECT_EQ(jump->Kino, jumpTarget(1));
    EXPECT_EQ(jump->Logic, LogicJmp);
    EXPECT_EQ(outs.Add(2, 256, 0, 0, 0, c.selout), nullptr) << "a second output under the same Block";
    EXPECT_EQ(outs.Count(), 2);
    EXPECT_EQ(outs.Item("2"), jump);
}

TEST(CStepOutsExistRet, FindsReturnInEitherOutput) {
    const Catalogues c = testCatalogues();
    CStepOuts none, first, second;
    none.Add(1, 256, 1, 0, 0, c.selout);
    none.Add(2, jumpTarget(2), 0, 0, 0, c.selout);
    first.Add(1, 28673, 0, 0, 0, c.selout);
    second.Add(1, 256, 1, 0, 0, c.selout);
    second.Add(2, 28673, 0, 0, 0, c.selout);
    EXPECT_FALSE(none.ExistRet(c.selout));
    EXPECT_TRUE(first.ExistRet(c.selout));
    EXPECT_TRUE(second.ExistRet(c.selout));
    EXPECT_FALSE(second.ExistRet(c.selinp)) << "the category comes from the catalogue given";
}

TEST(CStepsAdd, RowsFollowTheCountAndItemsAreShared) {
    CSteps p;
    auto outs = std::make_shared<CStepOuts>();
    const auto a = p.Add(outs, nullptr, "first", false, true);
    const auto b = p.Add(nullptr, nullptr, "", true, false);
    EXPECT_EQ(a->Row, 1);
    EXPECT_EQ(b->Row, 2);
    EXPECT_TRUE(a->GyoMuko);
    EXPECT_TRUE(b->NOP);
    EXPECT_EQ(p.Item("1"), a);
    EXPECT_EQ(p.Item(2), b);
    EXPECT_EQ(p.Item(3), nullptr);
    EXPECT_EQ(a->outs, outs);
    p.Remove(1);
    EXPECT_EQ(p.Add(nullptr, nullptr, "", true, false)->Row, 2) << "row = count + 1";
}

// A copy of a program is a program of its own: editing it leaves the original as it was
// (the editor keeps a copy of the program it opened while the user works on another).
TEST(CStepsCopy, CopiesShareNoStepOutputOrInput) {
    const Catalogues c = testCatalogues();
    const CSteps original = buildProgram(Shape::Counters, c);
    const QByteArray before = original.toImage(c.selinp, fixedClock(), nullptr);
    for (bool assign : {false, true}) {
        SCOPED_TRACE(assign);
        CSteps copy;
        if (assign)
            copy = original;
        else
            copy = CSteps(original);
        ASSERT_EQ(copy.Count(), original.Count());
        copy.Item(1)->Remark = "changed";
        copy.Item(1)->outs->Item(QStringLiteral("1"))->DelayEtc = 77;
        copy.Item(2)->inps->Item(QStringLiteral("2"))->Rel = RelOr;
        copy.Item(2)->inps->CounterId = 3;
        copy.Item(3)->outs->Remove(1);
        copy.Remove(4);
        copy.Author = "OTHER";
        EXPECT_EQ(original.toImage(c.selinp, fixedClock(), nullptr), before);
        EXPECT_NE(copy.Item(1), original.Item(1));
        EXPECT_EQ(original.Item(1)->Remark, "");
        EXPECT_EQ(original.Item(2)->inps->CounterId, 15);
        EXPECT_EQ(original.Count(), 32);
    }
    // What the copy was made from is all there: the same image.
    const CSteps copy(original);
    EXPECT_EQ(copy.toImage(c.selinp, fixedClock(), nullptr), before);
    EXPECT_EQ(copy.Item(32)->NOP, original.Item(32)->NOP);
}

TEST(GetValueRange, RulesByCategoryLogicAndDelayKind) {
    Catalogues c = testCatalogues();
    struct Case {
        const char* category;
        const char* digital;
        int side, logic, delayKind;
        qint32 min, max;
    };
    const Case cases[] = {
        {"COUNT", "CN41", 2, LogicSet, DelayTimer, 1, 500}, // output catalogue limits
        {"COUNT", "CN16", 1, LogicLow, DelayTimer, 0, 99},  // input catalogue limits
        {"COUNT", "CN16", 2, LogicLow, DelayTimer, 0, 9999},
        {"OUT", "Y001", 2, LogicHigh, DelayTimer, 0, 130000},
        {"OUT", "Y001", 2, LogicLow, DelayStc, 0, 9999},
        {"OUT", "Y001", 2, LogicNot, DelayAngle1, 0, 3600},
        {"OUT", "Y001", 2, LogicNot, DelayAngle3, 0, 3600},
        {"RGST", "R001", 2, LogicSet, DelayAngle2, 0, 65000},
        {"RGST", "R001", 2, LogicAdd, DelayTimer, 0, 65000},
        {"SUB", "SUB", 2, LogicSub, DelayStc, 0, 65000},
        {"JMP", "J001", 2, LogicJmp, DelayTimer, -7, 7}, // unchanged
        {"RGST", "R001", 2, LogicInc, DelayTimer, -7, 7},
        {"OUT", "Y001", 2, LogicHigh, 10, -7, 7}, // a delay kind the machine lacks
    };
    for (const auto& tc : cases) {
        qint32 lo = -7, hi = 7;
        GetValueRange(tc.category, tc.digital, tc.side, tc.logic, tc.delayKind, c.selout, c.selinp, lo, hi);
        EXPECT_EQ(lo, tc.min) << tc.category << ' ' << tc.digital << ' ' << tc.logic;
        EXPECT_EQ(hi, tc.max) << tc.category << ' ' << tc.digital << ' ' << tc.logic;
    }
}

TEST(StepRules, TimerDelaysOfSwitchedFunctionsAreHalvedAndComeBackWhole) {
    // Only a TIMER delay of an input, output or register is kept halved; every even value
    // the user types comes back as typed, every other delay is kept as it is.
    for (const QString& category : {cat::IN, cat::OUT, cat::RGST, cat::OUT_S, cat::COUNT, cat::JMP}) {
        for (const int kind : {DelayTimer, DelayStc, DelayAngle1, DelayAngle3}) {
            SCOPED_TRACE(category.toStdString() + " kind " + std::to_string(kind));
            const bool halved = kind == DelayTimer && isSwitchedCategory(category);
            EXPECT_EQ(delayIsHalved(category, kind), halved);
            EXPECT_EQ(storedDelay(130000, category, kind), halved ? 65000 : 130000);
            for (const qint64 shown : {0, 2, 4998, 130000})
                EXPECT_EQ(shownDelay(storedDelay(shown, category, kind), category, kind), shown);
        }
    }
}

TEST(StepRules, CounterIdentifiersSayWhichOperandsAreNumbers) {
    // Every pattern of number ('1') and counter ('0') operands has its own identifier, and
    // the identifier gives back exactly the groups that hold numbers.
    QSet<int> ids;
    for (const char* pattern : {"01", "00", "011", "001", "010", "000"}) {
        SCOPED_TRACE(pattern);
        const int id = counterIdForPattern(QLatin1String(pattern));
        ids.insert(id);
        for (int group = 1; group <= 4; ++group)
            EXPECT_EQ(MustJyosu(id, group), group <= int(qstrlen(pattern)) && pattern[group - 1] == '1')
                << "group " << group;
    }
    EXPECT_EQ(ids.size(), 6);
    EXPECT_FALSE(MustJyosu(-1, 2));
    EXPECT_FALSE(MustJyosu(16, 2));
}
