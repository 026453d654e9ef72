#include "base/legacytext.h"
#include "base/paths.h"
#include "base/regdata.h"
#include "base/settings.h"
#include "testsupport.h"

#include <QDir>
#include <QSettings>
#include <gtest/gtest.h>

using vkm::Section;
using vkm::Settings;

namespace {

QMap<QString, QString> snapshot(const Settings& settings) {
    QSettings raw(settings.fileName(), QSettings::IniFormat);
    QMap<QString, QString> out;
    for (const QString& k : raw.allKeys())
        out.insert(k, raw.value(k).toString());
    return out;
}

} // namespace

// Every value a first start makes is the default its key reads as; the customisation window
// is placed inside the right edge of a main window 15000 twips wide.
TEST(CheckRegData, FirstStartCreatesEveryValueWithItsDefault) {
    vkm::test::TempSettings t;
    ASSERT_TRUE(t.settings->CheckRegData(15000));
    using namespace vkm::keys;
    const vkm::BoolKey* toggles[] = {&DoesViewRemarkColumn, &DoesViewButtonCaption,  &DoesViewInputMethod,
                                     &DoesReplaceFunction,  &DoesAskInReplacing,     &DoesLocateInpFirst,
                                     &DoesShowMsgInFinding, &DoesShowPulseAutomatic, &DispHelpCode,
                                     &RemainHelpCode};
    for (const vkm::BoolKey* k : toggles)
        EXPECT_EQ(t.settings->read(k->section, QLatin1String(k->name)), Settings::boolText(k->defaultValue))
            << k->name;
    const vkm::IntKey* numbers[] = {&RemarkColumnWidth, &Memo_Width,        &Memo_Height, &CustomEasy_Top,
                                    &CustomEasy_Width,  &CustomEasy_Height, &Pulse_Left,  &Pulse_Top,
                                    &Memo_FontSize,     &Help_Top,          &Help_Left};
    for (const vkm::IntKey* k : numbers)
        EXPECT_EQ(t.settings->read(k->section, QLatin1String(k->name)), QString::number(k->defaultValue))
            << k->name;
    EXPECT_EQ(t.settings->read(Section::Location, QStringLiteral("CustomEasy_Left")),
              QStringLiteral("12370"));
    EXPECT_EQ(t.settings->ReadReg(0, QStringLiteral("InitialPath")),
              QDir::toNativeSeparators(vkm::paths::exeFolder()));
    const QString excel = t.settings->ReadReg(0, QStringLiteral("LatestExcelFullFname"));
    EXPECT_TRUE(excel.endsWith(QStringLiteral("VKM_STEP.xlsx"))) << qPrintable(excel);
    // Only these values are created: nothing the other windows create themselves.
    EXPECT_EQ(snapshot(*t.settings).size(), qsizetype(std::size(toggles) + std::size(numbers) + 3));
    EXPECT_FALSE(t.settings->contains(Section::General, QStringLiteral("BlueHeron")));
}

TEST(CheckRegData, SecondStartChangesNothing) {
    vkm::test::TempSettings t;
    ASSERT_TRUE(t.settings->CheckRegData(15000));
    t.settings->write(Section::General, QStringLiteral("DoesViewRemarkColumn"), Settings::boolText(false));
    t.settings->write(Section::Location, QStringLiteral("Memo_Width"), QString::number(5000));
    t.settings->write(Section::FileInfo, QStringLiteral("InitialPath"), QStringLiteral("/somewhere/else"));
    const auto before = snapshot(*t.settings);
    ASSERT_TRUE(t.settings->CheckRegData(30000)); // a wider window must not move the stored position
    EXPECT_EQ(snapshot(*t.settings), before);
}

