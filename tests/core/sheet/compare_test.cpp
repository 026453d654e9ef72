// Two programs compared cell by cell, as the editor highlights them and the listing prints them.
#include "sheet/programcompare.h"

#include "model/csteps.h"
#include "sheetfixture.h"

#include <gtest/gtest.h>

using namespace vkm;
using namespace vkm::programcompare;

namespace {

class ProgramCompare : public ::testing::Test {
protected:
    void SetUp() override {
        test::fillOutputCatalogue(selout);
        test::fillInputCatalogue(selinp);
        // Names of their own for two functions, to see them in the listing.
        selout.Add("Y001", 256, "Thread trimmer", "OUT", "0", "0");
        selinp.Add("X001", 16, "Pedal back", "IN", "0", "0");
    }

    // A step: Y001 HIGH after a delay when X001 rises; the delay as stored (TIMER keeps half).
    void addStep(CSteps& p, int delayKind, int stored, const QString& remark = {}, bool disabled = false,
                 int outKino = 256) {
        auto outs = std::make_shared<CStepOuts>();
        outs->Add(1, outKino, LogicHigh, delayKind, stored, selout);
        outs->Add(2, -1, 0, 0, 0, selout);
        auto inps = std::make_shared<CStepInps>();
        inps->Add(1, 16, StatePosEdg, RelEnd);
        for (int g = 2; g <= 4; ++g)
            inps->Add(g, 0, StateNegEdg, RelEnd);
        p.Add(outs, inps, remark, false, disabled);
    }
    // Three steps, the second with a remark.
    CSteps sample() {
        CSteps p;
        addStep(p, DelayTimer, 50);
        addStep(p, DelayStc, 7, QStringLiteral("pedal"));
        addStep(p, DelayTimer, 10);
        return p;
    }
    // The listing's fields of one step, "field: a -> b" each.
    static QStringList lines(const ProgramDifferences& d) {
        QStringList out;
        for (const FieldDifference& f : d.program)
            out << f.field + ": " + f.a + " -> " + f.b;
        for (const StepDifference& s : d.steps)
            for (const FieldDifference& f : s.fields)
                out << QString::number(s.step) + " " + f.field + ": " + f.a + " -> " + f.b;
        return out;
    }

    // The same differences with what each program holds swapped.
    static ProgramDifferences exchanged(ProgramDifferences d) {
        for (FieldDifference& f : d.program)
            std::swap(f.a, f.b);
        for (StepDifference& s : d.steps)
            for (FieldDifference& f : s.fields)
                std::swap(f.a, f.b);
        return d;
    }

