#include "link/serialportchannel.h"

#include <QEventLoop>
#include <QTimer>

namespace vkm {

namespace {
// Handing a frame to the driver takes microseconds; this only bounds a stuck driver.
constexpr int kWriteTimeoutMs = 2000;
} // namespace

QString portDeviceName(const QString& commPort) {
    const QString text = commPort.trimmed();
    bool isNumber = false;
    const int n = text.isEmpty() ? 1 : text.toInt(&isNumber);
    if (text.isEmpty() || (isNumber && n >= 1 && n <= 4)) {
#ifdef Q_OS_WIN
        return QStringLiteral("COM%1").arg(n);
#else
        return QStringLiteral("/dev/ttyS%1").arg(n - 1);
#endif
    }
    return text;
}

SerialPortChannel::SerialPortChannel() {
    QObject::connect(&m_port, &QSerialPort::errorOccurred, &m_context,
                     [this](QSerialPort::SerialPortError e) { onError(e); });
}

SerialPortChannel::~SerialPortChannel() {
    close();
}

void SerialPortChannel::onError(QSerialPort::SerialPortError error) {
    // A line that is gone (adapter pulled, the other end closed) keeps signalling errors
    // from its read notifier; close it, after the notifier has returned, so that nothing
    // spins and the next open starts clean.
    if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError) {
        QMetaObject::invokeMethod(
            &m_context,
            [this] {
                if (m_port.isOpen())
                    m_port.close();
            },
            Qt::QueuedConnection);
    }
}

bool SerialPortChannel::open(const SerialSettings& settings) {
    close();
    m_port.setPortName(settings.port);
    m_port.setBaudRate(settings.baudRate);
    m_port.setDataBits(QSerialPort::DataBits(settings.dataBits));
    m_port.setParity(settings.parity ? QSerialPort::EvenParity : QSerialPort::NoParity);
    m_port.setStopBits(settings.stopBits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
    m_port.setFlowControl(QSerialPort::NoFlowControl);
    if (!m_port.open(QIODevice::ReadWrite)) {
        m_error = m_port.errorString();
        return false;
    }
    // The machine needs no modem lines, but an adapter that waits for DTR would not send.
    m_port.setDataTerminalReady(true);
    m_port.setRequestToSend(true);
    m_error.clear();
    return true;
}

void SerialPortChannel::close() {
    if (!m_port.isOpen())
        return;
    // Closing drops what the port still buffers: the reset command is sent just before.
    if (m_port.bytesToWrite() > 0)
        m_port.waitForBytesWritten(kWriteTimeoutMs);
    m_port.close();
}

bool SerialPortChannel::isOpen() const {
    return m_port.isOpen();
}

bool SerialPortChannel::write(const QByteArray& bytes) {
    if (!m_port.isOpen() || m_port.write(bytes) != bytes.size())
        return false;
    while (m_port.bytesToWrite() > 0) {
        if (!m_port.waitForBytesWritten(kWriteTimeoutMs))
            return false;
    }
    return m_port.isOpen();
}

QByteArray SerialPortChannel::readAll() {
    if (!m_port.isOpen())
        return {};
    // Take in what the driver holds but the port has not fetched yet (no event loop has
    // run since it arrived), so that "read all" really empties the line.
    m_port.waitForReadyRead(0);
    m_port.clearError(); // nothing there is not a fault of the line
    return m_port.readAll();
}

qint64 SerialPortChannel::bytesWaiting() {
    return m_port.isOpen() ? m_port.bytesAvailable() : 0;
}

bool SerialPortChannel::waitForData(qint64 count, int timeoutMs) {
    if (!m_port.isOpen())
        return false;
    if (m_port.bytesAvailable() >= count)
        return true;
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&m_port, &QSerialPort::readyRead, &loop, [&] {
        if (m_port.bytesAvailable() >= count)
            loop.quit();
    });
    QObject::connect(&m_port, &QSerialPort::aboutToClose, &loop, &QEventLoop::quit);
    timer.start(std::max(0, timeoutMs));
    loop.exec();
    return m_port.isOpen() && m_port.bytesAvailable() >= count;
}

void SerialPortChannel::pause(int timeMs) {
    QEventLoop loop;
    QTimer::singleShot(std::max(0, timeMs), &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace vkm