TEST(CheckRegData, CustomisationPositionIsCreatedAsAPairOnlyWhenLeftIsMissing) {
    vkm::test::TempSettings t;
    ASSERT_TRUE(t.settings->CheckRegData(10000));
    QSettings raw(t.settings->fileName(), QSettings::IniFormat);

    // Top missing alone: left to the user, not recreated.
    raw.remove(QStringLiteral("Location/CustomEasy_Top"));
    raw.sync();
    ASSERT_TRUE(t.settings->CheckRegData(10000));
    EXPECT_FALSE(t.settings->contains(Section::Location, QStringLiteral("CustomEasy_Top")));

    // Left missing: both written again, the top overwritten with its default.
    t.settings->write(Section::Location, QStringLiteral("CustomEasy_Top"), QStringLiteral("77"));
    raw.sync();
    raw.remove(QStringLiteral("Location/CustomEasy_Left"));
    raw.sync();
    ASSERT_TRUE(t.settings->CheckRegData(20000));
    EXPECT_EQ(t.settings->read(Section::Location, QStringLiteral("CustomEasy_Left")),
              QStringLiteral("17370"));
    EXPECT_EQ(t.settings->read(Section::Location, QStringLiteral("CustomEasy_Top")), QStringLiteral("2000"));
}

TEST(CheckRegData, StoreThatCannotBeWrittenFails) {
    vkm::test::Scratch scratch;
    // A plain file where the store's folder should be: nothing below it can be created.
    const QString blocker = scratch.write(QStringLiteral("blocker"), "x");
    auto settings = Settings::inFile(blocker + QStringLiteral("/settings.ini"));
    EXPECT_FALSE(settings->CheckRegData(15000));
    EXPECT_FALSE(
        settings->write(Section::General, QStringLiteral("DoesViewRemarkColumn"), QStringLiteral("True")));
}

TEST(Settings, TogglesReadBackAsTheWordsTrueAndFalse) {
    vkm::test::TempSettings t;
    ASSERT_TRUE(t.settings->CheckRegData(15000));
    const QString key = QStringLiteral("DoesReplaceFunction");
    const QString expected[] = {QStringLiteral("False"), QStringLiteral("True"), QStringLiteral("False")};
    for (const QString& word : expected) {
        const bool current = t.settings->value(vkm::keys::DoesReplaceFunction);
        ASSERT_TRUE(t.settings->set(vkm::keys::DoesReplaceFunction, !current));
        EXPECT_EQ(t.settings->ReadReg(1, key), word);
        EXPECT_EQ(t.settings->value(vkm::keys::DoesReplaceFunction), !current);
    }
    // Re-opened from disk, the value is the same word.
    auto reopened = Settings::inFile(t.settings->fileName());
    EXPECT_EQ(reopened->ReadReg(1, key), QStringLiteral("False"));
}

TEST(Settings, ReadRegSectionCodesAndMissingValues) {
    vkm::test::TempSettings t;
    t.settings->write(Section::FileInfo, QStringLiteral("K"), QStringLiteral("f"));
    t.settings->write(Section::General, QStringLiteral("K"), QStringLiteral("g"));
    t.settings->write(Section::Location, QStringLiteral("K"), QStringLiteral("l"));
    EXPECT_EQ(t.settings->ReadReg(0, QStringLiteral("K")), QStringLiteral("f"));
    EXPECT_EQ(t.settings->ReadReg(1, QStringLiteral("K")), QStringLiteral("g"));
    EXPECT_EQ(t.settings->ReadReg(2, QStringLiteral("K")), QStringLiteral("l"));
    EXPECT_EQ(t.settings->ReadReg(3, QStringLiteral("K")), QString());
    EXPECT_EQ(t.settings->ReadReg(1, QStringLiteral("CommPort")), QString());
}

