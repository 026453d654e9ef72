#include "sheet/functionfinder.h"

#include "base/prompter.h"
#include "sheet/cellentry.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetqueries.h"

#include <utility>

namespace vkm {

namespace {
constexpr int kRetryFromTop = 73;
constexpr int kNoReplacement = 74;
constexpr int kNotFound = 133;
constexpr int kNoValue = 152;
} // namespace

FunctionFinder::FunctionFinder(SheetContext& context, const SheetQueries& queries, CellEntry& entry)
    : m_ctx(context), m_sheet(context.sheet), m_q(queries), m_entry(entry) {}

int FunctionFinder::USRCMP() const {
    return m_ctx.comparison ? 1 : 0;
}

bool FunctionFinder::canReplace() const {
    return !m_ctx.comparison;
}

void FunctionFinder::open() {
    const int row = m_sheet.row();
    const int col = m_sheet.col();
    m_inout = m_sheet.isInputCol(col) ? 1 : 2;
    const int kind = m_sheet.colKind(col);
    FunctionName current;
    if (StepSheet::isStepRow(row) && (kind == KindOutKino || kind == KindInpKino) &&
        !m_q.category(row, col).isEmpty())
        current = {m_sheet.text(row, col), m_q.category(row, col)};
    if (!m_loaded) {
        m_loaded = true;
        m_browseSide = 0;
        m_count = 0;
        m_find = current;
        m_replace = {};
        m_replaceEnabled = false;
        m_pos = {StepSheet::kFirstStepRow, 1};
        m_wrapped = false;
        // The search starts at the top, and so does the current row (a Replace works on
        // the current row): the cursor goes to the first step, in the column it was in.
        m_sheet.select(StepSheet::kFirstStepRow, col);
    } else if (!current.digital.isEmpty()) {
        // Opened again on another function: that one is looked for now.
        setFindValue(current, 0);
    }
}

void FunctionFinder::setFindValue(const FunctionName& value, int browseSide) {
    if (value.digital != m_find.digital)
        m_wrapped = false;
    m_find = value;
    m_browseSide = browseSide;
}

void FunctionFinder::setReplaceValue(const FunctionName& value, int browseSide) {
    m_replace = value;
    m_browseSide = browseSide;
}

std::optional<FoundCell> FunctionFinder::ExistKino(int row, int col, const QString& digital) const {
    if (digital.isEmpty())
        return std::nullopt;
    // Both layouts alike: the scanned side's function columns, found by their kind.
    const int kind = scanSide() == 2 ? KindOutKino : KindInpKino;
    if (row < StepSheet::kFirstStepRow) {
        row = StepSheet::kFirstStepRow;
        col = 1;
    }
    for (int r = row; r <= StepSheet::kLastStepRow; ++r) {
        for (int c = r == row ? std::max(col, 1) : 1; c < StepSheet::kCols; ++c)
            if (m_sheet.colKind(c) == kind && m_sheet.text(r, c) == digital)
                return FoundCell{r, c};
    }
    return std::nullopt;
}

bool FunctionFinder::FindOp(bool silent) {
    for (;;) {
        if (const auto hit = ExistKino(m_pos.row, m_pos.col, m_find.digital)) {
            m_sheet.select(hit->row, hit->col);
            m_pos = *hit;
            return true;
        }
        if (m_wrapped) {
            if (!silent) {
                m_pos.row = 0;
                m_ctx.prompter.showMessage(kNotFound, 2);
            }
            return false;
        }
        m_pos = {StepSheet::kFirstStepRow, 1};
        m_wrapped = true;
    }
}

// With the option on, reaching the bottom asks before the search starts again at the top.
bool FunctionFinder::askRetryFromTop() {
    if (!m_ctx.option(keys::DoesShowMsgInFinding) || ExistKino(m_pos.row, m_pos.col, m_find.digital))
        return true;
    if (m_ctx.prompter.showMessage(kRetryFromTop, 3) != Answer::Yes)
        return false;
    m_wrapped = false;
    return true;
}

bool FunctionFinder::valuesGiven(bool replacing) const {
    if (m_find.digital.isEmpty()) {
        m_ctx.prompter.showMessage(kNoValue, 2);
        return false;
    }
    if (replacing && !ExactReplaceInput()) {
        m_ctx.prompter.showMessage(kNoReplacement, 2);
        return false;
    }
    return true;
}

bool FunctionFinder::findNext() {
    const FoundCell before = m_pos;
    advance();
    if (!askRetryFromTop()) {
        m_pos = before;
        return false;
    }
    return FindOp(false);
}

bool FunctionFinder::Next() {
    return valuesGiven(false) && findNext();
}

bool FunctionFinder::Replace() {
    if (!canReplace())
        return false;
    if (!m_replaceEnabled) {
        m_replaceEnabled = true;
        return false;
    }
    if (!valuesGiven(true))
        return false;
    // Only a cell that holds what was looked for is replaced: the user may have moved
    // since the search stopped there.
    const int row = m_sheet.row();
    bool replaced = false;
    if (m_sheet.text(row, m_pos.col) == m_find.digital)
        replaced = ReplaceWord(false, row, m_pos.col);
    findNext();
    return replaced;
}

int FunctionFinder::ReplaceAll() {
    if (!canReplace() || !valuesGiven(true))
        return 0;
    m_count = 0;
    // Every hit, wherever the search stands: it goes on from the top once.
    m_wrapped = false;
    bool snapshot = false;
    while (FindOp(true)) {
        if (!snapshot) {
            // One undo brings back everything replaced here.
            m_ctx.takeSnapshot();
            snapshot = true;
        }
        if (ReplaceWord(true, m_pos.row, m_pos.col))
            ++m_count;
        advance();
    }
    if (m_count == 0)
        m_ctx.prompter.showMessage(kNotFound, 2);
    return m_count;
}

bool FunctionFinder::ReplaceWord(bool silent, int row, int col) {
    const int kind = m_sheet.colKind(col);
    if (!canReplace() || !StepSheet::isStepRow(row) || (kind != KindOutKino && kind != KindInpKino))
        return false;
    if (!silent)
        m_ctx.takeSnapshot();
    return m_entry.putFunction(row, col, m_replace.digital, m_replace.category);
}

int FunctionFinder::takeReplacedCount() {
    return std::exchange(m_count, 0);
}

} // namespace vkm
