#include "base/errorreporter.h"
#include "base/hikisu.h"
#include "base/legacytext.h"
#include "base/number.h"
#include "base/tempfolder.h"
#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <gtest/gtest.h>

TEST(Number, LeadingNumberOfText) {
    const struct {
        const char* text;
        qint64 integer;
    } cases[] = {
        {"12.5", 12}, {"13.5", 14}, {"-2.5", -2},  {"0.5", 0},  {"1.5", 2},    {"abc", 0},
        {"", 0},      {"  7x", 7},  {"\t42", 42},  {"+9", 9},   {"1e3", 1000}, {"3e", 3},
        {".5", 0},    {"-", 0},     {"12 34", 12}, {"0x1F", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(vkm::leadingInteger(QString::fromLatin1(c.text)), c.integer) << c.text;
    EXPECT_DOUBLE_EQ(vkm::leadingNumber(QStringLiteral(" 2.25kg")), 2.25);
}

TEST(Number, SixteenBitRange) {
    const struct {
        const char* text;
        std::optional<qint16> value;
    } cases[] = {
        {"32767", 32767},
        {"32767.4", 32767},
        {"32767.5", std::nullopt},
        {"32768", std::nullopt},
        {"-32768", -32768},
        {"-32769", std::nullopt},
        {"x", 0},
        {"1e9", std::nullopt},
    };
    for (const auto& c : cases)
        EXPECT_EQ(vkm::leadingInt16(QString::fromLatin1(c.text)), c.value) << c.text;
}

TEST(Number, WholeTextNumeric) {
    for (const char* yes : {"0", " 12 ", "-3.5", "1e4", "+7"})
        EXPECT_TRUE(vkm::isNumeric(QString::fromLatin1(yes))) << yes;
    for (const char* no : {"", " ", "7x", "abc", "1 2", "-", "."})
        EXPECT_FALSE(vkm::isNumeric(QString::fromLatin1(no))) << no;
}

TEST(LegacyText, ByteLengthsAndRoundTripInCodePage932) {
    ASSERT_TRUE(vkm::LegacyText::setCodePage(QStringLiteral("windows-31j")));
    const struct {
        QString text;
        int bytes;
    } cases[] = {
        {QStringLiteral("ABC 123"), 7},
        {QStringLiteral("\u3042\u3044"), 4},   // hiragana: two bytes each
        {QStringLiteral("\uff71"), 1},         // half-width katakana: one byte
        {QStringLiteral("A\u6f22\u5b57B"), 6}, // kanji between letters
        {QString(), 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vkm::LegacyText::byteLength(c.text), c.bytes) << qPrintable(c.text);
        EXPECT_EQ(vkm::LegacyText::decode(vkm::LegacyText::encode(c.text)), c.text);
    }
    EXPECT_TRUE(vkm::LegacyText::isSingleByte(QChar(u'x')));
    EXPECT_FALSE(vkm::LegacyText::isSingleByte(QChar(u'\u3042')));
    EXPECT_EQ(vkm::LegacyText::encode(QStringLiteral("\u3042")), QByteArray("\x82\xa0"));
    EXPECT_FALSE(vkm::LegacyText::setCodePage(QStringLiteral("no-such-page")));
    EXPECT_EQ(vkm::LegacyText::codePage(), QStringLiteral("windows-31j"));
}

TEST(TempFolder, PrivateFolderAndUniqueNames) {
    vkm::TempFolder& folder = vkm::TempFolder::instance();
    const QFileInfo info(folder.path());
    ASSERT_TRUE(info.isDir());
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_EQ(info.permissions() & others, QFile::Permissions());
    EXPECT_TRUE(info.permissions() & QFile::WriteOwner);

    QSet<QString> names;
    for (int i = 0; i < 20; ++i) {
        const QString name = folder.newTempFile(i % 2 ? QStringLiteral("VKM") : QStringLiteral("~pl"));
        const QFileInfo f(name);
        EXPECT_EQ(f.absolutePath(), folder.path());
        EXPECT_TRUE(f.fileName().startsWith(i % 2 ? QStringLiteral("VKM") : QStringLiteral("~pl")));
        EXPECT_TRUE(f.fileName().endsWith(QStringLiteral(".tmp")));
        EXPECT_TRUE(f.exists());
        EXPECT_EQ(f.size(), 0);
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 20);

    const QString old = folder.path();
    folder.recreate();
    EXPECT_FALSE(QFileInfo::exists(old));
    EXPECT_TRUE(QFileInfo(folder.path()).isDir());
}

TEST(TempFolder, UnusableTmpdirGivesNoFolderAndNeverTheRoot) {
    vkm::test::Scratch scratch;
    const QString file = scratch.write(QStringLiteral("plain-file"), "x");
    const QStringList atRootBefore =
        QDir(QStringLiteral("/")).entryList({QStringLiteral("vkmstep-*")}, QDir::Dirs);
    vkm::TempFolder& folder = vkm::TempFolder::instance();
    for (const QString& tmpdir : {scratch.file(QStringLiteral("no/such/folder")), file}) {
        SCOPED_TRACE(qPrintable(tmpdir));
        {
            vkm::test::EnvOverride env("TMPDIR", QFile::encodeName(tmpdir));
            folder.recreate();
        }
        EXPECT_FALSE(folder.isValid());
        EXPECT_TRUE(folder.path().isEmpty());
        EXPECT_TRUE(folder.filePath(QStringLiteral("eusr2.tmp")).isEmpty());
        EXPECT_TRUE(folder.newTempFile(QStringLiteral("VKM")).isEmpty());
        // One text that names the folder and says what to do.
        const QString text = folder.failureText();
        EXPECT_TRUE(text.startsWith(QStringLiteral("Cannot create a temporary folder in:\n\n") +
                                    QDir::toNativeSeparators(tmpdir) + QStringLiteral("\n\n")))
            << qPrintable(text);
        EXPECT_TRUE(text.contains(QStringLiteral("TMPDIR"))) << qPrintable(text);
        EXPECT_EQ(QDir(QStringLiteral("/")).entryList({QStringLiteral("vkmstep-*")}, QDir::Dirs),
                  atRootBefore);
    }
    folder.recreate();
    EXPECT_TRUE(folder.isValid());
    EXPECT_TRUE(folder.failureText().isEmpty());
    EXPECT_TRUE(QFileInfo(folder.path()).isDir());
}

TEST(ErrorReporter, LogSinkAppendsAndPassesOn) {
    vkm::test::Scratch scratch;
    vkm::CapturingErrorSink next;
    const QString log = scratch.file(QStringLiteral("logs/error.log")); // folder created on demand
    vkm::LogFileErrorSink sink(log, &next);
    vkm::ErrorReporter::setSink(&sink);
    vkm::reportError(vkm::ErrFileNotFound, QStringLiteral("ReadData"));
    vkm::reportError(7, QStringLiteral("SaveStepData"), QStringLiteral("own text"));
    vkm::ErrorReporter::setSink(&next);

    const QStringList lines = QString::fromUtf8(vkm::test::readAll(log)).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].endsWith(QStringLiteral("\t53\tReadData\tFile not found"))) << qPrintable(lines[0]);
    EXPECT_TRUE(lines[1].endsWith(QStringLiteral("\t7\tSaveStepData\town text"))) << qPrintable(lines[1]);
    ASSERT_EQ(next.reports().size(), 2u);
    EXPECT_EQ(next.procedures(), (QStringList{"ReadData", "SaveStepData"}));
    EXPECT_EQ(next.reports()[0].text, QStringLiteral("File not found"));
}

