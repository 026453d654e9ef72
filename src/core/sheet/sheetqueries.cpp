#include "sheet/sheetqueries.h"

#include "base/number.h"
#include "model/codes.h"
#include "model/csteps.h"
#include "model/steprules.h"
#include "sheet/sheetcontext.h"

namespace vkm {

SheetQueries::SheetQueries(const SheetContext& context) : m_ctx(context), m_sheet(context.sheet) {}

bool SheetQueries::isStar(int row, int col) const {
    return m_sheet.text(row, col) == QLatin1String(StepSheet::kStar);
}

bool SheetQueries::isEmptyCell(int row, int col) const {
    return m_sheet.text(row, col).isEmpty();
}

int SheetQueries::cellValue(int row, int col) const {
    return int(leadingInteger(m_sheet.text(row, col)));
}

QString SheetQueries::category(int row, int col) const {
    return m_sheet.data(row, col);
}

bool SheetQueries::ExistsValidRow(int row) const {
    return !isEmptyCell(row, m_sheet.GetcolOutKino1());
}

bool SheetQueries::ExistsEND(int row, int startCol, bool toRight) const {
    const int from = startCol - 1;
    const int to = toRight ? StepSheet::kCols - 1 : m_sheet.colInp();
    const int step = toRight ? 1 : -1;
    for (int c = from; toRight ? c <= to : c >= to; c += step) {
        if (c < 0 || c >= StepSheet::kCols || m_sheet.colKind(c) != KindRel)
            continue;
        if (!isEmptyCell(row, c) && !isStar(row, c) && cellValue(row, c) == RelEnd)
            return true;
    }
    return false;
}

bool SheetQueries::TopIsCOUNT(int row) const {
    return row != -1 && category(row, m_sheet.colInp()) == cat::COUNT;
}

bool SheetQueries::RowHasAllInput(int row) const {
    for (int g = 1; g <= 4; ++g)
        if (category(row, m_sheet.inputGroupCol(g)) == cat::ALL)
            return true;
    return false;
}

bool SheetQueries::RowHasReturnOutput(int row) const {
    return category(row, m_sheet.GetcolOutKino1()) == cat::RETURN ||
           category(row, m_sheet.GetcolOutKino2()) == cat::RETURN;
}

bool SheetQueries::IsRowDisabled(int row) const {
    return m_sheet.isRowDisabled(row);
}

bool SheetQueries::InputSomething(int row) const {
    for (int c = 1; c < StepSheet::kCols; ++c)
        if (!isEmptyCell(row, c))
            return true;
    return false;
}

bool SheetQueries::ExistsInputItem(int row, int group) const {
    const int kc = m_sheet.inputGroupCol(group);
    for (int i = 0; i < 3; ++i)
        if (!isEmptyCell(row, kc + i))
            return true;
    return false;
}

int SheetQueries::GetVacantStepInp(int row) const {
    for (int g = 1; g <= 4; ++g)
        if (isEmptyCell(row, m_sheet.inputGroupCol(g)))
            return g;
    return 0;
}

int SheetQueries::FindFirstInputKinoCol() const {
    return m_sheet.colInp();
}

int SheetQueries::GetLastInputRow() const {
    for (int r = StepSheet::kLastStepRow; r >= StepSheet::kFirstStepRow; --r)
        if (InputSomething(r))
            return r;
    return -1;
}

int SheetQueries::FindLastRow(int firstRow) const {
    for (int r = StepSheet::kLastStepRow; r >= std::max(firstRow, StepSheet::kFirstStepRow); --r)
        if (ExistsValidRow(r))
            return r;
    return -1;
}

bool SheetQueries::SafeBottomRow(int count) const {
    return std::max(GetLastInputRow(), 0) + count <= StepSheet::kLastStepRow;
}

bool SheetQueries::isAddingCounterRow(int row) const {
    const int rel1 = m_sheet.colInp() + 2;
    if (!TopIsCOUNT(row) || isEmptyCell(row, rel1) || isStar(row, rel1))
        return false;
    const int rel = cellValue(row, rel1);
    return rel == RelPlus || rel == RelMinus;
}

int SheetQueries::GetCounterId(int row) const {
    const int ci = m_sheet.colInp();
    QString pattern = QStringLiteral("0");
    pattern += IsJyosu(m_sheet.text(row, ci + 3)) ? QLatin1Char('1') : QLatin1Char('0');
    if (!isEmptyCell(row, ci + 6))
        pattern += IsJyosu(m_sheet.text(row, ci + 6)) ? QLatin1Char('1') : QLatin1Char('0');
    return counterIdForPattern(pattern);
}

bool SheetQueries::IsJyosu(const QString& text) {
    const QString t = text.trimmed();
    if (t.isEmpty() || t.size() > 5)
        return false;
    for (QChar ch : t)
        if (ch < QLatin1Char('0') || ch > QLatin1Char('9'))
            return false;
    return t.toInt() <= 65535;
}

void SheetQueries::delayRange(int row, int outKinoCol, qint32& lMin, qint32& lMax) const {
    const int kc = outKinoCol;
    const int delayKind = isStar(row, kc + 2) ? 0 : cellValue(row, kc + 2);
    GetValueRange(category(row, kc), m_sheet.text(row, kc), 2, cellValue(row, kc + 1), delayKind,
                  m_ctx.selout, m_ctx.selinp, lMin, lMax);
}

void SheetQueries::counterRange(int row, qint32& lMin, qint32& lMax) const {
    GetValueRange(cat::COUNT, m_sheet.text(row, m_sheet.colInp()), 1, 0, 0, m_ctx.selout, m_ctx.selinp, lMin,
                  lMax);
}

} // namespace vkm
