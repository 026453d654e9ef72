#pragma once

#include "virtualmachine.h"

#include <QString>
#include <functional>

namespace vkm::sim {

// The virtual machine on a real line: a pseudo-terminal it creates, or a serial device.
// Requests and answers are paced as a line at the configured speed would carry them, ten
// bits per byte: a request counts as arrived when its last byte would have, and each byte
// of an answer leaves when the one before it has been sent.
class SimLine {
public:
    struct Options {
        QString device;      // empty: create a pseudo-terminal
        QString link;        // a symbolic link made to point at the line ("" none)
        int baudRate = 9600; // speed of the pacing and of a device; 0: no pacing
        bool pace = true;    // a device is paced by its own hardware
    };

    SimLine(VirtualMachine& machine, Options options);
    ~SimLine();
    SimLine(const SimLine&) = delete;
    SimLine& operator=(const SimLine&) = delete;

    // Opens the line; false with errorString() when it cannot.
    bool open();
    QString devicePath() const { return m_path; }
    QString errorString() const { return m_error; }

    // Answers frames until a signal ends the program or a fault drops the line. Returns
    // the exit status.
    int run();

    // Called after every reset command (the machine keeps its memory).
    std::function<void()> onReset;

private:
    void close();

    VirtualMachine& m_machine;
    Options m_options;
    int m_fd = -1;
    int m_slaveFd = -1; // kept open so that the line stays up while no program holds it
    QString m_path;
    QString m_error;
    bool m_linkMade = false;
};

} // namespace vkm::sim
