// The Print button of the step editors and the print dialog: checks before printing, the
// workbook and the printout, the status bar, the preview and opening the workbook.
#include "../core/print/xlsxreader.h"
#include "base/errorreporter.h"
#include "controllerfixture.h"
#include "finpmemo.h"
#include "fprint.h"
#include "print/painter/sheetpainter.h"
#include "printcontroller.h"
#include "steptoolbar.h"

#include <QCheckBox>
#include <QListWidget>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <array>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

// What a PDF says about itself (poppler's pdfinfo) and its text (pdftotext).
QString pdfTool(const QString& tool, const QStringList& args) {
    QProcess p;
    p.start(tool, args);
    if (!p.waitForFinished(30000) || p.exitCode() != 0)
        return QStringLiteral("(%1 failed: %2)").arg(tool, QString::fromUtf8(p.readAllStandardError()));
    return QString::fromUtf8(p.readAllStandardOutput());
}

int pdfPages(const QString& pdf) {
    const QString info = pdfTool(QStringLiteral("pdfinfo"), {pdf});
    const auto m = QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)")).match(info);
    return m.hasMatch() ? m.captured(1).toInt() : -1;
}

class PrintCommand : public ControllerFixture {
protected:
    void SetUp() override {
        ControllerFixture::SetUp();
        settings.settings->set(keys::LatestExcelFullFname, scratch.file("VKM_STEP.xlsx"));
        startController();
        controller->printController().setDialogRunner([this](fPrint& dialog) {
            ++dialogs;
            if (onDialog)
                onDialog(dialog);
        });
    }

    // Opens a sample program in the user editor.
    void openUser(const char* sample) {
        const QString path = QStringLiteral(VKM_SOURCE_DIR "/data/samples/") + QLatin1String(sample);
        ASSERT_TRUE(controller->documents().user().ReadStep(0, 0, path));
        prompter.clear();
    }
    QString userPath() { return controller->documents().userFilePath(); }

    int dialogs = 0;
    std::function<void(fPrint&)> onDialog;
};

TEST_F(PrintCommand, PrintButtonIsOfferedInBothEditors) {
    StepToolBar bar;
    ASSERT_NE(bar.action("keyPRINT"), nullptr);
    EXPECT_TRUE(bar.action("keyPRINT")->isEnabled());
    // The comparison editor prints too: with nothing loaded there is nothing to print.
    EXPECT_TRUE(controller->handleKey(1, "keyPRINT", false));
    EXPECT_EQ(prompter.numbers(), std::vector<int>({77}));
    EXPECT_EQ(dialogs, 0);
}

TEST_F(PrintCommand, UserProgramIsCheckedBeforeTheDialogOpens) {
    // Nothing in the grid: nothing to print.
    EXPECT_TRUE(controller->handleKey(0, "keyPRINT", false));
    EXPECT_EQ(prompter.numbers(), std::vector<int>({77}));
    EXPECT_EQ(dialogs, 0);

    // A row whose input groups have no END: the check's message, then "Unable to print step."
    openUser("counter.gsp");
    const int relCol = user.sheet().inputGroupCol(1) + 2;
    user.sheet().setText(1, relCol, QStringLiteral("0")); // AND instead of END
    prompter.clear();
    controller->handleKey(0, "keyPRINT", false);
    const std::vector<int> shown = prompter.numbers();
    ASSERT_GE(shown.size(), 2u);
    EXPECT_EQ(shown.back(), 150);
    EXPECT_NE(shown.front(), 150);
    EXPECT_EQ(dialogs, 0);
}

TEST_F(PrintCommand, DialogGetsTheProgramItsFileAndTheChangedFlag) {
    openUser("counter.gsp");
    controller->documents().user().setChanged(true);
    onDialog = [&](fPrint& d) {
        EXPECT_EQ(d.PrintKind(), 3);
        ASSERT_EQ(d.lst()->count(), 1);
        EXPECT_EQ(d.lst()->item(0)->text(), "Step");
        EXPECT_TRUE(d.lst()->item(0)->isSelected());
        EXPECT_TRUE(d.chkDoesPrintOnlyDif()->isHidden());
        // Save it, and look at the first row of the workbook.
        prompter.queueFileName(scratch.file("edited.xlsx"));
        prompter.queueAnswer(Answer::No);
        d.button(2)->click();
    };
    controller->handleKey(0, "keyPRINT", false);
    EXPECT_EQ(dialogs, 1);
    const XlsxFile x(scratch.file("edited.xlsx"));
    ASSERT_TRUE(x.ok());
    EXPECT_EQ(x.text("A1"), userPath() + "(editing)");
    EXPECT_EQ(x.text("A2"), "STEP");
}

