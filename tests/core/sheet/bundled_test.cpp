// The editor over the catalogues the program ships with.
#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "catalogue/cselectkino.h"
#include "model/csteps.h"
#include "sheet/stepsheeteditor.h"
#include "testsupport.h"

#include <QFileInfo>
#include <gtest/gtest.h>

using namespace vkm;

TEST(SheetBundledCatalogue, TypedRowsSaveTheCatalogueNumbers) {
    const QString archive = test::bundledArchive();
    if (!QFileInfo::exists(archive))
        GTEST_SKIP() << "no bundled archive at " << archive.toStdString();
    ScriptedPrompter prompter;
    CSelectKino kino(nullptr, prompter, archive);
    ASSERT_TRUE(kino.DoneMelt());
    CSelections selout, selinp;
    ASSERT_TRUE(selout.ReadSet6_7_8_9e(kino.workFolder(), "Set08.e"));
    ASSERT_TRUE(selinp.ReadSet6_7_8_9e(kino.workFolder(), "Set09.e"));
    kino.DeleteSettingFiles();

    StepSheetEditor ed(selout, selinp, prompter, false, true);
    const int o1 = ed.sheet().GetcolOutKino1();
    const int in1 = ed.sheet().colInp();
    // An edge input answered by EMAKE, a timer halved on save.
    for (auto [col, text] : std::initializer_list<std::pair<int, QString>>{{o1, "emake"},
                                                                           {o1 + 1, "1"},
                                                                           {o1 + 2, "0"},
                                                                           {o1 + 3, "260"},
                                                                           {in1, "x001"},
                                                                           {in1 + 1, "1"},
                                                                           {in1 + 2, "2"}})
        ASSERT_TRUE(ed.entry().enterText(1, col, text)) << col << " " << prompter.lastNumber();
    // Counters below 32 may add and subtract; the piece counter may not.
    ASSERT_TRUE(ed.entry().enterText(2, in1, "CN16"));
    EXPECT_EQ(ed.rules().comboList(2, in1 + 2), CellRules::kRelCountLowList);
    ASSERT_TRUE(ed.entry().enterText(3, in1, "CN40"));
    EXPECT_EQ(ed.rules().comboList(3, in1 + 2), CellRules::kRelCountHighList);
    EXPECT_FALSE(ed.entry().enterText(2, in1 + 3, "10000"));
    EXPECT_EQ(prompter.shown().back().a2, "9999");
    ed.clearing().DeleteOp(2, in1, 3, in1);

    ASSERT_TRUE(ed.ExactInput()) << ed.lastCheckFailure().message;
    CSteps saved;
    ASSERT_TRUE(ed.conversion().Update_step(CSteps(), saved));
    const auto out = saved.Item(1)->outs->Item(QStringLiteral("1"));
    EXPECT_EQ(out->Kino, selout.ValueByDigital("OUT", "EMAKE"));
    EXPECT_EQ(out->DelayEtc, 130);
    EXPECT_EQ(saved.Item(1)->inps->Item(QStringLiteral("1"))->Kino, selinp.ValueByDigital("IN", "X001"));
    EXPECT_TRUE(saved.Item(2)->NOP);
}
