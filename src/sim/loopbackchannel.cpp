#include "loopbackchannel.h"

namespace vkm::sim {

bool LoopbackChannel::open(const SerialSettings& settings) {
    m_settings = settings;
    if (m_openFails || m_hungUp)
        return false;
    m_open = true;
    ++m_opens;
    m_pending.clear();
    return true;
}

void LoopbackChannel::close() {
    m_open = false;
    m_received.clear();
}

bool LoopbackChannel::write(const QByteArray& bytes) {
    if (!m_open)
        return false;
    m_written << bytes;
    m_pending += bytes;
    qsizetype end = 0;
    while ((end = m_pending.indexOf('\n')) >= 0) {
        QByteArray frame = m_pending.left(end);
        m_pending.remove(0, end + 1);
        if (frame.endsWith('\r'))
            frame.chop(1);
        const VirtualMachine::Response r = m_machine.handleFrame(frame);
        if (r.hangUp) {
            m_open = false;
            m_hungUp = true;
            m_received.clear();
            return true; // the frame left; nobody is there to take it
        }
        m_received += r.answer;
    }
    return true;
}

QByteArray LoopbackChannel::readAll() {
    QByteArray all;
    all.swap(m_received);
    return all;
}

bool LoopbackChannel::waitForData(qint64 count, int timeoutMs) {
    if (!m_waitTimeouts.contains(timeoutMs))
        m_waitTimeouts << timeoutMs;
    return m_open && m_received.size() >= count;
}

} // namespace vkm::sim
