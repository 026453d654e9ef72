#pragma once

#include <QString>
#include <climits>
#include <string_view>
#include <vector>

namespace vkm {

enum class Section { FileInfo = 0, General = 1, Location = 2 };

QString sectionName(Section section);

// Every value of the settings store is named here, once, with its type and default.
// Code reads and writes values only through these keys (Settings::value / Settings::set),
// so that a key is never spelled twice and a default never differs between two readers.

// A Boolean, stored as the word True or False.
struct BoolKey {
    Section section;
    const char* name;
    bool defaultValue;
};

// An integer stored as decimal text. A stored value that is not a number, or lies outside
// [min, max], reads as the default; a written value is clamped into the range.
struct IntKey {
    Section section;
    const char* name;
    int defaultValue;
    int min = INT_MIN;
    int max = INT_MAX;
};

// Free text. Defaults that depend on the machine (folders) are made by the code that
// creates the value at start; a missing text reads as "".
struct TextKey {
    Section section;
    const char* name;
};

// Two keys name the same value when section and name agree. Names are compared as text:
// the same literal may live at two addresses (one per library or build type).
template <typename Key> constexpr bool sameKey(const Key& a, const Key& b) {
    return a.section == b.section && std::string_view(a.name) == std::string_view(b.name);
}
inline constexpr bool operator==(const BoolKey& a, const BoolKey& b) {
    return sameKey(a, b);
}
inline constexpr bool operator==(const IntKey& a, const IntKey& b) {
    return sameKey(a, b);
}
inline constexpr bool operator==(const TextKey& a, const TextKey& b) {
    return sameKey(a, b);
}

namespace keys {

// "FileInfo"
inline constexpr TextKey InitialPath{Section::FileInfo, "InitialPath"};
inline constexpr TextKey LatestExcelFullFname{Section::FileInfo, "LatestExcelFullFname"};

// "General": options
inline constexpr BoolKey DoesViewRemarkColumn{Section::General, "DoesViewRemarkColumn", true};
inline constexpr BoolKey DoesViewButtonCaption{Section::General, "DoesViewButtonCaption", true};
inline constexpr BoolKey DoesViewInputMethod{Section::General, "DoesViewInputMethod", true};
inline constexpr BoolKey DoesReplaceFunction{Section::General, "DoesReplaceFunction", true};
inline constexpr BoolKey DoesAskInReplacing{Section::General, "DoesAskInReplacing", true};
inline constexpr BoolKey DoesLocateInpFirst{Section::General, "DoesLocateInpFirst", false};
inline constexpr BoolKey DoesShowMsgInFinding{Section::General, "DoesShowMsgInFinding", false};
inline constexpr BoolKey DoesShowPulseAutomatic{Section::General, "DoesShowPulseAutomatic", true};
inline constexpr BoolKey DispHelpCode{Section::General, "DispHelpCode", true};
inline constexpr BoolKey RemainHelpCode{Section::General, "RemainHelpCode", false};
// Maker mode of the catalogue loader: True deletes the unpacked setting files after loading.
inline constexpr BoolKey BlueHeron{Section::General, "BlueHeron", true};
// "Expand all items in opening." of the function selection dialog: 0 or 1.
inline constexpr IntKey DoesExpandTree{Section::General, "DoesExpandTree", 0, 0, 1};
// Serial port: 1 to 4, or a device name such as /dev/ttyUSB0.
inline constexpr TextKey CommPort{Section::General, "CommPort"};
// Code page of the texts in step files and catalogues (windows-31j when missing).
inline constexpr TextKey CodePage{Section::General, "CodePage"};

// "Location": window positions and sizes in twips (1/1440 inch).
inline constexpr IntKey RemarkColumnWidth{Section::Location, "RemarkColumnWidth", 1200, 0, 100000};
inline constexpr IntKey Memo_Width{Section::Location, "Memo_Width", 10200, 0, 1000000};
inline constexpr IntKey Memo_Height{Section::Location, "Memo_Height", 7845, 0, 1000000};
inline constexpr IntKey Memo_FontSize{Section::Location, "Memo_FontSize", 10, 9, 20};
// The left edge's default depends on the main window's width (see CheckRegData).
inline constexpr IntKey CustomEasy_Left{Section::Location, "CustomEasy_Left", 0};
inline constexpr IntKey CustomEasy_Top{Section::Location, "CustomEasy_Top", 2000};
inline constexpr IntKey CustomEasy_Width{Section::Location, "CustomEasy_Width", 2130, 0, 1000000};
inline constexpr IntKey CustomEasy_Height{Section::Location, "CustomEasy_Height", 11790, 0, 1000000};
// -9999: the pulse window has not been placed yet.
inline constexpr int kPulseNotPlaced = -9999;
inline constexpr IntKey Pulse_Left{Section::Location, "Pulse_Left", kPulseNotPlaced};
inline constexpr IntKey Pulse_Top{Section::Location, "Pulse_Top", 0};
inline constexpr IntKey Help_Top{Section::Location, "Help_Top", 0};
inline constexpr IntKey Help_Left{Section::Location, "Help_Left", 0};

// The function selection dialogs, one placement per side.
inline constexpr IntKey fSelIn_Left{Section::Location, "fSelIn_Left", 7485};
inline constexpr IntKey fSelIn_Top{Section::Location, "fSelIn_Top", 1605};
inline constexpr IntKey fSelIn_Width{Section::Location, "fSelIn_Width", 5490, 0, 1000000};
inline constexpr IntKey fSelIn_Height{Section::Location, "fSelIn_Height", 6255, 0, 1000000};
inline constexpr IntKey fSelOut_Left{Section::Location, "fSelOut_Left", 7485};
inline constexpr IntKey fSelOut_Top{Section::Location, "fSelOut_Top", 1605};
inline constexpr IntKey fSelOut_Width{Section::Location, "fSelOut_Width", 5490, 0, 1000000};
inline constexpr IntKey fSelOut_Height{Section::Location, "fSelOut_Height", 6255, 0, 1000000};

} // namespace keys

// A placement (left, top, width, height) stored under four keys.
struct PlacementKeys {
    IntKey left;
    IntKey top;
    IntKey width;
    IntKey height;
};

namespace keys {
inline constexpr PlacementKeys fSelIn{fSelIn_Left, fSelIn_Top, fSelIn_Width, fSelIn_Height};
inline constexpr PlacementKeys fSelOut{fSelOut_Left, fSelOut_Top, fSelOut_Width, fSelOut_Height};
inline constexpr PlacementKeys CustomEasy{CustomEasy_Left, CustomEasy_Top, CustomEasy_Width,
                                          CustomEasy_Height};
} // namespace keys

// Twips (1/1440 inch) and pixels at a logical resolution in dots per inch; rounds to the
// nearest whole unit. A resolution of 0 or less counts as 96.
int twipsToPixels(int twips, double dpi);
int pixelsToTwips(int pixels, double dpi);

} // namespace vkm
