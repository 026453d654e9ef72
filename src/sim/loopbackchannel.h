#pragma once

#include "link/serialchannel.h"
#include "virtualmachine.h"

#include <QList>

namespace vkm::sim {

// A serial channel with the virtual machine at its other end, in the same process: every
// frame written is answered at once and waiting never takes time. Tests of the transfer
// protocol run on it; it also stands in for a port that cannot be opened or a line that
// drops.
class LoopbackChannel : public SerialChannel {
public:
    explicit LoopbackChannel(VirtualMachine& machine) : m_machine(machine) {}

    bool open(const SerialSettings& settings) override;
    void close() override;
    bool isOpen() const override { return m_open; }
    bool write(const QByteArray& bytes) override;
    QByteArray readAll() override;
    qint64 bytesWaiting() override { return m_received.size(); }
    bool waitForData(qint64 count, int timeoutMs) override;
    void pause(int timeMs) override { m_paused += timeMs; }

    // The port cannot be opened (missing or occupied).
    void setOpenFails(bool fails) { m_openFails = fails; }
    // Bytes that arrive unasked before the next answer (noise on the line).
    void injectNoise(const QByteArray& bytes) { m_received += bytes; }
    // A dropped line can be opened again (the machine is back).
    void plugIn() { m_hungUp = false; }

    // What the line saw: every frame written, the settings of the last open, the count of
    // opens, the time spent in pauses.
    const QList<QByteArray>& written() const { return m_written; }
    SerialSettings lastSettings() const { return m_settings; }
    int opens() const { return m_opens; }
    int pausedMs() const { return m_paused; }
    // The time-outs the protocol asked for while waiting for answers, each once.
    const QList<int>& waitTimeouts() const { return m_waitTimeouts; }

private:
    VirtualMachine& m_machine;
    bool m_open = false;
    bool m_openFails = false;
    bool m_hungUp = false;
    QByteArray m_pending; // bytes of a frame not yet ended by LF
    QByteArray m_received;
    QList<QByteArray> m_written;
    SerialSettings m_settings;
    int m_opens = 0;
    int m_paused = 0;
    QList<int> m_waitTimeouts;
};

} // namespace vkm::sim
