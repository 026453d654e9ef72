#include "appcontext.h"
#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "documentcontroller.h"
#include "finpmemo.h"
#include "sheet/stepsheeteditor.h"
#include "testsupport.h"

#include <QMdiArea>
#include <QTest>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

class DocumentCommands : public ::testing::Test {
protected:
    void SetUp() override {
        const QString setting = QStringLiteral(VKM_SOURCE_DIR "/data/setting");
        ASSERT_TRUE(selout.ReadSet6_7_8_9e(setting, QStringLiteral("Set08.e")));
        ASSERT_TRUE(selinp.ReadSet6_7_8_9e(setting, QStringLiteral("Set09.e")));
        context.prompter = &prompter;
        context.settings = settings.settings.get();
        context.selout = &selout;
        context.selinp = &selinp;
        controller = std::make_unique<DocumentController>(context, user, cmp, nullptr, &mdi);
    }

    ScriptedPrompter prompter;
    CSelections selout, selinp;
    TempSettings settings;
    AppContext context;
    StepSheetEditor user{selout, selinp, prompter, false, false};
    StepSheetEditor cmp{selout, selinp, prompter, true, false};
    QMdiArea mdi;
    std::unique_ptr<DocumentController> controller;
};

TEST_F(DocumentCommands, KeysReachTheirOperationsOnlyWhereTheyApply) {
    struct Case {
        int usrcmp;
        const char* key;
        bool fromMenu;
        bool handled;
        std::vector<int> messages;
    };
    const std::vector<Case> cases = {
        {0, "keyUNDO", false, true, {95}},
        {1, "keyUNDO", false, true, {}},         // no undo in the comparison editor
        {1, "keySAVE2", true, true, {}},         // nothing goes to the machine from the comparison editor
        {0, "keyHelpManual", true, true, {157}}, // no manual beside the test executable
        {0, "keyREM", false, false, {}},         // the remark button is the grid's
        {0, "keyFind", false, false, {}},
        {1, "keyNew", false, true, {}},
    };
    for (const Case& c : cases) {
        prompter.clear();
        EXPECT_EQ(controller->handleKey(c.usrcmp, QLatin1String(c.key), c.fromMenu), c.handled) << c.key;
        EXPECT_EQ(prompter.numbers(), c.messages) << c.key;
    }
}

TEST_F(DocumentCommands, MemoWindowIsModelessSingleAndBlocksNew) {
    ASSERT_TRUE(controller->handleKey(0, QStringLiteral("keyREM"), true));
    fInpMemo* memo = controller->memoWindow();
    ASSERT_NE(memo, nullptr);
    EXPECT_FALSE(memo->isModal());
    controller->handleKey(0, QStringLiteral("keyREM"), true);
    EXPECT_EQ(controller->memoWindow(), memo);
    EXPECT_EQ(mdi.subWindowList().size(), 1);

    controller->handleKey(0, QStringLiteral("keyNew"), false);
    EXPECT_EQ(prompter.numbers(), std::vector<int>({72}));

    memo->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return controller->memoWindow() == nullptr; }));
    prompter.clear();
    EXPECT_TRUE(controller->handleKey(0, QStringLiteral("keyNew"), false));
    EXPECT_TRUE(prompter.numbers().empty());
}

TEST_F(DocumentCommands, OpenAsksAboutUnsavedChangesFirst) {
    controller->documents().user().setChanged(true);
    prompter.queueAnswer(Answer::Cancel);
    controller->handleKey(0, QStringLiteral("keyREAD_USER1"), true);
    EXPECT_EQ(prompter.numbers(), std::vector<int>({13}));
    EXPECT_TRUE(prompter.fileRequests().empty()) << "Cancel opens no dialog";
    prompter.clear();
    prompter.queueAnswer(Answer::No);
    prompter.queueFileName(QString()); // the open dialog is cancelled
    controller->handleKey(0, QStringLiteral("keyREAD_USER1"), true);
    ASSERT_EQ(prompter.fileRequests().size(), 1u);
    EXPECT_EQ(prompter.fileRequests()[0].title, QStringLiteral("Open user file."));
}

} // namespace
} // namespace vkm::test
