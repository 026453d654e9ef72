#include "sheet/stepreferences.h"

#include "base/prompter.h"
#include "model/codes.h"
#include "model/stepnumberentry.h"
#include "sheet/cellentry.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetqueries.h"

namespace vkm {

namespace {
constexpr int kBeyondLastStep = 85;
constexpr int kRemovedStep = 86;
constexpr int kReplaceQuestion = 84;
} // namespace

StepReferences::StepReferences(SheetContext& context, const SheetQueries& queries, CellEntry& entry)
    : m_ctx(context), m_sheet(context.sheet), m_q(queries), m_entry(entry) {}

int StepReferences::referencedStep(const QString& digital) {
    if (digital.size() < 4)
        return -1;
    const QString digits = digital.right(3);
    for (QChar ch : digits)
        if (ch < QLatin1Char('0') || ch > QLatin1Char('9'))
            return -1;
    return digits.toInt();
}

QString StepReferences::CreateNewDigital(const QString& oldDigital, int offset) {
    return oldDigital.left(1) +
           QStringLiteral("%1").arg(referencedStep(oldDigital) + offset, 3, 10, QLatin1Char('0'));
}

// Outputs that jump to or call a step, and inputs that ask whether a step is active.
bool StepReferences::isReferenceCell(int row, int col) const {
    const QString category = m_q.category(row, col);
    switch (m_sheet.colKind(col)) {
    case KindOutKino:
        return category == cat::JMP || category == cat::CALL;
    case KindInpKino:
        return category == cat::STEP;
    default:
        return false;
    }
}

int StepReferences::confirm(const QString& oldDigital, const QString& newDigital) {
    if (m_ctx.hooks.confirmReplace)
        return m_ctx.hooks.confirmReplace(oldDigital, newDigital);
    return m_ctx.prompter.showMessage(kReplaceQuestion, 3, oldDigital, newDigital) == Answer::Yes ? ReplaceYes
                                                                                                  : ReplaceNo;
}

void StepReferences::AdjustRow(int firstRow, int count, bool insert) {
    if (count <= 0 || !m_ctx.option(keys::DoesReplaceFunction))
        return;
    m_allYes = false;
    const int offset = insert ? count : -count;
    for (int r = StepSheet::kFirstStepRow; r <= StepSheet::kLastStepRow; ++r)
        for (int c = 2; c < StepSheet::kCols; ++c)
            if (isReferenceCell(r, c) && ReplaceValue(r, c, firstRow, offset) == Outcome::StopAll)
                return;
}

StepReferences::Outcome StepReferences::ReplaceValue(int row, int col, int position, int offset) {
    const QString oldDigital = m_sheet.text(row, col);
    const int step = referencedStep(oldDigital);
    if (step < position || offset == 0)
        return Outcome::Unchanged;
    const int moved = step + offset;
    const bool removed = offset < 0 && step < position - offset;
    if (removed || moved < 1 || moved > kMaxTargetStep) {
        m_sheet.select(row, col);
        m_ctx.prompter.showMessage(removed ? kRemovedStep : kBeyondLastStep, 2, oldDigital);
        return Outcome::Refused;
    }
    const QString newDigital = CreateNewDigital(oldDigital, offset);
    if (m_ctx.option(keys::DoesAskInReplacing) && !m_allYes) {
        m_sheet.select(row, col);
        switch (confirm(oldDigital, newDigital)) {
        case ReplaceYes:
            break;
        case ReplaceAllYes:
            m_allYes = true;
            break;
        case ReplaceAllNo:
            return Outcome::StopAll;
        default:
            return Outcome::Declined;
        }
    }
    return m_entry.putFunction(row, col, newDigital, m_q.category(row, col)) ? Outcome::Replaced
                                                                             : Outcome::Refused;
}

} // namespace vkm
