#pragma once

// The step editors' commands over the bundled output and input catalogues, a scratch
// settings store and scripted answers: what a window test of the document controller needs.
// A test's SetUp calls ControllerFixture::SetUp, sets what the controller reads when it is
// made, then calls startController().
#include "appcontext.h"
#include "base/scriptedprompter.h"
#include "base/settings.h"
#include "catalogue/cselections.h"
#include "documentcontroller.h"
#include "sheet/stepsheeteditor.h"
#include "testsupport.h"

#include <QMdiArea>
#include <gtest/gtest.h>

namespace vkm::test {

class ControllerFixture : public ::testing::Test {
protected:
    void SetUp() override {
        const QString setting = QStringLiteral(VKM_SOURCE_DIR "/data/setting");
        ASSERT_TRUE(selout.ReadSet6_7_8_9e(setting, QStringLiteral("Set08.e")));
        ASSERT_TRUE(selinp.ReadSet6_7_8_9e(setting, QStringLiteral("Set09.e")));
        context.prompter = &prompter;
        context.settings = settings.settings.get();
        context.selout = &selout;
        context.selinp = &selinp;
    }
    void startController() {
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
    Scratch scratch;
};

} // namespace vkm::test
