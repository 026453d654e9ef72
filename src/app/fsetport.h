#pragma once

#include <QDialog>

class QComboBox;

namespace vkm {

class Settings;

// "Port setting": the serial port of the machine link. The list offers 1 to 4 (the first
// four ports of the system) and the ports the system reports; any device name may be
// typed. The first button stores the choice as "CommPort", the second closes.
class fSetPort : public QDialog {
    Q_OBJECT
public:
    explicit fSetPort(Settings* settings, QWidget* parent = nullptr);

    QComboBox* cboPort() const { return m_cboPort; }
    // The serial ports the system reports.
    static QStringList systemPorts();
    // Makes sure "CommPort" exists, with port 1 when it did not. True when it does; true
    // without settings (port 1 is used then).
    static bool ensureCommPort(Settings* settings);
    // The device the "CommPort" setting names.
    static QString portDevice(Settings* settings);

private:
    void confirm();

    Settings* m_settings;
    QComboBox* m_cboPort;
};

} // namespace vkm
