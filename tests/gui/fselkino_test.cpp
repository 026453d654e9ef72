// The function selection dialog and the category dialog on real widgets.
#include "fselkino.h"
#include "functionchooser.h"

#include "guitestsupport.h"
#include "model/codes.h"

#include <QCheckBox>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace vkm;

namespace {

// A small catalogue of each side with the categories the dialog treats apart.
void fillOutputs(CSelections& s) {
    test::addBasicOutputs(s);
    s.Add("Xshared", 80, "Shared name", "OUT_S", "0", "0");
    s.Add("Xshared", 81, "Shared name", "RGST2", "0", "0");
}

void fillInputs(CSelections& s) {
    s.Add("IN1", 1, "Input 1", "IN", "0", "0");
    s.Add("in2", 2, "Input 2 (lower-case name)", "IN", "0", "0");
    s.Add("C1", 60, "Counter 1", "COUNT", "0", "99");
    s.Add("STEP", 90, "Step", "STEP", "0", "0");
}

struct Fixture : test::GuiFixture {
    fSelKino dialog{ts.settings.get(), prompter};
    Fixture(int side, int kind) {
        fillOutputs(out);
        fillInputs(inp);
        dialog.In_or_Out = side;
        dialog.VMKKind = kind;
        dialog.sels = side == 2 ? &out : &inp;
        dialog.orgValue = 1234;
        dialog.Form_Load();
        dialog.show();
    }
    QStringList allTexts() const {
        QStringList t;
        for (const auto& s : prompter.shown())
            t << s.text;
        return t;
    }
};

QStringList childTexts(QTreeWidgetItem* node) {
    QStringList out;
    for (int i = 0; node && i < node->childCount(); ++i)
        out << node->child(i)->text(0);
    return out;
}

} // namespace

TEST(FSelKinoTree, CategoriesInCatalogueOrderAndFlowCategoriesHaveNoFunctionNodes) {
    Fixture f(2, 3);
    QTreeWidget* tv = f.dialog.tree();
    QStringList tops;
    for (int i = 0; i < tv->topLevelItemCount(); ++i)
        tops << tv->topLevelItem(i)->text(0);
    EXPECT_EQ(tops, (QStringList{"OUT", "RGST", "COUNT", "JMP", "CALL", "RETURN", "OUT_S", "RGST2"}));
    EXPECT_EQ(childTexts(f.dialog.categoryNode("OUT")), (QStringList{"OUT1\tOutput 1", "OUT2\tOutput 2"}));
    // Jump and call categories hold only their step node; RETURN is an ordinary function.
    EXPECT_EQ(childTexts(f.dialog.categoryNode("JMP")), QStringList{fSelKino::kStepNodeText});
    EXPECT_EQ(childTexts(f.dialog.categoryNode("CALL")), QStringList{fSelKino::kStepNodeText});
    EXPECT_EQ(childTexts(f.dialog.categoryNode("RETURN")), QStringList{"RET\tReturn"});
    // The category toolbar with one button per category.
    EXPECT_TRUE(f.dialog.categoryNode("OUT")->font(0).bold());
    EXPECT_EQ(f.dialog.categoryBar()->actions().size(), 8);
    EXPECT_TRUE(f.dialog.categoryBar()->isVisible());

    // A category button toggles its node and selects it; its image is found without case.
    QAction* count = f.dialog.categoryBar()->actions().at(2);
    EXPECT_EQ(count->objectName(), "COUNTkey");
    EXPECT_FALSE(count->icon().isNull());
    count->trigger();
    EXPECT_TRUE(f.dialog.categoryNode("COUNT")->isExpanded());
    EXPECT_EQ(f.dialog.tree()->currentItem(), f.dialog.categoryNode("COUNT"));
    count->trigger();
    EXPECT_FALSE(f.dialog.categoryNode("COUNT")->isExpanded());
    f.dialog.DoesKillCUNT(true);
    EXPECT_TRUE(f.dialog.categoryNode("COUNT")->isHidden());
    f.dialog.DoesKillCUNT(false);
    EXPECT_FALSE(f.dialog.categoryNode("COUNT")->isHidden());
}

