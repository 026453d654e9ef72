#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "document/documents.h"
#include "finpmemo.h"
#include "finppassword.h"
#include "sheet/stepsheeteditor.h"
#include "testsupport.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

TEST(PasswordDialog, RefusesBadWordsKeepsTheFocusThereAndReturnsTrimmedValues) {
    struct Case {
        QString password, author;
        int message;       // 0: accepted
        const char* focus; // box that keeps the focus when refused
    };
    const std::vector<Case> cases = {
        {QStringLiteral("123456789"), QStringLiteral("Ann"), 120, "txtPassword"},
        {QStringLiteral("ok"), QStringLiteral("ABCDEFGHIJKLMNOPQ"), 121, "txtAuthor"},
        {QStringLiteral(" pw1 "), QStringLiteral(" ABCDEFGHIJKLMNOP "), 0, ""},
    };
    for (const Case& c : cases) {
        ScriptedPrompter prompter;
        fInpPassword dialog(0, QStringLiteral("old"), QStringLiteral("Old"), prompter);
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
        dialog.txtPassword()->setText(c.password);
        dialog.txtAuthor()->setText(c.author);
        QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
        if (c.message) {
            EXPECT_EQ(prompter.numbers(), std::vector<int>({c.message}));
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString(),
                      QString::fromLatin1(c.focus));
            EXPECT_EQ(dialog.Password(), QStringLiteral("old"));
        } else {
            EXPECT_TRUE(prompter.numbers().empty());
            EXPECT_EQ(dialog.result(), QDialog::Accepted);
            EXPECT_EQ(dialog.Password(), c.password.trimmed());
            EXPECT_EQ(dialog.Author(), c.author.trimmed());
        }
    }
}

TEST(PasswordDialog, ComparisonValuesAreShownReadOnlyAndFocusSelectsTheWholeText) {
    ScriptedPrompter prompter;
    fInpPassword cmp(1, QStringLiteral("pw"), QStringLiteral("Ann"), prompter);
    EXPECT_FALSE(cmp.okButton()->isEnabled());
    EXPECT_EQ(cmp.txtAuthor()->text(), QStringLiteral("Ann"));

    fInpPassword user(0, QStringLiteral("pw"), QStringLiteral("Ann"), prompter);
    EXPECT_TRUE(user.okButton()->isEnabled());
    user.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&user));
    user.activateWindow();
    user.txtAuthor()->setFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return user.txtAuthor()->selectedText() == QStringLiteral("Ann"); }));
    user.txtPassword()->setFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return user.txtPassword()->selectedText() == QStringLiteral("pw"); }));
}

// The memo window over real documents and a settings store of its own.
class MemoWindow : public ::testing::Test {
protected:
    void SetUp() override {
        const QString setting = QStringLiteral(VKM_SOURCE_DIR "/data/setting");
        ASSERT_TRUE(selout.ReadSet6_7_8_9e(setting, QStringLiteral("Set08.e")));
        ASSERT_TRUE(selinp.ReadSet6_7_8_9e(setting, QStringLiteral("Set09.e")));
        settings.settings->write(Section::Location, QStringLiteral("Memo_FontSize"), QString::number(14));
        QDir(scratch.path()).mkdir(QStringLiteral("other"));
        docs.filePath(0) = scratch.file(QStringLiteral("PROG.GSP"));
    }

    ScriptedPrompter prompter;
    CSelections selout, selinp;
    StepSheetEditor userEditor{selout, selinp, prompter, false, false};
    StepSheetEditor cmpEditor{selout, selinp, prompter, true, false};
    Documents docs{prompter, nullptr, selout, selinp, userEditor, cmpEditor};
    TempSettings settings;
    Scratch scratch;
};

TEST_F(MemoWindow, CountsRemainingBytesAndRefusesTooLongMemos) {
    fInpMemo memo(docs, 0, settings.settings.get());
    EXPECT_EQ(memo.cboFontSize()->currentText(), QStringLiteral("14"));
    EXPECT_EQ(memo.txtMemo()->font().pointSize(), 14);
    memo.cboFontSize()->setCurrentIndex(0);
    EXPECT_EQ(memo.txtMemo()->font().pointSize(), 9);

    struct Case {
        QString text;
        QString label;
        bool stored;
        QString storedAs; // when it differs from text
    };
    const std::vector<Case> cases = {
        {QString(496, QLatin1Char('a')), QStringLiteral("Memo remaining:0"), true, {}},
        {QString(497, QLatin1Char('a')), QStringLiteral("Memo remaining:-1"), false, {}},
        // A line break is stored as CR LF and counts two bytes.
        {QStringLiteral("ab\ncd"), QStringLiteral("Memo remaining:490"), true, QStringLiteral("ab\r\ncd")},
        {QString(494, QLatin1Char('a')) + QLatin1Char('\n') + QLatin1Char('b'),
         QStringLiteral("Memo remaining:-1"),
         false,
         {}},
    };
    for (const Case& c : cases) {
        prompter.clear();
        docs.user().setChanged(false);
        docs.userProgram().Memo.clear();
        memo.txtMemo()->setPlainText(c.text);
        EXPECT_EQ(memo.lblNokori()->text(), c.label);
        memo.okClicked();
        EXPECT_EQ(docs.user().IsChanged(), c.stored);
        EXPECT_EQ(docs.userProgram().Memo,
                  c.stored ? (c.storedAs.isEmpty() ? c.text : c.storedAs) : QString());
        EXPECT_EQ(prompter.numbers(), c.stored ? std::vector<int>{} : std::vector<int>{56});
    }
    memo.close();
    EXPECT_EQ(settings.settings->read(Section::Location, QStringLiteral("Memo_FontSize")),
              QStringLiteral("9"));
    EXPECT_FALSE(settings.settings->read(Section::Location, QStringLiteral("Memo_Width")).isEmpty());
}