TEST(ErrorReporter, CapturingSinkRestoresThePreviousOne) {
    vkm::ErrorSink* before = vkm::ErrorReporter::sink();
    {
        vkm::CapturingErrorSink outer;
        {
            vkm::CapturingErrorSink inner;
            vkm::reportError(vkm::ErrIO, QStringLiteral("Inner"));
            EXPECT_EQ(inner.reports().size(), 1u);
        }
        vkm::reportError(vkm::ErrIO, QStringLiteral("Outer"));
        EXPECT_EQ(outer.procedures(), QStringList{QStringLiteral("Outer")});
    }
    EXPECT_EQ(vkm::ErrorReporter::sink(), before);
}

TEST(Hikisu, FileNameFromTheCommandLine) {
    vkm::test::Scratch scratch;
    const QString spaced = scratch.write(QStringLiteral("my program.gsp"), "x");
    const QString plain = scratch.write(QStringLiteral("plain.gsp"), "x");
    const QString missing = scratch.file(QStringLiteral("missing.gsp"));
    const struct {
        QString line;
        QString expected;
    } cases[] = {
        {QString(), QString()},
        {"\"" + spaced + "\" /p extra", spaced},
        {"\"" + spaced + "\"", spaced},
        {"\"" + spaced, spaced}, // no closing quote: the rest of the line
        {plain, plain},
        {"  " + plain + "  ", plain},
        {missing, QString()},
        {"\"" + missing + "\" " + plain, QString()},
        {"\"" + scratch.path() + "\"", QString()}, // a folder is no program file
        {QStringLiteral("\"\""), QString()},
    };
    for (const auto& c : cases)
        EXPECT_EQ(vkm::hikisuFileName(c.line), c.expected) << qPrintable(c.line);
}
