#include "sheet/sheetchecks.h"

#include "base/number.h"
#include "base/prompter.h"
#include "model/codes.h"
#include "model/steprules.h"
#include "sheet/sheetqueries.h"
#include "sheet/stepsheet.h"

#include <QStringList>

namespace vkm {

namespace {
constexpr int kFirst = StepSheet::kFirstStepRow;
constexpr int kLast = StepSheet::kLastStepRow;
} // namespace

SheetChecks::SheetChecks(StepSheet& sheet, const SheetQueries& queries, Prompter& prompter)
    : m_sheet(sheet), m_q(queries), m_prompter(prompter) {}

bool SheetChecks::run() {
    m_failure = CheckFailure{};
    // There never was a sixth check; the numbering is kept so reports read the same.
    return check01() && check02() && check03() && check04() && check05() && check07() && check08() &&
           check09() && check10() && check11() && check12();
}

bool SheetChecks::fail(int message, int row, int col) {
    m_failure = {message, row, col};
    if (row >= 0)
        m_sheet.select(row, col);
    m_prompter.showMessage(message, 2);
    return false;
}

// Every row that acts must close its input block with END, and every output group
// that names a function must say how and when.
bool SheetChecks::check01() {
    for (int r = kFirst; r <= kLast; ++r) {
        if (!m_q.RowHasAllInput(r) && !m_q.RowHasReturnOutput(r) && m_q.ExistsValidRow(r) &&
            !m_q.ExistsEND(r, m_sheet.colInp(), true))
            return fail(52, r, m_sheet.colInp());
        for (int g = 1; g <= 2; ++g) {
            const int kc = m_sheet.outputGroupCol(g);
            if (m_q.isEmptyCell(r, kc))
                continue;
            if (m_q.isEmptyCell(r, kc + 1) || m_q.isEmptyCell(r, kc + 2) || m_q.isEmptyCell(r, kc + 3))
                return fail(64, r, kc + 2);
        }
    }
    return true;
}

bool SheetChecks::check02() {
    for (int r = kFirst; r <= kLast; ++r)
        if (!m_q.isEmptyCell(r, m_q.FindFirstInputKinoCol()) && !m_q.ExistsValidRow(r))
            return fail(76, r, m_sheet.GetcolOutKino1());
    return true;
}

bool SheetChecks::check03() {
    const int o1 = m_sheet.GetcolOutKino1();
    const int o2 = m_sheet.GetcolOutKino2();
    for (int r = kFirst; r <= kLast; ++r) {
        if (m_q.isEmptyCell(r, o2))
            continue;
        // The category kept with the cell is the catalogue's category of its number.
        if (isBranchCategory(m_q.category(r, o2)) && isBranchCategory(m_q.category(r, o1)))
            return fail(112, r, o1);
    }
    return true;
}

// An edge input only fires when the machine makes edges (the EMAKE output).
bool SheetChecks::check04() {
    bool edge = false;
    for (int r = kFirst; r <= kLast && !edge; ++r) {
        if (m_q.IsRowDisabled(r) || m_q.RowHasAllInput(r))
            continue;
        for (int g = 1; g <= 4 && !edge; ++g) {
            const int sc = m_sheet.inputGroupCol(g) + 1;
            if (m_q.isEmptyCell(r, sc) || m_q.isStar(r, sc))
                continue;
            const int state = m_q.cellValue(r, sc);
            edge = state == StatePosEdg || state == StateNegEdg;
        }
    }
    if (!edge)
        return true;
    for (int r = kFirst; r <= kLast; ++r) {
        if (m_q.IsRowDisabled(r))
            continue;
        if (m_sheet.text(r, m_sheet.GetcolOutKino1()) == QLatin1String("EMAKE") ||
            m_sheet.text(r, m_sheet.GetcolOutKino2()) == QLatin1String("EMAKE"))
            return true;
    }
    return fail(114, -1, -1);
}

bool SheetChecks::check05() {
    static const QStringList allowed = {QStringLiteral("0000"), QStringLiteral("1000"),
                                        QStringLiteral("1100"), QStringLiteral("1110"),
                                        QStringLiteral("1111")};
    for (int r = kFirst; r <= kLast; ++r) {
        QString pattern;
        for (int g = 1; g <= 4; ++g)
            pattern += m_q.isEmptyCell(r, m_sheet.inputGroupCol(g)) ? QLatin1Char('0') : QLatin1Char('1');
        if (!allowed.contains(pattern))
            return fail(115, r, m_sheet.colInp());
    }
    return true;
}

bool SheetChecks::checkGroupComplete(int row, int kc, int width) {
    int filled = 0;
    int firstEmpty = -1;
    for (int i = 0; i < width; ++i) {
        if (m_q.isEmptyCell(row, kc + i)) {
            if (firstEmpty < 0)
                firstEmpty = kc + i;
        } else {
            ++filled;
        }
    }
    if (filled == 0 || filled == width)
        return true;
    return fail(116, row, firstEmpty);
}

bool SheetChecks::check07() {
    for (int r = kFirst; r <= kLast; ++r) {
        for (int g = 1; g <= 2; ++g)
            if (!checkGroupComplete(r, m_sheet.outputGroupCol(g), 4))
                return false;
        for (int g = 1; g <= 4; ++g)
            if (!checkGroupComplete(r, m_sheet.inputGroupCol(g), 3))
                return false;
    }
    return true;
}

bool SheetChecks::check08() {
    for (int r = kFirst; r <= kLast; ++r) {
        int ends = 0;
        for (int g = 1; g <= 4; ++g) {
            const int rc = m_sheet.inputGroupCol(g) + 2;
            if (m_q.isEmptyCell(r, rc) || m_q.isStar(r, rc) || m_q.cellValue(r, rc) != RelEnd)
                continue;
            if (++ends > 1)
                return fail(134, r, rc);
        }
    }
    return true;
}

// A pulse (the same output switched twice in one step) must switch back later than it
// switched on, or the machine sees no pulse at all.
bool SheetChecks::check09() {
    const int o1 = m_sheet.GetcolOutKino1();
    const int o2 = m_sheet.GetcolOutKino2();
    for (int r = kFirst; r <= kLast; ++r) {
        if (m_q.isEmptyCell(r, o1) || m_sheet.text(r, o1) != m_sheet.text(r, o2) ||
            m_sheet.text(r, o1 + 2) != m_sheet.text(r, o2 + 2))
            continue;
        const int l1 = m_q.cellValue(r, o1 + 1);
        const int l2 = m_q.cellValue(r, o2 + 1);
        const bool pulse = (l1 == LogicHigh && l2 == LogicLow) || (l1 == LogicLow && l2 == LogicHigh) ||
                           (l1 == LogicNot && l2 == LogicNot);
        if (pulse && leadingInteger(m_sheet.text(r, o2 + 3)) <= leadingInteger(m_sheet.text(r, o1 + 3)))
            return fail(149, r, o2 + 3);
    }
    return true;
}

bool SheetChecks::check10() {
    const int o1 = m_sheet.GetcolOutKino1();
    const int o2 = m_sheet.GetcolOutKino2();
    for (int r = kFirst; r <= kLast; ++r) {
        if (m_q.isEmptyCell(r, o1))
            continue;
        const int required = flowLogic(m_q.category(r, o1));
        if (required < 0)
            continue;
        if (m_q.isEmptyCell(r, o1 + 1) || m_q.cellValue(r, o1 + 1) != required)
            return fail(153, r, o1 + 1);
        for (int col : {o1 + 2, o1 + 3, o2, o2 + 1, o2 + 2, o2 + 3})
            if (!m_q.isStar(r, col))
                return fail(154, r, col);
    }
    return true;
}

bool SheetChecks::checkEven(int row, int kc) {
    if (m_sheet.text(row, kc + 2) != QLatin1String("0"))
        return true;
    if (leadingInteger(m_sheet.text(row, kc + 3)) % 2 > 0)
        return fail(158, row, kc + 3);
    return true;
}

bool SheetChecks::check11() {
    for (int r = kFirst; r <= kLast; ++r)
        if (!checkEven(r, m_sheet.GetcolOutKino1()) || !checkEven(r, m_sheet.GetcolOutKino2()))
            return false;
    return true;
}

bool SheetChecks::checkDelayRange(int row, int kc) {
    if (!isNumeric(m_sheet.text(row, kc + 3)) || m_q.isEmptyCell(row, kc))
        return true;
    qint32 lMin = 0;
    qint32 lMax = 0;
    m_q.delayRange(row, kc, lMin, lMax);
    const qint64 value = leadingInteger(m_sheet.text(row, kc + 3));
    if (value < lMin || value > lMax)
        return fail(159, row, kc + 3);
    return true;
}

bool SheetChecks::check12() {
    for (int r = kFirst; r <= kLast; ++r)
        if (!checkDelayRange(r, m_sheet.GetcolOutKino1()) || !checkDelayRange(r, m_sheet.GetcolOutKino2()))
            return false;
    return true;
}

} // namespace vkm
