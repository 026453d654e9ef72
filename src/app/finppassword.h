#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace vkm {

class Prompter;

// The password and author dialog. For the comparison program the values are shown but
// OK stays disabled, so they cannot be changed from there.
class fInpPassword : public QDialog {
    Q_OBJECT
public:
    fInpPassword(int usrcmp, const QString& password, const QString& author, Prompter& prompter,
                 QWidget* parent = nullptr);

    int USRCMP() const { return m_usrcmp; }
    QString Password() const { return m_password; }
    QString Author() const { return m_author; }

    QLineEdit* txtPassword() const { return m_txtPassword; }
    QLineEdit* txtAuthor() const { return m_txtAuthor; }
    QPushButton* okButton() const { return m_ok; }
    QPushButton* cancelButton() const { return m_cancel; }

    // Shows the dialog modally and returns its values as "password" TAB "author" (the
    // values given when it was cancelled).
    static QString InpPwd(int usrcmp, const QString& password, const QString& author, Prompter& prompter,
                          QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void okClicked();

    int m_usrcmp;
    QString m_password;
    QString m_author;
    Prompter& m_prompter;
    QLineEdit* m_txtPassword;
    QLineEdit* m_txtAuthor;
    QPushButton* m_ok;
    QPushButton* m_cancel;
};

// Font size 8 for the labels, buttons, check boxes, combo boxes and frames of a window,
// as every small dialog of the editor has it.
void SetFontSize(QWidget* window);

} // namespace vkm
