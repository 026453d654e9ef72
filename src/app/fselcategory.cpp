#include "fselcategory.h"

#include "catalogue/cselections.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QVBoxLayout>

namespace vkm {

fSelCategory::fSelCategory(const CSelections& sels, const QString& newDigital, QWidget* parent)
    : QDialog(parent), m_list(new QListWidget(this)) {
    setWindowTitle(QStringLiteral("Category"));
    setObjectName(QStringLiteral("fSelCategory"));
    for (const CSelection& e : sels.entries())
        if (e.Digital == newDigital)
            m_list->addItem(e.Category);
    if (m_list->count() > 0)
        m_list->setCurrentRow(0);
    m_list->installEventFilter(this);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    resize(220, 160);
}

QString fSelCategory::SelectedCategory() const {
    const QListWidgetItem* item = m_list->currentItem();
    return item ? item->text() : QString();
}

bool fSelCategory::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            accept();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

QString fSelCategory::choose(const CSelections& sels, const QString& digital, QWidget* parent) {
    fSelCategory dialog(sels, digital, parent);
    dialog.exec();
    return dialog.SelectedCategory();
}

} // namespace vkm
