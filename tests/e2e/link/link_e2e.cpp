// Transfers through a real serial port (QSerialPort) with vkm-sim on a pseudo-terminal:
// what the machine is asked, in which order, and what comes back.
#include "base/scriptedprompter.h"
#include "link/commtransfer.h"
#include "link/serialportchannel.h"
#include "link/transfertext.h"
#include "simprocess.h"
#include "testsupport.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace vkm;
using namespace vkm::test;

namespace {

const QString kProgram = QStringLiteral(VKM_SOURCE_DIR "/data/samples/counter.gsp");

class OverSerialPort : public ::testing::Test {
protected:
    void SetUp() override {
        // Short times keep the time-out cases quick; the machine's own are the defaults.
        link.timing.answerTimeoutMs = 300;
        link.timing.resetPauseMs = 20;
    }

    bool run(SimProcess& sim, int mode, int kind, const QString& file = {}) {
        CommTransfer t(port, prompter, link);
        t.mode = mode;
        t.Kind = kind;
        t.FileToTransfer = file;
        t.settings.port = sim.device();
        t.load();
        const bool ok = t.run();
        read = t.FullFname();
        return ok;
    }
    // A customisation transfer text over the whole memory: 1024 records.
    QString wholeMemoryFile() {
        QByteArray text;
        for (int a = 0; a < 0x2000; a += 8)
            text += wRecord(a, QByteArray(8, char(a >> 8))).toLatin1() + "\r\n";
        return scratch.write(QStringLiteral("memory.txt"), text);
    }

    MachineLink link;
    SerialPortChannel port;
    ScriptedPrompter prompter;
    Scratch scratch;
    QString read;
};

QStringList readRequests(int from, int to) {
    QStringList out;
    for (int a = from; a < to; a += 8) {
        const QString digits = HexDigits(a, 4);
        out << QStringLiteral("R") + digits + GetCheckSum(digits);
    }
    return out;
}

} // namespace

TEST_F(OverSerialPort, ProgramReadChecksTheMachineBeforeEachRangeAndGives238Records) {
    SimProcess sim;
    ASSERT_TRUE(sim.start({"--load", kProgram}));
    ASSERT_TRUE(run(sim, CommTransfer::Read, CommTransfer::StepProgram))
        << prompter.texts().join(" | ").toStdString();
    const QStringList expected = QStringList{"R01003E"} + readRequests(0x0300, 0x0600) +
                                 QStringList{"R01003E"} + readRequests(0x1B00, 0x1F70);
    EXPECT_EQ(expected.size(), 1 + 96 + 1 + 142);
    EXPECT_EQ(sim.frames(), expected);
    const QByteArray text = readAll(read);
    EXPECT_EQ(text.count('\n'), 238);
    EXPECT_TRUE(text.startsWith("W0300"));
    EXPECT_EQ(text.mid(96 * 25, 5), "W1B00");
    EXPECT_EQ(text, readAll(kProgram)) << "the machine gives back the program it holds";
    EXPECT_FALSE(port.isOpen());
}

TEST_F(OverSerialPort, OnlyTheSeriesWithDigitTwoIsAccepted) {
    for (const char* id : {"010520", "01052F", "010510", "010530", "0105F0"}) {
        SimProcess sim;
        ASSERT_TRUE(sim.start({"--id", id}));
        prompter.clear();
        const bool series = QByteArray(id).at(4) == '2';
        EXPECT_EQ(run(sim, CommTransfer::Read, CommTransfer::Customisation), series) << id;
        if (!series) {
            EXPECT_EQ(prompter.texts(),
                      (QStringList{"This sewing machine is not VKM series.", "Failed to read."}))
                << id;
            EXPECT_EQ(sim.frames().size(), 1) << "nothing is read from " << id;
        }
    }
}

