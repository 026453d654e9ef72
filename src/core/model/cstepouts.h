#pragma once

#include "model/cstepout.h"
#include "model/keyedcollection.h"

namespace vkm {

class CSelections;

// The outputs of a step, keyed by the decimal text of Block.
class CStepOuts : public KeyedCollection<CStepOut> {
public:
    // Adds an output (Kino kept as 16 bits). The category of Kino in the catalogue forces
    // the logic: SUB 9, JMP 3, CALL 10, RETURN 11. nullptr when the Block exists already.
    Ptr Add(qint32 Block, qint32 Kino, qint32 Logic, qint32 DelayKind, qint32 DelayEtc,
            const CSelections& sels);

    // True when any output's function is of category RETURN.
    bool ExistRet(const CSelections& sels) const;

    static QString DelayKindJ(int code);         // "" for codes other than 0, 2, 4, 6, 8
    static QString LogicJ(int code);             // "" outside 0..11; 11 is "RET"
    static int LogicByName(const QString& text); // "RETURN" gives 11; unknown 0
};

} // namespace vkm
