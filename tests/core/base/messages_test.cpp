#include "base/messages.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <gtest/gtest.h>

using vkm::LoadMessageText;
using vkm::messageText;

namespace {

struct Expected {
    int number;
    const char* text;
};

// Every message that shows one text, exactly as users have always seen it.
const Expected kSingleTexts[] = {
    {2, "Failed to read registry. "},
    {13, "Data is chaneged. Do you save changes ?"},
    {19, "Failed to read data."},
    {36, "Clear function to reset this cell."},
    {42, "Cannot edit this cell."},
    {44, "Remove end to input this cell."},
    {48, "Value must be numeric."},
    {49, "This column must be END."},
    {50, "Failed to save data..."},
    {52, "Input block or END missed."},
    {59, "Do you pack deleted rows ?"},
    {62, "Cannot close this form."},
    {64, "Logic or delay missed."},
    {67, "Input value does not exists."},
    {68, "Input numeric value."},
    {69, "Insert fd !"},
    {71, "The column to be pasted is not correct."},
    {72, "Close note window."},
    {73, "Specified function cannot be found. Do you retry from top ?"},
    {74, "Input function name."},
    {76, "Output function missed."},
    {77, "No data to print!"},
    {78, "Quit this application and reload."},
    {80, "Make sure that all the information are set."},
    {82, "Cannot input COUNT on this column!"},
    {87, "Top function must be COUNT!"},
    {89, "Top category is COUNT. This cell must be vacant."},
    {90, "This space is not enough."},
    {93, "Unknow error. Filename lost. Retry to save again. Sorry..."},
    {95, "Undo buffer is empty."},
    {96, "Do you undo ?"},
    {97, "The bottom row will overflow. Do you insert rows ?"},
    {98, "Select from sub menu."},
    {99, "Password is not exact."},
    {100, "Cannot read file. Because password is not correct."},
    {102, "Drive cannot be writable!"},
    {112, "JMP, CALL and  RETURN can be input either one."},
    {113, "You must restart VKM Step to take effect. "},
    {114, "You must input EMAKE at OUTPUT when EDGE is input at INPUT."},
    {115, "Please input INPUT continuously"},
    {116, "INPUT is not complete"},
    {118, "At least once, you must start VKM_SET"},
    {120, "Password must be alphanumeric. Max length = 8."},
    {121, "Autohr must be alphanumeric. Max length = 16."},
    {123, "Failed to create excel file."},
    {125, "Select function from list."},
    {132, "CRT resolution must be kept more than 1024*768."},
    {133, "Specified function not found."},
    {134, "Check the number of END."},
    {136, "Filename is not valid. Type the file name in the correct fomrat of 8+3."},
    {137, "Save step once."},
    {138, "File must be in the same folder as data file."},
    {139, "File cannot be opened."},
    {141, "Failed o save as text file."},
    {143, "Do you want to save changes of customize data ?"},
    {144, "Failed to copy temporary file."},
    {146, "Input all values."},
    {147, "Select row to set PULSE."},
    {148, "Input kind of delay at first."},
    {149, "The value of delay2 must be bigger than the value of delay1."},
    {150, "Unable to print step."},
    {151, "Type DEL key on the cell to delete."},
    {152, "Specify the vlaue to find."},
    {153, "Check logic column."},
    {154, "*** is missing."},
    {156, "END is already input ! You cannnot input anymore."},
    {157, "File cannot be opened. Please install Acrobat reader."},
    {158, "TIMER value must be input by even number."},
    {159, "Delay value is out of range."},
    {160, "Do you turn off and on the power of VKM ?"},
    {162, "You may not have right to run EXE, or how to run exe is invalid."},
};

// Captions and heads of composed messages, read by number from the text resource.
const Expected kCaptionTexts[] = {
    {129, "Excel file is created in the following folder. Do you open file ?"},
    {188, "Specify saving filename"},
    {189, "Specify path."},
    {190, "Open comparative file."},
    {191, "Open user file."},
    {194, "Close         "},
    {195, "Setting        "},
    {196, "Arrange window  "},
    {197, "&1 Remark column"},
    {198, "&2 Text on the ToolBar"},
    {199, "&3 Input Method"},
    {205, "Input note"},
    {206, "OK(&G)"},
    {207, "&Cancel"},
    {215, "Failed to read data."},
    {229, "At first, input the following column."},
    {235, "The number of characters of remark must be within following number."},
    {261, "VKM Step "},
    {350, "&2 Replace function when inserting and removing rows."},
    {351, "&3 Ask before replacing function in inserting, removing rows."},
    {353, "The following function cannot be replaced because of invalid address."},
    {354, "The following function cannot be replaced because of invalid address."},
    {355, "&1 View"},
    {360, "The following function does not exist."},
    {413, "Input password."},
    {415, "Input password, author"},
    {416, "Password:"},
    {417, "Author:"},
    {418, "(Alphanumeric, max length is 8.)"},
    {419, "(Max length is 16.)"},
    {420, "&Cancel"},
    {445, "&4 Locate input groupus first. (must reload exe)"},
    {492, "Simple customize"},
    {525, "The filename or path is not valid."},
    {527, "Falied to read initial file."},
    {541, "&5 In finding window, show message when reached bottom."},
    {542, "&6 Show pulse input window automatically."},
    {543, "Memo remaining:"},
    {545, "Related file"},
    {546, "Specify"},
    {547, "Open"},
    {548, "Font size"},
    {567, "&7  COM Port setting"},
};

} // namespace

TEST(Messages, SingleTextMessagesShowTheirTextAndIgnoreArguments) {
    for (const Expected& e : kSingleTexts) {
        SCOPED_TRACE(e.number);
        EXPECT_EQ(messageText(e.number), QString::fromUtf8(e.text));
        EXPECT_EQ(messageText(e.number, QStringLiteral("x"), QStringLiteral("y")), QString::fromUtf8(e.text));
        EXPECT_EQ(LoadMessageText(e.number), QString::fromUtf8(e.text));
    }
}

TEST(Messages, CaptionTextsAreLoadedByNumberButAreNoMessages) {
    for (const Expected& e : kCaptionTexts) {
        SCOPED_TRACE(e.number);
        EXPECT_EQ(LoadMessageText(e.number), QString::fromUtf8(e.text));
        EXPECT_EQ(messageText(e.number), QString());
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
