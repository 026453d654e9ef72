// A full step-program read and write through a real serial port (QSerialPort) with vkm-sim
// paced as a 9600 bit/s line, each against the time the line itself needs: every byte both
// sides must send at ten bits per byte, plus the pause before the reset for a write. A
// ratio of 1.00 is a transfer that adds nothing to the line's own time.
#include "base/scriptedprompter.h"
#include "link/commtransfer.h"
#include "link/serialportchannel.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <cstdio>

using namespace vkm;

namespace {

constexpr int kBaud = 9600;
constexpr double kBitsPerByte = 10.0;
const QString kProgram = QStringLiteral(VKM_SOURCE_DIR "/data/samples/counter.gsp");

// Bytes on the line: a read request is 9 bytes, a read answer 25, a W record 25 and its
// acknowledgement 13, the reset 9.
constexpr int kReadFrames = 1 + 96 + 1 + 142; // a machine check before each range
constexpr int kReadBytes = kReadFrames * (9 + 25);
constexpr int kWriteBytes = (9 + 25) + 238 * (25 + 13) + 9;

double lineSeconds(int bytes) {
    return bytes * kBitsPerByte / kBaud;
}

int fail(const char* what) {
    std::fprintf(stderr, "bench_transfer: %s\n", what);
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QProcess sim;
    sim.start(QStringLiteral(VKM_BIN_DIR "/vkm-sim"),
              {QStringLiteral("--baud"), QString::number(kBaud), QStringLiteral("--load"), kProgram});
    if (!sim.waitForStarted() || !sim.waitForReadyRead(5000))
        return fail("vkm-sim did not start");
    const QString device = QString::fromLocal8Bit(sim.readLine()).trimmed();

    ScriptedPrompter prompter;
    MachineLink link; // the machine's own times
    SerialPortChannel port;
    QElapsedTimer clock;

    CommTransfer read(port, prompter, link);
    read.settings.port = device;
    clock.start();
    if (!read.run())
        return fail("the read failed");
    const double readSeconds = double(clock.nsecsElapsed()) / 1e9;
    QFile::remove(read.FullFname());

    CommTransfer write(port, prompter, link);
    write.mode = CommTransfer::Write;
    write.settings.port = device;
    write.FileToTransfer = kProgram;
    QByteArray log;
    clock.start();
    if (!write.run())
        return fail("the write failed");
    // The write is done when the machine has the whole reset command.
    const auto resetArrived = [&] {
        log += sim.readAllStandardError();
        return log.contains("<- C00003F");
    };
    if (!resetArrived()) {
        QEventLoop loop;
        QTimer::singleShot(5000, &loop, &QEventLoop::quit);
        QObject::connect(&sim, &QProcess::readyReadStandardError, &loop, [&] {
            if (resetArrived())
                loop.quit();
        });
        loop.exec();
    }
    if (!log.contains("<- C00003F"))
        return fail("the reset did not arrive");
    const double writeSeconds = double(clock.nsecsElapsed()) / 1e9;
    sim.terminate();
    sim.waitForFinished();

    const double readLimit = lineSeconds(kReadBytes);
    const double writeLimit = lineSeconds(kWriteBytes) + link.timing.resetPauseMs / 1000.0;
    std::printf(
        "read %.3f s against the line's %.3f s (ratio %.3f), write %.3f s against %.3f s (ratio %.3f)\n",
        readSeconds, readLimit, readSeconds / readLimit, writeSeconds, writeLimit, writeSeconds / writeLimit);
    return 0;
}
