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

const std::vector<ValueField<CCustomInp>>& CCustomInp::valueFields() {
    using T = CCustomInp;
    using R = FieldRule;
    static const std::vector<ValueField<T>> fields = {
        {"Kino", R::Function, &T::KinoAdrs, nullptr, &T::Kino},
        {"Logic", R::Logic, &T::LogicAdrs, &T::LogicBit, &T::Logic},
        {"Alt", R::Flag, &T::AltAdrs, &T::AltBit, &T::Alt},
        {"Dosa", R::Code, &T::DosaAdrs, &T::DosaBit, &T::Dosa},
        {"IgnoreI1", R::Flag, &T::IgnoreI1Adrs, &T::IgnoreI1Bit, &T::IgnoreI1},
        {"Al", R::Flag, &T::AlAdrs, &T::AlBit, &T::Al},
        {"RSFDosaClear", R::Flag, &T::RSFDosaClearAdrs, &T::RSFDosaClearBit, &T::RSFDosaClear},
        {"RSFDosaDelay", R::Byte, &T::RSFDosaDelayAdrs, nullptr, &T::RSFDosaDelay},
        {"DengenOn", R::Flag, &T::DengenOnAdrs, &T::DengenOnBit, &T::DengenOn},
        {"Untenoff", R::Flag, &T::UntenoffAdrs, &T::UntenoffBit, &T::Untenoff},
        {"Tome", R::Flag, &T::TomeAdrs, &T::TomeBit, &T::Tome},
        {"RSFSet", R::Code, &T::RSFSetAdrs, &T::RSFSetBit, &T::RSFSet},
        {"RSFReset", R::Code, &T::RSFResetAdrs, &T::RSFResetBit, &T::RSFReset},
        {"RSFResetStc", R::Byte, &T::RSFResetStcAdrs, nullptr, &T::RSFResetStc},
    };
    return fields;
}

bool CCustomInps::ReadData(const QByteArray& image) {
    return readValues(image, QStringLiteral("ReadData"));
}

bool CCustomInps::SaveCustomizeData(QByteArray& image) const {
    return writeValues(image, QStringLiteral("SaveCustomizeData(input)"));
}

} // namespace vkm
