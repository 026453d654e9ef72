#include "sheet/sheetconversion.h"

#include "base/number.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/csteps.h"
#include "model/steprules.h"
#include "sheet/cellrules.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetqueries.h"

namespace vkm {

SheetConversion::SheetConversion(SheetContext& context, const SheetQueries& queries, CellRules& rules)
    : m_ctx(context), m_sheet(context.sheet), m_q(queries), m_rules(rules) {}

void SheetConversion::PasteData(const CSteps& steps) {
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

void SheetConversion::PasteThisData(const CStep& step, int row) {
    if (!StepSheet::isStepRow(row))
        return;
    StepSheet::Batch batch(m_sheet);
    if (step.outs) {
        for (const auto& out : *step.outs) {
            if (!out || (out->Block != 1 && out->Block != 2) || out->Kino == -1)
                continue;
            const int kc = m_sheet.outputGroupCol(out->Block);
            m_rules.WriteKino(row, kc, false, m_ctx.selout, out->Kino);
            m_sheet.setText(row, kc + 1, QString::number(out->Logic));
            m_sheet.setText(row, kc + 2, QString::number(out->DelayKind));
            m_sheet.setText(
                row, kc + 3,
                QString::number(shownDelay(out->DelayEtc, m_q.category(row, kc), out->DelayKind)));
        }
    }
    if (step.inps) {
        const bool counter = isCounterStep(*step.inps, m_ctx.selinp);
        bool ended = false;
        for (int block = 1; block <= 4 && !ended; ++block) {
            const auto inp = step.inps->Item(QString::number(block));
            if (!inp)
                continue;
            const int kc = m_sheet.inputGroupCol(block);
            // A counter's operand typed in as a number is shown as that number, never as
            // the function that happens to have its value.
            if (counter && block > 1 && MustJyosu(step.inps->CounterId, block))
                m_sheet.setCell(row, kc, QString::number(quint16(inp->Kino)), QString());
            else
                m_rules.WriteKino(row, kc, false, m_ctx.selinp, inp->Kino);
            m_sheet.setText(row, kc + 1, QString::number(inp->Jyotai));
            m_sheet.setText(row, kc + 2, QString::number(inp->Rel));
            ended = inp->Rel == RelEnd;
        }
    }
    m_sheet.setText(row, StepSheet::GetcolRemark(), step.Remark);
    DoGyoMuko(row, step.GyoMuko);
    m_rules.SprashThisRow(row);
}

void SheetConversion::DoGyoMuko(int row, bool disable) {
    m_sheet.setRowDisabled(row, disable);
}

void SheetConversion::ClearAllRem() {
    m_sheet.enableAllRows();
}

qint32 SheetConversion::GetDelayToSave(int row, int outKinoCol) const {
    const qint64 shown = leadingInteger(m_sheet.text(row, outKinoCol + 3));
    const int kindCol = outKinoCol + 2;
    const int delayKind =
        m_q.isEmptyCell(row, kindCol) || m_q.isStar(row, kindCol) ? -1 : m_q.cellValue(row, kindCol);
    return qint32(storedDelay(shown, m_q.category(row, outKinoCol), delayKind));
}

std::shared_ptr<CStepOuts> SheetConversion::buildOutputs(int row) const {
    auto outs = std::make_shared<CStepOuts>();
    for (int g = 1; g <= 2; ++g) {
        const int kc = m_sheet.outputGroupCol(g);
        if (m_q.isEmptyCell(row, kc) || m_q.isStar(row, kc)) {
            outs->Add(g, -1, 0, 0, 0, m_ctx.selout); // the machine wants both records; -1 = unused
            continue;
        }
        const auto value = m_ctx.selout.valueInCategory(m_q.category(row, kc), m_sheet.text(row, kc));
        if (!value)
            return nullptr;
        const int logic = m_q.isStar(row, kc + 1) ? 0 : m_q.cellValue(row, kc + 1);
        const int delayKind = m_q.isStar(row, kc + 2) ? 0 : m_q.cellValue(row, kc + 2);
        outs->Add(g, *value, logic, delayKind, GetDelayToSave(row, kc), m_ctx.selout);
    }
    return outs;
}

std::shared_ptr<CStepInps> SheetConversion::buildInputs(int row) const {
    auto inps = std::make_shared<CStepInps>();
    const bool counter = m_q.TopIsCOUNT(row);
    if (counter)
        inps->CounterId = m_q.GetCounterId(row);
    const bool ret = m_q.RowHasReturnOutput(row);
    for (int g = 1; g <= 4; ++g) {
        const int kc = m_sheet.inputGroupCol(g);
        if (ret || m_q.isEmptyCell(row, kc) || m_q.isStar(row, kc)) {
            inps->Add(g, 0, StateNegEdg, RelEnd); // an empty input record
            continue;
        }
        const QString text = m_sheet.text(row, kc);
        const QString c = m_q.category(row, kc);
        int value = 0;
        if (counter && g > 1 && c.isEmpty() && SheetQueries::IsJyosu(text)) {
            value = text.trimmed().toInt();
        } else if (const auto known = m_ctx.selinp.valueInCategory(c, text)) {
            value = *known;
        } else {
            return nullptr;
        }
        const quint8 state = m_q.isStar(row, kc + 1) ? 0 : quint8(m_q.cellValue(row, kc + 1));
        const int rel = m_q.isStar(row, kc + 2) ? 0 : m_q.cellValue(row, kc + 2);
        inps->Add(g, value, state, rel);
    }
    return inps;
}

bool SheetConversion::AddValidRow(CSteps& steps, int row) const {
    const auto outs = buildOutputs(row);
    const auto inps = outs ? buildInputs(row) : nullptr;
    if (!outs || !inps)
        return false;
    steps.Add(outs, inps, m_sheet.text(row, StepSheet::GetcolRemark()), false, m_q.IsRowDisabled(row));
    return true;
}

bool SheetConversion::Update_step(const CSteps& current, CSteps& newProgram) const {
    CSteps fresh;
    fresh.Password = current.Password;
    fresh.Author = current.Author;
    fresh.Memo = current.Memo;
    fresh.MemoFile = current.MemoFile;
    for (int r = StepSheet::kFirstStepRow; r <= StepSheet::kLastStepRow; ++r) {
        const QString remark = m_sheet.text(r, StepSheet::GetcolRemark());
        if (m_q.ExistsValidRow(r)) {
            if (!AddValidRow(fresh, r))
                return false;
        } else if (!remark.isEmpty()) {
            fresh.Add(std::make_shared<CStepOuts>(), std::make_shared<CStepInps>(), remark, false,
                      m_q.IsRowDisabled(r));
        } else {
            fresh.Add(nullptr, nullptr, QString(), true, false);
        }
    }
    newProgram = std::move(fresh);
    return true;
}

} // namespace vkm
