#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace vkm::sim {

// A fault the virtual machine plays on purpose. Frames are counted from 1 in the order
// they arrive, resends included, as the log numbers them.
struct Fault {
    enum Type {
        Silent,       // no answer to frame N
        Late,         // frame N is answered only when the same frame arrives the K-th time
        BadChecksum,  // the answer to frame N carries a wrong checksum
        ErrorAnswer,  // the answer to frame N begins with "#"
        WrongAddress, // the answer to frame N echoes another address
        WriteError,   // frame N (a W record) is refused with CODE and not stored
        LostWrite,    // frame N (a W record) is acknowledged but not stored (a bad memory cell)
        Disconnect,   // the line is dropped when frame N arrives
    };
    Type type = Silent;
    int frame = 0;
    int attempts = 0;         // Late: the attempt that is answered
    QByteArray code = "E001"; // WriteError: the code sent back
};

// Parses "silent:N", "late:N:K", "checksum:N", "error:N", "address:N",
// "write-error:N[:CODE]", "lost-write:N" or "disconnect:N". nullopt with *error set when it is not one.
std::optional<Fault> parseFault(const QString& text, QString* error);

// The controller of a VKM sewing machine as the serial link sees it: 8192 bytes of memory
// and the frames that read and write them.
//
//   "R" aaaa ss          -> "R" aaaa + 8 data bytes + checksum ("#" instead of "R"
//                           when the checksum or the address is bad)
//   "W" aaaa dd*8 ss     -> "A" + code + aaaa + checksum; code E000 = stored,
//                           E001 checksum, E002 address outside the memory, E003 not hex
//   "C00003F"            -> no answer; the machine restarts
class VirtualMachine {
public:
    static constexpr int kMemorySize = 0x2000;
    static constexpr int kIdAddress = 0x0100;

    VirtualMachine();

    QByteArray& memory() { return m_memory; }
    const QByteArray& memory() const { return m_memory; }
    // The three identification bytes at 0x0100..0x0102.
    void setIdentification(const QByteArray& bytes);
    // Puts the data of every W record of a transfer text at its address. False (with
    // *error naming the line) for a line that is not a good record.
    bool loadTransferText(const QByteArray& text, QString* error);

    void addFault(const Fault& fault) { m_faults << fault; }

    struct Response {
        QByteArray answer; // with its line end; empty: no answer
        bool hangUp = false;
        bool reset = false;
    };
    // One frame as it arrived, without its line end.
    Response handleFrame(const QByteArray& frame);

    int framesReceived() const { return m_frames; }
    int resets() const { return m_resets; }

    // Receives one line per frame and per answer.
    std::function<void(const QString& line)> logger;

private:
    QByteArray readAnswer(const QByteArray& frame) const;
    QByteArray writeAnswer(const QByteArray& frame);
    QByteArray applyFaults(const QByteArray& frame, QByteArray answer);
    const Fault* faultAt(int frame, Fault::Type type) const;
    void log(const QString& line) const;

    QByteArray m_memory;
    QList<Fault> m_faults;
    int m_frames = 0;
    int m_resets = 0;
    QByteArray m_lateFrame; // the frame a Late fault holds back
    int m_lateLeft = 0;     // arrivals of it still unanswered
};

} // namespace vkm::sim
