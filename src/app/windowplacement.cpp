#include "windowplacement.h"

#include "base/settings.h"

namespace vkm {

QRect storedPlacement(const Settings* settings, const PlacementKeys& keys, double dpi) {
    const auto px = [settings, dpi](const IntKey& key) {
        return twipsToPixels(settings ? settings->value(key) : key.defaultValue, dpi);
    };
    return QRect(px(keys.left), px(keys.top), px(keys.width), px(keys.height));
}

void storePlacement(Settings& settings, const PlacementKeys& keys, const QRect& pixels, double dpi) {
    settings.set(keys.left, pixelsToTwips(pixels.left(), dpi));
    settings.set(keys.top, pixelsToTwips(pixels.top(), dpi));
    settings.set(keys.width, pixelsToTwips(pixels.width(), dpi));
    settings.set(keys.height, pixelsToTwips(pixels.height(), dpi));
}

} // namespace vkm
