// The machine commands of the step editor and the transfer and port dialogs: the program
// goes to vkm-sim through a real serial port and comes back; the dialog shows its
// progress and cannot be closed while it talks to the machine.
#include "base/messages.h"
#include "controllerfixture.h"
#include "fcomm.h"
#include "finpmemo.h"
#include "fsetport.h"
#include "link/machinefiles.h"
#include "link/serialportchannel.h"
#include "loopbackchannel.h"
#include "simprocess.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTimer>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

const QString kPowerQuestion = LoadMessageText(160);

class MachineCommands : public ControllerFixture {
protected:
    void SetUp() override {
        ControllerFixture::SetUp();
        startController();
        controller->machineLink().timing = {300, 20};
        QFile::copy(QStringLiteral(VKM_SOURCE_DIR "/data/samples/counter.gsp"), program);
        ASSERT_TRUE(controller->documents().user().ReadStep(0, 0, program));
    }
    void useSim(const SimProcess& sim) { settings.settings->set(keys::CommPort, sim.device()); }
    bool key(const char* k) { return controller->handleKey(0, QLatin1String(k), true); }

    const QString program = scratch.file(QStringLiteral("counter.gsp"));
};

TEST_F(MachineCommands, NothingIsSentWithoutConsentOrWithAFailingCheck) {
    SimProcess sim;
    ASSERT_TRUE(sim.start());
    useSim(sim);
    prompter.queueAnswer(Answer::Cancel);
    key("keySAVE2");
    EXPECT_EQ(prompter.texts(), QStringList{kPowerQuestion});

    // An input with no output in step 10 stops the send at the checks.
    const int in1 = user.sheet().inputGroupCol(1);
    user.sheet().setCell(10, in1, QStringLiteral("X001"),
                         selinp.CategoryByDigitalOnly(QStringLiteral("X001")));
    user.sheet().setText(10, in1 + 1, QStringLiteral("0"));
    user.sheet().setText(10, in1 + 2, QStringLiteral("2"));
    prompter.clear();
    prompter.queueAnswer(Answer::Ok);
    key("keySAVE2");
    EXPECT_EQ(prompter.numbers(), (std::vector<int>{160, 76}));
    EXPECT_TRUE(sim.frames().isEmpty());
}

TEST_F(MachineCommands, ProgramGoesToTheMachineAndComesBackUnnamed) {
    SimProcess sim;
    ASSERT_TRUE(sim.start());
    useSim(sim);
    prompter.queueAnswer(Answer::Ok);
    EXPECT_TRUE(controller->SaveToMachine());
    EXPECT_EQ(prompter.texts(), QStringList{kPowerQuestion});
    ASSERT_TRUE(sim.waitForFrames(1 + 238 + 1));
    EXPECT_EQ(sim.frames().last(), "C00003F");

    StepDocument& doc = controller->documents().user();
    ASSERT_TRUE(doc.NewOp());
    EXPECT_EQ(user.sheet().text(1, StepSheet::GetcolRemark()), "");
    prompter.clear();
    key("keyREAD_USER2");
    EXPECT_TRUE(prompter.texts().isEmpty()) << prompter.texts().join(" | ").toStdString();
    EXPECT_EQ(user.sheet().text(1, StepSheet::GetcolRemark()), "Count pedal presses");
    EXPECT_TRUE(IsThisFileFromMachine(controller->documents().userFilePath()));
    EXPECT_EQ(doc.title(), "***");
    EXPECT_EQ(controller->machineLink().machineKind, "01052");

    // A program from the machine has no name yet: saving asks for one.
    const QString saved = scratch.file(QStringLiteral("fromMachine.gsp"));
    prompter.queueFileName(saved);
    key("keyOVERWRITE");
    ASSERT_EQ(prompter.fileRequests().size(), 1u);
    EXPECT_EQ(prompter.fileRequests()[0].proposedName, "") << "the temporary name is not offered";
    EXPECT_EQ(controller->documents().userFilePath(), saved);
    EXPECT_EQ(readAll(saved).size(), 5950);

    // The comparison program can come from the machine too.
    key("keyREAD_HIKAKU2");
    EXPECT_TRUE(IsThisFileFromMachine(controller->documents().comparisonFilePath()));
    EXPECT_EQ(cmp.sheet().text(1, StepSheet::GetcolRemark()), "Count pedal presses");
}

