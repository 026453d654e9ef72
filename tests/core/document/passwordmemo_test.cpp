#include "base/scriptedprompter.h"
#include "document/memorules.h"
#include "document/passwordrules.h"
#include "model/csteps.h"
#include "testsupport.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace vkm;

namespace {

struct WordCase {
    const char* name;
    QString text;
    bool password; // password rule, else author rule
    bool ok;
};

class WordRules : public ::testing::TestWithParam<WordCase> {};

TEST_P(WordRules, AcceptsOnlyShortSingleByteAlphanumerics) {
    const WordCase& c = GetParam();
    EXPECT_EQ(c.password ? ExactPassword(c.text) : ExactAuthor(c.text), c.ok) << c.name;
}

INSTANTIATE_TEST_SUITE_P(
    Words, WordRules,
    ::testing::Values(WordCase{"pw8", QStringLiteral("abcD1234"), true, true},
                      WordCase{"pw9", QStringLiteral("abcD12345"), true, false},
                      WordCase{"pwBlank", QStringLiteral("ab c"), true, false},
                      WordCase{"pwDoubleByte", QStringLiteral("ab\u3042"), true, false},
                      WordCase{"pwFullWidthDigit", QStringLiteral("ab\uFF11"), true, false},
                      WordCase{"pwSymbol", QStringLiteral("ab-1"), true, false},
                      WordCase{"pwEmpty", QString(), true, true},
                      WordCase{"author16", QStringLiteral("ABCDEFGHIJKLMNOP"), false, true},
                      WordCase{"author17", QStringLiteral("ABCDEFGHIJKLMNOPQ"), false, false},
                      WordCase{"authorUnderscore", QStringLiteral("A_B"), false, false}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(AccountDialogChecks, ReportsTheFirstOffendingFieldWithItsMessage) {
    struct Case {
        QString password, author;
        AccountField field;
        std::vector<int> messages;
    };
    const std::vector<Case> cases = {
        {QStringLiteral("abc"), QStringLiteral("Maker"), AccountField::None, {}},
        {QString(), QString(), AccountField::None, {}},
        {QStringLiteral("123456789"), QStringLiteral("Maker"), AccountField::Password, {120}},
        {QStringLiteral("a b"), QStringLiteral("ABCDEFGHIJKLMNOPQ"), AccountField::Password, {120}},
        {QStringLiteral("ok"), QStringLiteral("ABCDEFGHIJKLMNOPQ"), AccountField::Author, {121}},
        {QString(), QStringLiteral("\u5c71\u7530"), AccountField::Author, {121}},
    };
    for (const Case& c : cases) {
        ScriptedPrompter p;
        EXPECT_EQ(ExactInput(c.password, c.author, p), c.field) << c.password.toStdString();
        EXPECT_EQ(p.numbers(), c.messages) << c.password.toStdString();
        for (const auto& shown : p.shown())
            EXPECT_EQ(shown.style, 2);
    }
}

TEST(PasswordPrompt, IsCaseSensitiveRetriesAndFailsOnEmptyOrCancel) {
    CSteps program;
    program.Password = QStringLiteral("secret");

    ScriptedPrompter capitals;
    capitals.queueInput(QStringLiteral("SECRET"));
    capitals.queueInput(QString());
    EXPECT_FALSE(ExactPassword(program, true, capitals));
    EXPECT_EQ(capitals.numbers(), std::vector<int>({99}));
    ASSERT_EQ(capitals.inputPrompts().size(), 2);
    EXPECT_EQ(capitals.inputPrompts().first(), QStringLiteral("Input password."));

    ScriptedPrompter retry;
    retry.queueInput(QStringLiteral("wrong"));
    retry.queueInput(QStringLiteral("Secret"));
    retry.queueInput(QStringLiteral("secret"));
    EXPECT_TRUE(ExactPassword(program, true, retry));
    EXPECT_EQ(retry.numbers(), std::vector<int>({99, 99}));

    ScriptedPrompter cancel;
    cancel.queueInput(std::nullopt);
    EXPECT_FALSE(ExactPassword(program, true, cancel));
    EXPECT_TRUE(cancel.numbers().empty());

    ScriptedPrompter notAsked;
    EXPECT_TRUE(ExactPassword(program, false, notAsked));
    program.Password.clear();
    EXPECT_TRUE(ExactPassword(program, true, notAsked));
    EXPECT_TRUE(notAsked.inputPrompts().isEmpty());
}

TEST(PasswordDialogAnswer, TrimsBothPartsAndTellsWhetherAnythingChanged) {
    CSteps program;
    program.Password = QStringLiteral("pw");
    program.Author = QStringLiteral("Ann");
    EXPECT_FALSE(storePasswordAuthor(program, QStringLiteral(" pw \t Ann ")));
    EXPECT_EQ(program.Password, QStringLiteral("pw"));
    EXPECT_EQ(program.Author, QStringLiteral("Ann"));
    EXPECT_TRUE(storePasswordAuthor(program, QStringLiteral("pw\tBob")));
    EXPECT_EQ(program.Author, QStringLiteral("Bob"));
    EXPECT_TRUE(storePasswordAuthor(program, QStringLiteral("\tBob")));
    EXPECT_TRUE(program.Password.isEmpty());
}

TEST(MemoRules, CountsBytesOfTheLegacyCodePage) {
    EXPECT_EQ(memoRemaining(QString(496, QLatin1Char('a'))), 0);
    EXPECT_EQ(memoRemaining(QString(497, QLatin1Char('a'))), -1);
    EXPECT_EQ(memoRemaining(QString(248, QChar(0x3042))), 0);
    EXPECT_EQ(memoRemaining(QStringLiteral("ab\u3042")), 492);

    struct Case {
        QString memo;
        bool ok;
    };
    for (const Case& c :
         {Case{QString(496, QLatin1Char('a')), true}, Case{QString(497, QLatin1Char('a')), false},
          Case{QString(248, QChar(0x3042)), true}, Case{QString(249, QChar(0x3042)), false}}) {
        CSteps program;
        ScriptedPrompter p;
        bool changed = false;
        EXPECT_EQ(storeMemo(program, c.memo, QString(), p, changed), c.ok) << c.memo.size();
        EXPECT_EQ(changed, c.ok);
        EXPECT_EQ(program.Memo, c.ok ? c.memo : QString());
        if (!c.ok) {
            ASSERT_EQ(p.shown().size(), 1u);
            EXPECT_EQ(p.shown()[0].number, 56);
            EXPECT_EQ(p.shown()[0].a1, QStringLiteral("496"));
        }
    }
}

TEST(MemoRules, ChangingOnlyTheRelatedFileMarksTheProgramChanged) {
    CSteps program;
    program.Memo = QStringLiteral("note");
    program.MemoFile = QStringLiteral("OLD.TXT");
    ScriptedPrompter p;
    bool changed = true;
    ASSERT_TRUE(storeMemo(program, QStringLiteral("note"), QStringLiteral("OLD.TXT"), p, changed));
    EXPECT_FALSE(changed);
    ASSERT_TRUE(storeMemo(program, QStringLiteral("note"), QStringLiteral("NEW.TXT"), p, changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(program.MemoFile, QStringLiteral("NEW.TXT"));
}

TEST(MemoRules, RelatedFileMustBeEightDotThreeBesideTheProgram) {
    test::Scratch scratch;
    QDir(scratch.path()).mkdir(QStringLiteral("other"));
    const QString folder = scratch.path();
    struct Case {
        QString path;
        std::vector<int> messages;
    };
    const std::vector<Case> cases = {
        {folder + "/NOTES.TXT", {}},
        {folder + "/a.b", {}},
        {folder + "/ABCDEFGH.TXT", {}},
        {folder + "/ABCDEFGHI.TXT", {136}},
        {folder + "/NOTES.TEXT", {136}},
        {folder + "/NOTES", {136}},
        {folder + "/\u3042\u3042\u3042\u3042\u3042.TXT", {136}},
        {folder + "/other/NOTES.TXT", {138}},
    };
    for (const Case& c : cases) {
        ScriptedPrompter p;
        EXPECT_EQ(checkMemoFile(c.path, folder, p), c.messages.empty()) << c.path.toStdString();
        EXPECT_EQ(p.numbers(), c.messages) << c.path.toStdString();
    }
}

} // namespace
