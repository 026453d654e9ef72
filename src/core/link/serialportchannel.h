#pragma once

#include "link/serialchannel.h"

#include <QObject>
#include <QSerialPort>

namespace vkm {

// The machine link over a serial port (QSerialPort). Waiting runs a local event loop that
// wakes on the port's readyRead, so an answer is taken the moment its last byte arrives
// and windows keep painting meanwhile.
class SerialPortChannel : public SerialChannel {
public:
    SerialPortChannel();
    ~SerialPortChannel() override;

    bool open(const SerialSettings& settings) override;
    void close() override;
    bool isOpen() const override;
    bool write(const QByteArray& bytes) override;
    QByteArray readAll() override;
    qint64 bytesWaiting() override;
    bool waitForData(qint64 count, int timeoutMs) override;
    void pause(int timeMs) override;

    // Why the last open failed ("" after a successful one).
    QString errorString() const { return m_error; }

private:
    void onError(QSerialPort::SerialPortError error);

    QSerialPort m_port;
    QObject m_context; // owner of the connections that must end with the channel
    QString m_error;
};

} // namespace vkm