TEST_F(PrintCommand, SavedWorkbookIsRememberedAndOpenedWhenAskedFor) {
    openUser("counter.gsp");
    QStringList opened;
    controller->printController().setOpener([&](const QString& path) {
        opened << path;
        return true;
    });
    QStringList statuses;
    const QString target = scratch.file("counter.xlsx");
    onDialog = [&](fPrint& d) {
        QObject::connect(&d, &fPrint::statusChanged, [&](const QString& t) { statuses << t; });
        d.chkPrintMemo()->setChecked(true);
        prompter.queueFileName(target);
        prompter.queueAnswer(Answer::Yes);
        d.button(2)->click();
        EXPECT_EQ(d.statusText(), "Success to print to excel.");
        EXPECT_EQ(d.result(), QDialog::Accepted);
    };
    controller->handleKey(0, "keyPRINT", false);
    EXPECT_EQ(opened, QStringList({target}));
    EXPECT_EQ(settings.settings->value(keys::LatestExcelFullFname), target);
    ASSERT_FALSE(prompter.shown().empty());
    EXPECT_EQ(prompter.shown().back().number, 124);
    EXPECT_EQ(prompter.shown().back().style, 7); // No is the default
    EXPECT_EQ(prompter.shown().back().a1, target);
    ASSERT_FALSE(prompter.fileRequests().empty());
    EXPECT_EQ(prompter.fileRequests()[0].proposedName, "VKM_STEP.xlsx"); // from the last workbook
    ASSERT_GE(statuses.size(), 4);
    EXPECT_EQ(statuses.front(), "Creating excel object...");
    EXPECT_TRUE(statuses.contains("Printing:1 row"));
    EXPECT_LT(statuses.indexOf("Setting page ... Other"), statuses.indexOf("Success to print to excel."));
    EXPECT_TRUE(XlsxFile(target).ok());

    // Opening fails: the user hears of it.
    controller->printController().setOpener([](const QString&) { return false; });
    prompter.clear();
    onDialog = [&](fPrint& d) {
        prompter.queueFileName(target);
        prompter.queueAnswer(Answer::Yes);
        d.button(2)->click();
    };
    controller->handleKey(0, "keyPRINT", false);
    EXPECT_EQ(prompter.numbers(), std::vector<int>({124, 139}));
}

TEST_F(PrintCommand, WorkbookChoicesThatStopOrRepeat) {
    openUser("counter.gsp");
    fPrint d(prompter, settings.settings.get(), selout, selinp);
    d.setStep(controller->documents().userProgram());
    d.setFileToPrint(userPath());

    // Nothing chosen in the list ("Release all"), then the one item again ("Select all").
    auto click = [&](const QString& caption) {
        for (QPushButton* b : d.findChildren<QPushButton*>())
            if (b->text() == caption)
                b->click();
    };
    click("&Release all");
    EXPECT_TRUE(d.lst()->selectedItems().isEmpty());
    EXPECT_FALSE(d.StartPrinting(true));
    EXPECT_EQ(prompter.numbers(), std::vector<int>({125}));
    click("Select &all");
    EXPECT_EQ(d.lst()->selectedItems().size(), 1);

    // The save dialog cancelled: nothing happens.
    prompter.clear();
    prompter.queueFileName(QString());
    EXPECT_FALSE(d.StartPrinting(true));
    EXPECT_TRUE(prompter.shown().empty());

    // A workbook held open elsewhere is refused and the dialog comes again.
    const QString busy = scratch.write("busy.xlsx", "someone's workbook");
    scratch.write(".~lock.busy.xlsx#", "user,host");
    const QString other = scratch.file("other.xlsx");
    prompter.queueFileName(busy);
    prompter.queueFileName(other);
    prompter.queueAnswer(Answer::No);
    EXPECT_TRUE(d.StartPrinting(true));
    EXPECT_EQ(readAll(busy), "someone's workbook");
    EXPECT_TRUE(XlsxFile(other).ok());
    EXPECT_FALSE(d.DispExcel());
    EXPECT_TRUE(d.ExcelFile().isEmpty());
    ASSERT_EQ(prompter.shown().size(), 2u);
    EXPECT_EQ(prompter.shown()[0].text,
              "This file is already open, please specify another filename or close file.");
    EXPECT_EQ(prompter.shown()[1].number, 124);

    // A workbook that cannot be written: reported, message 123, the last workbook stays
    // remembered.
    prompter.clear();
    prompter.queueFileName(scratch.file("missing/folder/x.xlsx"));
    CapturingErrorSink errors;
    EXPECT_FALSE(d.StartPrinting(true));
    EXPECT_EQ(prompter.numbers(), std::vector<int>({123}));
    EXPECT_EQ(errors.procedures(), QStringList({"PrintToExcelStep"}));
    EXPECT_EQ(settings.settings->value(keys::LatestExcelFullFname), other);
}

