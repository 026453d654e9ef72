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

TEST(Messages, ComposedMessages) {
    const QString a1 = QStringLiteral("A1");
    const QString a2 = QStringLiteral("A2");
    const struct {
        int number;
        QString expected;
    } cases[] = {
        {4, "Failed to read data.\n\nA1"},
        {46, "At first, input the following column.\n\nA1"},
        {56, "The number of characters of remark must be within following number.\n\nA1"},
        {85, "The following function cannot be replaced because of invalid address.\n\nA1"},
        {86, "The following function cannot be replaced because of invalid address.\n\nA1"},
        {88, "The following function does not exist.\n\nA1"},
        {124, "Excel file is created in the following folder. Do you open file ?\n\nA1"},
        {140, "The filename or path is not valid.\n\nA1"},
        {142, "Falied to read initial file.\n\nA1"},
        {8, "Extension must be as follows\n\n*.GSP"},
        {117, "Extension must be as follows\n\n*.rom"},
        {43, "Value is out of range.\n\nMin = A1, Max = A2"},
        {81, "This column must be numeric or input COUNT category.\n\nMin = A1, Max = A2"},
        {161, "Value is out of range.\n\nMin = A1, Max = A2(Delay1 + Delay2)"},
        {58, "Clipboard is vacant or data type is different.\n\nCannot paste."},
        {70,
         "The number of color is less than 16 bit(65536).\n\nYou are strongly recomended to adjust control "
         "panel.\n\n \n\n "},
        {75, "The following numbre are replaced.\n\nA1 "},
        {79, "Failed to copy temporary files. Data is not saved.\n\nQuit this application and reload."},
        {84, "Do you replace this function\n\nA1 -> A2"},
        {145, "Value is not valid. Following category can be input.\n\nIN\nOUT\nRGST"},
        {155, "File size is invalid. Size must be folloiwng size.\n\nA1 byte"},
        {83, "This S/W runs already!\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.number);
        EXPECT_EQ(messageText(c.number, a1, a2, QStringLiteral("A3")), c.expected);
    }
}

TEST(Messages, RangeMessageWithTypicalBounds) {
    EXPECT_EQ(messageText(43, QStringLiteral("0"), QStringLiteral("9999")),
              QStringLiteral("Value is out of range.\n\nMin = 0, Max = 9999"));
    // An argument missing from a message that needs it leaves its place empty.
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

TEST(Messages, MainWindowCaptionText) {
    EXPECT_EQ(LoadMessageText(261) + QStringLiteral("Ver 2.30"), QStringLiteral("VKM Step Ver 2.30"));
}

TEST(Messages, BoxStyles) {
    using vkm::BoxButtons;
    using vkm::BoxIcon;
    const struct {
        int style;
        BoxIcon icon;
        BoxButtons buttons;
        bool noDefault;
    } cases[] = {
        {1, BoxIcon::Critical, BoxButtons::Ok, false},
        {2, BoxIcon::Exclamation, BoxButtons::Ok, false},
        {3, BoxIcon::Question, BoxButtons::YesNo, false},
        {4, BoxIcon::Information, BoxButtons::Ok, false},
        {5, BoxIcon::Critical, BoxButtons::YesNo, false},
        {6, BoxIcon::Question, BoxButtons::YesNoCancel, false},
        {7, BoxIcon::Question, BoxButtons::YesNo, true},
        {8, BoxIcon::Exclamation, BoxButtons::YesNo, false},
        {9, BoxIcon::Question, BoxButtons::OkCancel, false},
        {10, BoxIcon::Exclamation, BoxButtons::OkCancel, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.style);
        const vkm::BoxStyle s = vkm::boxStyle(c.style);
        EXPECT_TRUE(s.valid);
        EXPECT_EQ(s.icon, c.icon);
        EXPECT_EQ(s.buttons, c.buttons);
        EXPECT_EQ(s.secondButtonDefault, c.noDefault);
    }
    for (int style : {0, 11, -3})
        EXPECT_FALSE(vkm::boxStyle(style).valid) << style;
}

TEST(Messages, BoxTitleIsTheExecutableBaseName) {
    const QString exe = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    EXPECT_EQ(vkm::messageBoxTitle(), exe);
    EXPECT_EQ(vkm::messageBoxTitle(), QStringLiteral("test_base"));
}
