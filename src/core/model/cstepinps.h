#pragma once

#include "model/cstepinp.h"
#include "model/keyedcollection.h"

namespace vkm {

// The inputs of a step, keyed by the decimal text of Block.
class CStepInps : public KeyedCollection<CStepInp> {
public:
    // Note the argument order: Block, Kino, Jyotai, Rel.
    Ptr Add(qint32 Block, qint32 Kino, quint8 Jyotai, qint32 Rel);

    qint32 CounterId = 0; // 0..15, meaningful in a counter step only

    static QString RelJ(int code);    // "" outside 0..8
    static QString JyotaiJ(int code); // "POS LEV" .. "NEG EDG", "" outside 0..3
};

} // namespace vkm
