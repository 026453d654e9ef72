#include "base/regdata.h"

#include "base/legacytext.h"
#include "base/paths.h"
#include "base/settings.h"

#include <QDir>
#include <QStandardPaths>

namespace vkm {

namespace {

struct RegValue {
    Section section;
    const char* key;
    QString defaultValue;
};

QString documentsFolder() {
    const QString docs = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return docs.isEmpty() ? QDir::homePath() : docs;
}

// Width of the easy customisation window plus a margin: the window opens at the right
// edge of the main window, inside it.
constexpr int kCustomEasyRightMargin = 2130 + 500;

QString number(double value) {
    return QString::number(value, 'g', 10);
}

// The values every part of the program may read, in the order they are made sure of.
std::vector<RegValue> headValues() {
    const QString t = Settings::boolText(true);
    const QString f = Settings::boolText(false);
    return {
        {Section::FileInfo, "InitialPath", QDir::toNativeSeparators(paths::exeFolder())},
        // Workbooks are written as .xlsx on this platform.
        {Section::FileInfo, "LatestExcelFullFname",
         QDir::toNativeSeparators(documentsFolder() + QStringLiteral("/VKM_STEP.xlsx"))},
        {Section::General, "DoesViewRemarkColumn", t},
        {Section::General, "DoesViewButtonCaption", t},
        {Section::General, "DoesViewInputMethod", t},
        {Section::General, "DoesReplaceFunction", t},
        {Section::General, "DoesAskInReplacing", t},
        {Section::General, "DoesLocateInpFirst", f},
        {Section::General, "DoesShowMsgInFinding", f},
        {Section::General, "DoesShowPulseAutomatic", t},
        {Section::General, "DispHelpCode", t},
        {Section::General, "RemainHelpCode", f},
        {Section::Location, "RemarkColumnWidth", QStringLiteral("1200")},
        {Section::Location, "Memo_Width", QStringLiteral("10200")},
        {Section::Location, "Memo_Height", QStringLiteral("7845")},
    };
}

std::vector<RegValue> tailValues() {
    return {
        {Section::Location, "CustomEasy_Width", QStringLiteral("2130")},
        {Section::Location, "CustomEasy_Height", QStringLiteral("11790")},
        {Section::Location, "Pulse_Left", QStringLiteral("-9999")},
        {Section::Location, "Pulse_Top", QStringLiteral("0")},
        {Section::Location, "Memo_FontSize", QStringLiteral("10")},
        {Section::Location, "Help_Top", QStringLiteral("0")},
        {Section::Location, "Help_Left", QStringLiteral("0")},
    };
}

bool ensureAll(Settings& settings, const std::vector<RegValue>& values) {
    for (const RegValue& v : values) {
        if (!settings.ensure(v.section, QLatin1String(v.key), v.defaultValue))
            return false;
    }
    return true;
}

} // namespace

bool Settings::CheckRegData(int mainWindowWidthTwips) {
    if (!ensureAll(*this, headValues()))
        return false;
    // The position pair is created together and only when the left edge is missing, so
    // that a top edge the user kept is never reset on its own.
    const QString left = QStringLiteral("CustomEasy_Left");
    if (!contains(Section::Location, left)) {
        if (!write(Section::Location, left, number(double(mainWindowWidthTwips) - kCustomEasyRightMargin)))
            return false;
        if (!write(Section::Location, QStringLiteral("CustomEasy_Top"), QStringLiteral("2000")))
            return false;
    }
    return ensureAll(*this, tailValues());
}

bool applyCodePageSetting(const Settings& settings) {
    const QString name = settings.read(Section::General, QStringLiteral("CodePage")).trimmed();
    if (name.isEmpty())
        return true;
    return LegacyText::setCodePage(name);
}

} // namespace vkm
