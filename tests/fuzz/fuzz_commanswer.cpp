// Answers of the machine: any bytes on the line are validated without a fault, a read
// answer passes only when it is what was asked for, an acknowledgement only with "E000",
// and a whole read or write against a line that always gives the same answer ends.
#include "fuzzsupport.h"

#include "base/scriptedprompter.h"
#include "link/commframes.h"
#include "link/commtransfer.h"
#include "link/machinefiles.h"
#include "link/transfertext.h"

#include <QFile>
#include <cstdint>
#include <cstdlib>

namespace {

// A line that gives the same bytes after every frame.
class EchoChannel : public vkm::SerialChannel {
public:
    explicit EchoChannel(QByteArray answer) : m_answer(std::move(answer)) {}
    bool open(const vkm::SerialSettings&) override { return true; }
    void close() override {}
    bool isOpen() const override { return true; }
    bool write(const QByteArray&) override {
        m_waiting = m_answer;
        return true;
    }
    QByteArray readAll() override { return std::exchange(m_waiting, QByteArray()); }
    qint64 bytesWaiting() override { return m_waiting.size(); }
    bool waitForData(qint64 count, int) override { return m_waiting.size() >= count; }
    void pause(int) override {}

private:
    QByteArray m_answer;
    QByteArray m_waiting;
};

void check(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vkm::fuzz::muteErrorReports();
    const QByteArray answer(reinterpret_cast<const char*>(data), qsizetype(size));
    vkm::ScriptedPrompter prompter;
    prompter.setDefaultAnswer(vkm::Answer::Cancel);
    vkm::MachineLink link;
    EchoChannel line(answer);

    vkm::CommTransfer t(line, prompter, link);
    const QString own = QString::fromLatin1(answer.mid(1, 4));
    for (const QString& address : {QStringLiteral("0300"), own}) {
        prompter.clear();
        const bool ok = t.CheckRevData(answer, address);
        check(prompter.shown().size() == (ok ? 0u : 1u));
        if (ok) {
            check(!answer.startsWith('#') && own == address);
            const QByteArray record = vkm::comm::recordOfAnswer(answer);
            check(record.size() == 25 && record.startsWith('W') && record.endsWith("\r\n"));
            check(vkm::GetCheckSum(QString::fromLatin1(record.mid(1, 20))) ==
                  QString::fromLatin1(record.mid(21, 2)));
        }
    }
    check(vkm::comm::isAcknowledged(answer) == (answer.mid(1, 4) == "E000"));
    const QString kind = vkm::comm::machineKindOf(answer);
    check(kind.size() <= 5 && (answer.size() < 10 || kind.size() == 5));

    // Whole transfers with that answer to every frame: they end, and a read that fails
    // leaves no file.
    vkm::CommTransfer read(line, prompter, link);
    read.Kind = vkm::CommTransfer::Customisation;
    if (!read.run())
        check(read.FullFname().isEmpty());
    else
        QFile::remove(read.FullFname());
    static const QString file = [] {
        const QString path = vkm::NewTempFile(QStringLiteral("VKM"));
        QFile f(path);
        if (f.open(QIODevice::WriteOnly))
            f.write("W0000000000000000000000\r\nW1A78000000000000000000\r\n");
        return path;
    }();
    vkm::CommTransfer write(line, prompter, link);
    write.mode = vkm::CommTransfer::Write;
    write.Kind = vkm::CommTransfer::Customisation;
    write.FileToTransfer = file;
    write.run();
    QFile::remove(write.FileToTransfer == file ? QString() : write.FileToTransfer);
    return 0;
}
