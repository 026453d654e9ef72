// The transfer protocol against the virtual machine behind an in-process line: what is
// asked of the machine, what the user is asked, what is written. The same cases over a
// real serial port and vkm-sim are in tests/e2e/link.
#include "base/scriptedprompter.h"
#include "link/commframes.h"
#include "link/commtransfer.h"
#include "link/machinefiles.h"
#include "link/memorymap.h"
#include "link/transfertext.h"
#include "loopbackchannel.h"
#include "testsupport.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace vkm;
using namespace vkm::sim;

namespace {

struct RecordingDisplay : TransferDisplay {
    QStringList captions;
    QStringList notes;
    QList<int> maxima;
    int value = -1;
    void setCaption(const QString& text) override { captions << text; }
    void setNote(const QString& text) override { notes << text; }
    void setProgressMaximum(int maximum) override { maxima << maximum; }
    void setProgressValue(int v) override { value = v; }
};

class Transfer : public ::testing::Test {
protected:
    void SetUp() override {
        QRandomGenerator rng(11);
        for (auto& c : machine.memory())
            c = char(rng.bounded(256));
        machine.setIdentification(QByteArray::fromHex("010520"));
    }

    std::unique_ptr<CommTransfer> transfer(int mode, int kind, const QString& file = {}) {
        auto t = std::make_unique<CommTransfer>(line, prompter, link, &display);
        t->mode = mode;
        t->Kind = kind;
        t->FileToTransfer = file;
        t->settings.port = QStringLiteral("/dev/ttyS0");
        return t;
    }
    int framesStartingWith(char c) const {
        int n = 0;
        for (const QByteArray& f : line.written())
            n += f.startsWith(c) ? 1 : 0;
        return n;
    }
    // A transfer text of n records from address 0 holding the given fill byte.
    QString customFile(int records, char fill) {
        QByteArray text;
        for (int i = 0; i < records; ++i)
            text += wRecord(i * 8, QByteArray(8, fill)).toLatin1() + "\r\n";
        return scratch.write(QStringLiteral("custom.txt"), text);
    }

    VirtualMachine machine;
    LoopbackChannel line{machine};
    ScriptedPrompter prompter;
    MachineLink link;
    RecordingDisplay display;
    test::Scratch scratch;
};

} // namespace

TEST(CommFrames, RequestsAnswersAndKinds) {
    EXPECT_EQ(comm::readRequest(0x0100), QByteArray("R01003E\r\n"));
    EXPECT_EQ(comm::readRequest(0x1F68).left(5), QByteArray("R1F68"));
    EXPECT_EQ(comm::resetCommand(), QByteArray("C00003F\r\n"));

    const QByteArray good = "R0300010600000000000035\r\n";
    EXPECT_EQ(comm::readAnswerFault(good, "0300"), comm::AnswerFault::None);
    EXPECT_EQ(comm::recordOfAnswer(good), QByteArray("W0300010600000000000035\r\n"));
    EXPECT_EQ(comm::readAnswerFault("#300010600000000000035\r\n", "0300"), comm::AnswerFault::ErrorReturned);
    EXPECT_EQ(comm::readAnswerFault("R0300010600000000000036\r\n", "0300"), comm::AnswerFault::CheckSum);
    EXPECT_EQ(comm::readAnswerFault(good, "0308"), comm::AnswerFault::Address);
    EXPECT_EQ(comm::readAnswerFault("", "0300"), comm::AnswerFault::CheckSum);

    EXPECT_TRUE(comm::isAcknowledged("AE0000300xx\r\n"));
    EXPECT_FALSE(comm::isAcknowledged("AE0010300xx\r\n"));
    EXPECT_EQ(comm::acknowledgementCode("AE0020300xx\r\n"), "E002");

    // The top three bits of the byte at 0x0101 do not change the kind.
    const QByteArray a = "R010001E520000000000000\r\n";
    const QByteArray b = "R010001052A000000000000\r\n";
    EXPECT_EQ(comm::machineKindOf(a), "01052");
    EXPECT_EQ(comm::machineKindOf(a), comm::machineKindOf(b));
    EXPECT_NE(comm::machineKindOf(a), comm::machineKindOf("R010001062A000000000000\r\n"));
    EXPECT_TRUE(comm::isSeriesMachine(a));
    EXPECT_FALSE(comm::isSeriesMachine("R010001053A000000000000\r\n"));
    EXPECT_FALSE(comm::isSeriesMachine("R0100"));
}

