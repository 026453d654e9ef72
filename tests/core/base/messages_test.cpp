#include "base/messages.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <gtest/gtest.h>

using vkm::LoadMessageText;
using vkm::messageText;
TEST(Messages, SingleTextMessagesAreTheirResourceTextAndIgnoreArguments) {
    // A sample across the table; the texts themselves are data, not behaviour.
    for (int n : {2, 13, 52, 95, 113, 151, 160, 162}) {
        SCOPED_TRACE(n);
        const QString text = LoadMessageText(n);
        EXPECT_FALSE(text.isEmpty());
        EXPECT_EQ(messageText(n), text);
        EXPECT_EQ(messageText(n, QStringLiteral("x"), QStringLiteral("y")), text);
    }
}

TEST(Messages, CaptionTextsAreLoadedByNumberButAreNoMessages) {
    for (int n : {188, 191, 205, 261, 355, 492, 567}) {
        SCOPED_TRACE(n);
        EXPECT_FALSE(LoadMessageText(n).isEmpty());
        EXPECT_EQ(messageText(n), QString());
    }
}

// How a message is composed from its resource text and the arguments, where no test of a
// window shows it: a fixed second part that ignores the arguments, two arguments joined, and
// an argument missing from a message that needs it (its place stays empty).
TEST(Messages, ComposedMessages) {
    EXPECT_EQ(messageText(8, QStringLiteral("A1")), "Extension must be as follows\n\n*.GSP");
    EXPECT_EQ(messageText(84, QStringLiteral("A1"), QStringLiteral("A2")),
              "Do you replace this function\n\nA1 -> A2");
    EXPECT_EQ(messageText(142), QStringLiteral("Falied to read initial file.\n\n"));
}

TEST(Messages, NumbersOutsideTheTableGiveNoText) {
    for (int n : {-1, 0, 1, 3, 5, 45, 101, 163, 999, 1000, 1002}) {
        SCOPED_TRACE(n);
        EXPECT_TRUE(messageText(n, QStringLiteral("a")).isEmpty());
    }
    EXPECT_TRUE(LoadMessageText(3).isEmpty());
    EXPECT_TRUE(LoadMessageText(544).isEmpty());
}

TEST(Messages, BoxTitleIsTheExecutableBaseName) {
    const QString exe = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    EXPECT_EQ(vkm::messageBoxTitle(), exe);
}
