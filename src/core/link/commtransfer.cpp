#include "link/commtransfer.h"

#include "base/errorreporter.h"
#include "base/prompter.h"
#include "link/commframes.h"
#include "link/machinefiles.h"
#include "link/memorymap.h"
#include "link/serialportchannel.h"
#include "link/transfertext.h"

#include <QFile>

namespace vkm {

namespace {

// How often the user may answer Retry to one frame before the machine is given up.
constexpr int kMaxRetries = 3;
// Bad read answers tolerated per range before the read fails.
constexpr int kMaxResends = 5;

// Message styles of the transfer dialog's own texts.
constexpr int kCritical = 1;      // critical icon, OK
constexpr int kExclamation = 2;   // exclamation icon, OK
constexpr int kOkCancelWarn = 10; // exclamation icon, OK and Cancel

const QString kReading = QStringLiteral("Reading...");
const QString kWriting = QStringLiteral("Writing...");

QString frameText(const QByteArray& frame) {
    QByteArray text = frame;
    while (text.endsWith('\n') || text.endsWith('\r'))
        text.chop(1);
    return QString::fromLatin1(text);
}

} // namespace

MachineLink::MachineLink() : channelFactory([] { return std::make_unique<SerialPortChannel>(); }) {}

CommTransfer::CommTransfer(SerialChannel& channel, Prompter& prompter, MachineLink& link,
                           TransferDisplay* display)
    : m_channel(channel), m_prompter(prompter), m_link(link), m_display(display) {}

QString CommTransfer::title() const {
    return mode == Read ? QStringLiteral("Read from sewing machine")
                        : QStringLiteral("Save to sewing machine");
}

void CommTransfer::load() {
    m_success = false;
    m_fullFname.clear();
    if (mode == Write && FileToTransfer.isEmpty())
        m_prompter.showText(QStringLiteral("no file to transfer!"), kCritical);
}

bool CommTransfer::run() {
    m_success = false;
    if (!InitializeComm()) {
        m_prompter.showText(QStringLiteral("Unable to connect. Check port setting. Or the port is occupied."),
                            kCritical);
        return false;
    }
    const bool ok = mode == Read ? readByKind() : SaveDaTa(kWriting);
    PortOpenClose(false);
    showCaption(QString());
    if (!ok) {
        // A read that stopped part way leaves no file that could pass for the machine's.
        if (!m_fullFname.isEmpty())
            QFile::remove(m_fullFname);
        m_fullFname.clear();
        m_prompter.showText(mode == Read ? QStringLiteral("Failed to read.")
                                         : QStringLiteral("Failed to write."),
                            kExclamation);
        return false;
    }
    m_success = true;
    return true;
}

bool CommTransfer::readByKind() {
    if (Kind == Customisation)
        return ReadDaTa(kReading, memmap::kCustomStart, memmap::kCustomStart + memmap::kCustomSize,
                        memmap::kCustomSize, false);
    return ReadDaTa(kReading, memmap::kStepLowAddress, memmap::kStepLowAddress + memmap::kStepLowSize,
                    memmap::kStepLowSize, false) &&
           ReadDaTa(kReading, memmap::kStepHighAddress, memmap::kStepHighAddress + memmap::kStepHighSize,
                    memmap::kStepHighSize, true);
}

bool CommTransfer::InitializeComm() {
    PortOpenClose(false);
    return PortOpenClose(true);
}

bool CommTransfer::PortOpenClose(bool open) {
    if (!open) {
        m_channel.close();
        return true;
    }
    return m_channel.open(settings);
}

void CommTransfer::out(const QByteArray& frame) {
    m_channel.readAll(); // whatever came unasked belongs to no request
    if (!m_channel.write(frame))
        m_prompter.showText(QStringLiteral("Faild to send data...\n\n") + frameText(frame), kCritical);
}

bool CommTransfer::Wait(qint64 expected, const QString& timeoutMessage, const QByteArray& frame) {
    out(frame);
    for (int retries = 0;; ++retries) {
        if (m_channel.waitForData(expected, m_link.timing.answerTimeoutMs))
            return true;
        if (retries >= kMaxRetries) {
            m_prompter.showText(QStringLiteral("Power off and on the sewing machine and retry."),
                                kExclamation);
            return false;
        }
        if (m_prompter.askRetry(timeoutMessage) != Answer::Retry)
            return false;
        InitializeComm();
        out(frame);
    }
}

bool CommTransfer::ExactVKMSewingMachine(bool read) {
    if (!Wait(comm::kReadAnswerLength, QStringLiteral("Timer over (no response for machine check)"),
              comm::readRequest(comm::kMachineCheckAddress)))
        return false;
    const QByteArray answer = m_channel.readAll();
    const QString kind = comm::machineKindOf(answer);
    if (read) {
        if (comm::isSeriesMachine(answer)) {
            if (CMPUSR == 0)
                m_link.machineKind = kind;
            return true;
        }
        m_prompter.showText(QStringLiteral("This sewing machine is not VKM series."), kExclamation);
        return false;
    }
    if (m_link.machineKind.isEmpty() || m_link.machineKind == kind)
        return true;
    m_prompter.showText(QStringLiteral("The kind of sewing machine is different from the one you read."),
                        kExclamation);
    return false;
}

bool CommTransfer::CheckRevData(const QByteArray& received, const QString& address) {
    const QString shown = QString::fromLatin1(received);
    switch (comm::readAnswerFault(received, address)) {
    case comm::AnswerFault::None:
        return true;
    case comm::AnswerFault::ErrorReturned:
        m_prompter.showText(QStringLiteral("Error returned:\n\n") + shown, kCritical);
        return false;
    case comm::AnswerFault::CheckSum:
        m_prompter.showText(QStringLiteral("Check sum error:\n\n") + shown, kCritical);
        return false;
    case comm::AnswerFault::Address:
        m_prompter.showText(QStringLiteral("Returned address invalid:\n\n") + shown, kCritical);
        return false;
    }
    return false;
}

bool CommTransfer::ReadDaTa(const QString& caption, int start, int end, int byteCount, bool append) {
    if (!ExactVKMSewingMachine(true))
        return false;
    showCaption(caption);
    if (m_display) {
        m_display->setProgressMaximum(byteCount);
        m_display->setProgressValue(0);
    }
    if (DoesCustomEasy2nd)
        showNote(QStringLiteral("Reading data before save"));

    QByteArray collected;
    int records = 0;
    int resends = 0;
    for (int address = start; address < end; address += memmap::kRecordDataBytes) {
        const QString digits = HexDigits(address, 4);
        const QByteArray frame = comm::readRequest(address);
        for (;;) {
            if (!Wait(comm::kReadAnswerLength, QStringLiteral("Timer over (no response for address)"), frame))
                return false;
            const QByteArray answer = m_channel.readAll();
            if (CheckRevData(answer, digits)) {
                collected += comm::recordOfAnswer(answer);
                break;
            }
            if (++resends > kMaxResends)
                return false;
        }
        ++records;
        showProgress(caption, memmap::kRecordDataBytes * records, byteCount);
    }
    return appendToFile(collected, append);
}

bool CommTransfer::appendToFile(const QByteArray& text, bool append) {
    if (!append || m_fullFname.isEmpty()) {
        m_fullFname = NewTempFile(QStringLiteral("VKM"));
        append = false;
    }
    QFile f(m_fullFname);
    const QIODevice::OpenMode openMode =
        append ? QIODevice::Append : QIODevice::WriteOnly | QIODevice::Truncate;
    if (m_fullFname.isEmpty() || !f.open(openMode) || f.write(text) != text.size() || !f.flush()) {
        reportError(ErrIO, QStringLiteral("ReadDaTa"));
        return false;
    }
    return true;
}

bool CommTransfer::SaveDaTa(const QString& caption) {
    // Sent from a private copy: the file the caller named may change or go meanwhile.
    const QString copy = NewTempFile(QStringLiteral("VKM"));
    QFile source(FileToTransfer);
    if (FileToTransfer.isEmpty() || copy.isEmpty() || !source.open(QIODevice::ReadOnly)) {
        reportError(source.exists() ? ErrPermissionDenied : ErrFileNotFound, QStringLiteral("SaveDaTa"));
        return false;
    }
    const QByteArray text = source.readAll();
    source.close();
    QFile target(copy);
    if (!target.open(QIODevice::WriteOnly | QIODevice::Truncate) || target.write(text) != text.size()) {
        reportError(ErrIO, QStringLiteral("SaveDaTa"));
        return false;
    }
    target.close();
    FileToTransfer = copy;

    if (!ExactVKMSewingMachine(false))
        return false;
    const int maximum = Kind == Customisation ? memmap::kCustomWriteEnd : memmap::kStepImageBytes;
    showCaption(caption);
    if (m_display) {
        m_display->setProgressMaximum(maximum);
        m_display->setProgressValue(0);
    }
    int lines = 0;
    for (const QByteArray& line : recordLines(text)) {
        ++lines;
        for (;;) {
            if (!Wait(comm::kAcknowledgementLength, QStringLiteral("Timer over (no response for data)"),
                      comm::writeRequest(line)))
                return false;
            const QByteArray answer = m_channel.readAll();
            showProgress(caption, std::min(memmap::kRecordDataBytes * lines, maximum), maximum);
            if (comm::isAcknowledged(answer))
                break;
            const QString question = QStringLiteral("Error returned. Do you send again ?\n\nERRCODE=") +
                                     comm::acknowledgementCode(answer);
            if (m_prompter.showText(question, kOkCancelWarn) != Answer::Ok)
                return false;
        }
        // A customisation write ends with the last record of the settings the machine
        // takes from the editor; what follows in a whole-memory file is left alone.
        if (Kind == Customisation && line.startsWith("W1A78"))
            break;
    }
    showCaption(QStringLiteral("Reseting..."));
    m_channel.pause(m_link.timing.resetPauseMs);
    out(comm::resetCommand());
    return true;
}

void CommTransfer::showCaption(const QString& text) {
    if (m_display)
        m_display->setCaption(text);
}

void CommTransfer::showNote(const QString& text) {
    if (m_display)
        m_display->setNote(text);
}

void CommTransfer::showProgress(const QString& caption, int value, int maximum) {
    if (!m_display)
        return;
    m_display->setProgressValue(value);
    m_display->setCaption(caption + u' ' + QString::number(value) + u'/' + QString::number(maximum));
}

} // namespace vkm