// A port that reports whether it was still open when the dialog let it go.
struct WatchedPort : SerialPortChannel {
    explicit WatchedPort(bool* openAtEnd) : m_openAtEnd(openAtEnd) {}
    ~WatchedPort() override { *m_openAtEnd = isOpen(); }
    bool* m_openAtEnd;
};

TEST_F(MachineCommands, MachineSwitchedOffPartWayLeavesTheProgramAloneAndTheNextSendWorks) {
    const QString link = scratch.file(QStringLiteral("vkm-line"));
    settings.settings->set(keys::CommPort, link);
    bool openAtEnd = true;
    controller->machineLink().channelFactory = [&] { return std::make_unique<WatchedPort>(&openAtEnd); };
    const QByteArray fileBefore = readAll(program);
    const QString sheetBefore = user.sheet().text(3, StepSheet::GetcolRemark());

    SimProcess sim;
    ASSERT_TRUE(sim.start({"--baud", "9600", "--link", link}));
    // Switched off while the records go out.
    QTimer off;
    QObject::connect(&off, &QTimer::timeout, [&] {
        if (sim.frames().size() >= 20)
            sim.kill();
    });
    off.start(5);
    prompter.queueAnswer(Answer::Ok);    // power question
    prompter.queueAnswer(Answer::Retry); // first time-out
    prompter.queueAnswer(Answer::Cancel);
    EXPECT_FALSE(controller->SaveToMachine());
    off.stop();
    // Whether the line was found gone while waiting or while sending depends on when the
    // machine went; either way: one Retry, one Cancel, a send that failed, the failure.
    const QStringList shown = prompter.texts();
    EXPECT_EQ(shown.first(), kPowerQuestion);
    EXPECT_EQ(shown.count("Timer over (no response for data)"), 2) << shown.join(" | ").toStdString();
    EXPECT_FALSE(shown.filter(QRegularExpression("^Faild to send data...\n\nW")).isEmpty());
    EXPECT_EQ(shown.last(), "Failed to write.");
    EXPECT_EQ(prompter.pendingAnswers(), 0u);
    EXPECT_FALSE(openAtEnd);
    EXPECT_EQ(readAll(program), fileBefore);
    EXPECT_EQ(controller->documents().userFilePath(), program);
    EXPECT_FALSE(controller->documents().user().IsChanged());
    EXPECT_EQ(user.sheet().text(3, StepSheet::GetcolRemark()), sheetBefore);

    SimProcess back;
    ASSERT_TRUE(back.start({"--link", link}));
    prompter.clear();
    prompter.queueAnswer(Answer::Ok);
    EXPECT_TRUE(controller->SaveToMachine());
    EXPECT_EQ(prompter.texts(), QStringList{kPowerQuestion});
}

// A line whose every wait lets the test look at the dialog in the middle of a transfer.
struct ProbeChannel : sim::LoopbackChannel {
    using LoopbackChannel::LoopbackChannel;
    bool waitForData(qint64 count, int timeoutMs) override {
        if (probe)
            probe();
        return LoopbackChannel::waitForData(count, timeoutMs);
    }
    std::function<void()> probe;
};

