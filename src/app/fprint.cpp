#include "fprint.h"
#include "tabchain.h"

#include "base/prompter.h"
#include "base/settings.h"
#include "print/excelfile.h"
#include "print/painter/sheetpainter.h"
#include "print/printjob.h"
#include "print/workbookwriter.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStandardPaths>
#include <QStatusBar>
#include <QVBoxLayout>

namespace vkm {

fPrint::fPrint(Prompter& prompter, Settings* settings, const CSelections& selout, const CSelections& selinp,
               QWidget* parent)
    : QDialog(parent), m_prompter(prompter), m_settings(settings), m_selout(selout), m_selinp(selinp) {
    setObjectName(QStringLiteral("fPrint"));
    setWindowTitle(QStringLiteral("Print"));
    m_chooser = [this](QPrinter& printer) {
        QPrintDialog dialog(&printer, this);
        return dialog.exec() == QDialog::Accepted;
    };
    m_previewRunner = [](QPrintPreviewDialog& preview) { preview.exec(); };
    buildControls();
}

fPrint::~fPrint() = default;

void fPrint::buildControls() {
    m_framePrint = new QGroupBox(QStringLiteral("What do you want to print?"), this);
    m_framePrint->setObjectName(QStringLiteral("framePrint"));
    m_lst = new QListWidget(m_framePrint);
    m_lst->setObjectName(QStringLiteral("lst"));
    m_lst->setSelectionMode(QAbstractItemView::MultiSelection);
    m_lst->addItem(QStringLiteral("Step")); // a step program has this one item
    m_lst->item(0)->setSelected(true);
    m_btnSel[1] = new QPushButton(QStringLiteral("Select &all"), m_framePrint);
    m_btnSel[2] = new QPushButton(QStringLiteral("&Release all"), m_framePrint);
    connect(m_btnSel[1], &QPushButton::clicked, this, [this] { m_lst->selectAll(); });
    connect(m_btnSel[2], &QPushButton::clicked, this, [this] { m_lst->clearSelection(); });
    auto* frameLayout = new QGridLayout(m_framePrint);
    frameLayout->addWidget(m_lst, 0, 0, 3, 1);
    frameLayout->addWidget(m_btnSel[1], 0, 1);
    frameLayout->addWidget(m_btnSel[2], 1, 1);

    m_chkPrintMemo = new QCheckBox(QStringLiteral("Print Note"), this);
    m_chkPrintMemo->setObjectName(QStringLiteral("chkPrintMemo"));
    m_chkOnlyDif = new QCheckBox(QStringLiteral("Print only &differences."), this);
    m_chkOnlyDif->setObjectName(QStringLiteral("chkDoesPrintOnlyDif"));
    m_chkEveryMode = new QCheckBox(QStringLiteral("Print or create exce&l sheet by every mode"), this);
    m_chkEveryMode->setObjectName(QStringLiteral("chkCreateExcelSheetByEveryMode"));
    // A step program prints as one sheet: only the note can be chosen.
    m_chkOnlyDif->setEnabled(false);
    m_chkEveryMode->setEnabled(false);

    const char* captions[] = {nullptr, "&Print", "Create &Excel file", "&Close", "Pre&view"};
    auto* buttons = new QHBoxLayout;
    for (int i = 1; i <= 4; ++i) {
        m_btn[i] = new QPushButton(QString::fromLatin1(captions[i]), this);
        m_btn[i]->setObjectName(QStringLiteral("BTN%1").arg(i));
        m_btn[i]->setAutoDefault(false);
    }
    for (int i : {4, 1, 2, 3})
        buttons->addWidget(m_btn[i]);
    // What to print, the options, then the buttons in the order they stand.
    setTabChain({m_lst, m_btnSel[1], m_btnSel[2], m_chkPrintMemo, m_chkOnlyDif, m_chkEveryMode, m_btn[4],
                 m_btn[1], m_btn[2], m_btn[3]});
    m_btn[1]->setDefault(true);
    connect(m_btn[1], &QPushButton::clicked, this, [this] {
        if (StartPrinting(false))
            accept();
    });
    connect(m_btn[2], &QPushButton::clicked, this, [this] {
        if (StartPrinting(true))
            accept();
    });
    connect(m_btn[3], &QPushButton::clicked, this, &QDialog::reject);
    connect(m_btn[4], &QPushButton::clicked, this, &fPrint::showPreview);

    auto* status = new QStatusBar(this);
    status->setSizeGripEnabled(false);
    m_keyMSG = new QLabel(status);
    m_keyMSG->setObjectName(QStringLiteral("keyMSG"));
    status->addWidget(m_keyMSG, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_framePrint);
    layout->addWidget(m_chkPrintMemo);
    layout->addWidget(m_chkOnlyDif);
    layout->addWidget(m_chkEveryMode);
    layout->addLayout(buttons);
    layout->addWidget(status);
}

void fPrint::setKillDoesPrintOnlyDif(bool kill) {
    m_chkOnlyDif->setVisible(!kill);
    if (kill)
        m_chkOnlyDif->setChecked(false);
}

QPushButton* fPrint::button(int index) const {
    return index >= 1 && index <= 4 ? m_btn[index] : nullptr;
}

QString fPrint::statusText() const {
    return m_keyMSG->text();
}

void fPrint::setStatus(const QString& text) {
    m_keyMSG->setText(text);
    m_keyMSG->repaint(); // the work runs on: show each stage as it starts
    Q_EMIT statusChanged(text);
}

PrintOptions fPrint::options(bool toFile) const {
    PrintOptions o;
    o.fileToPrint = m_fileToPrint;
    o.isEditing = m_isEditing;
    o.printMemo = m_chkPrintMemo->isChecked();
    o.toFile = toFile;
    o.locateInpFirst = m_settings && m_settings->value(keys::DoesLocateInpFirst);
    o.symbolFontAvailable = symbolFontAvailable();
    return o;
}

QString fPrint::defaultWorkbook() const {
    const QString last = m_settings ? m_settings->value(keys::LatestExcelFullFname) : QString();
    if (!last.isEmpty())
        return last;
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + QLatin1Char('/');
}

bool fPrint::StartPrinting(bool toFile) {
    if (m_lst->selectedItems().isEmpty()) {
        m_prompter.showMessage(125, 2); // "Select function from list."
        return false;
    }
    QString file;
    if (toFile) {
        file = GetExcelFullFname(m_prompter, defaultWorkbook());
        if (file.isEmpty())
            return false;
    }
    const StatusSink status = [this](const QString& text) { setStatus(text); };
    bool done = false;
    if (toFile) {
        WorkbookTarget target(file);
        done = PrintToExcelStep(m_step, m_selout, m_selinp, options(true), target, status);
    } else {
        QPrinter printer(QPrinter::HighResolution);
        if (!m_chooser(printer))
            return false;
        PagedTarget target(printer);
        done = PrintToExcelStep(m_step, m_selout, m_selinp, options(false), target, status);
    }
    m_excelFile.clear();
    m_dispExcel = false;
    if (!done) {
        m_prompter.showMessage(123, 2); // "Failed to create excel file."
        return false;
    }
    if (toFile) {
        if (m_settings)
            m_settings->set(keys::LatestExcelFullFname, file);
        if (m_prompter.showMessage(124, 7, file) == Answer::Yes) {
            m_excelFile = file;
            m_dispExcel = true;
        }
    }
    return true;
}

bool fPrint::paintPrintout(QPrinter& printer) {
    const StepPrintLayout layout(m_selout, m_selinp, options(false));
    PagedTarget target(printer);
    return target.output(layout.build(m_step));
}

void fPrint::showPreview() {
    if (m_lst->selectedItems().isEmpty()) {
        m_prompter.showMessage(125, 2);
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog preview(&printer, this);
    preview.setWindowTitle(QStringLiteral("Print"));
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter* p) { paintPrintout(*p); });
    m_previewRunner(preview);
}

} // namespace vkm
