#include "custom/ccustomouts.h"

#include "base/errorreporter.h"
#include "base/messages.h"
#include "custom/customfield.h"

namespace vkm {

namespace {
const QString kProc = QStringLiteral("ReadSet05e");
constexpr int kFields = 16;
} // namespace

std::optional<CCustomOut> CCustomOuts::parseLine(const QStringList& fields, int* error) {
    if (fields.size() < kFields) {
        if (error)
            *error = ErrSubscript;
        return std::nullopt;
    }
    TerminalFields f(fields);
    CCustomOut t;
    t.Location = f.text(1);
    t.KinoAdrs = f.numberAdrs(2);
    t.LogicAdrs = f.numberAdrs(3);
    t.LogicBit = f.mask(4);
    t.ChopAdrs = f.adrs(5);
    t.ChopBit = f.mask(6);
    t.KyoseiOffAdrs = f.adrs(7);
    t.KyoseiOffBit = f.mask(8);
    t.OnDelayAdrs = f.adrs(9);
    t.ChopDutyAdrs = f.adrs(10);
    t.ChopDutyBit = f.mask(11);
    t.ZenpaAdrs = f.adrs(12);
    t.ZenpaBit = f.mask(13);
    t.HojiAdrs = f.adrs(14);
    t.HojiBit = f.mask(15);
    t.FUMAdrs = f.adrs(16);
    if (!f.ok()) {
        if (error)
            *error = f.error();
        return std::nullopt;
    }
    return t;
}

bool CCustomOuts::ReadSet05e(const QString& folder) {
    return readTable(folder + QStringLiteral("/Set05.e"), &parseLine, kProc);
}

bool CCustomOuts::readLines(const QByteArray& content) {
    return addLines(content, &parseLine, kProc);
}

const std::vector<ValueField<CCustomOut>>& CCustomOut::valueFields() {
    using T = CCustomOut;
    using R = FieldRule;
    static const std::vector<ValueField<T>> fields = {
        {"Kino", R::Function, &T::KinoAdrs, nullptr, &T::Kino},
        {"Logic", R::Logic, &T::LogicAdrs, &T::LogicBit, &T::Logic},
        {"Chop", R::Flag, &T::ChopAdrs, &T::ChopBit, &T::Chop},
        {"KyoseiOff", R::Flag, &T::KyoseiOffAdrs, &T::KyoseiOffBit, &T::KyoseiOff},
        {"OffDelay", R::Unplaced, nullptr, nullptr, &T::OffDelay},
        {"OnDelay", R::Byte, &T::OnDelayAdrs, nullptr, &T::OnDelay},
        {"ChopDuty", R::Code, &T::ChopDutyAdrs, &T::ChopDutyBit, &T::ChopDuty},
        {"Zenpa", R::Code, &T::ZenpaAdrs, &T::ZenpaBit, &T::Zenpa},
        {"Hoji", R::Code, &T::HojiAdrs, &T::HojiBit, &T::Hoji},
        {"FUM", R::Byte, &T::FUMAdrs, nullptr, &T::FUM},
    };
    return fields;
}

bool CCustomOuts::ReadData(const QByteArray& image) {
    return readValues(image, QStringLiteral("ReadData(output)"));
}

bool CCustomOuts::SaveCustomizeData(QByteArray& image) const {
    return writeValues(image, QStringLiteral("SaveCustomizeData(output)"));
}

namespace {
// Chop duty codes: on and off times of the chopped output, as the machine's display
// abbreviates them and as the long help text states them.
const char* const kChopDuty1[] = {"LO", "MS", "MF", "HI", "26", "62", "84", "FL"};
const char* const kChopDuty2[] = {"2ms=ON, 4ms=OFF, 33% duty", "4ms=ON, 4ms=OFF, 50% duty",
                                  "2ms=ON, 2ms=OFF, 50% duty", "4ms=ON, 2ms=OFF, 66% duty",
                                  "2ms=ON, 6ms=OFF, 25% duty", "6ms=ON, 2ms=OFF, 75% duty",
                                  "8ms=ON, 4ms=OFF, 66% duty", "100% All wave output"};
const char* const kZenpa[] = {"20", "25", "30", "40", "50", "60", "80", "100"};
const char* const kHoji1[] = {"M", "C", "A", "T"};
// The long hold-mode texts are messages of the message table, one per code.
constexpr int kHojiTextFirst = 689;

template <std::size_t N> QString codeText(const char* const (&table)[N], int index) {
    if (index < 0 || index >= int(N))
        return {};
    return QString::fromLatin1(table[index]);
}
} // namespace

QString CCustomOuts::GetChopDutyInfo1(int index) {
    return codeText(kChopDuty1, index);
}
QString CCustomOuts::GetChopDutyInfo2(int index) {
    return codeText(kChopDuty2, index);
}
QString CCustomOuts::GetZenpaInfo1(int index) {
    return codeText(kZenpa, index);
}
QString CCustomOuts::GetZenpaInfo2(int index) {
    const QString ms = codeText(kZenpa, index);
    return ms.isEmpty() ? ms : ms + QStringLiteral("msec");
}
QString CCustomOuts::GetHojiInfo1(int index) {
    return codeText(kHoji1, index);
}
QString CCustomOuts::GetHojiInfo2(int index) {
    if (GetHojiInfo1(index).isEmpty())
        return {};
    return LoadMessageText(kHojiTextFirst + index);
}

} // namespace vkm
