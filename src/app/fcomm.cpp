#include "fcomm.h"

#include "finppassword.h"
#include "fsetport.h"

#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

namespace vkm {

namespace {
// The dialog is drawn before the first frame leaves.
constexpr int kStartDelayMs = 100;
} // namespace

fComm::fComm(MachineLink& link, Prompter& prompter, Settings* settings, QWidget* parent)
    : QDialog(parent), m_link(link), m_settings(settings), m_channel(link.channelFactory()),
      m_transfer(*m_channel, prompter, link, this), m_label1(new QLabel(this)), m_label2(new QLabel(this)),
      m_progress(new QProgressBar(this)) {
    setObjectName(QStringLiteral("fComm"));
    setModal(true);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_label1->setObjectName(QStringLiteral("Label1"));
    m_label2->setObjectName(QStringLiteral("Label2"));
    m_progress->setObjectName(QStringLiteral("ProgressBar1"));
    m_progress->setTextVisible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_label1);
    layout->addWidget(m_label2);
    layout->addWidget(m_progress);
    setMinimumWidth(360);
}

fComm::~fComm() = default;

QString fComm::readFromMachine(MachineLink& link, Prompter& prompter, Settings* settings, int kind,
                               bool customEasy2nd, QWidget* parent) {
    fComm dialog(link, prompter, settings, parent);
    dialog.transfer().mode = CommTransfer::Read;
    dialog.transfer().Kind = kind;
    dialog.transfer().DoesCustomEasy2nd = customEasy2nd;
    dialog.exec();
    return dialog.Success() ? dialog.FullFname() : QString();
}

bool fComm::writeToMachine(MachineLink& link, Prompter& prompter, Settings* settings, int kind,
                           const QString& file, QWidget* parent) {
    fComm dialog(link, prompter, settings, parent);
    dialog.transfer().mode = CommTransfer::Write;
    dialog.transfer().Kind = kind;
    dialog.transfer().FileToTransfer = file;
    dialog.exec();
    return dialog.Success();
}

void fComm::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (m_started)
        return;
    m_started = true;
    setWindowTitle(m_transfer.title());
    if (fSetPort::ensureCommPort(m_settings)) {
        m_label1->clear();
        m_label2->clear();
        SetFontSize(this);
    }
    m_transfer.load();
    QTimer::singleShot(kStartDelayMs, this, &fComm::startTransfer);
}

void fComm::startTransfer() {
    m_transfer.settings.port = fSetPort::portDevice(m_settings);
    m_running = true;
    const bool ok = m_transfer.run();
    m_running = false;
    m_transfer.DoesCustomEasy2nd = false;
    done(ok ? Accepted : Rejected);
}

void fComm::reject() {
    if (!m_running)
        QDialog::reject();
}

void fComm::closeEvent(QCloseEvent* event) {
    if (m_running)
        event->ignore();
    else
        QDialog::closeEvent(event);
}

void fComm::setCaption(const QString& text) {
    m_label1->setText(text);
}

void fComm::setNote(const QString& text) {
    m_label2->setText(text);
}

void fComm::setProgressMaximum(int maximum) {
    m_progress->setMaximum(maximum);
}

void fComm::setProgressValue(int value) {
    m_progress->setValue(value);
}

} // namespace vkm
