#include "base/scriptedprompter.h"
#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    // A question the test did not script an answer for is a failure of that test.
    vkm::ScriptedPrompter::setUnscriptedHandler(
        [](const QString& what) { ADD_FAILURE() << "ScriptedPrompter: " << what.toStdString(); });
    return RUN_ALL_TESTS();
}
