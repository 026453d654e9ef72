#pragma once

#include <QByteArray>
#include <QString>

namespace vkm {

// The line settings of the machine link: 9600 bit/s, 8 data bits, no parity, 1 stop bit,
// no handshake. Only the port changes.
struct SerialSettings {
    QString port; // device name, see portDeviceName()
    qint32 baudRate = 9600;
    int dataBits = 8;
    int stopBits = 1;
    bool parity = false;
};

// The device behind a "CommPort" value: 1 to 4 name the first four serial ports of the
// system (COM1..COM4 on Windows, /dev/ttyS0../dev/ttyS3 elsewhere); any other text is a
// device name as the user typed it (for example /dev/ttyUSB0). Empty text is port 1.
QString portDeviceName(const QString& commPort);

// The serial line as the transfer protocol sees it. The production channel drives a
// serial port; tests put a simulated machine behind the same interface.
class SerialChannel {
public:
    virtual ~SerialChannel() = default;

    // Opens the line with the settings. False when it cannot be opened (no such device,
    // occupied, no permission).
    virtual bool open(const SerialSettings& settings) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    // Sends bytes. False when they could not be handed to the line.
    virtual bool write(const QByteArray& bytes) = 0;
    // Everything received so far, removed from the line's buffer.
    virtual QByteArray readAll() = 0;
    // Count of received bytes waiting to be read.
    virtual qint64 bytesWaiting() = 0;
    // Waits until at least count bytes are waiting or timeoutMs has passed; the
    // application's events keep running meanwhile, so windows stay responsive. Returns
    // whether count bytes are waiting. Returns at once when the line is not open.
    virtual bool waitForData(qint64 count, int timeoutMs) = 0;
    // Lets timeMs pass with the application's events running (the pause before a reset).
    virtual void pause(int timeMs) = 0;
};

} // namespace vkm