TEST(FSelKinoTree, InputDialogPutsStepNodeUnderStepAndKindOneHasNoStepNodesOrToolbar) {
    Fixture in3(1, 3);
    EXPECT_EQ(childTexts(in3.dialog.categoryNode("STEP")), QStringList{fSelKino::kStepNodeText});

    Fixture out1(2, 1);
    EXPECT_TRUE(childTexts(out1.dialog.categoryNode("JMP")).isEmpty());
    EXPECT_TRUE(childTexts(out1.dialog.categoryNode("CALL")).isEmpty());
    EXPECT_FALSE(out1.dialog.categoryBar()->isVisible());
    EXPECT_TRUE(out1.dialog.categoryBar()->actions().isEmpty());
}

TEST(FSelKinoStep, StepNumbersEncodeTargetsAndBadAnswersAskAgain) {
    struct Case {
        const char* category;
        QStringList answers;
        int expected;         // retValue after the last answer
        QStringList messages; // local messages shown on the way
    };
    const QList<Case> cases = {
        {"CALL", {"1"}, -16384, {}},
        {"JMP", {"32"}, -32737, {}},
        {"JMP",
         {"0", "33", "ab", "00005", "", "2"},
         jumpTarget(2),
         {"Value is out of range.\n\nMIN = 1\n\nMAX = 32", "Value is out of range.\n\nMIN = 1\n\nMAX = 32",
          "Input step number.", "Input value is too large."}},
    };
    for (const Case& c : cases) {
        Fixture f(2, 3);
        for (const QString& a : c.answers)
            f.prompter.queueInput(a);
        QTreeWidgetItem* node = f.dialog.categoryNode(c.category)->child(0);
        EXPECT_TRUE(f.dialog.stepNumberEntry(node)) << c.category;
        EXPECT_EQ(f.dialog.retValue, c.expected) << c.category;
        EXPECT_EQ(f.allTexts(), c.messages) << c.category;
        EXPECT_EQ(f.prompter.inputPrompts().size(), c.answers.size());
        EXPECT_EQ(f.prompter.inputPrompts().value(0), "Input step number.\n\nmin = 1\nmax = 32");
        EXPECT_FALSE(f.dialog.isVisible()) << "Select hides the dialog";
        EXPECT_TRUE(f.dialog.IsLoaded);
    }
}

TEST(FSelKinoStep, MouseClickOnStepNodeAsksAndCancelledEntryChoosesNothing) {
    Fixture f(2, 3);
    QTreeWidget* tv = f.dialog.tree();
    f.dialog.setExpandAll(true);
    QTreeWidgetItem* node = f.dialog.categoryNode("CALL")->child(0);
    f.prompter.queueInput(std::nullopt); // the user cancels the input box
    QTest::mouseClick(tv->viewport(), Qt::LeftButton, {}, tv->visualItemRect(node).center());
    EXPECT_EQ(f.prompter.inputPrompts().size(), 1);
    EXPECT_TRUE(f.dialog.isVisible());
    EXPECT_EQ(f.dialog.retValue, -1) << "retValue changes only by Select or Cancel";
}

TEST(FSelKinoSelect, SelectRefusesNothingCategoryAndEmptyStepNode) {
    Fixture f(2, 3);
    QTreeWidget* tv = f.dialog.tree();
    tv->clearSelection();
    tv->setCurrentItem(nullptr);
    f.dialog.selectOp();
    tv->setCurrentItem(f.dialog.categoryNode("OUT"));
    f.dialog.selectOp();
    f.dialog.ClearStepTagVariant();
    tv->setCurrentItem(f.dialog.findNodeByKey("StepInput"));
    f.dialog.selectOp();
    EXPECT_EQ(f.allTexts(),
              (QStringList{"Select again.", "You cannnot select category!", "Input step value."}));
    EXPECT_TRUE(f.dialog.isVisible());

    // A function node: Enter in the tree selects it.
    f.dialog.setExpandAll(true);
    tv->setCurrentItem(f.dialog.findNodeByKey("40key"));
    tv->setFocus();
    QTest::keyClick(tv, Qt::Key_Return);
    EXPECT_EQ(f.dialog.retValue, 40);
    EXPECT_FALSE(f.dialog.isVisible());
    EXPECT_GT(f.dialog.tree()->topLevelItemCount(), 0) << "Select keeps the tree";
}

