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

RegValue entry(const BoolKey& key) {
    return {key.section, key.name, Settings::boolText(key.defaultValue)};
}
RegValue entry(const IntKey& key) {
    return {key.section, key.name, QString::number(key.defaultValue)};
}

// The values every part of the program may read, in the order they are made sure of.
std::vector<RegValue> headValues() {
    return {
        {keys::InitialPath.section, keys::InitialPath.name, QDir::toNativeSeparators(paths::exeFolder())},
        // Workbooks are written as .xlsx on this platform.
        {keys::LatestExcelFullFname.section, keys::LatestExcelFullFname.name,
         QDir::toNativeSeparators(documentsFolder() + QStringLiteral("/VKM_STEP.xlsx"))},
        entry(keys::DoesViewRemarkColumn),
        entry(keys::DoesViewButtonCaption),
        entry(keys::DoesViewInputMethod),
        entry(keys::DoesReplaceFunction),
        entry(keys::DoesAskInReplacing),
        entry(keys::DoesLocateInpFirst),
        entry(keys::DoesShowMsgInFinding),
        entry(keys::DoesShowPulseAutomatic),
        entry(keys::DispHelpCode),
        entry(keys::RemainHelpCode),
        entry(keys::RemarkColumnWidth),
        entry(keys::Memo_Width),
        entry(keys::Memo_Height),
    };
}

std::vector<RegValue> tailValues() {
    return {
        entry(keys::CustomEasy_Width), entry(keys::CustomEasy_Height), entry(keys::Pulse_Left),
        entry(keys::Pulse_Top),        entry(keys::Memo_FontSize),     entry(keys::Help_Top),
        entry(keys::Help_Left),
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
    if (!contains(keys::CustomEasy_Left)) {
        if (!set(keys::CustomEasy_Left, mainWindowWidthTwips - kCustomEasyRightMargin))
            return false;
        if (!set(keys::CustomEasy_Top, keys::CustomEasy_Top.defaultValue))
            return false;
    }
    return ensureAll(*this, tailValues());
}

bool applyCodePageSetting(const Settings& settings) {
    const QString name = settings.value(keys::CodePage).trimmed();
    if (name.isEmpty())
        return true;
    return LegacyText::setCodePage(name);
}

} // namespace vkm
