#pragma once

#include <QtGlobal>

namespace vkm {

// One input condition of a step. In a counter step the later inputs hold a number
// (the compare value) in Kino instead of a function.
struct CStepInp {
    qint32 Block = 0;  // 1..4
    qint32 Kino = 0;   // function number (or operand)
    quint8 Jyotai = 0; // state 0..3
    qint32 Rel = 0;    // relation 0..8
};

} // namespace vkm
