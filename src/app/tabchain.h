#pragma once

#include <QWidget>
#include <initializer_list>

namespace vkm {

// The order Tab visits a window's controls in, first to last (from the first input to
// the buttons that end the dialog); Tab after the last comes back to the first. Set
// explicitly, so that it follows what the user sees rather than the order in which the
// controls happened to be made.
inline void setTabChain(std::initializer_list<QWidget*> controls) {
    QWidget* previous = nullptr;
    for (QWidget* w : controls) {
        if (previous)
            QWidget::setTabOrder(previous, w);
        previous = w;
    }
}

} // namespace vkm