    CSelections selout, selinp;
};

TEST_F(ProgramCompare, IdenticalProgramsHaveNoDifference) {
    const ProgramDifferences d = comparePrograms(sample(), sample(), selout, selinp);
    EXPECT_TRUE(d.isEmpty()) << lines(d).join('\n').toStdString();
    EXPECT_EQ(d.fieldCount(), 0);
}

TEST_F(ProgramCompare, EachKindOfChangeIsOneFieldReadAsTheEditorShowsIt) {
    struct Case {
        const char* what;
        std::function<void(CSteps&)> change;
        QStringList expected;
    };
    const std::vector<Case> cases = {
        {"a TIMER delay: the stored half shows doubled",
         [&](CSteps& p) { p.Item(1)->outs->Item(1)->DelayEtc = 60; },
         {"1 output 1 delay value: 100 -> 120"}},
        {"a disabled row", [&](CSteps& p) { p.Item(3)->GyoMuko = true; }, {"3 disabled: no -> yes"}},
        {"a remark",
         [&](CSteps& p) { p.Item(2)->Remark = QStringLiteral("pedal 2"); },
         {"2 remark: \"pedal\" -> \"pedal 2\""}},
        {"a function with its name, and a delay kind by its name",
         [&](CSteps& p) {
             p.Item(2)->outs->Item(1)->Kino = 1;
             p.Item(2)->outs->Item(1)->DelayKind = DelayAngle1;
         },
         {"2 output 1 function: Y001 (Thread trimmer) -> OUT001", "2 output 1 delay kind: STC -> ANGLE1"}},
        {"a function no catalogue knows: without a category its TIMER delay is not doubled",
         [&](CSteps& p) { p.Item(1)->outs->Item(1)->Kino = 999; },
         {"1 output 1 function: Y001 (Thread trimmer) -> #999", "1 output 1 delay value: 100 -> 50"}},
        {"a memo and an author",
         [&](CSteps& p) {
             p.Memo = QStringLiteral("line 1\r\nline 2");
             p.Author = QStringLiteral("KT");
         },
         {"author: (empty) -> \"KT\"", "memo: (empty) -> \"line 1\\nline 2\""}},
    };
    for (const Case& c : cases) {
        CSteps changed = sample();
        c.change(changed);
        const ProgramDifferences d = comparePrograms(sample(), changed, selout, selinp);
        EXPECT_EQ(lines(d).join('\n').toStdString(), c.expected.join('\n').toStdString()) << c.what;
        // Compared the other way round, the same fields with the sides exchanged.
        const ProgramDifferences back = comparePrograms(changed, sample(), selout, selinp);
        EXPECT_EQ(lines(back).join('\n').toStdString(), lines(exchanged(d)).join('\n').toStdString())
            << c.what;
    }
}

TEST_F(ProgramCompare, TheProgramsOwnFieldsAreComparedAndAPasswordIsNeverShown) {
    CSteps a = sample();
    CSteps b = sample();
    EXPECT_TRUE(programFieldDifferences(a, b).empty());
    b.MemoFile = QStringLiteral("notes.txt");
    b.Password = QStringLiteral("vkm123");
    const std::vector<FieldDifference> fields = programFieldDifferences(a, b);
    ASSERT_EQ(fields.size(), 2u);
    EXPECT_EQ(fields[0].field, "memo file");
    EXPECT_EQ(fields[0].b, "\"notes.txt\"");
    EXPECT_EQ(fields[1].field, "password");
    EXPECT_EQ(fields[1].a, "(none)");
    EXPECT_EQ(fields[1].b, "(set)");
    a.Password = QStringLiteral("secret1");
    EXPECT_EQ(programFieldDifferences(a, b)[1].b, "(set, another)");
    // The listing reports exactly these fields for the program.
    const ProgramDifferences d = comparePrograms(a, b, selout, selinp);
    ASSERT_EQ(d.program.size(), 2u);
    EXPECT_EQ(d.program[1].b, "(set, another)");
    EXPECT_TRUE(d.steps.empty());
    for (const QString& text : lines(d))
        EXPECT_FALSE(text.contains("vkm123") || text.contains("secret1")) << text.toStdString();
}

TEST_F(ProgramCompare, AStepInOneProgramOnlyComparesWithAnEmptyRow) {
    CSteps longer = sample();
    addStep(longer, DelayStc, 3, QStringLiteral("extra"));
    const ProgramDifferences d = comparePrograms(sample(), longer, selout, selinp);
    ASSERT_EQ(d.steps.size(), 1u);
    EXPECT_EQ(d.steps[0].step, 4);
    const QStringList l = lines(d);
    EXPECT_TRUE(l.contains("4 remark: (empty) -> \"extra\"")) << l.join('\n').toStdString();
    EXPECT_TRUE(l.contains("4 output 1 function: (empty) -> Y001 (Thread trimmer)"));
    EXPECT_TRUE(l.contains("4 input 1 state: (empty) -> POS EDG"));
    // An empty step at the end reads as no step at all: the editor shows both alike.
    CSteps padded = sample();
    padded.Add(nullptr, nullptr, QString(), true, false);
    EXPECT_TRUE(comparePrograms(sample(), padded, selout, selinp).isEmpty());
}

TEST(SheetCompare, CellsDifferInTextCategoryOrRowStateInReadingOrder) {
    test::SheetFixture a, b;
    a.putSimpleRow(2);
    b.putSimpleRow(2);
    EXPECT_TRUE(differingCells(a.sheet(), b.sheet()).empty());

    b.sheet().setText(2, b.o1() + 3, "120");                   // a delay
    b.sheet().setData(2, b.in(1), "COUNT");                    // same digital text, another category
    b.sheet().setText(5, SheetLayout::GetcolRemark(), "note"); // a remark on an empty row
    a.sheet().setRowDisabled(4, true);                         // a row disabled in one only
    a.sheet().setRowDisabled(2, true);
    b.sheet().setRowDisabled(2, true); // disabled in both: no difference
    const std::vector<SheetCell> expected = {{2, b.o1() + 3}, {2, b.in(1)}, {4, 0}, {5, 1}};
    EXPECT_EQ(differingCells(a.sheet(), b.sheet()), expected);
    EXPECT_EQ(differingCells(b.sheet(), a.sheet()), expected);
    // The category of a cell that is not a function is nobody's business.
    b.sheet().setData(2, b.o1() + 1, "OUT");
    EXPECT_EQ(differingCells(a.sheet(), b.sheet()), expected);
    // The header row never differs.
    EXPECT_FALSE(cellDiffers(a.sheet(), b.sheet(), 0, 1));
}

TEST(SheetCompare, InputsFirstLayoutNamesFieldsByTheirColumn) {
    const StepSheet inputsFirst(true);
    EXPECT_EQ(fieldName(inputsFirst, 2), "input 1 function");
    EXPECT_EQ(fieldName(inputsFirst, inputsFirst.GetcolOutKino2() + 3), "output 2 delay value");
    EXPECT_EQ(fieldName(inputsFirst, inputsFirst.inputGroupCol(4) + 2), "input 4 relation");
}

} // namespace