TEST_F(Transfer, ReadShowsProgressAndLeavesNoFileWhenItFailsPartWay) {
    auto t = transfer(CommTransfer::Read, CommTransfer::StepProgram);
    ASSERT_TRUE(t->run());
    EXPECT_TRUE(IsThisFileFromMachine(t->FullFname()));
    EXPECT_EQ(display.maxima, (QList<int>{768, 1136}));
    EXPECT_TRUE(display.captions.contains("Reading... 8/768"));
    EXPECT_TRUE(display.captions.contains("Reading... 1136/1136"));
    EXPECT_EQ(display.captions.last(), "") << "the label is cleared at the end";
    EXPECT_TRUE(display.notes.isEmpty());
    // The machine's line: 9600 bit/s, 8 data bits, no parity, one stop bit; an answer is
    // waited for at most two seconds.
    EXPECT_EQ(line.lastSettings().baudRate, 9600);
    EXPECT_EQ(line.lastSettings().dataBits, 8);
    EXPECT_FALSE(line.lastSettings().parity);
    EXPECT_EQ(line.lastSettings().stopBits, 1);
    EXPECT_EQ(line.waitTimeouts(), QList<int>{2000});

    // The second range's machine check is frame 98; its 20th record fails for good.
    machine.addFault({Fault::Disconnect, machine.framesReceived() + 98 + 20});
    prompter.queueAnswer(Answer::Cancel);
    auto again = transfer(CommTransfer::Read, CommTransfer::StepProgram);
    EXPECT_FALSE(again->run());
    EXPECT_EQ(prompter.texts().last(), "Failed to read.");
    EXPECT_TRUE(again->FullFname().isEmpty());
    EXPECT_FALSE(again->Success());
}

TEST_F(Transfer, CustomisationReadBeforeASaveSaysSo) {
    auto t = transfer(CommTransfer::Read, CommTransfer::Customisation);
    t->DoesCustomEasy2nd = true;
    ASSERT_TRUE(t->run());
    EXPECT_EQ(display.notes, QStringList{"Reading data before save"});
    EXPECT_EQ(framesStartingWith('R'), 1 + 96);
    bool ok = false;
    EXPECT_EQ(parseTransferText(test::readAll(t->FullFname()), prompter, &ok),
              machine.memory().left(memmap::kCustomSize));
}

TEST_F(Transfer, BadAnswersAreShownAndAskedAgainFiveTimesPerRange) {
    // Frames 3, 4 and 5 re-ask for 0x0000 after a bad answer; 6 and 7 for 0x0008.
    machine.addFault({Fault::BadChecksum, 2});
    machine.addFault({Fault::ErrorAnswer, 3});
    machine.addFault({Fault::WrongAddress, 4});
    machine.addFault({Fault::BadChecksum, 6});
    machine.addFault({Fault::BadChecksum, 7});
    auto t = transfer(CommTransfer::Read, CommTransfer::Customisation);
    ASSERT_TRUE(t->run()) << prompter.texts().join(" | ").toStdString();
    const QStringList shown = prompter.texts();
    ASSERT_EQ(shown.size(), 5);
    EXPECT_TRUE(shown[0].startsWith("Check sum error:\n\n"));
    EXPECT_TRUE(shown[1].startsWith("Error returned:\n\n#0000"));
    EXPECT_TRUE(shown[2].startsWith("Returned address invalid:\n\nR0008"));
    bool ok = false;
    EXPECT_EQ(parseTransferText(test::readAll(t->FullFname()), prompter, &ok),
              machine.memory().left(memmap::kCustomSize))
        << "only good answers reach the file";

    // A sixth bad answer in the same range ends the read.
    prompter.clear();
    const int base = machine.framesReceived();
    for (int i = 2; i <= 7; ++i)
        machine.addFault({Fault::BadChecksum, base + i * 2});
    auto again = transfer(CommTransfer::Read, CommTransfer::Customisation);
    EXPECT_FALSE(again->run());
    EXPECT_EQ(prompter.texts().size(), 7);
    EXPECT_EQ(prompter.texts().last(), "Failed to read.");
}

