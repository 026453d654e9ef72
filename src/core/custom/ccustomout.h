#pragma once

#include "custom/customfield.h"

#include <QString>
#include <vector>

namespace vkm {

// One customisable output terminal: where its properties live in the customisation image
// (indexes, -1 when the terminal has no such property, and 8-bit masks), and the property
// values last read from an image. OffDelay has no place in the image.
struct CCustomOut {
    QString Location; // terminal name, key in CCustomOuts
    qint32 KinoAdrs = 0;
    qint32 LogicAdrs = 0;
    quint8 LogicBit = 0;
    qint32 ChopAdrs = -1;
    quint8 ChopBit = 0;
    qint32 KyoseiOffAdrs = -1;
    quint8 KyoseiOffBit = 0;
    qint32 OnDelayAdrs = -1;
    qint32 ChopDutyAdrs = -1;
    quint8 ChopDutyBit = 0;
    qint32 ZenpaAdrs = -1;
    quint8 ZenpaBit = 0;
    qint32 HojiAdrs = -1;
    quint8 HojiBit = 0;
    qint32 FUMAdrs = -1;

    // Where and how each value property lives in the image, in the order of the
    // description properties.
    static const std::vector<ValueField<CCustomOut>>& valueFields();
    // The value properties by name, Kino first.
    std::vector<TerminalValue> valueProperties() const { return listTerminalValues(*this, valueFields()); }

    quint8 Kino = 0;
    quint8 Logic = 0;
    quint8 Chop = 0;
    quint8 KyoseiOff = 0;
    quint8 OffDelay = 0;
    quint8 OnDelay = 0;
    quint8 ChopDuty = 0;
    quint8 Zenpa = 0;
    quint8 Hoji = 0;
    quint8 FUM = 0;
};

} // namespace vkm
