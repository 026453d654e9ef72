#include "sheet/pulsepair.h"

#include "base/number.h"
#include "base/prompter.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/csteps.h"
#include "model/steprules.h"
#include "sheet/cellrules.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetqueries.h"

#include <array>
#include <vector>

namespace vkm {

namespace {
constexpr int kOutOfRange = 43;
constexpr int kUnknownName = 67;
constexpr int kCannotPulse = 145;
constexpr int kMissingValue = 146;
constexpr int kHeaderRow = 147;
constexpr int kKindFirst = 148;
constexpr int kEndOutOfRange = 161;

// The logic of output group 1 and group 2 per pulse logic.
constexpr std::array<std::pair<int, int>, 3> kLogicPairs{
    {{LogicHigh, LogicLow}, {LogicLow, LogicHigh}, {LogicNot, LogicNot}}};

int logicIndex(int logic1, int logic2) {
    for (std::size_t i = 0; i < kLogicPairs.size(); ++i)
        if (kLogicPairs[i] == std::pair{logic1, logic2})
            return int(i);
    return -1;
}

// The (code, name) entries of the delay kind list, read once: the pulse window asks for
// them whenever the current row changes.
const std::vector<std::pair<QString, QString>>& delayKinds() {
    static const auto entries = CellRules::listEntries(CellRules::kDelayKindList);
    return entries;
}
} // namespace

PulsePair::PulsePair(SheetContext& context, const SheetQueries& queries, CellRules& rules)
    : m_ctx(context), m_sheet(context.sheet), m_q(queries), m_rules(rules) {}

const QStringList& PulsePair::logicNames() {
    static const QStringList names = {QStringLiteral("ON PULSE"), QStringLiteral("OFF PULSE"),
                                      QStringLiteral("NOT PULSE")};
    return names;
}

QStringList PulsePair::kindNames() {
    QStringList names;
    for (const auto& [value, name] : delayKinds())
        names << name;
    return names;
}

int PulsePair::kindCode(int index) {
    const auto& entries = delayKinds();
    return index >= 0 && index < int(entries.size()) ? entries[std::size_t(index)].first.toInt() : -1;
}

int PulsePair::kindIndex(int code) {
    const auto& entries = delayKinds();
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (entries[i].first == QString::number(code))
            return int(i);
    return -1;
}

bool PulsePair::isPulseRow(int row) const {
    if (!StepSheet::isStepRow(row))
        return false;
    const int c1 = m_sheet.GetcolOutKino1();
    const int c2 = m_sheet.GetcolOutKino2();
    for (int c : {c1, c2})
        for (int i = 0; i < 3; ++i)
            if (m_q.isEmptyCell(row, c + i))
                return false;
    return m_sheet.text(row, c1) == m_sheet.text(row, c2) && m_q.category(row, c1) == m_q.category(row, c2) &&
           logicIndex(m_q.cellValue(row, c1 + 1), m_q.cellValue(row, c2 + 1)) >= 0 &&
           m_sheet.text(row, c1 + 2) == m_sheet.text(row, c2 + 2);
}

bool PulsePair::CanInputPulse(int row, int col) const {
    return m_sheet.isOutputCol(col) && isPulseRow(row);
}

PulseValues PulsePair::PasteValue(int row) const {
    PulseValues v;
    if (!isPulseRow(row))
        return v;
    const int c1 = m_sheet.GetcolOutKino1();
    const int c2 = m_sheet.GetcolOutKino2();
    v.kino = m_sheet.text(row, c1);
    v.category = m_q.category(row, c1);
    v.logic = logicIndex(m_q.cellValue(row, c1 + 1), m_q.cellValue(row, c2 + 1));
    v.kind = kindIndex(m_q.cellValue(row, c1 + 2));
    v.delay1 = m_sheet.text(row, c1 + 3);
    const double length = leadingNumber(m_sheet.text(row, c2 + 3)) - leadingNumber(v.delay1);
    v.delay2 = QString::number(qint64(roundHalfEven(length)));
    return v;
}

void PulsePair::writeGroup(int row, int group, const PulseValues& v, int logic, const QString& delay) {
    const int kc = m_sheet.outputGroupCol(group);
    m_sheet.setCell(row, kc, v.kino.trimmed().toUpper(), v.category);
    if (logic >= 0)
        m_sheet.setText(row, kc + 1, QString::number(logic));
    m_sheet.setText(row, kc + 2, QString::number(kindCode(v.kind)));
    m_sheet.setText(row, kc + 3, delay);
}

void PulsePair::SetValue(int row, const PulseValues& v) {
    if (m_ctx.comparison || !StepSheet::isStepRow(row))
        return;
    // Both output groups of the row are overwritten: they can be had back with undo.
    m_ctx.takeSnapshot();
    StepSheet::Batch batch(m_sheet);
    const qint64 start = qint64(roundHalfEven(leadingNumber(v.delay1)));
    const qint64 end = qint64(roundHalfEven(leadingNumber(v.delay1) + leadingNumber(v.delay2)));
    const bool logic = v.logic >= 0 && v.logic < int(kLogicPairs.size());
    const auto pair = logic ? kLogicPairs[std::size_t(v.logic)] : std::pair{-1, -1};
    writeGroup(row, 1, v, pair.first, QString::number(start));
    writeGroup(row, 2, v, pair.second, QString::number(end));
    m_rules.SprashThisRow(row);
    m_ctx.setChanged();
}

bool PulsePair::ExactDelay(const PulseValues& v, int index, qint32& lMin, qint32& lMax) const {
    lMin = 0;
    lMax = 0;
    // A pulse switches a plain output: the ranges of an output of logic LOW.
    GetValueRange(cat::OUT, v.kino, 2, LogicLow, kindCode(v.kind), m_ctx.selout, m_ctx.selinp, lMin, lMax);
    const double start = leadingNumber(v.delay1);
    const double value = index == 1 ? start : roundHalfEven(start + leadingNumber(v.delay2));
    return value >= lMin && value <= lMax;
}

PulseField PulsePair::ExactValue(const PulseValues& v) const {
    const std::array<std::pair<QString, PulseField>, 3> required{
        {{v.kino, PulseField::Kino}, {v.delay1, PulseField::Delay1}, {v.delay2, PulseField::Delay2}}};
    for (const auto& [text, field] : required) {
        if (text.trimmed().isEmpty()) {
            m_ctx.prompter.showMessage(kMissingValue, 2);
            return field;
        }
    }
    // Without a delay kind there is no range to check against.
    if (v.kind < 0) {
        m_ctx.prompter.showMessage(kKindFirst, 2);
        return PulseField::DelayKind;
    }
    for (int index : {1, 2})
        if (const PulseField failed = checkDelayRange(v, index); failed != PulseField::None)
            return failed;
    return PulseField::None;
}

PulseField PulsePair::checkDelayRange(const PulseValues& v, int index) const {
    qint32 lMin = 0;
    qint32 lMax = 0;
    if (ExactDelay(v, index, lMin, lMax))
        return PulseField::None;
    m_ctx.prompter.showMessage(index == 1 ? kOutOfRange : kEndOutOfRange, 2, QString::number(lMin),
                               QString::number(lMax));
    return index == 1 ? PulseField::Delay1 : PulseField::Delay2;
}

PulseField PulsePair::Decide(const PulseValues& v, int row) {
    const PulseField failed = ExactValue(v);
    if (failed != PulseField::None)
        return failed;
    if (!StepSheet::isStepRow(row)) {
        m_ctx.prompter.showMessage(kHeaderRow, 2);
        return PulseField::None;
    }
    SetValue(row, v);
    return PulseField::None;
}

PulseField PulsePair::checkDelayBox(const PulseValues& v, int index) const {
    const QString text = index == 1 ? v.delay1 : v.delay2;
    if (text.trimmed().isEmpty())
        return PulseField::None;
    if (v.kind < 0) {
        m_ctx.prompter.showMessage(kKindFirst, 2);
        return PulseField::DelayKind;
    }
    return checkDelayRange(v, index);
}

std::optional<QString> PulsePair::checkKino(const QString& text) const {
    const QString upper = text.trimmed().toUpper();
    if (upper.isEmpty())
        return QString();
    const QStringList categories = m_ctx.selout.categoriesOfDigital(upper);
    if (categories.isEmpty()) {
        m_ctx.prompter.showMessage(kUnknownName, 2);
        return std::nullopt;
    }
    // A name shared by several categories is taken in the first one that can pulse.
    for (const QString& category : categories)
        if (isSwitchedCategory(category))
            return category;
    m_ctx.prompter.showMessage(kCannotPulse, 2);
    return std::nullopt;
}

std::optional<std::pair<QString, QString>> PulsePair::chosenFunction(int value) const {
    const QString category = m_ctx.selout.CategoryByValue(value);
    const CSelection* entry = m_ctx.selout.Item(QString::number(qint16(value)));
    if (!entry || !isSwitchedCategory(category)) {
        m_ctx.prompter.showMessage(kCannotPulse, 2);
        return std::nullopt;
    }
    return std::pair{entry->Digital, category};
}

PulseFollow PulsePair::PulseOp(bool loaded, bool automatic, bool canInput) {
    if (canInput)
        return loaded ? PulseFollow::Fill : automatic ? PulseFollow::Open : PulseFollow::Nothing;
    return loaded ? PulseFollow::Clear : PulseFollow::Nothing;
}

} // namespace vkm
