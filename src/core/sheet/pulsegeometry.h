#pragma once

#include <QLine>
#include <QList>
#include <QPoint>

namespace vkm {

// The pulse symbol of the pulse window, in pixels: a level line from the function box's
// right edge at its middle (origin), the pulse 80 pixels on (raised for "ON PULSE",
// lowered for "OFF PULSE", both for "NOT PULSE"; logic is the index of the pulse logic,
// -1 none), and the level again to 240 pixels.
QList<QLine> pulseSymbol(int logic, QPoint origin);

// Where the pulse window opens, in twips within the main window's inner area: where it
// was last (left, top), or, the first time (left is the "not placed" mark), at the right
// and bottom of the area; a place beyond the area's width or height comes back 1000 twips
// inside it. store tells whether the place is to be stored.
struct PulsePlacement {
    int left = 0;
    int top = 0;
    bool store = false;
};
PulsePlacement placePulseWindow(int storedLeft, int storedTop, int innerWidth, int innerHeight, int width,
                                int height);

} // namespace vkm
