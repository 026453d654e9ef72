#pragma once

#include "link/serialchannel.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

namespace vkm {

class Prompter;

// Times of the machine link. The defaults are those of the machine; tests shorten them
// here, never by changing the defaults.
struct LinkTiming {
    int answerTimeoutMs = 2000; // no answer within this is a time-out
    int resetPauseMs = 1000;    // pause between the last record and the reset command
};

// What one run of the program shares between transfers: the kind of the machine last
// read (compared by every write), the times, and how a line is made.
struct MachineLink {
    MachineLink();
    QString machineKind; // "" until a read has identified a machine
    LinkTiming timing;
    std::function<std::unique_ptr<SerialChannel>()> channelFactory; // a serial port by default
};

// Where a transfer shows its progress (the transfer dialog, the command line's bar).
class TransferDisplay {
public:
    virtual ~TransferDisplay() = default;
    virtual void setCaption(const QString& text) = 0; // the first label
    virtual void setNote(const QString& text) = 0;    // the second label
    virtual void setProgressMaximum(int maximum) = 0;
    virtual void setProgressValue(int value) = 0;
};

// One transfer between the editor and the machine: reads a stretch of the machine's
// memory into a transfer text file, or sends the W records of a transfer text file, with
// the machine check first, a Retry/Cancel question on every time-out, and the reset
// command after a complete write. Questions and messages go through the prompter.
class CommTransfer {
public:
    enum Mode { Read = 0, Write = 1 };
    enum TransferKind { StepProgram = 1, Customisation = 2 };

    CommTransfer(SerialChannel& channel, Prompter& prompter, MachineLink& link,
                 TransferDisplay* display = nullptr);

    // Set by the caller before the transfer.
    int mode = Read;
    int Kind = StepProgram;
    int CMPUSR = 0;                 // the program a read is for (0 user, 1 comparison)
    bool DoesCustomEasy2nd = false; // the read is the first half of a customisation save
    QString FileToTransfer;         // for a write: the transfer text to send
    SerialSettings settings;        // the line, port included

    // After the transfer.
    QString FullFname() const { return m_fullFname; }
    bool Success() const { return m_success; }

    // The dialog's title for the mode: "Read from sewing machine" / "Save to sewing machine".
    QString title() const;
    // What the dialog checks as it loads: a write without a file shows "no file to
    // transfer!" (and goes on, to fail when the file is copied).
    void load();
    // The whole transfer: open the line ("Unable to connect. ..." when it cannot be
    // opened), read or write, close the line, "Failed to read." / "Failed to write." when
    // it failed. Returns Success().
    bool run();

    // The steps, each usable alone.
    bool InitializeComm();
    bool PortOpenClose(bool open);
    bool ExactVKMSewingMachine(bool read);
    bool ReadDaTa(const QString& caption, int start, int end, int byteCount, bool append);
    bool SaveDaTa(const QString& caption);
    bool CheckRevData(const QByteArray& received, const QString& address);
    bool Wait(qint64 expected, const QString& timeoutMessage, const QByteArray& frame);
    void out(const QByteArray& frame);

private:
    bool readByKind();
    bool appendToFile(const QByteArray& text, bool append);
    void showCaption(const QString& text);
    void showNote(const QString& text);
    void showProgress(const QString& caption, int value, int maximum);

    SerialChannel& m_channel;
    Prompter& m_prompter;
    MachineLink& m_link;
    TransferDisplay* m_display;
    QString m_fullFname;
    bool m_success = false;
};

} // namespace vkm
