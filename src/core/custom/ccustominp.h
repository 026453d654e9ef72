#pragma once

#include "custom/customfield.h"

#include <QString>
#include <vector>

namespace vkm {

// One customisable input terminal: where its properties live in the customisation image
// (indexes, -1 when the terminal has no such property, and 8-bit masks), and the property
// values last read from an image.
struct CCustomInp {
    QString Location; // terminal name, key in CCustomInps
    qint32 KinoAdrs = 0;
    qint32 LogicAdrs = 0;
    quint8 LogicBit = 0;
    qint32 AltAdrs = -1;
    quint8 AltBit = 0;
    qint32 DosaAdrs = -1;
    quint8 DosaBit = 0;
    qint32 IgnoreI1Adrs = -1;
    quint8 IgnoreI1Bit = 0;
    qint32 AlAdrs = -1;
    quint8 AlBit = 0;
    qint32 RSFDosaClearAdrs = -1;
    quint8 RSFDosaClearBit = 0;
    qint32 RSFDosaDelayAdrs = -1;
    qint32 DengenOnAdrs = -1;
    quint8 DengenOnBit = 0;
    qint32 UntenoffAdrs = -1;
    quint8 UntenoffBit = 0;
    qint32 TomeAdrs = -1;
    quint8 TomeBit = 0;
    qint32 RSFSetAdrs = -1;
    quint8 RSFSetBit = 0;
    qint32 RSFResetAdrs = -1;
    quint8 RSFResetBit = 0;
    qint32 RSFResetStcAdrs = -1;

    // Where and how each value property lives in the image, in the order of the
    // description properties.
    static const std::vector<ValueField<CCustomInp>>& valueFields();
    // The value properties by name, Kino first.
    std::vector<TerminalValue> valueProperties() const { return listTerminalValues(*this, valueFields()); }

    quint8 Kino = 0;
    quint8 Logic = 0;
    quint8 Alt = 0;
    quint8 Dosa = 0;
    quint8 IgnoreI1 = 0;
    quint8 Al = 0;
    quint8 RSFDosaClear = 0;
    quint8 RSFDosaDelay = 0;
    quint8 DengenOn = 0;
    quint8 Untenoff = 0;
    quint8 Tome = 0;
    quint8 RSFSet = 0;
    quint8 RSFReset = 0;
    quint8 RSFResetStc = 0;
};

} // namespace vkm
