#include "sheet/pulsegeometry.h"

#include "base/settingkeys.h"

#include <algorithm>

namespace vkm {

namespace {
constexpr int kStep = 80;   // length of each part of the symbol
constexpr int kHeight = 40; // height of the pulse
constexpr int kPullBack = 1000;
} // namespace

QList<QLine> pulseSymbol(int logic, QPoint origin) {
    const int x0 = origin.x();
    const int y0 = origin.y();
    QList<QLine> lines{QLine(x0, y0, x0 + kStep, y0)};
    const bool raised = logic == 0 || logic == 2;
    const bool lowered = logic == 1 || logic == 2;
    for (const auto& [on, dy] : {std::pair{raised, -kHeight}, std::pair{lowered, kHeight}}) {
        if (!on)
            continue;
        lines << QLine(x0 + kStep, y0, x0 + kStep, y0 + dy)
              << QLine(x0 + kStep, y0 + dy, x0 + 2 * kStep, y0 + dy)
              << QLine(x0 + 2 * kStep, y0 + dy, x0 + 2 * kStep, y0);
    }
    const int from = raised || lowered ? x0 + 2 * kStep : x0 + kStep;
    lines << QLine(from, y0, x0 + 3 * kStep, y0);
    return lines;
}

PulsePlacement placePulseWindow(int storedLeft, int storedTop, int innerWidth, int innerHeight, int width,
                                int height) {
    PulsePlacement p{storedLeft, storedTop, false};
    if (storedLeft == keys::kPulseNotPlaced) {
        p.left = innerWidth - width;
        p.top = innerHeight - height;
        p.store = true;
    }
    if (p.left > innerWidth)
        p.left = innerWidth - kPullBack;
    if (p.top > innerHeight)
        p.top = innerHeight - kPullBack;
    p.left = std::max(p.left, 0);
    p.top = std::max(p.top, 0);
    return p;
}

} // namespace vkm