TEST_F(OverSerialPort, WriteComparesTheKindWithTheLastRead) {
    const QString file = scratch.write(QStringLiteral("custom.txt"), QByteArray());
    {
        // Before any read a write goes to any machine of the series.
        SimProcess other;
        ASSERT_TRUE(other.start({"--id", "010620", "--load", kProgram}));
        ASSERT_TRUE(run(other, CommTransfer::Write, CommTransfer::StepProgram, kProgram));
    }
    {
        SimProcess first;
        ASSERT_TRUE(first.start({"--id", "01E520"}));
        ASSERT_TRUE(run(first, CommTransfer::Read, CommTransfer::Customisation));
        EXPECT_EQ(link.machineKind, "01052");
    }
    {
        // 0x05 at 0x0101 is the same kind as 0xE5.
        SimProcess same;
        ASSERT_TRUE(same.start({"--id", "010520"}));
        EXPECT_TRUE(run(same, CommTransfer::Write, CommTransfer::StepProgram, kProgram));
        EXPECT_TRUE(same.waitForFrames(1 + 238 + 1));
        EXPECT_EQ(same.frames().last(), "C00003F");
    }
    SimProcess other;
    ASSERT_TRUE(other.start({"--id", "010620"}));
    prompter.clear();
    EXPECT_FALSE(run(other, CommTransfer::Write, CommTransfer::StepProgram, kProgram));
    EXPECT_EQ(prompter.texts(), (QStringList{"The kind of sewing machine is different from the one you read.",
                                             "Failed to write."}));
    EXPECT_EQ(other.frames(), QStringList{"R01003E"});

    // Reading from this machine makes it the one writes are compared with.
    ASSERT_TRUE(run(other, CommTransfer::Read, CommTransfer::StepProgram));
    EXPECT_TRUE(run(other, CommTransfer::Write, CommTransfer::StepProgram, kProgram));
}

TEST_F(OverSerialPort, CustomisationWriteStopsAfterW1A78AndResets) {
    SimProcess sim;
    ASSERT_TRUE(sim.start());
    ASSERT_TRUE(run(sim, CommTransfer::Write, CommTransfer::Customisation, wholeMemoryFile()));
    ASSERT_TRUE(sim.waitForFrames(1 + 848 + 1));
    const QStringList frames = sim.frames();
    ASSERT_EQ(frames.size(), 1 + 848 + 1);
    EXPECT_EQ(frames.filter(QRegularExpression("^W")).size(), 848);
    EXPECT_TRUE(frames[848].startsWith("W1A78"));
    EXPECT_EQ(frames.last(), "C00003F");
}

TEST_F(OverSerialPort, AnswerOnTheFourthAttemptCompletesAfterThreeRetries) {
    SimProcess sim;
    ASSERT_TRUE(sim.start({"--fault", "late:5:4"}));
    for (int i = 0; i < 3; ++i)
        prompter.queueAnswer(Answer::Retry);
    ASSERT_TRUE(run(sim, CommTransfer::Read, CommTransfer::Customisation));
    EXPECT_EQ(prompter.texts(), QStringList(3, "Timer over (no response for address)"));
    const QStringList frames = sim.frames();
    EXPECT_EQ(frames.mid(4, 4), QStringList(4, readRequests(0x0018, 0x0020).first()))
        << "the same request, sent four times";
    EXPECT_EQ(frames.size(), 1 + 96 + 3);
}

TEST_F(OverSerialPort, FourthTimeOutEndsWithThePowerMessage) {
    SimProcess sim;
    ASSERT_TRUE(sim.start({"--fault", "late:1:5"}));
    for (int i = 0; i < 3; ++i)
        prompter.queueAnswer(Answer::Retry);
    EXPECT_FALSE(run(sim, CommTransfer::Read, CommTransfer::StepProgram));
    EXPECT_EQ(prompter.texts(),
              (QStringList(3, "Timer over (no response for machine check)") +
               QStringList{"Power off and on the sewing machine and retry.", "Failed to read."}));
    EXPECT_TRUE(read.isEmpty());
}

TEST_F(OverSerialPort, WrittenProgramReadsBackIdenticalAfterTheMachineRestarts) {
    const QString memory = scratch.file(QStringLiteral("machine.bin"));
    {
        SimProcess sim;
        ASSERT_TRUE(sim.start({"--memory", memory}));
        ASSERT_TRUE(run(sim, CommTransfer::Write, CommTransfer::StepProgram, kProgram));
    }
    SimProcess sim;
    ASSERT_TRUE(sim.start({"--memory", memory}));
    ASSERT_TRUE(run(sim, CommTransfer::Read, CommTransfer::StepProgram));
    EXPECT_EQ(readAll(read), readAll(kProgram));
}

TEST_F(OverSerialPort, LineDroppedPartWayFailsTheWriteAndTheNextTransferWorks) {
    SimProcess sim;
    ASSERT_TRUE(sim.start({"--fault", "disconnect:50"}));
    prompter.queueAnswer(Answer::Cancel);
    EXPECT_FALSE(run(sim, CommTransfer::Write, CommTransfer::StepProgram, kProgram));
    EXPECT_EQ(prompter.texts(), (QStringList{"Timer over (no response for data)", "Failed to write."}));
    EXPECT_FALSE(port.isOpen());
    EXPECT_EQ(sim.frames().size(), 50);

    SimProcess back;
    ASSERT_TRUE(back.start());
    prompter.clear();
    EXPECT_TRUE(run(back, CommTransfer::Write, CommTransfer::StepProgram, kProgram));
    EXPECT_TRUE(prompter.texts().isEmpty());
}