TEST(Settings, TypedValuesFallBackToTheirDefaultsAndStayInRange) {
    vkm::test::TempSettings t;
    using namespace vkm;
    // Missing, garbage and out-of-range texts read as the key's default.
    EXPECT_EQ(t.settings->value(keys::Memo_FontSize), 10);
    t.settings->write(Section::Location, QStringLiteral("Memo_FontSize"), QStringLiteral("big"));
    EXPECT_EQ(t.settings->value(keys::Memo_FontSize), 10);
    t.settings->write(Section::Location, QStringLiteral("Memo_FontSize"), QStringLiteral("99"));
    EXPECT_EQ(t.settings->value(keys::Memo_FontSize), 10);
    t.settings->write(Section::Location, QStringLiteral("Memo_FontSize"), QStringLiteral("14"));
    EXPECT_EQ(t.settings->value(keys::Memo_FontSize), 14);
    // A written integer is clamped into the key's range.
    ASSERT_TRUE(t.settings->set(keys::Memo_FontSize, 3));
    EXPECT_EQ(t.settings->ReadReg(2, QStringLiteral("Memo_FontSize")), QStringLiteral("9"));
    // Negative positions are legal where the key allows them.
    ASSERT_TRUE(t.settings->set(keys::Pulse_Left, keys::kPulseNotPlaced));
    EXPECT_EQ(t.settings->value(keys::Pulse_Left), -9999);
    // Booleans: the words in any case, numbers as C would read them, anything else the default.
    t.settings->write(Section::General, QStringLiteral("DoesAskInReplacing"), QStringLiteral("false"));
    EXPECT_FALSE(t.settings->value(keys::DoesAskInReplacing));
    t.settings->write(Section::General, QStringLiteral("DoesAskInReplacing"), QStringLiteral("maybe"));
    EXPECT_TRUE(t.settings->value(keys::DoesAskInReplacing));
    t.settings->write(Section::General, QStringLiteral("DoesLocateInpFirst"), QStringLiteral("-1"));
    EXPECT_TRUE(t.settings->value(keys::DoesLocateInpFirst));
}

TEST(Settings, TwipsAndPixels) {
    EXPECT_EQ(vkm::twipsToPixels(1440, 96), 96);
    EXPECT_EQ(vkm::twipsToPixels(1200, 96), 80);
    EXPECT_EQ(vkm::pixelsToTwips(80, 96), 1200);
    EXPECT_EQ(vkm::pixelsToTwips(1, 120), 12);
    EXPECT_EQ(vkm::twipsToPixels(1440, 0), 96); // an unknown resolution counts as 96 dpi
}

TEST(Settings, SaveInitialPathAndCompanionValue) {
    vkm::test::TempSettings t;
    t.settings->SaveInitialPath(QStringLiteral("/data/programs"));
    EXPECT_EQ(t.settings->ReadReg(0, QStringLiteral("InitialPath")), QStringLiteral("/data/programs"));
    ASSERT_TRUE(t.settings->writeCompanionPath(QStringLiteral("/opt/vkm")));
    QSettings companion(t.scratch.file(QStringLiteral("VKM_STP.ini")), QSettings::IniFormat);
    EXPECT_EQ(companion.value(QStringLiteral("SETTING/MYPATH")).toString(), QStringLiteral("/opt/vkm"));
    // A moved installation updates the value; a second start from the same place keeps it.
    ASSERT_TRUE(t.settings->writeCompanionPath(QStringLiteral("/usr/local/vkm")));
    ASSERT_TRUE(t.settings->writeCompanionPath(QStringLiteral("/usr/local/vkm")));
    companion.sync();
    EXPECT_EQ(companion.value(QStringLiteral("SETTING/MYPATH")).toString(), QStringLiteral("/usr/local/vkm"));
}

TEST(Settings, CodePageValueSelectsTheLegacyCodePage) {
    const QString original = vkm::LegacyText::codePage();
    vkm::test::TempSettings t;
    EXPECT_TRUE(vkm::applyCodePageSetting(*t.settings)); // none stored: nothing changes
    EXPECT_EQ(vkm::LegacyText::codePage(), original);

    t.settings->write(Section::General, QStringLiteral("CodePage"), QStringLiteral("CP1252"));
    EXPECT_TRUE(vkm::applyCodePageSetting(*t.settings));
    EXPECT_EQ(vkm::LegacyText::codePage(), QStringLiteral("CP1252"));
    EXPECT_EQ(vkm::LegacyText::byteLength(QStringLiteral("\u00e9")), 1);

    t.settings->write(Section::General, QStringLiteral("CodePage"), QStringLiteral("no-such-page"));
    EXPECT_FALSE(vkm::applyCodePageSetting(*t.settings));
    EXPECT_EQ(vkm::LegacyText::codePage(), QStringLiteral("CP1252"));
    ASSERT_TRUE(vkm::LegacyText::setCodePage(original));
}
