// The main window's option and view menus on a real start-up: check marks from the
// settings, toggles written at once and applied to both step editors, the option that
// needs a restart.
#include "base/settings.h"
#include "documentcontroller.h"
#include "finpmemo.h"
#include "fsetport.h"
#include "guitestsupport.h"
#include "mainwindow.h"
#include "sheet/stepsheet.h"
#include "startuprig.h"
#include "stepeditorwindow.h"
#include "steptoolbar.h"
#include "testsupport.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <gtest/gtest.h>

using namespace vkm;

namespace {

class Options : public ::testing::Test, protected test::StartupRig {
protected:
    void SetUp() override {
        startup = std::make_unique<Startup>(options);
        ASSERT_TRUE(startup->run());
        window = startup->mainWindow();
        window->setRestartHook([this] { ++restarts; });
        // The comparison editor is there too, so that "both editors" means two.
        prompter.queueFileName(test::testData(QStringLiteral("gsp/flow.gsp")));
        ASSERT_TRUE(startup->documents()->handleKey(0, QStringLiteral("keyREAD_HIKAKU1"), true));
        user = startup->userEditorWindow();
        cmp = startup->comparisonEditorWindow();
        ASSERT_NE(cmp, nullptr);
        prompter.clear();
    }
    void TearDown() override { EXPECT_EQ(prompter.pendingAnswers(), 0u); }

    QString stored(const char* key) const {
        return store.settings->read(Section::General, QLatin1String(key));
    }

