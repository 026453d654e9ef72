#pragma once

#include <QDialog>
#include <QString>

class QListWidget;

namespace vkm {

class CSelections;

// Asks which category is meant when a typed digital text belongs to several categories:
// one line per category holding the text, in catalogue order, the first highlighted.
class fSelCategory : public QDialog {
    Q_OBJECT
public:
    fSelCategory(const CSelections& sels, const QString& newDigital, QWidget* parent = nullptr);

    // The highlighted line, however the dialog was closed ("" when the list is empty).
    QString SelectedCategory() const;
    QListWidget* list() const { return m_list; }

    // Shows the dialog modally and returns the chosen category.
    static QString choose(const CSelections& sels, const QString& digital, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QListWidget* m_list;
};

} // namespace vkm
