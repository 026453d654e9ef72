#include "custom/ccustominps.h"

#include "base/errorreporter.h"
#include "custom/customfield.h"

namespace vkm {

namespace {
const QString kProc = QStringLiteral("ReadSet04e");
constexpr int kFields = 26;
} // namespace

std::optional<CCustomInp> CCustomInps::parseLine(const QStringList& fields, int* error) {
    if (fields.size() < kFields) {
        if (error)
            *error = ErrSubscript;
        return std::nullopt;
    }
    TerminalFields f(fields);
    CCustomInp t;
    t.Location = f.text(1);
    t.KinoAdrs = f.numberAdrs(2);
    t.LogicAdrs = f.numberAdrs(3);
    t.LogicBit = f.mask(4);
    t.AltAdrs = f.adrs(5);
    t.AltBit = f.mask(6);
    t.DosaAdrs = f.adrs(7);
    t.DosaBit = f.mask(8);
    t.IgnoreI1Adrs = f.adrs(9);
    t.IgnoreI1Bit = f.mask(10);
    t.AlAdrs = f.adrs(11);
    t.AlBit = f.mask(12);
    t.RSFDosaClearAdrs = f.adrs(13);
    t.RSFDosaClearBit = f.mask(14);
    t.RSFDosaDelayAdrs = f.adrs(15);
    t.DengenOnAdrs = f.adrs(16);
    t.DengenOnBit = f.mask(17);
    t.UntenoffAdrs = f.adrs(18);
    t.UntenoffBit = f.mask(19);
    t.TomeAdrs = f.adrs(20);
    t.TomeBit = f.mask(21);
    t.RSFSetAdrs = f.adrs(22);
    t.RSFSetBit = f.mask(23);
    t.RSFResetAdrs = f.adrs(24);
    t.RSFResetBit = f.mask(25);
    t.RSFResetStcAdrs = f.adrs(26);
    if (!f.ok()) {
        if (error)
            *error = f.error();
        return std::nullopt;
    }
    return t;
}

bool CCustomInps::ReadSet04e(const QString& folder) {
    return readTable(folder + QStringLiteral("/Set04.e"), &parseLine, kProc);
}

bool CCustomInps::readLines(const QByteArray& content) {
    return addLines(content, &parseLine, kProc);
}

} // namespace vkm