    std::unique_ptr<Startup> startup;
    MainWindow* window = nullptr;
    StepEditorWindow* user = nullptr;
    StepEditorWindow* cmp = nullptr;
    int restarts = 0;
};

TEST_F(Options, MenuCarriesTheViewMenuThenSixItemsMarkedFromTheSettings) {
    QMenu* menu = window->optionMenu();
    ASSERT_EQ(menu->actions().size(), 7);
    EXPECT_EQ(menu->actions().first()->menu(), window->viewMenu());
    EXPECT_FALSE(window->optionItem(6)->isCheckable());

    // Settings changed behind the menu's back show when the option button opens it, below
    // the button.
    store.settings->set(keys::DoesReplaceFunction, false);
    store.settings->set(keys::DoesShowMsgInFinding, true);
    store.settings->set(keys::DoesLocateInpFirst, true);
    store.settings->set(keys::DoesViewInputMethod, false);
    window->toolAction(QStringLiteral("keyOption"))->trigger();
    ASSERT_TRUE(menu->isVisible());
    const QWidget* button =
        window->mainToolBar()->widgetForAction(window->toolAction(QStringLiteral("keyOption")));
    EXPECT_EQ(menu->pos().x(), button->mapToGlobal(QPoint(0, 0)).x());
    EXPECT_EQ(menu->pos().y(),
              window->mainToolBar()->mapToGlobal(QPoint(0, window->mainToolBar()->height())).y());
    const bool options[] = {false, true, true, true, true};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(window->optionItem(i + 1)->isChecked(), options[i]) << "option " << i + 1;
    EXPECT_TRUE(window->viewItem(1)->isChecked());
    EXPECT_FALSE(window->viewItem(3)->isChecked());
    menu->hide();
}

TEST_F(Options, EditingOptionsAreWrittenAtOnceAsTrueOrFalse) {
    const struct {
        int item;
        const char* key;
        const char* before;
    } cases[] = {{1, "DoesReplaceFunction", "True"},
                 {2, "DoesAskInReplacing", "True"},
                 {4, "DoesShowMsgInFinding", "False"},
                 {5, "DoesShowPulseAutomatic", "True"}};
    for (const auto& c : cases) {
        EXPECT_EQ(stored(c.key), c.before) << c.key;
        window->optionItem(c.item)->trigger();
        const QString after = QLatin1String(c.before) == QLatin1String("True") ? "False" : "True";
        EXPECT_EQ(stored(c.key), after) << c.key;
        EXPECT_EQ(window->optionItem(c.item)->isChecked(), after == QLatin1String("True")) << c.key;
    }
    EXPECT_TRUE(prompter.shown().empty());
}

TEST_F(Options, TextOnTheToolBarTwiceRestoresTheSettingAndBothEditors) {
    const int userHeight = user->toolBar()->sizeHint().height();
    const int gridTop = user->grid()->geometry().top();
    QAction* text = window->viewItem(2);

    // Off, then on again: the editor is laid out again each time.
    for (const bool shown : {false, true}) {
        SCOPED_TRACE(shown ? "shown again" : "hidden");
        text->trigger();
        EXPECT_EQ(stored("DoesViewButtonCaption"), shown ? "True" : "False");
        EXPECT_EQ(text->isChecked(), shown);
        const Qt::ToolButtonStyle style = shown ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly;
        for (StepEditorWindow* w : {user, cmp}) {
            EXPECT_EQ(w->toolBar()->captionsShown(), shown) << w->objectName().toStdString();
            EXPECT_EQ(w->toolBar()->toolButtonStyle(), style);
        }
        EXPECT_EQ(window->mainToolBar()->toolButtonStyle(), style);
        EXPECT_EQ(user->toolBar()->sizeHint().height() < userHeight, !shown);
        EXPECT_EQ(user->grid()->geometry().top() < gridTop, !shown);
    }
    EXPECT_EQ(user->toolBar()->sizeHint().height(), userHeight);
    EXPECT_EQ(user->grid()->geometry().top(), gridTop);
}

TEST_F(Options, RemarkColumnAndInputMethodFollowInBothEditors) {
    const int remark = StepSheet::GetcolRemark();
    const int width = user->grid()->columnWidth(remark);
    window->viewItem(1)->trigger();
    EXPECT_EQ(stored("DoesViewRemarkColumn"), "False");
    EXPECT_TRUE(user->grid()->isColumnHidden(remark));
    EXPECT_TRUE(cmp->grid()->isColumnHidden(remark));
    window->viewItem(1)->trigger();
    EXPECT_FALSE(user->grid()->isColumnHidden(remark));
    EXPECT_FALSE(cmp->grid()->isColumnHidden(remark));
    EXPECT_EQ(user->grid()->columnWidth(remark), width) << "the stored width comes back";

    EXPECT_TRUE(user->HintVisible());
    window->viewItem(3)->trigger();
    EXPECT_EQ(stored("DoesViewInputMethod"), "False");
    EXPECT_FALSE(user->HintVisible());
    window->viewItem(3)->trigger();
    EXPECT_TRUE(user->HintVisible());
    EXPECT_FALSE(cmp->HintVisible()) << "the comparison program is never typed into";
}

TEST_F(Options, LocateInputsFirstAsksAboutChangesAndRestarts) {
    startup->documents()->documents().user().setChanged(true);
    // Cancel at the unsaved-changes question: nothing changes.
    prompter.queueAnswer(Answer::Cancel);
    window->optionItem(3)->trigger();
    EXPECT_EQ(prompter.numbers(), (std::vector<int>{113, 13}));
    EXPECT_EQ(prompter.shown().front().style, 2);
    EXPECT_EQ(stored("DoesLocateInpFirst"), "False");
    EXPECT_FALSE(window->optionItem(3)->isChecked());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(restarts, 0);

    // No: the setting is negated, the application closes (without asking again) and starts
    // again.
    prompter.clear();
    prompter.queueAnswer(Answer::No);
    window->optionItem(3)->trigger();
    EXPECT_EQ(prompter.numbers(), (std::vector<int>{113, 13}));
    EXPECT_EQ(stored("DoesLocateInpFirst"), "True");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(restarts, 1);
}

TEST_F(Options, PortSettingShowsThePortDialogModally) {
    QString shown;
    bool modal = false;
    QWidget* owner = nullptr;
    const auto portDialog = test::whenModal([&](QWidget* d) {
        shown = d->objectName();
        modal = d->isModal();
        owner = d->parentWidget();
        auto* port = qobject_cast<fSetPort*>(d);
        ASSERT_NE(port, nullptr);
        port->cboPort()->setCurrentText(QStringLiteral("/dev/ttyS3"));
        port->findChild<QPushButton*>(QStringLiteral("BTN1"))->click();
    });
    window->optionItem(6)->trigger();
    EXPECT_EQ(shown, "fSetPort");
    EXPECT_TRUE(modal);
    EXPECT_EQ(owner, window);
    EXPECT_EQ(store.settings->value(keys::CommPort), "/dev/ttyS3") << "the dialog's choice is stored";
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Options, LocateInputsFirstWithoutChangesAsksNothingButTheNotice) {
    window->optionItem(3)->trigger();
    EXPECT_EQ(prompter.numbers(), std::vector<int>{113});
    EXPECT_EQ(stored("DoesLocateInpFirst"), "True");
    EXPECT_EQ(restarts, 1);
    // The restart builds the grid with the inputs first.
    startup.reset();
    Startup again(options);
    ASSERT_TRUE(again.run());
    EXPECT_EQ(again.userEditorWindow()->editor().sheet().inputGroupCol(1), 2)
        << "inputs right after the remark";
}

} // namespace