TEST(FSelKinoSelect, DoubleClickOnFunctionSelectsAndCancelReturnsOrgValueAndUnloads) {
    Fixture f(1, 3);
    QTreeWidget* tv = f.dialog.tree();
    f.dialog.setExpandAll(true);
    QTreeWidgetItem* in2 = f.dialog.findNodeByKey("2key");
    ASSERT_NE(in2, nullptr);
    const QPoint at = tv->visualItemRect(in2).center();
    QTest::mouseClick(tv->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(tv->viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(f.dialog.retValue, 2);

    f.dialog.show();
    f.dialog.cancelOp();
    EXPECT_EQ(f.dialog.retValue, 1234);
    EXPECT_FALSE(f.dialog.IsLoaded);
    EXPECT_EQ(tv->topLevelItemCount(), 0) << "Cancel discards the tree";
    // The position was stored in twips under the input keys.
    EXPECT_FALSE(f.ts.settings->read(Section::Location, "fSelIn_Width").isEmpty());
    EXPECT_GE(f.ts.settings->value(keys::fSelIn_Width), 5400);
}

TEST(FSelKinoFind, CaseInsensitiveExactMatchAndNotFoundAsksAgain) {
    Fixture f(1, 3);
    QTreeWidget* tv = f.dialog.tree();
    // "IN" is only part of "IN1": not a match; "IN2" matches the lower-case digital "in2".
    f.prompter.queueInput("IN");
    f.prompter.queueInput("");
    f.prompter.queueInput("IN2");
    tv->setFocus();
    QTest::keyClick(tv, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(f.allTexts(), QStringList{"Not found."});
    ASSERT_NE(tv->currentItem(), nullptr);
    EXPECT_EQ(tv->currentItem()->data(0, fSelKino::DigitalRole).toString(), "in2");
    EXPECT_EQ(f.prompter.inputPrompts().size(), 3);

    // Cancel ends the search without a message.
    f.prompter.clear();
    f.prompter.queueInput(std::nullopt);
    f.dialog.findOp();
    EXPECT_TRUE(f.allTexts().isEmpty());
}

TEST(FSelKinoSettings, ExpandCheckBoxIsStoredAndWindowKeepsItsMinimumSize) {
    Fixture f(2, 3);
    f.dialog.expandCheck()->click();
    EXPECT_EQ(f.ts.settings->read(Section::General, "DoesExpandTree"), "1");
    EXPECT_TRUE(f.dialog.categoryNode("OUT")->isExpanded());
    f.dialog.expandCheck()->click();
    EXPECT_EQ(f.ts.settings->read(Section::General, "DoesExpandTree"), "0");
    EXPECT_FALSE(f.dialog.categoryNode("OUT")->isExpanded());

    f.dialog.resize(50, 50);
    EXPECT_EQ(f.dialog.width(), f.dialog.twipsToPixels(5490));
    EXPECT_EQ(f.dialog.height(), f.dialog.twipsToPixels(3525));
}

TEST(FSelKinoOwner, TheChooserRunsTheModalDialogAndACancelChoosesNothing) {
    test::TempSettings ts;
    ScriptedPrompter prompter;
    CSelections out, inp;
    fillOutputs(out);
    fillInputs(inp);
    FunctionChooserDialogs owner(ts.settings.get(), prompter);
    owner.LoadForms(3, &inp, &out);
    FunctionChooser choose = owner.functionChooser();

    // Pick "C1" in the output dialog while it runs modally.
    QTimer::singleShot(0, [&] {
        fSelKino* d = owner.dialog(2);
        d->setExpandAll(true);
        d->tree()->setCurrentItem(d->findNodeByKey("60key"));
        d->selectOp();
    });
    EXPECT_EQ(choose(2, -1, 3), std::optional<int>(60));
    QTimer::singleShot(0, [&] { owner.dialog(1)->cancelOp(); });
    EXPECT_EQ(choose(1, 2, 3), std::nullopt);
    EXPECT_EQ(owner.dialog(1)->retValue, 2);
}
