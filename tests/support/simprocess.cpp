#include "simprocess.h"

#include <QDeadlineTimer>
#include <QRegularExpression>
#include <QTest>

namespace vkm::test {

SimProcess::~SimProcess() {
    stop();
}

bool SimProcess::start(const QStringList& arguments) {
    QStringList args = arguments;
    if (!args.contains(QStringLiteral("--baud")))
        args << QStringLiteral("--baud") << QStringLiteral("0");
    m_process.start(QStringLiteral(VKM_BIN_DIR "/vkm-sim"), args);
    if (!m_process.waitForStarted(5000))
        return false;
    QDeadlineTimer deadline(5000);
    while (!m_process.canReadLine() && m_process.state() == QProcess::Running && !deadline.hasExpired())
        m_process.waitForReadyRead(100);
    m_device = QString::fromLocal8Bit(m_process.readLine()).trimmed();
    return !m_device.isEmpty();
}

void SimProcess::collect() {
    m_log += QString::fromLocal8Bit(m_process.readAllStandardError());
}

QString SimProcess::log() {
    collect();
    return m_log;
}

QStringList SimProcess::frames() {
    static const QRegularExpression received(QStringLiteral(R"(#\d+ <- (\S*))"));
    QStringList out;
    auto it = received.globalMatch(log());
    while (it.hasNext())
        out << it.next().captured(1);
    return out;
}

bool SimProcess::waitForFrames(int n, int timeoutMs) {
    return QTest::qWaitFor([&] { return frames().size() >= n; }, timeoutMs);
}

void SimProcess::kill() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(5000);
    collect();
}

void SimProcess::stop() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(5000))
        m_process.kill();
    m_process.waitForFinished(5000);
    collect();
}

} // namespace vkm::test
