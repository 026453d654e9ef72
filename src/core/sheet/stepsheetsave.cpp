// The sheet back into a step program: what is saved, printed or sent.
#include "sheet/stepsheeteditor.h"

#include "base/number.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/csteps.h"
#include "model/steprules.h"

namespace vkm {

qint32 StepSheetEditor::GetDelayToSave(int row, int outKinoCol) const {
    const qint64 shown = leadingInteger(m_sheet.text(row, outKinoCol + 3));
    const int kindCol = outKinoCol + 2;
    const int delayKind = isEmptyCell(row, kindCol) || isStar(row, kindCol) ? -1 : cellValue(row, kindCol);
    // The even check before a save makes the halving exact.
    return qint32(storedDelay(shown, category(row, outKinoCol), delayKind));
}

std::shared_ptr<CStepOuts> StepSheetEditor::buildOutputs(int row) const {
    auto outs = std::make_shared<CStepOuts>();
    for (int g = 1; g <= 2; ++g) {
        const int kc = m_sheet.outputGroupCol(g);
        if (isEmptyCell(row, kc) || isStar(row, kc)) {
            outs->Add(g, -1, 0, 0, 0, m_selout); // the machine wants both records; -1 = unused
            continue;
        }
        const QString c = category(row, kc);
        const QString digital = m_sheet.text(row, kc);
        if (c.isEmpty() || !m_selout.categoriesOfDigital(digital).contains(c))
            return nullptr;
        const int logic = isStar(row, kc + 1) ? 0 : cellValue(row, kc + 1);
        const int delayKind = isStar(row, kc + 2) ? 0 : cellValue(row, kc + 2);
        outs->Add(g, m_selout.ValueByDigital(c, digital), logic, delayKind, GetDelayToSave(row, kc),
                  m_selout);
    }
    return outs;
}

std::shared_ptr<CStepInps> StepSheetEditor::buildInputs(int row) const {
    auto inps = std::make_shared<CStepInps>();
    const bool counter = TopIsCOUNT(row);
    if (counter)
        inps->CounterId = GetCounterId(row);
    const bool ret = RowHasReturnOutput(row);
    for (int g = 1; g <= 4; ++g) {
        const int kc = m_sheet.inputGroupCol(g);
        if (ret || isEmptyCell(row, kc) || isStar(row, kc)) {
            inps->Add(g, 0, StateNegEdg, RelEnd); // an empty input record
            continue;
        }
        const QString text = m_sheet.text(row, kc);
        const QString c = category(row, kc);
        int value = 0;
        if (counter && g > 1 && c.isEmpty() && IsJyosu(text)) {
            value = text.trimmed().toInt();
        } else {
            if (c.isEmpty() || !m_selinp.categoriesOfDigital(text).contains(c))
                return nullptr;
            value = m_selinp.ValueByDigital(c, text);
        }
        const quint8 state = isStar(row, kc + 1) ? 0 : quint8(cellValue(row, kc + 1));
        const int rel = isStar(row, kc + 2) ? 0 : cellValue(row, kc + 2);
        inps->Add(g, value, state, rel);
    }
    return inps;
}

bool StepSheetEditor::AddValidRow(CSteps& steps, int row) const {
    const auto outs = buildOutputs(row);
    const auto inps = outs ? buildInputs(row) : nullptr;
    if (!outs || !inps)
        return false;
    steps.Add(outs, inps, m_sheet.text(row, StepSheet::GetcolRemark()), false, IsRowDisabled(row));
    return true;
}

bool StepSheetEditor::Update_step(const CSteps& current, CSteps& newProgram) const {
    CSteps fresh;
    fresh.Password = current.Password;
    fresh.Author = current.Author;
    fresh.Memo = current.Memo;
    fresh.MemoFile = current.MemoFile;
    for (int r = StepSheet::kFirstStepRow; r <= StepSheet::kLastStepRow; ++r) {
        const QString remark = m_sheet.text(r, StepSheet::GetcolRemark());
        if (ExistsValidRow(r)) {
            if (!AddValidRow(fresh, r))
                return false;
        } else if (!remark.isEmpty()) {
            fresh.Add(std::make_shared<CStepOuts>(), std::make_shared<CStepInps>(), remark, false,
                      IsRowDisabled(r));
        } else {
            fresh.Add(nullptr, nullptr, QString(), true, false);
        }
    }
    newProgram = std::move(fresh);
    return true;
}

} // namespace vkm
