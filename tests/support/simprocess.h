#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace vkm::test {

// vkm-sim from the build's bin folder, on a pseudo-terminal of its own, for tests that
// talk to it through a real serial port. Its frame log (stderr) is collected as it comes.
class SimProcess {
public:
    SimProcess() = default;
    ~SimProcess();
    SimProcess(const SimProcess&) = delete;
    SimProcess& operator=(const SimProcess&) = delete;

    // Starts it with the arguments (answering at once unless they name a --baud) and waits
    // for the device path it prints. False when it did not come up.
    bool start(const QStringList& arguments = {});
    QString device() const { return m_device; }

    // The frames it received so far, in order, without line ends.
    QStringList frames();
    // The whole log so far.
    QString log();
    // Waits until it has received at least n frames.
    bool waitForFrames(int n, int timeoutMs = 5000);
    // Ends it the hard way, as a machine that is switched off.
    void kill();
    // Ends it with SIGTERM (it saves its memory file) and waits.
    void stop();

private:
    void collect();
    QProcess m_process;
    QString m_device;
    QString m_log;
};

} // namespace vkm::test