TEST_F(Transfer, RefusedRecordIsSentAgainOnOkAndEndsTheWriteOnCancel) {
    const QString file = customFile(96, '\x5A');
    machine.addFault({Fault::WriteError, 3, 0, "E007"});
    prompter.queueAnswer(Answer::Ok);
    auto t = transfer(CommTransfer::Write, CommTransfer::Customisation, file);
    ASSERT_TRUE(t->run());
    ASSERT_EQ(prompter.shown().size(), 1u);
    EXPECT_EQ(prompter.shown()[0].text, "Error returned. Do you send again ?\n\nERRCODE=E007");
    EXPECT_EQ(prompter.shown()[0].style, 10);
    EXPECT_EQ(machine.memory().left(768), QByteArray(768, '\x5A'));
    EXPECT_EQ(line.written().last(), comm::resetCommand());
    EXPECT_EQ(line.pausedMs(), 1000) << "a second's pause comes before the reset";
    EXPECT_NE(t->FileToTransfer, file) << "a private copy is sent";
    EXPECT_TRUE(IsThisFileFromMachine(t->FileToTransfer));

    prompter.clear();
    machine.addFault({Fault::WriteError, machine.framesReceived() + 5});
    prompter.queueAnswer(Answer::Cancel);
    auto cancelled = transfer(CommTransfer::Write, CommTransfer::Customisation, file);
    EXPECT_FALSE(cancelled->run());
    EXPECT_EQ(prompter.texts().last(), "Failed to write.");
    EXPECT_EQ(machine.resets(), 1) << "no reset after a write that stopped";
}

TEST_F(Transfer, LostLineFailsEverySendUntilThePowerMessage) {
    const QString file = customFile(96, '\x01');
    machine.addFault({Fault::Disconnect, 10});
    for (int i = 0; i < 3; ++i)
        prompter.queueAnswer(Answer::Retry);
    auto t = transfer(CommTransfer::Write, CommTransfer::Customisation, file);
    EXPECT_FALSE(t->run());
    const QStringList shown = prompter.texts();
    ASSERT_EQ(shown.size(), 8) << shown.join(" | ").toStdString();
    EXPECT_EQ(shown[0], "Timer over (no response for data)");
    EXPECT_EQ(prompter.shown()[0].style, ScriptedPrompter::kRetryStyle);
    EXPECT_EQ(shown[1], "Faild to send data...\n\n" + wRecord(8 * 8, QByteArray(8, '\x01')));
    EXPECT_EQ(shown[6], "Power off and on the sewing machine and retry.");
    EXPECT_EQ(shown[7], "Failed to write.");
    EXPECT_FALSE(line.isOpen());

    // The machine is back: the next transfer works on the same line.
    line.plugIn();
    prompter.clear();
    EXPECT_TRUE(transfer(CommTransfer::Write, CommTransfer::Customisation, file)->run());
    EXPECT_TRUE(prompter.texts().isEmpty());
}

TEST_F(Transfer, LineThatCannotBeOpenedEndsAtOnce) {
    line.setOpenFails(true);
    auto t = transfer(CommTransfer::Read, CommTransfer::StepProgram);
    EXPECT_FALSE(t->run());
    EXPECT_EQ(prompter.texts(),
              QStringList{"Unable to connect. Check port setting. Or the port is occupied."});
    EXPECT_TRUE(line.written().isEmpty());

    prompter.clear();
    auto w = transfer(CommTransfer::Write, CommTransfer::StepProgram);
    w->load();
    EXPECT_EQ(prompter.texts(), QStringList{"no file to transfer!"});
    EXPECT_EQ(w->title(), "Save to sewing machine");
}

TEST_F(Transfer, WhatArrivedUnaskedIsDroppedBeforeEachRequest) {
    line.injectNoise("R0100FFFFFFFFFFFFFFFFxx\r\n");
    auto t = transfer(CommTransfer::Read, CommTransfer::Customisation);
    ASSERT_TRUE(t->run());
    EXPECT_TRUE(prompter.texts().isEmpty());
    EXPECT_EQ(link.machineKind, "01052");
}

TEST_F(Transfer, OnlyReadsForTheUserProgramSetTheKind) {
    auto t = transfer(CommTransfer::Read, CommTransfer::Customisation);
    t->CMPUSR = 1;
    ASSERT_TRUE(t->run());
    EXPECT_TRUE(link.machineKind.isEmpty());
}
