#include "fsetport.h"
#include "tabchain.h"

#include "base/messages.h"
#include "base/settings.h"
#include "finppassword.h"
#include "link/serialchannel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSerialPortInfo>
#include <QVBoxLayout>

namespace vkm {

fSetPort::fSetPort(Settings* settings, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_cboPort(new QComboBox(this)) {
    setObjectName(QStringLiteral("fSetPort"));
    setWindowTitle(QStringLiteral("Port setting"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_cboPort->setObjectName(QStringLiteral("cboPort"));
    m_cboPort->setEditable(true);
    m_cboPort->setInsertPolicy(QComboBox::NoInsert);
    m_cboPort->setMinimumContentsLength(16);
    auto* label = new QLabel(QStringLiteral("COM Port"), this);
    label->setObjectName(QStringLiteral("LabelPort"));
    label->setBuddy(m_cboPort);
    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("BTN1"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(LoadMessageText(207), this);
    cancel->setObjectName(QStringLiteral("BTN2"));
    connect(ok, &QPushButton::clicked, this, &fSetPort::confirm);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    setTabChain({m_cboPort, ok, cancel});
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_cboPort, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addLayout(buttons);

    if (ensureCommPort(m_settings)) {
        QStringList items{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")};
        for (const QString& port : systemPorts()) {
            if (!items.contains(port))
                items << port;
        }
        m_cboPort->addItems(items);
        m_cboPort->setCurrentText(m_settings ? m_settings->value(keys::CommPort) : QStringLiteral("1"));
    }
    SetFontSize(this);
}

bool fSetPort::ensureCommPort(Settings* settings) {
    return !settings ||
           settings->ensure(keys::CommPort.section, QLatin1String(keys::CommPort.name), QStringLiteral("1"));
}

QString fSetPort::portDevice(Settings* settings) {
    return portDeviceName(settings ? settings->value(keys::CommPort) : QString());
}

QStringList fSetPort::systemPorts() {
    QStringList ports;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        ports << info.systemLocation();
    return ports;
}

void fSetPort::confirm() {
    if (m_settings)
        m_settings->set(keys::CommPort, m_cboPort->currentText().trimmed());
    accept();
}

} // namespace vkm
