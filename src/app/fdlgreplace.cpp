#include "fdlgreplace.h"
#include "tabchain.h"

#include "base/messages.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace vkm {

fDlgReplace::fDlgReplace(QWidget* parent) : QDialog(parent), m_data(new QLabel(this)) {
    setObjectName(QStringLiteral("fDlgReplace"));
    setWindowTitle(messageBoxTitle());
    auto* icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxQuestion).pixmap(32, 32));
    auto* question = new QLabel(QStringLiteral("Do you replace this function"), this);
    m_data->setObjectName(QStringLiteral("lblData"));
    QFont bold = m_data->font();
    bold.setBold(true);
    m_data->setFont(bold);

    auto* text = new QVBoxLayout;
    text->addWidget(question);
    text->addWidget(m_data);
    auto* top = new QHBoxLayout;
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addLayout(text, 1);
    auto* buttons = new QHBoxLayout;
    const std::pair<const char*, int> captions[] = {
        {"&Yes", ReplaceYes}, {"&No", ReplaceNo}, {"&All Yes", ReplaceAllYes}, {"All N&o", ReplaceAllNo}};
    QPushButton* answers[4] = {};
    for (int i = 0; i < 4; ++i) {
        const auto& [caption, ret] = captions[i];
        auto* b = new QPushButton(QString::fromLatin1(caption), this);
        b->setObjectName(QStringLiteral("BTN%1").arg(ret));
        b->setAutoDefault(ret == ReplaceYes);
        connect(b, &QPushButton::clicked, this, [this, r = ret] { choose(r); });
        buttons->addWidget(b);
        answers[i] = b;
    }
    setTabChain({answers[0], answers[1], answers[2], answers[3]});
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);
}

void fDlgReplace::setData(const QString& data) {
    m_data->setText(data);
}

QString fDlgReplace::Data() const {
    return m_data->text();
}

void fDlgReplace::choose(int ret) {
    m_ret = ret;
    accept();
}

void fDlgReplace::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Y:
        choose(ReplaceYes);
        return;
    case Qt::Key_N:
        choose(ReplaceNo);
        return;
    case Qt::Key_A:
        choose(ReplaceAllYes);
        return;
    case Qt::Key_O:
        choose(ReplaceAllNo);
        return;
    default:
        QDialog::keyPressEvent(event);
    }
}

int fDlgReplace::ask(const QString& oldDigital, const QString& newDigital, QWidget* parent) {
    fDlgReplace dialog(parent);
    dialog.setData(oldDigital + QStringLiteral(" -> ") + newDigital);
    dialog.exec();
    return dialog.Ret();
}

} // namespace vkm