TEST_F(PrintCommand, PrintoutAndPreviewShowTheSamePages) {
    openUser("counter.gsp");
    // A memo of 60 lines runs the printout onto a second page.
    QStringList memo;
    for (int i = 1; i <= 60; ++i)
        memo << QStringLiteral("note %1").arg(i);
    controller->documents().userProgram().Memo = memo.join("\r\n");
    CSteps program;
    CSteps& current = controller->documents().userProgram();
    ASSERT_TRUE(user.conversion().Update_step(current, program));

    fPrint d(prompter, settings.settings.get(), selout, selinp);
    d.setStep(program);
    d.setFileToPrint(userPath());
    d.chkPrintMemo()->setChecked(true);
    const QString pdf = scratch.file("printout.pdf");
    d.setPrinterChooser([&](QPrinter& printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        return true;
    });
    EXPECT_TRUE(d.StartPrinting(false));
    EXPECT_TRUE(prompter.shown().empty()); // no question: nothing was saved
    EXPECT_EQ(settings.settings->value(keys::LatestExcelFullFname), scratch.file("VKM_STEP.xlsx"));
    EXPECT_EQ(d.statusText(), "Success to print to excel.");
    const int printed = pdfPages(pdf);
    EXPECT_EQ(printed, 2);
    const QString info = pdfTool("pdfinfo", {pdf});
    const auto size = QRegularExpression("Page size:\\s+([\\d.]+) x ([\\d.]+)").match(info);
    ASSERT_TRUE(size.hasMatch()) << info.toStdString();
    EXPECT_GT(size.captured(1).toDouble(), size.captured(2).toDouble()); // landscape
    const QString text = pdfTool("pdftotext", {"-layout", "-l", "1", pdf, "-"});
    EXPECT_TRUE(text.contains(userPath())) << text.toStdString();
    EXPECT_FALSE(text.contains("Filename:")) << "a printout names no workbook";

    int previewPages = -1;
    QPageLayout::Orientation previewOrientation = QPageLayout::Portrait;
    d.setPreviewRunner([&](QPrintPreviewDialog& preview) {
        auto* widget = preview.findChild<QPrintPreviewWidget*>();
        ASSERT_NE(widget, nullptr);
        widget->updatePreview();
        previewPages = widget->pageCount();
        previewOrientation = widget->orientation();
    });
    d.button(4)->click();
    EXPECT_EQ(previewPages, printed);
    EXPECT_EQ(previewOrientation, QPageLayout::Landscape);

    // The user cancels Qt's print dialog: nothing happens.
    d.setPrinterChooser([](QPrinter&) { return false; });
    EXPECT_FALSE(d.StartPrinting(false));
    EXPECT_TRUE(prompter.shown().empty());
}

} // namespace
} // namespace vkm::test

namespace vkm::test {
namespace {

// Pages of a sheet too big for one: rows run onto further pages, then columns, down first.
TEST(SheetPages, SplitDownThenAcross) {
    PrintSheet sheet(4, "S");
    for (int c = 0; c < 4; ++c)
        sheet.setColumnWidth(c, 30); // 215 pixels, 161.25 points each
    for (int r = 0; r < 10; ++r) {
        sheet.cell(r, 0).setText("x");
        sheet.setRowHeight(r, 100);
    }
    sheet.page().marginLeft = sheet.page().marginRight = 0.5;
    sheet.page().marginTop = sheet.page().marginBottom = 0.5;
    sheet.page().scale = 100;
    SheetPainter painter(sheet, {});
    // 8.5 x 11 inches less the margins: 540 points across (3 columns), 720 down (7 rows).
    const auto pages = painter.pages(QSizeF(612, 792));
    ASSERT_EQ(pages.size(), 4u);
    const std::vector<std::array<int, 4>> expected = {{0, 6, 0, 2}, {7, 9, 0, 2}, {0, 6, 3, 3}, {7, 9, 3, 3}};
    for (std::size_t i = 0; i < pages.size(); ++i)
        EXPECT_EQ(
            (std::array<int, 4>{pages[i].firstRow, pages[i].lastRow, pages[i].firstCol, pages[i].lastCol}),
            expected[i])
            << i;
    // At half the size everything fits on one page.
    sheet.page().scale = 50;
    EXPECT_EQ(SheetPainter(sheet, {}).pages(QSizeF(612, 792)).size(), 1u);
}

} // namespace
} // namespace vkm::test
