// The machine's side of the link as vkm-sim plays it: answers to good and bad frames, what
// is stored, and the faults it can be told to play.
#include "link/transfertext.h"
#include "virtualmachine.h"

#include <gtest/gtest.h>

using namespace vkm;
using namespace vkm::sim;

namespace {

QByteArray withSum(const QByteArray& lead, const QByteArray& body) {
    return lead + body + GetCheckSum(QString::fromLatin1(body)).toLatin1();
}

} // namespace

TEST(VirtualMachine, AnswersReadsWritesAndTheReset) {
    VirtualMachine m;
    m.setIdentification(QByteArray::fromHex("01E520"));
    const QByteArray ident = m.handleFrame("R01003E").answer;
    EXPECT_EQ(ident, withSum("R", "010001E5200000000000") + "\r\n");

    struct Case {
        QByteArray frame;
        QByteArray answerStart; // "" for no answer
    };
    const QByteArray record = wRecord(0x1B00, "ABCDEFGH").toLatin1();
    const Case cases[] = {
        {"R0100FF", "#0100"},                                                // wrong checksum
        {withSum("R", "1FFC"), "#1FFC"},                                     // beyond the memory
        {record, "AE0001B00"},                                               // stored
        {record.left(22) + (record.at(22) == '0' ? "1" : "0"), "AE0011B00"}, // wrong checksum
        {wRecord(0x1FFC, "12345678").toLatin1(), "AE0021FFC"},               // beyond the memory
        {"W1B00ZZ00000000000000" + record.right(2), "AE0031B00"},            // not hexadecimal
        {"C00003F", ""},
        {"HELLO", ""},
    };
    for (const Case& c : cases) {
        const VirtualMachine::Response r = m.handleFrame(c.frame);
        EXPECT_TRUE(r.answer.startsWith(c.answerStart) && (c.answerStart.isEmpty() == r.answer.isEmpty()))
            << c.frame.constData() << " -> " << r.answer.constData();
        if (!r.answer.isEmpty()) {
            EXPECT_EQ(r.answer.size(), c.frame.startsWith('R') ? 25 : 13) << c.frame.constData();
        }
    }
    EXPECT_EQ(m.memory().mid(0x1B00, 8), "ABCDEFGH") << "only the good record is stored";
    EXPECT_EQ(m.resets(), 1);
    EXPECT_EQ(m.framesReceived(), 9);
}

TEST(VirtualMachine, FaultsAndHowTheyAreWritten) {
    QString error;
    const auto late = parseFault("late:5:4", &error);
    ASSERT_TRUE(late);
    EXPECT_EQ(late->type, Fault::Late);
    EXPECT_EQ(late->frame, 5);
    EXPECT_EQ(late->attempts, 4);
    EXPECT_EQ(parseFault("write-error:3:E042", &error)->code, "E042");
    for (const char* bad :
         {"late:5", "late:5:1", "silent:0", "silent:x", "loud:3", "write-error:3:E4", "error:2:2"})
        EXPECT_FALSE(parseFault(bad, &error)) << bad;
    EXPECT_TRUE(error.contains("error:2:2"));

    VirtualMachine m;
    m.addFault(*parseFault("late:2:3", &error));
    m.addFault(*parseFault("write-error:6", &error));
    m.addFault(*parseFault("disconnect:8", &error));
    EXPECT_FALSE(m.handleFrame("R01003E").answer.isEmpty());
    EXPECT_TRUE(m.handleFrame("R00003F").answer.isEmpty()) << "first attempt";
    EXPECT_FALSE(m.handleFrame("R01003E").answer.isEmpty()) << "other frames are answered meanwhile";
    EXPECT_TRUE(m.handleFrame("R00003F").answer.isEmpty()) << "second attempt";
    EXPECT_FALSE(m.handleFrame("R00003F").answer.isEmpty()) << "third attempt";
    const QByteArray record = wRecord(0, "ABCDEFGH").toLatin1();
    EXPECT_TRUE(m.handleFrame(record).answer.startsWith("AE001"));
    EXPECT_EQ(m.memory().left(8), QByteArray(8, '\0'));
    EXPECT_TRUE(m.handleFrame(record).answer.startsWith("AE000"));
    EXPECT_TRUE(m.handleFrame("R01003E").hangUp);

    // A transfer text goes to its addresses; a bad line is named.
    EXPECT_TRUE(
        m.loadTransferText(record + "\r\n" + wRecord(0x1F00, "12345678").toLatin1() + "\r\n", &error));
    EXPECT_EQ(m.memory().mid(0x1F00, 8), "12345678");
    EXPECT_FALSE(m.loadTransferText(record + "\r\nW1F00\r\n", &error));
    EXPECT_TRUE(error.startsWith("line 2")) << error.toStdString();
}
