#include "controllerfixture.h"
#include "finpmemo.h"

#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

class DocumentCommands : public ControllerFixture {
protected:
    void SetUp() override {
        ControllerFixture::SetUp();
        startController();
    }
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
        {1, "keyUNDO", false, true, {}}, // no undo in the comparison editor
        {1, "keySAVE2", true, true, {}}, // nothing goes to the machine from the comparison editor
        {0, "keyREM", false, false, {}}, // the remark button is the grid's
        {0, "keyFind", false, false, {}},
        {1, "keyNew", false, true, {}},
    };
    for (const Case& c : cases) {
        prompter.clear();
        EXPECT_EQ(controller->handleKey(c.usrcmp, QLatin1String(c.key), c.fromMenu), c.handled) << c.key;
        EXPECT_EQ(prompter.numbers(), c.messages) << c.key;
    }
}

TEST_F(DocumentCommands, HelpAndManualOpenTheFilesBesideTheExecutableFromBothEditors) {
    // The build puts the guide and the manual beside the executables, where a run from the
    // build finds them before the installed data folder.
    QStringList opened;
    controller->setOpener([&](const QString& path) {
        opened << QFileInfo(path).canonicalFilePath();
        return true;
    });
    const QString bin = QFileInfo(QStringLiteral(VKM_BIN_DIR)).canonicalFilePath();
    for (int usrcmp : {0, 1}) {
        opened.clear();
        prompter.clear();
        EXPECT_TRUE(controller->handleKey(usrcmp, QStringLiteral("keyHelp"), false));
        EXPECT_TRUE(controller->handleKey(usrcmp, QStringLiteral("keyHelpManual"), true));
        EXPECT_EQ(opened, QStringList({bin + "/Help/Eng/Index.html", bin + "/step_help1.pdf"})) << usrcmp;
        EXPECT_TRUE(prompter.numbers().empty()) << usrcmp;
    }
}

TEST_F(DocumentCommands, MissingHelpOrNoViewerGivesOneMessageAndNothingElse) {
    Scratch dir;
    const QString present = dir.write("guide", "<h1>Guide</h1>");
    struct Case {
        const char* key;
        bool fileThere;
        bool viewerThere;
        int message;
    };
    const Case cases[] = {
        {"keyHelp", false, true, 139},
        {"keyHelp", true, false, 139},
        {"keyHelpManual", false, true, 139}, // no manual: not the viewer's fault
        {"keyHelpManual", true, false, 157},
    };
    for (const Case& c : cases) {
        QStringList asked, opened;
        controller->setDataLookup([&](const QString& relative) {
            asked << relative;
            return c.fileThere ? present : dir.file("missing");
        });
        controller->setOpener([&](const QString& path) {
            opened << path;
            return c.viewerThere;
        });
        prompter.clear();
        controller->handleKey(0, QLatin1String(c.key), false);
        EXPECT_EQ(prompter.numbers(), std::vector<int>({c.message})) << c.key << c.fileThere;
        EXPECT_EQ(asked, QStringList(QLatin1String(c.key == std::string("keyHelp") ? "Help/Eng/Index.html"
                                                                                   : "step_help1.pdf")));
        EXPECT_EQ(opened, c.fileThere ? QStringList(present) : QStringList()) << c.key;
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

} // namespace
} // namespace vkm::test
