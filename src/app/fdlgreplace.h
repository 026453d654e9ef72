#pragma once

#include "base/prompter.h"

#include <QDialog>

class QLabel;

namespace vkm {

// Asks whether one function is replaced by another while step references are renumbered:
// Yes, No, All Yes (this and every further one without asking), All No (none further).
// The keys Y, N, A and O answer as the buttons do.
class fDlgReplace : public QDialog {
    Q_OBJECT
public:
    explicit fDlgReplace(QWidget* parent = nullptr);

    // The text shown: old function, " -> ", new function.
    void setData(const QString& data);
    QString Data() const;
    // The button chosen, a ReplaceAnswer (No when the dialog was closed otherwise).
    int Ret() const { return m_ret; }

    // Shows the question modally and returns the answer.
    static int ask(const QString& oldDigital, const QString& newDigital, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void choose(int ret);

    QLabel* m_data;
    int m_ret = ReplaceNo;
};

} // namespace vkm