// With VKM_COMM_SHOT set, the dialog half way through is saved there for a person to see.
TEST(TransferDialog, ShowsProgressStaysOpenWhileTalkingAndClosesItself) {
    TempSettings settings;
    ScriptedPrompter prompter;
    sim::VirtualMachine machine;
    machine.setIdentification(QByteArray::fromHex("010520"));
    MachineLink link;
    fComm* dialog = nullptr;
    QStringList labels;
    QStringList notes;
    int lastValue = -1;
    bool refusedToClose = true;
    link.channelFactory = [&] {
        auto c = std::make_unique<ProbeChannel>(machine);
        c->probe = [&] {
            labels << dialog->findChild<QLabel*>(QStringLiteral("Label1"))->text();
            if (labels.last() == QLatin1String("Reading... 384/768") &&
                qEnvironmentVariableIsSet("VKM_COMM_SHOT"))
                dialog->grab().save(qEnvironmentVariable("VKM_COMM_SHOT"));
            notes << dialog->findChild<QLabel*>(QStringLiteral("Label2"))->text();
            lastValue = dialog->findChild<QProgressBar*>(QStringLiteral("ProgressBar1"))->value();
            dialog->close();
            dialog->reject();
            refusedToClose = refusedToClose && dialog->isVisible();
        };
        return c;
    };
    fComm d(link, prompter, settings.settings.get());
    dialog = &d;
    d.transfer().mode = CommTransfer::Read;
    d.transfer().Kind = CommTransfer::Customisation;
    d.transfer().DoesCustomEasy2nd = true;
    EXPECT_EQ(d.exec(), QDialog::Accepted);
    EXPECT_TRUE(refusedToClose);
    EXPECT_TRUE(labels.contains("Reading... 8/768"));
    EXPECT_EQ(notes.last(), "Reading data before save");
    EXPECT_EQ(lastValue, 760) << "the bar follows the records";
    EXPECT_TRUE(d.Success());
    EXPECT_EQ(readAll(d.FullFname()).count('\n'), 96);
    EXPECT_FALSE(d.transfer().DoesCustomEasy2nd) << "reset when the dialog ends";
    EXPECT_EQ(settings.settings->value(keys::CommPort), "1") << "made to exist";
    EXPECT_EQ(prompter.texts(), QStringList());

    // A port that cannot be opened: the message, and the dialog goes.
    link.channelFactory = [&] {
        auto c = std::make_unique<sim::LoopbackChannel>(machine);
        c->setOpenFails(true);
        return c;
    };
    EXPECT_FALSE(fComm::writeToMachine(link, prompter, settings.settings.get(), CommTransfer::StepProgram,
                                       QString(), nullptr));
    EXPECT_EQ(prompter.texts(),
              (QStringList{"no file to transfer!",
                           "Unable to connect. Check port setting. Or the port is occupied."}));
}

TEST(PortDialog, OffersFourPortsAndTheSystemsAndKeepsWhatIsTyped) {
    TempSettings settings;
    fSetPort dialog(settings.settings.get());
    QComboBox* box = dialog.cboPort();
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << box->itemText(i);
    EXPECT_EQ(items.mid(0, 4), (QStringList{"1", "2", "3", "4"}));
    for (const QString& port : fSetPort::systemPorts())
        EXPECT_TRUE(items.contains(port)) << port.toStdString();
    EXPECT_EQ(box->currentText(), "1");
    EXPECT_TRUE(box->isEditable());

    box->setCurrentText(QStringLiteral("/dev/ttyUSB0"));
    dialog.findChild<QPushButton*>(QStringLiteral("BTN2"))->click();
    EXPECT_EQ(settings.settings->value(keys::CommPort), "1") << "Cancel keeps the setting";

    fSetPort again(settings.settings.get());
    again.cboPort()->setCurrentText(QStringLiteral(" /dev/ttyUSB0 "));
    again.findChild<QPushButton*>(QStringLiteral("BTN1"))->click();
    EXPECT_EQ(settings.settings->value(keys::CommPort), "/dev/ttyUSB0");
    EXPECT_EQ(fSetPort::portDevice(settings.settings.get()), "/dev/ttyUSB0");
    settings.settings->set(keys::CommPort, QStringLiteral("3"));
    EXPECT_EQ(fSetPort(settings.settings.get()).cboPort()->currentText(), "3");
#ifndef Q_OS_WIN
    EXPECT_EQ(fSetPort::portDevice(settings.settings.get()), "/dev/ttyS2");
#endif
}

} // namespace
} // namespace vkm::test
