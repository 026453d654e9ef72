#pragma once

#include "catalogue/cselections.h"

#include <functional>

namespace vkm {

// Asks the user which of the categories that share a digital text is meant (the GUI
// shows the category dialog). Returns the chosen category, "" when none.
using CategoryChooser = std::function<QString(const CSelections& sels, const QString& digital)>;

// The category of a digital text: none gives "", exactly one gives that category, more
// than one asks the chooser (a null chooser takes the first in file order).
QString ChooseCategory(const CSelections& sels, const QString& digital, const CategoryChooser& chooser);

} // namespace vkm
