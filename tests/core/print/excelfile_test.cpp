// Choosing the workbook file: the save dialog and the test for a workbook held open.
#include "base/scriptedprompter.h"
#include "print/excelfile.h"
#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

TEST(ExcelFile, InUseWhenASpreadsheetProgramHoldsItAndNeverLosesTheFile) {
    Scratch s;
    const QString book = s.write("plan.xlsx", "workbook bytes");
    EXPECT_FALSE(FileIsInUse(book));
    EXPECT_EQ(readAll(book), "workbook bytes");
    EXPECT_FALSE(QFile::exists(s.file("bak_plan.xlsx")));
    EXPECT_FALSE(FileIsInUse(s.file("missing.xlsx")));

    s.write(".~lock.plan.xlsx#", "user,host");
    EXPECT_TRUE(FileIsInUse(book));
    EXPECT_EQ(readAll(book), "workbook bytes");
    QFile::remove(s.file(".~lock.plan.xlsx#"));
    s.write("~$an.xlsx", "owner"); // a longer name's owner file loses two letters
    EXPECT_TRUE(FileIsInUse(book));
}

TEST(ExcelFile, SaveDialogAsksAgainWhileTheChosenFileIsOpen) {
    Scratch s;
    const QString open = s.write("open.xlsx", "x");
    s.write(".~lock.open.xlsx#", "user,host");
    const QString free = s.file("free.xlsx");
    ScriptedPrompter prompter;
    prompter.queueFileName(open);
    prompter.queueFileName(free);
    EXPECT_EQ(GetExcelFullFname(prompter, s.file("VKM_STEP.xlsx")), free);
    ASSERT_EQ(prompter.shown().size(), 1u);
    EXPECT_EQ(prompter.shown()[0].text,
              "This file is already open, please specify another filename or close file.");
    ASSERT_EQ(prompter.fileRequests().size(), 2u);
    const FileDialogRequest& first = prompter.fileRequests()[0];
    EXPECT_EQ(first.title, "Specify excel file name");
    EXPECT_EQ(QDir(first.startDir), QDir(s.path()));
    EXPECT_EQ(first.proposedName, "VKM_STEP.xlsx");
    EXPECT_TRUE(first.filter.contains("*.xlsx"));
    EXPECT_EQ(prompter.fileRequests()[1].proposedName, "open.xlsx"); // asks again from there

    prompter.clear();
    prompter.queueFileName(QString()); // cancelled
    EXPECT_TRUE(GetExcelFullFname(prompter, free).isEmpty());
    EXPECT_TRUE(prompter.shown().empty());
}

} // namespace
} // namespace vkm::test
