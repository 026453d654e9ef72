#pragma once

#include "link/commtransfer.h"

#include <QDialog>
#include <memory>

class QLabel;
class QProgressBar;

namespace vkm {

class Prompter;
class Settings;

// The transfer dialog: one read from or write to the machine, started by a one-shot timer
// once the dialog is shown, with the progress in two labels and a bar. It closes itself
// when the transfer ends; Success() and FullFname() tell the result. The dialog cannot be
// closed while the machine is being talked to: every wait ends by itself, and a time-out
// asks Retry or Cancel.
class fComm : public QDialog, public TransferDisplay {
    Q_OBJECT
public:
    // settings: where "CommPort" is read (nullptr: port 1).
    fComm(MachineLink& link, Prompter& prompter, Settings* settings, QWidget* parent = nullptr);
    ~fComm() override;

    // mode, Kind, CMPUSR, DoesCustomEasy2nd, FileToTransfer are set here before exec().
    CommTransfer& transfer() { return m_transfer; }
    bool Success() const { return m_transfer.Success(); }
    QString FullFname() const { return m_transfer.FullFname(); }
    bool isRunning() const { return m_running; }

    // A read of the step program (kind 1) or the customisation area (kind 2): the file
    // read, or "" when it failed.
    static QString readFromMachine(MachineLink& link, Prompter& prompter, Settings* settings, int kind,
                                   bool customEasy2nd, QWidget* parent);
    // A write of a transfer text file; true when it completed.
    static bool writeToMachine(MachineLink& link, Prompter& prompter, Settings* settings, int kind,
                               const QString& file, QWidget* parent);

    void setCaption(const QString& text) override;
    void setNote(const QString& text) override;
    void setProgressMaximum(int maximum) override;
    void setProgressValue(int value) override;

public Q_SLOTS:
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void startTransfer();

    MachineLink& m_link;
    Settings* m_settings;
    std::unique_ptr<SerialChannel> m_channel;
    CommTransfer m_transfer;
    QLabel* m_label1;
    QLabel* m_label2;
    QProgressBar* m_progress;
    bool m_started = false;
    bool m_running = false;
};

} // namespace vkm
