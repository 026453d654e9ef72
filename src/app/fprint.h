#pragma once

#include "model/csteps.h"
#include "print/printlayout.h"

#include <QDialog>
#include <functional>

class QCheckBox;
class QGroupBox;
class QLabel;
class QListWidget;
class QPrinter;
class QPrintPreviewDialog;
class QPushButton;

namespace vkm {

class CSelections;
class Prompter;
class Settings;

// The print dialog (fPrint): prints a step program (a printer or a PDF file, through
// Qt's print dialog), shows its print preview, or saves it as a workbook; every stage
// of the work is told in the status bar. The editor sets the program and its file
// before showing the dialog and reads ExcelFile / DispExcel after it closed.
class fPrint : public QDialog {
    Q_OBJECT
public:
    // settings may be null (no last workbook is remembered, outputs come first).
    fPrint(Prompter& prompter, Settings* settings, const CSelections& selout, const CSelections& selinp,
           QWidget* parent = nullptr);
    ~fPrint() override;

    // Set by the editor before the dialog is shown.
    void setStep(const CSteps& program) { m_step = program; }
    void setFileToPrint(const QString& path) { m_fileToPrint = path; }
    void setIsEditing(bool editing) { m_isEditing = editing; }
    // True: the "print only differences" choice is not offered.
    void setKillDoesPrintOnlyDif(bool kill);
    int PrintKind() const { return m_printKind; }

    // Read after the dialog closed: the workbook the user asked to open.
    QString ExcelFile() const { return m_excelFile; }
    bool DispExcel() const { return m_dispExcel; }

    // Prints (toFile false) or saves the workbook (true); true when done, and the dialog
    // then closes.
    bool StartPrinting(bool toFile);
    // The print preview: the pages the printer gets.
    void showPreview();
    // The text of the status bar panel "keyMSG".
    QString statusText() const;

    // The printer the user chooses (Qt's print dialog); tests set a PDF file instead.
    // False when the user cancelled.
    using PrinterChooser = std::function<bool(QPrinter& printer)>;
    void setPrinterChooser(PrinterChooser chooser) { m_chooser = std::move(chooser); }
    // Shows the preview window (modal); tests look at it instead.
    using PreviewRunner = std::function<void(QPrintPreviewDialog& preview)>;
    void setPreviewRunner(PreviewRunner runner) { m_previewRunner = std::move(runner); }
    // Paints the printout of the program on a printer: what printing and the preview draw.
    bool paintPrintout(QPrinter& printer);

    // Controls, for the editor's tests.
    QListWidget* lst() const { return m_lst; }
    QCheckBox* chkPrintMemo() const { return m_chkPrintMemo; }
    QCheckBox* chkDoesPrintOnlyDif() const { return m_chkOnlyDif; }
    QPushButton* button(int index) const; // 1 Print, 2 Create Excel file, 3 Close, 4 Preview

Q_SIGNALS:
    // Every text written to the status bar, in order.
    void statusChanged(const QString& text);

private:
    void buildControls();
    void setStatus(const QString& text);
    PrintOptions options(bool toFile) const;
    QString defaultWorkbook() const;

    Prompter& m_prompter;
    Settings* m_settings;
    const CSelections& m_selout;
    const CSelections& m_selinp;
    CSteps m_step;
    int m_printKind = 3; // a step program
    QString m_fileToPrint;
    bool m_isEditing = false;
    QString m_excelFile;
    bool m_dispExcel = false;
    PrinterChooser m_chooser;
    PreviewRunner m_previewRunner;

    QGroupBox* m_framePrint = nullptr;
    QListWidget* m_lst = nullptr;
    QCheckBox* m_chkPrintMemo = nullptr;
    QCheckBox* m_chkOnlyDif = nullptr;
    QCheckBox* m_chkEveryMode = nullptr;
    QPushButton* m_btn[5] = {};
    QPushButton* m_btnSel[3] = {};
    QLabel* m_keyMSG = nullptr;
};

} // namespace vkm