TEST_F(MemoWindow, OkWithoutAnEditChangesNothing) {
    // Memos as files hold them: the machine's CR LF, but also lone LF or CR from files
    // written elsewhere, and a line break at the end.
    const QString memos[] = {QStringLiteral("one\r\ntwo"), QStringLiteral("one\ntwo\rthree"),
                             QStringLiteral("end\r\n"), QStringLiteral("\u7cf8\r\n\r\nx")};
    for (const QString& m : memos) {
        SCOPED_TRACE(qPrintable(QString(m).replace('\r', "<CR>").replace('\n', "<LF>")));
        docs.userProgram().Memo = m;
        docs.user().setChanged(false);
        fInpMemo memo(docs, 0, settings.settings.get());
        memo.okClicked();
        EXPECT_EQ(docs.userProgram().Memo, m);
        EXPECT_FALSE(docs.user().IsChanged());
        EXPECT_TRUE(prompter.shown().empty());
    }
    // The count shown before an edit is that of the memo as stored.
    docs.userProgram().Memo = QStringLiteral("ab\ncd");
    fInpMemo memo(docs, 0, nullptr);
    EXPECT_EQ(memo.lblNokori()->text(), QStringLiteral("Memo remaining:491"));
    // Typing changes it: the edited text is stored with the machine's line breaks.
    memo.txtMemo()->moveCursor(QTextCursor::End);
    memo.txtMemo()->insertPlainText(QStringLiteral("e"));
    memo.okClicked();
    EXPECT_EQ(docs.userProgram().Memo, QStringLiteral("ab\r\ncde"));
    EXPECT_TRUE(docs.user().IsChanged());
}

TEST_F(MemoWindow, RelatedFileMustLieBesideTheProgramAndAloneMarksAChange) {
    const QString beside = scratch.write(QStringLiteral("NOTE.TXT"), "n");
    const QString elsewhere = scratch.write(QStringLiteral("other/FAR.TXT"), "f");
    docs.userProgram().MemoFile = QStringLiteral("NOTE.TXT");
    fInpMemo memo(docs, 0, settings.settings.get());
    EXPECT_EQ(memo.lblFileName()->text(), QStringLiteral("NOTE.TXT"));
    EXPECT_EQ(memo.memoFilePath(), beside);

    prompter.queueFileName(elsewhere);
    memo.chooseRelatedFile();
    EXPECT_EQ(prompter.numbers(), std::vector<int>({138}));
    EXPECT_EQ(memo.lblFileName()->text(), QStringLiteral("NOTE.TXT"));
    EXPECT_EQ(prompter.fileRequests().back().startDir, scratch.path());
    EXPECT_EQ(prompter.fileRequests().back().proposedName, QStringLiteral("NOTE.TXT"));

    const QString second = scratch.write(QStringLiteral("SECOND.TXT"), "s");
    prompter.queueFileName(second);
    memo.chooseRelatedFile();
    EXPECT_EQ(memo.lblFileName()->text(), QStringLiteral("SECOND.TXT"));
    memo.okClicked();
    EXPECT_TRUE(docs.user().IsChanged());
    EXPECT_EQ(docs.userProgram().MemoFile, QStringLiteral("SECOND.TXT"));
}

TEST_F(MemoWindow, OpeningTheRelatedFileNeedsTheFileAndAnAssociatedProgram) {
    QStringList opened;
    bool associated = false;
    docs.userProgram().MemoFile = QStringLiteral("GONE.TXT");
    fInpMemo memo(docs, 0, nullptr);
    memo.setOpener([&](const QString& p) {
        opened << p;
        return associated;
    });
    memo.openRelatedFile();
    ASSERT_EQ(prompter.numbers(), std::vector<int>({140}));
    EXPECT_EQ(prompter.shown()[0].a1, scratch.file(QStringLiteral("GONE.TXT")));
    scratch.write(QStringLiteral("GONE.TXT"), "here now");
    memo.openRelatedFile();
    EXPECT_EQ(prompter.lastNumber(), 139);
    associated = true;
    prompter.clear();
    memo.openRelatedFile();
    EXPECT_TRUE(prompter.numbers().empty());
    EXPECT_EQ(opened.size(), 2);

    docs.filePath(0).clear();
    memo.chooseRelatedFile();
    EXPECT_EQ(prompter.numbers(), std::vector<int>({137}));

    fInpMemo cmp(docs, 1, nullptr);
    EXPECT_FALSE(cmp.button(1)->isEnabled());
}

} // namespace
} // namespace vkm::test
