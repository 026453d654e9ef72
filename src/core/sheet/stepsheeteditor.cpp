#include "sheet/stepsheeteditor.h"

#include "base/number.h"
#include "base/prompter.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/csteps.h"
#include "model/steprules.h"

#include <QStringList>
#include <set>

namespace vkm {

const QString StepSheetEditor::kStateList = QStringLiteral("#0;POS LEV|#1;POS EDG|#2;NEG LEV|#3;NEG EDG");
const QString StepSheetEditor::kDelayKindList =
    QStringLiteral("#0;TIMER|#2;STC|#4;ANGLE1|#6;ANGLE2|#8;ANGLE3");
const QString StepSheetEditor::kLogicIoList = QStringLiteral("#0;LOW|#1;HIGH|#2;NOT");
const QString StepSheetEditor::kLogicCountList = QStringLiteral("#4;INC|#5;DEC|#6;SET|#7;CLR|#8;ADD|#9;SUB");
const QString StepSheetEditor::kRelList = QStringLiteral("#0;AND|#1;OR|#2;END");
const QString StepSheetEditor::kRelCountLowList = QStringLiteral("#3;>=|#4;<=|#5;=|#6;!=|#7;+|#8;-");
const QString StepSheetEditor::kRelCountHighList = QStringLiteral("#3;>=|#4;<=|#5;=|#6;!=");

namespace {
const QString kEndOnlyList = QStringLiteral("#2;END");
} // namespace

StepSheetEditor::StepSheetEditor(const CSelections& selout, const CSelections& selinp, Prompter& prompter,
                                 bool isComparison, bool locateInpFirst, EditorHooks hooks)
    : m_sheet(locateInpFirst), m_selout(selout), m_selinp(selinp), m_prompter(prompter),
      m_comparison(isComparison), m_hooks(std::move(hooks)) {}

// ---- small cell helpers --------------------------------------------------------------

bool StepSheetEditor::isStar(int row, int col) const {
    return m_sheet.text(row, col) == QLatin1String(StepSheet::kStar);
}

bool StepSheetEditor::isEmptyCell(int row, int col) const {
    return m_sheet.text(row, col).isEmpty();
}

int StepSheetEditor::cellValue(int row, int col) const {
    return int(leadingInteger(m_sheet.text(row, col)));
}

void StepSheetEditor::setChanged() {
    if (m_hooks.changed)
        m_hooks.changed();
}

// ---- combo lists -------------------------------------------------------------------

QString StepSheetEditor::comboList(int row, int col) const {
    const int kc = m_sheet.groupStart(col);
    switch (m_sheet.colKind(col)) {
    case KindState:
        return kStateList;
    case KindDelayKind:
        return kDelayKindList;
    case KindLogic:
        return category(row, kc) == cat::COUNT ? kLogicCountList : kLogicIoList;
    case KindRel:
        break;
    default:
        return {};
    }
    if (!TopIsCOUNT(row))
        return kRelList;
    const int group = m_sheet.groupOf(col);
    if (group == 1) {
        const int counter = m_selinp.ValueByDigital(cat::COUNT, m_sheet.text(row, m_sheet.colInp()));
        return counter >= 0 && counter < 32 ? kRelCountLowList : kRelCountHighList;
    }
    if (group == 2) {
        const int rel1 = cellValue(row, m_sheet.colInp() + 2);
        if (!isEmptyCell(row, m_sheet.colInp() + 2) && (rel1 == RelPlus || rel1 == RelMinus))
            return kRelCountHighList;
    }
    return kEndOnlyList;
}

QString StepSheetEditor::CreateInpList(const QString& list) {
    QString hint;
    for (const QString& entry : list.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        const int semi = entry.indexOf(QLatin1Char(';'));
        if (!entry.startsWith(QLatin1Char('#')) || semi < 0)
            continue;
        hint += QLatin1Char('[') + entry.mid(1, semi - 1) + QLatin1Char(']') + entry.mid(semi + 1) +
                QLatin1Char(' ');
    }
    return hint;
}

bool StepSheetEditor::listHasValue(const QString& list, const QString& value) {
    if (value.isEmpty())
        return false;
    for (const QString& entry : list.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        const int semi = entry.indexOf(QLatin1Char(';'));
        if (semi > 1 && entry.mid(1, semi - 1) == value)
            return true;
    }
    return false;
}

QString StepSheetEditor::comboName(int row, int col) const {
    const QString value = m_sheet.text(row, col);
    QString list = comboList(row, col);
    // A stored value outside the list offered now (a relation of a counter row read from
    // a file) is still named.
    if (m_sheet.colKind(col) == KindRel)
        list = kRelList + QLatin1Char('|') + kRelCountLowList;
    else if (m_sheet.colKind(col) == KindLogic)
        list = kLogicIoList + QLatin1Char('|') + kLogicCountList;
    for (const QString& entry : list.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        const int semi = entry.indexOf(QLatin1Char(';'));
        if (semi > 1 && entry.mid(1, semi - 1) == value)
            return entry.mid(semi + 1);
    }
    return {};
}

// ---- writing a program ---------------------------------------------------------------

void StepSheetEditor::PasteData(const CSteps& steps) {
    StepSheet::Batch batch(m_sheet);
    m_sheet.clear();
    ClearAllRem();
    int row = StepSheet::kFirstStepRow;
    for (const auto& step : steps) {
        if (row > StepSheet::kLastStepRow)
            break;
        if (step)
            PasteThisData(*step, row);
        ++row;
    }
}

void StepSheetEditor::PasteThisData(const CStep& step, int row) {
    if (!StepSheet::isStepRow(row))
        return;
    StepSheet::Batch batch(m_sheet);
    if (step.outs) {
        for (const auto& out : *step.outs) {
            if (!out || (out->Block != 1 && out->Block != 2) || out->Kino == -1)
                continue;
            const int kc = m_sheet.outputGroupCol(out->Block);
            WriteKino(row, kc, false, m_selout, out->Kino);
            m_sheet.setText(row, kc + 1, QString::number(out->Logic));
            m_sheet.setText(row, kc + 2, QString::number(out->DelayKind));
            m_sheet.setText(row, kc + 3,
                            QString::number(shownDelay(out->DelayEtc, category(row, kc), out->DelayKind)));
        }
    }
    if (step.inps) {
        const auto first = step.inps->Item(QStringLiteral("1"));
        const bool counter = first && m_selinp.CategoryByValue(qint16(first->Kino)) == cat::COUNT;
        bool ended = false;
        for (int block = 1; block <= 4 && !ended; ++block) {
            const auto inp = step.inps->Item(QString::number(block));
            if (!inp)
                continue;
            const int kc = m_sheet.inputGroupCol(block);
            if (counter && block > 1 && MustJyosu(step.inps->CounterId, block))
                m_sheet.setCell(row, kc, QString::number(quint16(inp->Kino)), QString());
            else
                WriteKino(row, kc, false, m_selinp, inp->Kino);
            m_sheet.setText(row, kc + 1, QString::number(inp->Jyotai));
            m_sheet.setText(row, kc + 2, QString::number(inp->Rel));
            ended = inp->Rel == RelEnd;
        }
    }
    m_sheet.setText(row, StepSheet::GetcolRemark(), step.Remark);
    DoGyoMuko(row, step.GyoMuko);
    SprashThisRow(row);
}

void StepSheetEditor::WriteKino(int row, int col, bool clear, const CSelections& sels, int value) {
    if (clear) {
        m_sheet.setCell(row, col, QString(), QString());
        return;
    }
    const qint16 v = qint16(value);
    const CSelection* entry = sels.hasValue(v) ? sels.Item(QString::number(v)) : nullptr;
    if (!entry) {
        // A function the catalogue does not know stays visible as its number; saving the
        // row refuses it rather than guessing a function.
        m_sheet.setCell(row, col, QLatin1Char('#') + QString::number(quint16(v)), QString());
        return;
    }
    m_sheet.setCell(row, col, entry->Digital, sels.CategoryByValue(v));
}

void StepSheetEditor::SetStarCell(int row, int col, int mode) {
    m_sheet.setCell(row, col, mode == 1 ? QString::fromLatin1(StepSheet::kStar) : QString(), QString());
}

void StepSheetEditor::SprashThisRow(int row) {
    refreshStars(row);
}

void StepSheetEditor::CannotEditOp1(const QString& category, int row, int col) {
    if (!isFlowCategory(category))
        return;
    SetStarCell(row, col + 2, 1);
    SetStarCell(row, col + 3, 1);
    if (col == m_sheet.GetcolOutKino1())
        for (int i = 0; i < 4; ++i)
            SetStarCell(row, m_sheet.GetcolOutKino2() + i, 1);
    if (category == cat::RETURN)
        for (int i = 0; i < 12; ++i)
            SetStarCell(row, m_sheet.colInp() + i, 1);
}

// Works out which cells of the row the "***" rules cover and makes the row say so:
// covered cells get "***", "***" cells no rule covers any more go back to empty.
void StepSheetEditor::refreshStars(int row) {
    if (!StepSheet::isStepRow(row))
        return;
    StepSheet::Batch batch(m_sheet);
    std::set<int> stars;
    const int o1 = m_sheet.GetcolOutKino1();
    const int o2 = m_sheet.GetcolOutKino2();
    const int ci = m_sheet.colInp();
    bool inputsCovered = false;
    for (int g = 1; g <= 2; ++g) {
        const int kc = m_sheet.outputGroupCol(g);
        if (g == 2 && stars.count(o2))
            break;
        const QString c = isStar(row, kc) ? QString() : category(row, kc);
        if (isFlowCategory(c)) {
            stars.insert({kc + 2, kc + 3});
            if (kc == o1)
                stars.insert({o2, o2 + 1, o2 + 2, o2 + 3});
            if (c == cat::RETURN) {
                inputsCovered = true;
                for (int i = 0; i < 12; ++i)
                    stars.insert(ci + i);
            }
        } else if (c == cat::COUNT && !isEmptyCell(row, kc + 1) && !isStar(row, kc + 1)) {
            const int logic = cellValue(row, kc + 1);
            if (logic >= LogicInc && logic <= LogicSub)
                stars.insert(kc + 2);
            if (logic == LogicInc || logic == LogicDec || logic == LogicClr)
                stars.insert(kc + 3);
        }
    }
    if (!inputsCovered) {
        const bool counter = TopIsCOUNT(row);
        if (counter) {
            stars.insert({ci + 1, ci + 4});
            const int rel1 = cellValue(row, ci + 2);
            if (!isEmptyCell(row, ci + 2) && (rel1 == RelPlus || rel1 == RelMinus))
                stars.insert(ci + 7);
        }
        for (int g = counter ? 2 : 1; g <= 4; ++g) {
            const int kc = m_sheet.inputGroupCol(g);
            if (category(row, kc) == cat::ALL) {
                stars.insert(kc + 1);
                m_sheet.setText(row, kc + 2, QString::number(RelEnd));
            }
        }
    }
    for (int col = 2; col < StepSheet::kCols; ++col) {
        const bool want = stars.count(col) > 0;
        if (want && !isStar(row, col))
            SetStarCell(row, col, 1);
        else if (!want && isStar(row, col))
            SetStarCell(row, col, 0);
    }
}

void StepSheetEditor::DoGyoMuko(int row, bool disable) {
    m_sheet.setRowDisabled(row, disable);
}

void StepSheetEditor::ClearAllRem() {
    StepSheet::Batch batch(m_sheet);
    for (int r = StepSheet::kFirstStepRow; r <= StepSheet::kLastStepRow; ++r)
        m_sheet.setRowDisabled(r, false);
}

// ---- clearing -------------------------------------------------------------------

bool StepSheetEditor::MustNotDelete(int row, int col) const {
    if (isStar(row, col))
        return true;
    switch (m_sheet.colKind(col)) {
    case KindLogic:
    case KindDelayKind:
    case KindDelayValue:
    case KindState:
    case KindRel:
        return true;
    default:
        return false;
    }
}

void StepSheetEditor::ResetThisColBlock(int row, int col) {
    const int kc = m_sheet.groupStart(col);
    if (kc < 0 || !StepSheet::isStepRow(row))
        return;
    StepSheet::Batch batch(m_sheet);
    // Clearing a counter clears its operands too: without the counter they mean nothing.
    if (kc == m_sheet.colInp() && TopIsCOUNT(row)) {
        for (int i = 0; i < 12; ++i)
            m_sheet.setCell(row, kc + i, QString(), QString());
    } else {
        const int width = m_sheet.isOutputCol(kc) ? 4 : 3;
        for (int i = 0; i < width; ++i)
            m_sheet.setCell(row, kc + i, QString(), QString());
    }
    refreshStars(row);
}

void StepSheetEditor::ClearCells(int row, int col) {
    if (!StepSheet::isStepRow(row) || col < 1)
        return;
    StepSheet::Batch batch(m_sheet);
    m_sheet.setCell(row, col, QString(), QString());
    refreshStars(row);
}

bool StepSheetEditor::DeleteOp() {
    if (m_sheet.rowSelectionMode()) {
        if (!m_comparison)
            m_prompter.showMessage(151, 2);
        return false;
    }
    const CellRect r = m_sheet.selection();
    return DeleteOp(r.row1, r.col1, r.row2, r.col2);
}

bool StepSheetEditor::DeleteOp(int row1, int col1, int row2, int col2) {
    if (m_comparison)
        return false;
    row1 = std::max(row1, StepSheet::kFirstStepRow);
    col1 = std::max(col1, 1);
    row2 = std::min(row2, StepSheet::kLastStepRow);
    col2 = std::min(col2, StepSheet::kCols - 1);
    if (row1 > row2 || col1 > col2)
        return false;
    if (row1 == row2 && col1 == col2 && MustNotDelete(row1, col1)) {
        m_prompter.showMessage(36, 2);
        return false;
    }
    if (m_hooks.snapshot)
        m_hooks.snapshot();
    StepSheet::Batch batch(m_sheet);
    for (int r = row1; r <= row2; ++r) {
        for (int c = col1; c <= col2; ++c) {
            const int kind = m_sheet.colKind(c);
            if ((kind == KindOutKino || kind == KindInpKino) && !isEmptyCell(r, c))
                ResetThisColBlock(r, c);
            else
                m_sheet.setCell(r, c, QString(), QString());
        }
        refreshStars(r);
    }
    setChanged();
    return true;
}

// ---- row queries ------------------------------------------------------------------

bool StepSheetEditor::ExistsValidRow(int row) const {
    return !isEmptyCell(row, m_sheet.GetcolOutKino1());
}

bool StepSheetEditor::ExistsEND(int row, int startCol, bool toRight) const {
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

bool StepSheetEditor::TopIsCOUNT(int row) const {
    return row != -1 && category(row, m_sheet.colInp()) == cat::COUNT;
}

bool StepSheetEditor::RowHasAllInput(int row) const {
    for (int g = 1; g <= 4; ++g)
        if (category(row, m_sheet.inputGroupCol(g)) == cat::ALL)
            return true;
    return false;
}

bool StepSheetEditor::RowHasReturnOutput(int row) const {
    return category(row, m_sheet.GetcolOutKino1()) == cat::RETURN ||
           category(row, m_sheet.GetcolOutKino2()) == cat::RETURN;
}

bool StepSheetEditor::InputSomething(int row) const {
    for (int c = 1; c < StepSheet::kCols; ++c)
        if (!isEmptyCell(row, c))
            return true;
    return false;
}

bool StepSheetEditor::ExistsInputItem(int row, int group) const {
    const int kc = m_sheet.inputGroupCol(group);
    for (int i = 0; i < 3; ++i)
        if (!isEmptyCell(row, kc + i))
            return true;
    return false;
}

int StepSheetEditor::GetVacantStepInp(int row) const {
    for (int g = 1; g <= 4; ++g)
        if (isEmptyCell(row, m_sheet.inputGroupCol(g)))
            return g;
    return 0;
}

int StepSheetEditor::GetLastInputRow() const {
    for (int r = StepSheet::kLastStepRow; r >= StepSheet::kFirstStepRow; --r)
        if (InputSomething(r))
            return r;
    return -1;
}

int StepSheetEditor::FindLastRow(int firstRow) const {
    for (int r = StepSheet::kLastStepRow; r >= std::max(firstRow, StepSheet::kFirstStepRow); --r)
        if (ExistsValidRow(r))
            return r;
    return -1;
}

bool StepSheetEditor::SafeBottomRow(int count) const {
    return std::max(GetLastInputRow(), 0) + count <= StepSheet::kLastStepRow;
}

// ---- counter rows -------------------------------------------------------------------

int StepSheetEditor::GetCounterId(int row) const {
    const int ci = m_sheet.colInp();
    QString pattern = QStringLiteral("0");
    pattern += IsJyosu(m_sheet.text(row, ci + 3)) ? QLatin1Char('1') : QLatin1Char('0');
    if (!isEmptyCell(row, ci + 6))
        pattern += IsJyosu(m_sheet.text(row, ci + 6)) ? QLatin1Char('1') : QLatin1Char('0');
    return counterIdForPattern(pattern);
}

bool StepSheetEditor::IsJyosu(const QString& text) {
    const QString t = text.trimmed();
    if (t.isEmpty() || t.size() > 5)
        return false;
    for (QChar ch : t)
        if (ch < QLatin1Char('0') || ch > QLatin1Char('9'))
            return false;
    return t.toInt() <= 65535;
}

} // namespace vkm
