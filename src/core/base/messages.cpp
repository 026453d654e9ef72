#include "base/messages.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>

namespace vkm {

namespace {

// The numbered text resource. Message text m is resource string 1000 + m; the table
// is keyed by m. The texts are the machine tools' own, spelling included: users and
// service staff search manuals and old screenshots for them word for word.
const QHash<int, QString>& textTable() {
    static const QHash<int, QString> table = {
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
        {129, "Excel file is created in the following folder. Do you open file ?"},
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
        // Hold modes of a customisable output, codes 0 to 3 (M, C, A, T).
        {689, "M: momentary. The output follows its function."},
        {690, "C: continuous. The output stays on until it is reset."},
        {691, "A: alternate. Each signal turns the output on or off in turn."},
        {692, "T: timed. The output stays on for the set time."},
    };
    return table;
}

const QString kBlankLine = QStringLiteral("\n\n");
const QString kLineBreak = QStringLiteral("\n");

// Messages made of one message text, an empty line and the first argument.
int textWithArgument(int number) {
    switch (number) {
    case 4:
        return 215;
    case 46:
        return 229;
    case 56:
        return 235;
    case 85:
        return 353;
    case 86:
        return 354;
    case 88:
        return 360;
    case 124:
        return 129;
    case 140:
        return 525;
    case 142:
        return 527;
    default:
        return 0;
    }
}

QString rangeText(const QString& head, const QString& a1, const QString& a2) {
    return head + kBlankLine + QStringLiteral("Min = ") + a1 + QStringLiteral(", Max = ") + a2;
}

QString extensionText(const QString& extension) {
    return QStringLiteral("Extension must be as follows") + kBlankLine + QStringLiteral("*.") + extension;
}

// Messages whose text is put together from fixed pieces; "" when n is not one of them.
QString composedText(int number, const QString& a1, const QString& a2) {
    switch (number) {
    case 8:
        return extensionText(QStringLiteral("GSP"));
    case 117:
        return extensionText(QStringLiteral("rom"));
    case 43:
        return rangeText(QStringLiteral("Value is out of range."), a1, a2);
    case 81:
        return rangeText(QStringLiteral("This column must be numeric or input COUNT category."), a1, a2);
    case 161:
        return rangeText(QStringLiteral("Value is out of range."), a1, a2) +
               QStringLiteral("(Delay1 + Delay2)");
    case 58:
        return QStringLiteral("Clipboard is vacant or data type is different.") + kBlankLine +
               QStringLiteral("Cannot paste.");
    case 70:
        return QStringLiteral("The number of color is less than 16 bit(65536).") + kBlankLine +
               QStringLiteral("You are strongly recomended to adjust control panel.") + kBlankLine +
               QStringLiteral(" ") + kBlankLine + QStringLiteral(" ");
    case 75:
        return QStringLiteral("The following numbre are replaced.") + kBlankLine + a1 + QStringLiteral(" ");
    case 79:
        return QStringLiteral("Failed to copy temporary files. Data is not saved.") + kBlankLine +
               QStringLiteral("Quit this application and reload.");
    case 84:
        return QStringLiteral("Do you replace this function") + kBlankLine + a1 + QStringLiteral(" -> ") + a2;
    case 145:
        return QStringLiteral("Value is not valid. Following category can be input.") + kBlankLine +
               QStringLiteral("IN") + kLineBreak + QStringLiteral("OUT") + kLineBreak +
               QStringLiteral("RGST");
    case 155:
        return QStringLiteral("File size is invalid. Size must be folloiwng size.") + kBlankLine + a1 +
               QStringLiteral(" byte");
    case 83:
        return QStringLiteral("This S/W runs already!\"");
    default:
        return {};
    }
}

// Message numbers run up to 162 and a single-text message shows the text of its own
// number. Texts above 162 are captions and heads of composed messages; text 129 is only
// the head of message 124. None of those is a message by itself.
bool isSingleTextMessage(int number) {
    return number >= 1 && number <= 162 && number != 129;
}

} // namespace

QString LoadMessageText(int m) {
    return textTable().value(m);
}

QString messageText(int number, const QString& a1, const QString& a2, const QString& a3) {
    Q_UNUSED(a3); // no message of the table uses a third argument
    if (const int head = textWithArgument(number))
        return LoadMessageText(head) + kBlankLine + a1;
    const QString composed = composedText(number, a1, a2);
    if (!composed.isEmpty())
        return composed;
    return isSingleTextMessage(number) ? LoadMessageText(number) : QString();
}

QString messageBoxTitle() {
    if (!QCoreApplication::instance())
        return {};
    const QStringList args = QCoreApplication::arguments();
    if (!args.isEmpty() && !args.first().isEmpty())
        return QFileInfo(args.first()).completeBaseName();
    return QCoreApplication::applicationName();
}

BoxStyle boxStyle(int style) {
    switch (style) {
    case 1:
        return {BoxIcon::Critical, BoxButtons::Ok, false, true};
    case 2:
        return {BoxIcon::Exclamation, BoxButtons::Ok, false, true};
    case 3:
        return {BoxIcon::Question, BoxButtons::YesNo, false, true};
    case 4:
        return {BoxIcon::Information, BoxButtons::Ok, false, true};
    case 5:
        return {BoxIcon::Critical, BoxButtons::YesNo, false, true};
    case 6:
        return {BoxIcon::Question, BoxButtons::YesNoCancel, false, true};
    case 7:
        return {BoxIcon::Question, BoxButtons::YesNo, true, true};
    case 8:
        return {BoxIcon::Exclamation, BoxButtons::YesNo, false, true};
    case 9:
        return {BoxIcon::Question, BoxButtons::OkCancel, false, true};
    case 10:
        return {BoxIcon::Exclamation, BoxButtons::OkCancel, false, true};
    default:
        return {};
    }
}

BoxStyle textBoxStyle(int style) {
    if (style == kPlainBox)
        return {BoxIcon::None, BoxButtons::Ok, false, true};
    return boxStyle(style);
}

} // namespace vkm
