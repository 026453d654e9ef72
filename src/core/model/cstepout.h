#pragma once

#include <QtGlobal>

namespace vkm {

// One output action of a step.
struct CStepOut {
    qint32 Block = 0;     // 1 or 2
    qint16 Kino = -1;     // function number; -1 = empty output
    qint32 Logic = 0;     // see Logic
    qint32 DelayKind = 0; // see DelayKind
    qint32 DelayEtc = 0;  // delay or operand as stored, 0..65535
};

} // namespace vkm
