#pragma once

#include <QByteArray>
#include <QString>

namespace vkm {

// A picture of the printed sheet: a PNG image and the size it is shown at, in pixels at
// 96 dpi (the image itself holds more pixels, so that a printed page stays sharp).
struct PrintPicture {
    QByteArray png;
    int width = 0;    // shown width in pixels
    int height = 0;   // shown height in pixels
    double scale = 1; // shown size / image size
    bool isNull() const { return png.isEmpty(); }
};

// The picture of a name ("Jyotai0" .. "Jyotai3", the input states); a null picture for a
// name the program has no picture of.
PrintPicture printPicture(const QString& name);

} // namespace vkm
