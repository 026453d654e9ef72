#pragma once

#include "base/settingkeys.h"

#include <QRect>

namespace vkm {

class Settings;

// Where a window stood when it was last closed (left, top, width, height), kept under four
// keys in twips so that it means the same on a screen of another resolution, and given
// back in pixels at the window's resolution: the keys' defaults when there is no store.
QRect storedPlacement(const Settings* settings, const PlacementKeys& keys, double dpi);
// Keeps a window's rectangle (pixels) under the four keys, in twips.
void storePlacement(Settings& settings, const PlacementKeys& keys, const QRect& pixels, double dpi);

} // namespace vkm
