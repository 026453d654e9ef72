// vkm-sim: a virtual VKM sewing machine controller on a serial line.
#include "simline.h"
#include "virtualmachine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>
#include <cstdio>
#include <memory>

using namespace vkm::sim;

namespace {

const char kDescription[] =
    "A virtual VKM sewing machine controller: it answers the editor's serial transfers\n"
    "(vkmstep, vkmstep-cli read/write) as a machine would, so that programs can be sent\n"
    "and read back without a machine on the desk.\n"
    "\n"
    "It creates a pseudo-terminal and prints its device path as the first line of\n"
    "standard output (or serves the serial device given with --device). Set the editor's\n"
    "port to that path (or to the --link name). The machine holds 8192 bytes of memory:\n"
    "read requests are answered from it, W records are stored in it and acknowledged with\n"
    "E000 (E001 bad checksum, E002 address outside the memory, E003 not hexadecimal), and\n"
    "the reset command restarts it. The identification bytes at 0x0100..0x0102 decide the\n"
    "machine kind the editor sees; the high digit of the third byte must be 2 for the\n"
    "editor to accept the machine.\n"
    "\n"
    "Traffic is paced like a line at --baud bit/s with ten bits per byte, in both\n"
    "directions. Every frame is logged with the time since start and its number; the\n"
    "numbers are the N of the faults below (resends count as frames of their own).\n"
    "\n"
    "Faults (--fault, may be given several times):\n"
    "  silent:N            no answer to frame N\n"
    "  late:N:K            frame N is answered only when the same frame arrives the K-th\n"
    "                      time (late:5:4 answers the fourth attempt, after three Retry)\n"
    "  checksum:N          the answer to frame N carries a wrong checksum\n"
    "  error:N             the answer to frame N begins with \"#\" (an error answer)\n"
    "  address:N           the answer to frame N echoes another address\n"
    "  write-error:N[:CODE]  W record N is refused with CODE (default E001), not stored\n"
    "  lost-write:N        W record N is acknowledged but not stored\n"
    "  disconnect:N        the line is dropped when frame N arrives and vkm-sim ends\n"
    "\n"
    "Exit status: 0 after a signal or a planned disconnect, 1 when the line cannot be\n"
    "opened or fails, 2 for bad arguments or an unreadable memory or load file.";

struct Log {
    FILE* file = stderr;
    bool on = true;
    QElapsedTimer clock;
    void line(const QString& text) const {
        if (!on)
            return;
        std::fprintf(file, "%11.6f %s\n", double(clock.nsecsElapsed()) / 1e9, text.toLocal8Bit().constData());
        std::fflush(file);
    }
};

int fail(const QString& text, int status) {
    std::fprintf(stderr, "vkm-sim: %s\n", text.toLocal8Bit().constData());
    return status;
}

bool saveMemory(const QString& path, const QByteArray& memory, const Log& log) {
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(memory) != memory.size() || !f.commit()) {
        log.line(QStringLiteral("cannot save the memory to %1: %2").arg(path, f.errorString()));
        return false;
    }
    log.line(QStringLiteral("memory saved to %1").arg(path));
    return true;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vkm-sim"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VKM_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(kDescription));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption device({QStringLiteral("d"), QStringLiteral("device")},
                                    QStringLiteral("Serve this serial device instead of a pseudo-terminal."),
                                    QStringLiteral("path"));
    const QCommandLineOption link(
        {QStringLiteral("l"), QStringLiteral("link")},
        QStringLiteral(
            "Make <path> a symbolic link to the line, a name that stays the same from run to run."),
        QStringLiteral("path"));
    const QCommandLineOption memory(
        {QStringLiteral("m"), QStringLiteral("memory")},
        QStringLiteral("Load the 8192-byte memory from <file> when it exists; save it "
                       "there after every reset and at exit."),
        QStringLiteral("file"));
    const QCommandLineOption load(
        QStringLiteral("load"),
        QStringLiteral(
            "Put the records of a transfer text (a .gsp program, customisation text) into memory at "
            "their addresses. May be repeated."),
        QStringLiteral("file"));
    const QCommandLineOption id(
        QStringLiteral("id"),
        QStringLiteral("Identification bytes at 0x0100..0x0102 as six hexadecimal digits "
                       "(default 010520 for a new memory)."),
        QStringLiteral("hex"));
    const QCommandLineOption baud({QStringLiteral("b"), QStringLiteral("baud")},
                                  QStringLiteral("Line speed in bit/s (default 9600); 0 answers at once."),
                                  QStringLiteral("n"), QStringLiteral("9600"));
    const QCommandLineOption fault({QStringLiteral("f"), QStringLiteral("fault")},
                                   QStringLiteral("Play a fault (see above). May be repeated."),
                                   QStringLiteral("fault"));
    const QCommandLineOption logFile(QStringLiteral("log"),
                                     QStringLiteral("Log the frames to <file> instead of standard error."),
                                     QStringLiteral("file"));
    const QCommandLineOption quiet({QStringLiteral("q"), QStringLiteral("quiet")},
                                   QStringLiteral("Log nothing."));
    parser.addOptions({device, link, memory, load, id, baud, fault, logFile, quiet});
    parser.process(app);
    if (!parser.positionalArguments().isEmpty())
        return fail(
            QStringLiteral("unexpected argument %1 (see --help)").arg(parser.positionalArguments().first()),
            2);

    VirtualMachine machine;
    bool memoryLoaded = false;
    if (parser.isSet(memory) && QFile::exists(parser.value(memory))) {
        QFile f(parser.value(memory));
        if (!f.open(QIODevice::ReadOnly))
            return fail(QStringLiteral("cannot read %1: %2").arg(f.fileName(), f.errorString()), 2);
        const QByteArray bytes = f.readAll();
        if (bytes.size() != VirtualMachine::kMemorySize)
            return fail(QStringLiteral("%1 holds %2 bytes, not the 8192 of the memory")
                            .arg(f.fileName())
                            .arg(bytes.size()),
                        2);
        machine.memory() = bytes;
        memoryLoaded = true;
    }
    for (const QString& path : parser.values(load)) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly))
            return fail(QStringLiteral("cannot read %1: %2").arg(path, f.errorString()), 2);
        QString error;
        if (!machine.loadTransferText(f.readAll(), &error))
            return fail(path + QStringLiteral(": ") + error, 2);
    }
    if (parser.isSet(id) || !memoryLoaded) {
        const QString text = parser.isSet(id) ? parser.value(id) : QStringLiteral("010520");
        const QByteArray bytes = QByteArray::fromHex(text.toLatin1());
        if (text.size() != 6 || bytes.size() != 3 || bytes.toHex().toUpper() != text.toUpper().toLatin1())
            return fail(QStringLiteral("--id needs six hexadecimal digits, not \"%1\"").arg(text), 2);
        machine.setIdentification(bytes);
    }
    bool ok = false;
    const int speed = parser.value(baud).toInt(&ok);
    if (!ok || speed < 0)
        return fail(QStringLiteral("--baud needs a number of bit/s, not \"%1\"").arg(parser.value(baud)), 2);
    for (const QString& text : parser.values(fault)) {
        QString error;
        const auto f = parseFault(text, &error);
        if (!f)
            return fail(error, 2);
        machine.addFault(*f);
    }

    Log log;
    log.clock.start();
    log.on = !parser.isSet(quiet);
    if (parser.isSet(logFile)) {
        log.file = std::fopen(QFile::encodeName(parser.value(logFile)).constData(), "a");
        if (!log.file)
            return fail(QStringLiteral("cannot write the log %1").arg(parser.value(logFile)), 2);
    }
    machine.logger = [&log](const QString& line) { log.line(line); };

    SimLine::Options options;
    options.device = parser.value(device);
    options.link = parser.value(link);
    options.baudRate = speed;
    // A real device is paced by its own hardware.
    options.pace = options.device.isEmpty();
    SimLine line(machine, options);
    if (!line.open())
        return fail(line.errorString(), 1);
    std::printf("%s\n", QFile::encodeName(line.devicePath()).constData());
    std::fflush(stdout);
    const QByteArray idBytes = machine.memory().mid(VirtualMachine::kIdAddress, 3);
    log.line(QStringLiteral("ready on %1 at %2 bit/s, identification %3")
                 .arg(line.devicePath())
                 .arg(speed)
                 .arg(QString::fromLatin1(idBytes.toHex().toUpper())));

    const QString memoryFile = parser.value(memory);
    line.onReset = [&] {
        if (!memoryFile.isEmpty())
            saveMemory(memoryFile, machine.memory(), log);
    };
    const int status = line.run();
    if (!line.errorString().isEmpty())
        log.line(line.errorString());
    log.line(QStringLiteral("stopped after %1 frame(s)").arg(machine.framesReceived()));
    if (!memoryFile.isEmpty())
        saveMemory(memoryFile, machine.memory(), log);
    if (log.file != stderr)
        std::fclose(log.file);
    return status;
}
