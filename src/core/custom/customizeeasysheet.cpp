#include "custom/customizeeasysheet.h"

#include "base/prompter.h"
#include "catalogue/cselections.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"

namespace vkm {

namespace {
// Digital texts of the customisation catalogues are padded on the right to the width of
// the machine's display; a technician types only the letters.
constexpr int kMaxPadding = 3;
const QString kNoFunction = QStringLiteral(" NO");
} // namespace

CustomizeEasySheet::CustomizeEasySheet(const CSelections& selCusInp, const CSelections& selCusOut,
                                       Prompter& prompter)
    : m_selCusInp(selCusInp), m_selCusOut(selCusOut), m_prompter(prompter) {}

void CustomizeEasySheet::fill(const CCustomInps& inps, const CCustomOuts& outs) {
    m_rows.clear();
    for (const CCustomInp& t : inps)
        m_rows.push_back({1, t.Location, m_selCusInp.shownDigital(t.Kino), false});
    for (const CCustomOut& t : outs)
        m_rows.push_back({2, t.Location, m_selCusOut.shownDigital(t.Kino), false});
    m_changed = false;
}

qint16 CustomizeEasySheet::GetCrntValue(int In_or_Out, const QString& digital) const {
    // The machine's customisation catalogues keep every function in the default category;
    // the category is looked up first so that a catalogue that does group them still finds
    // each function by its text.
    const CSelections& sels = catalogue(In_or_Out);
    const QString category = sels.CategoryByDigitalOnly(digital);
    if (category.isEmpty())
        return -1;
    return sels.ValueByDigital(category, digital);
}

void CustomizeEasySheet::setFunction(int index, const QString& digital) {
    CustomizeRow& r = m_rows.at(std::size_t(index));
    r.digital = digital;
    r.changed = true;
    m_changed = true;
}

bool CustomizeEasySheet::enterFunction(int index, const QString& typed) {
    if (index < 0 || index >= rowCount())
        return false;
    QString text = typed.toUpper();
    const int side = row(index).inOut;
    for (int blanks = 0; blanks <= kMaxPadding; ++blanks, text += QLatin1Char(' ')) {
        if (GetCrntValue(side, text) != -1) {
            setFunction(index, text);
            return true;
        }
    }
    m_prompter.showMessage(67, 2);
    return false;
}

bool CustomizeEasySheet::enterValue(int index, qint16 value) {
    if (index < 0 || index >= rowCount() || !catalogue(row(index).inOut).hasValue(value))
        return false;
    return enterFunction(index, catalogue(row(index).inOut).shownDigital(value));
}

bool CustomizeEasySheet::setNoFunction(int index) {
    return enterFunction(index, kNoFunction);
}

void CustomizeEasySheet::markSaved() {
    for (CustomizeRow& r : m_rows)
        r.changed = false;
    m_changed = false;
}

bool CustomizeEasySheet::Update_Variable(CCustomInps& inps, CCustomOuts& outs) const {
    for (const CustomizeRow& r : m_rows) {
        const qint16 value = GetCrntValue(r.inOut, r.digital);
        if (value == -1) {
            m_prompter.showMessage(80, 2);
            return false;
        }
        // The function byte keeps the machine's eight bits; bit 7 is dropped on reading.
        if (r.inOut == 1) {
            if (CCustomInp* t = inps.Item(r.location))
                t->Kino = quint8(value);
        } else if (CCustomOut* t = outs.Item(r.location)) {
            t->Kino = quint8(value);
        }
    }
    return true;
}

} // namespace vkm
