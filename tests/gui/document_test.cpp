#include "appcontext.h"
#include "base/scriptedprompter.h"
#include "base/settings.h"
#include "catalogue/cselections.h"
#include "documentcontroller.h"
#include "finpmemo.h"
#include "sheet/stepsheeteditor.h"
#include "testsupport.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
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

TEST_F(DocumentCommands, MemoWindowOpensAtItsStoredSizeInFrontOfTheEditors) {
    // 7200 x 4320 twips: 480 x 288 pixels at 96 dpi.
    settings.settings->set(keys::Memo_Width, 7200);
    settings.settings->set(keys::Memo_Height, 4320);
    mdi.resize(1200, 900);
    mdi.show();
    QWidget* editor = new QWidget;
    QMdiSubWindow* editorFrame = mdi.addSubWindow(editor);
    editorFrame->setGeometry(0, 0, 1200, 900);
    editorFrame->show();

    fInpMemo* memo = controller->openMemoWindow(0);
    ASSERT_NE(memo, nullptr);
    const double dpi = memo->screen()->logicalDotsPerInch();
    const QSize stored(twipsToPixels(7200, dpi), twipsToPixels(4320, dpi));
    EXPECT_TRUE(QTest::qWaitFor([&] { return memo->isVisible(); }));
    EXPECT_EQ(memo->size(), stored);

    // A click into the editor makes it the active window; the memo stays on top of it.
    auto* memoFrame = qobject_cast<QMdiSubWindow*>(memo->parentWidget());
    ASSERT_NE(memoFrame, nullptr);
    mdi.setActiveSubWindow(editorFrame);
    QTest::mouseClick(editor, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(mdi.activeSubWindow(), editorFrame);
    EXPECT_EQ(mdi.subWindowList(QMdiArea::StackingOrder).last(), memoFrame);

    // Closed at another size, it opens at that size the next time.
    memoFrame->resize(memoFrame->size() + QSize(40, 30));
    const QSize resized = memo->size();
    memo->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return controller->memoWindow() == nullptr; }));
    fInpMemo* again = controller->openMemoWindow(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return again->isVisible(); }));
    EXPECT_EQ(again->size(), resized);
    again->close();
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
