#include "finppassword.h"
#include "tabchain.h"

#include "base/messages.h"
#include "document/passwordrules.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace vkm {

void SetFontSize(QWidget* window) {
    const auto apply = [](QWidget* w) {
        QFont f = w->font();
        f.setPointSize(8);
        w->setFont(f);
    };
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (qobject_cast<QLabel*>(w) || qobject_cast<QPushButton*>(w) || qobject_cast<QCheckBox*>(w) ||
            qobject_cast<QComboBox*>(w) || qobject_cast<QGroupBox*>(w))
            apply(w);
    }
}

fInpPassword::fInpPassword(int usrcmp, const QString& password, const QString& author, Prompter& prompter,
                           QWidget* parent)
    : QDialog(parent), m_usrcmp(usrcmp), m_password(password), m_author(author), m_prompter(prompter),
      m_txtPassword(new QLineEdit(password, this)), m_txtAuthor(new QLineEdit(author, this)),
      m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_cancel(new QPushButton(LoadMessageText(420), this)) {
    setWindowTitle(LoadMessageText(415));
    setObjectName(QStringLiteral("fInpPassword"));
    m_txtPassword->setObjectName(QStringLiteral("txtPassword"));
    m_txtAuthor->setObjectName(QStringLiteral("txtAuthor"));
    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(LoadMessageText(416), this), 0, 0);
    grid->addWidget(m_txtPassword, 0, 1);
    grid->addWidget(new QLabel(LoadMessageText(418), this), 0, 2);
    grid->addWidget(new QLabel(LoadMessageText(417), this), 1, 0);
    grid->addWidget(m_txtAuthor, 1, 1);
    grid->addWidget(new QLabel(LoadMessageText(419), this), 1, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(buttons);

    setTabChain({m_txtPassword, m_txtAuthor, m_ok, m_cancel});
    m_ok->setDefault(true);
    m_ok->setEnabled(usrcmp == 0);
    m_txtPassword->installEventFilter(this);
    m_txtAuthor->installEventFilter(this);
    connect(m_ok, &QPushButton::clicked, this, &fInpPassword::okClicked);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    SetFontSize(this);
}

bool fInpPassword::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        if (auto* edit = qobject_cast<QLineEdit*>(watched)) {
            // Deferred: a mouse click that gave the focus would otherwise place the caret
            // right after the selection was made.
            QTimer::singleShot(0, edit, &QLineEdit::selectAll);
        }
    }
    return QDialog::eventFilter(watched, event);
}

void fInpPassword::okClicked() {
    if (m_usrcmp != 0)
        return;
    const QString password = m_txtPassword->text().trimmed();
    const QString author = m_txtAuthor->text().trimmed();
    switch (ExactInput(password, author, m_prompter)) {
    case AccountField::Password:
        m_txtPassword->setFocus();
        return;
    case AccountField::Author:
        m_txtAuthor->setFocus();
        return;
    case AccountField::None:
        break;
    }
    m_password = password;
    m_author = author;
    accept();
}

QString fInpPassword::InpPwd(int usrcmp, const QString& password, const QString& author, Prompter& prompter,
                             QWidget* parent) {
    fInpPassword dialog(usrcmp, password, author, prompter, parent);
    dialog.exec();
    return dialog.Password() + QLatin1Char('\t') + dialog.Author();
}

} // namespace vkm
