// vkmstep-cli read / write / read-custom / write-custom: transfers with the machine over a
// serial port, as the editor's transfer dialog runs them.
#include "clicontext.h"
#include "command.h"
#include "transferprogress.h"

#include "base/messages.h"
#include "document/machinesend.h"
#include "link/serialportchannel.h"
#include "link/transfertext.h"
#include "sheet/stepsheeteditor.h"

#include <QFile>
#include <cstdio>
#ifdef Q_OS_WIN
#include <io.h>
#define isatty _isatty
#define fileno _fileno
#else
#include <unistd.h>
#endif

namespace vkm::cli {
namespace {

// The machine's own questions, answered for a user who is not there: a time-out is retried
// (the protocol gives up after the third Retry) unless --no-retry, a refused record is
// not sent again.
class TransferPrompter : public ConsolePrompter {
public:
    explicit TransferPrompter(bool retry) : m_retry(retry) {}
    Answer askRetry(const QString& text) override {
        ConsolePrompter::queueAnswer(m_retry ? Answer::Retry : Answer::Cancel);
        const Answer a = ConsolePrompter::askRetry(text);
        std::fprintf(stderr, "%s\n", a == Answer::Retry ? "(retrying)" : "(cancelled: --no-retry)");
        return a;
    }

private:
    bool m_retry;
};

struct Options {
    QString port;
    QStringList files;
    bool yes = false;
    bool verify = false;
    bool retry = true;
};

// Parses [--port DEV] [--yes] [--verify] [--no-retry] FILE; flags outside `allowed` are
// refused. False when the call is wrong.
bool parse(const QStringList& args, const QStringList& allowed, Options& o) {
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--port") && i + 1 < args.size())
            o.port = args[++i];
        else if (a == QLatin1String("--yes") && allowed.contains(a))
            o.yes = true;
        else if (a == QLatin1String("--verify") && allowed.contains(a))
            o.verify = true;
        else if (a == QLatin1String("--no-retry"))
            o.retry = false;
        else if (a.startsWith(QLatin1String("--")))
            return false;
        else
            o.files << a;
    }
    return !o.port.trimmed().isEmpty() && o.files.size() == 1;
}

// Shorter answer and reset times for tests of the command itself; the machine's own times
// are the defaults.
void applyTestTimes(MachineLink& link) {
    bool ok = false;
    const int answer = qEnvironmentVariableIntValue("VKM_ANSWER_TIMEOUT_MS", &ok);
    if (ok && answer > 0)
        link.timing.answerTimeoutMs = answer;
    const int pause = qEnvironmentVariableIntValue("VKM_RESET_PAUSE_MS", &ok);
    if (ok && pause >= 0)
        link.timing.resetPauseMs = pause;
}

// One session with the machine: the line, the kind of machine read last, the progress.
class Session {
public:
    Session(CliContext& ctx, const Options& o)
        : m_ctx(ctx), m_prompter(o.retry), m_progress(ctx.err(), isatty(fileno(stderr)) != 0) {
        applyTestTimes(m_link);
        m_port = portDeviceName(o.port);
    }
    TransferPrompter& prompter() { return m_prompter; }

    // A read of kind 1 or 2: the transfer text as the machine gave it, or nothing.
    std::optional<QByteArray> read(int kind) {
        CommTransfer t = transfer(CommTransfer::Read, kind);
        if (!run(t))
            return std::nullopt;
        QFile f(t.FullFname());
        if (!f.open(QIODevice::ReadOnly))
            return std::nullopt;
        const QByteArray text = f.readAll();
        f.close();
        f.remove(); // the copy in the private temporary folder is done with
        return text;
    }
    bool write(int kind, const QString& file) {
        CommTransfer t = transfer(CommTransfer::Write, kind);
        t.FileToTransfer = file;
        t.load();
        return run(t);
    }

private:
    bool run(CommTransfer& t) {
        if (t.run())
            return true;
        m_ctx.err() << "vkmstep-cli: the transfer on " << m_port << " did not complete\n";
        return false;
    }
    CommTransfer transfer(int mode, int kind) {
        CommTransfer t(m_channel, m_prompter, m_link, &m_progress);
        t.mode = mode;
        t.Kind = kind;
        t.settings.port = m_port;
        return t;
    }

    CliContext& m_ctx;
    TransferPrompter m_prompter;
    TransferProgress m_progress;
    MachineLink m_link;
    SerialPortChannel m_channel;
    QString m_port;
};

int recordCount(const QByteArray& text) {
    return int(text.count('\n'));
}

// The records of a customisation text, or a message naming the first bad line.
bool checkCustomText(const QByteArray& text, QString* error) {
    const QList<QByteArray> lines = recordLines(text);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const int expected = int(i) * 8;
        int address = -1;
        if (!isWRecord(lines[i], &address)) {
            *error = QStringLiteral("line %1 is not a W record with a good checksum").arg(i + 1);
            return false;
        }
        if (address != expected) {
            *error = QStringLiteral("line %1 is for address %2, %3 was expected")
                         .arg(i + 1)
                         .arg(HexDigits(address, 4), HexDigits(expected, 4));
            return false;
        }
    }
    if (lines.isEmpty()) {
        *error = QStringLiteral("no records");
        return false;
    }
    return true;
}

// Refuses a write that was not confirmed, as the editor's question would have.
bool confirmed(CliContext& ctx, const Options& o) {
    if (o.yes)
        return true;
    ctx.err() << messageText(160)
              << "\nNothing was sent: confirm with --yes that the machine will be switched "
              << "off and on after the write.\n";
    return false;
}

int runRead(const QStringList& args, CliContext& ctx, int kind, const QString& synopsis) {
    Options o;
    if (!parse(args, {}, o))
        return ctx.usageError(synopsis);
    Session session(ctx, o);
    const auto text = session.read(kind);
    if (!text)
        return 1;
    if (!ctx.writeFile(o.files[0], *text))
        return 1;
    ctx.out() << "read " << recordCount(*text) << " records into " << o.files[0] << '\n';
    return 0;
}

int runWrite(const QStringList& args, CliContext& ctx) {
    const QString synopsis = QStringLiteral("write --port DEV [--yes] [--verify] [--no-retry] FILE.gsp");
    Options o;
    if (!parse(args, {QStringLiteral("--yes"), QStringLiteral("--verify")}, o))
        return ctx.usageError(synopsis);
    if (!confirmed(ctx, o))
        return 2;
    CSteps program;
    if (!ctx.readProgram(o.files[0], program))
        return 1;
    Session session(ctx, o);
    // The checks and the transfer text as the editor makes them before a send.
    StepSheetEditor editor(ctx.selout(), ctx.selinp(), session.prompter(), false, false);
    editor.conversion().PasteData(program);
    session.prompter().queueAnswer(Answer::Ok); // the power question, confirmed by --yes
    const QString sent = ProgramFileToSend(editor, program, session.prompter());
    if (sent.isEmpty() || !session.write(CommTransfer::StepProgram, sent))
        return 1;
    QFile sentFile(sent);
    const QByteArray sentText = sentFile.open(QIODevice::ReadOnly) ? sentFile.readAll() : QByteArray();
    ctx.out() << "wrote " << recordCount(sentText) << " records and reset the machine\n";
    if (!o.verify)
        return 0;
    const auto back = session.read(CommTransfer::StepProgram);
    if (!back)
        return 1;
    const QList<QByteArray> a = sentText.split('\n');
    const QList<QByteArray> b = back->split('\n');
    int differences = 0;
    for (qsizetype i = 0; i < std::max(a.size(), b.size()); ++i) {
        if (a.value(i) != b.value(i)) {
            if (++differences <= 10)
                ctx.out() << "differs: sent " << a.value(i).trimmed() << ", read " << b.value(i).trimmed()
                          << '\n';
        }
    }
    if (differences > 0) {
        ctx.out() << "verify: " << differences << " records differ\n";
        return 1;
    }
    ctx.out() << "verified: the machine holds what was sent\n";
    return 0;
}

int runWriteCustom(const QStringList& args, CliContext& ctx) {
    const QString synopsis = QStringLiteral("write-custom --port DEV [--yes] [--no-retry] FILE.txt");
    Options o;
    if (!parse(args, {QStringLiteral("--yes")}, o))
        return ctx.usageError(synopsis);
    if (!confirmed(ctx, o))
        return 2;
    QByteArray text;
    if (!ctx.readFile(o.files[0], text))
        return 1;
    QString error;
    if (!checkCustomText(text, &error)) {
        ctx.err() << o.files[0] << ": " << error << "; nothing was sent\n";
        return 1;
    }
    Session session(ctx, o);
    if (!session.write(CommTransfer::Customisation, o.files[0]))
        return 1;
    ctx.out() << "wrote the customisation area and reset the machine\n";
    return 0;
}

const CommandRegistration
    readReg({QStringLiteral("read"),
             QStringLiteral("read --port DEV [--no-retry] OUT.gsp   read the machine's step program"),
             [](const QStringList& args, CliContext& ctx) {
                 return runRead(args, ctx, CommTransfer::StepProgram,
                                QStringLiteral("read --port DEV [--no-retry] OUT.gsp"));
             }});
const CommandRegistration writeReg(
    {QStringLiteral("write"),
     QStringLiteral("write --port DEV --yes [--verify] [--no-retry] FILE.gsp   check a program and send it"),
     runWrite});
const CommandRegistration readCustomReg(
    {QStringLiteral("read-custom"),
     QStringLiteral("read-custom --port DEV [--no-retry] OUT.txt   read the customisation area"),
     [](const QStringList& args, CliContext& ctx) {
         return runRead(args, ctx, CommTransfer::Customisation,
                        QStringLiteral("read-custom --port DEV [--no-retry] OUT.txt"));
     }});
const CommandRegistration writeCustomReg(
    {QStringLiteral("write-custom"),
     QStringLiteral("write-custom --port DEV --yes [--no-retry] FILE.txt   send a customisation text"),
     runWriteCustom});

} // namespace
} // namespace vkm::cli
