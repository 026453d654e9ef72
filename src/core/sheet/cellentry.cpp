#include "sheet/cellentry.h"

#include "base/legacytext.h"
#include "base/number.h"
#include "base/prompter.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/stepimagelayout.h"
#include "model/steprules.h"
#include "sheet/cellclearing.h"
#include "sheet/clipboardtext.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetqueries.h"

#include <QScopedValueRollback>

namespace vkm {

namespace {
// A remark is kept in its field of the step image.
constexpr int kRemarkBytes = image::kRemarkSize;

const QString kRemarkControl =
    QStringLiteral("A remark cannot hold a tab, a line break or another control character.");
} // namespace

CellEntry::CellEntry(SheetContext& context, const SheetQueries& queries, CellRules& rules,
                     CellClearing& clearing)
    : m_ctx(context), m_sheet(context.sheet), m_q(queries), m_rules(rules), m_clearing(clearing) {}

void CellEntry::beginEdit() {
    m_editPending = !m_replacing && !m_ctx.comparison && m_ctx.hooks.cellEdited;
    if (m_editPending)
        m_cellsBefore = m_sheet.saveCells();
}

void CellEntry::markChanged() {
    if (m_editPending) {
        m_editPending = false;
        m_ctx.hooks.cellEdited(m_cellsBefore);
    }
    m_ctx.setChanged();
}

bool CellEntry::CheckEditable(int row, int col) {
    if (!m_rules.DoesCannotEdit(row, col))
        return true;
    m_ctx.prompter.showMessage(42, 2);
    return false;
}

bool CellEntry::MustInputCell(int row, int col) {
    if (!m_q.isEmptyCell(row, col))
        return true;
    m_ctx.prompter.showMessage(46, 2, m_sheet.headerText(col));
    return false;
}

bool CellEntry::startEditRelation(int row, int col) {
    if (!MustInputCell(row, m_sheet.groupStart(col)))
        return false;
    if (!m_rules.relationMustStayEnd(row, col))
        return true;
    m_ctx.prompter.showMessage(49, 2);
    // The last relation of the block closes it, and so does the relation after the sum an
    // adding counter row compares: the cell gets the END it must hold.
    const int group = m_sheet.groupOf(col);
    if (group == 4 || (group == 3 && m_q.isAddingCounterRow(row)))
        m_sheet.setText(row, col, QString::number(RelEnd));
    return false;
}

StartEditResult CellEntry::fg_StartEdit(int row, int col) {
    StartEditResult result;
    if (m_ctx.comparison || !StepSheet::isStepRow(row) || col < 1 || col >= StepSheet::kCols)
        return result;
    if (!CheckEditable(row, col))
        return result;
    m_textBefore = m_sheet.text(row, col);
    result.textBefore = m_textBefore;
    const int kind = m_sheet.colKind(col);
    const int kc = m_sheet.groupStart(col);
    bool ok = true;
    switch (kind) {
    case KindOutKino:
        ok = col != m_sheet.GetcolOutKino2() || MustInputCell(row, m_sheet.GetcolOutKino1());
        break;
    case KindLogic:
        if (isFlowCategory(m_q.category(row, kc))) {
            m_ctx.prompter.showMessage(42, 2);
            ok = false;
        } else {
            ok = MustInputCell(row, kc);
        }
        break;
    case KindDelayKind:
    case KindDelayValue:
        ok = MustInputCell(row, col - 1);
        break;
    case KindState:
        ok = MustInputCell(row, kc);
        break;
    case KindRel:
        ok = startEditRelation(row, col);
        break;
    default:
        break;
    }
    if (!ok)
        return result;
    result.allowed = true;
    result.editor = CellRules::editorFor(kind);
    result.comboList = m_rules.comboList(row, col);
    if (result.editor == CellEditor::Function) {
        const bool output = kind == KindOutKino;
        const CSelections& sels = output ? m_ctx.selout : m_ctx.selinp;
        const QString c = m_q.category(row, col);
        result.side = output ? 2 : 1;
        result.orgValue = c.isEmpty() ? -1 : sels.ValueByDigital(c, m_sheet.text(row, col));
    }
    return result;
}

ValidateResult CellEntry::fg_ValidateEdit(int row, int col, const QString& text) {
    if (m_ctx.comparison || !StepSheet::isStepRow(row) || col < 1)
        return {false, m_sheet.text(row, col)};
    beginEdit();
    ValidateResult result = validateByKind(row, col, text);
    // An accepted edit stays open for fg_AfterEdit, which may still change the flag.
    if (!result.accepted)
        endEdit();
    return result;
}

ValidateResult CellEntry::validateByKind(int row, int col, const QString& text) {
    switch (m_sheet.colKind(col)) {
    case KindOutKino:
    case KindInpKino:
        return validateFunction(row, col, text.trimmed().toUpper());
    case KindRemark:
        return validateRemark(row, col, text);
    case KindDelayValue:
        return validateDelay(row, col, text);
    case KindLogic:
    case KindDelayKind:
    case KindState:
    case KindRel:
        return validateCombo(row, col, text.trimmed());
    default:
        return {false, m_sheet.text(row, col)};
    }
}

void CellEntry::fg_AfterEdit(int row, int col) {
    if (m_ctx.comparison || !StepSheet::isStepRow(row))
        return;
    if (m_sheet.text(row, col) != m_textBefore)
        markChanged();
    endEdit();
    m_rules.SprashThisRow(row);
    if (m_ctx.hooks.pulseRefresh)
        m_ctx.hooks.pulseRefresh(row);
}

bool CellEntry::enterText(int row, int col, const QString& text) {
    if (!fg_StartEdit(row, col).allowed)
        return false;
    if (!fg_ValidateEdit(row, col, text).accepted)
        return false;
    fg_AfterEdit(row, col);
    return true;
}

ValidateResult CellEntry::validateRemark(int row, int col, const QString& text) {
    // A tab or a line break would split the remark into cells or lines of the clipboard
    // text, and the one-line cell cannot show it: the value is refused rather than quietly
    // changed.
    if (ClipboardText::holdsControlCharacter(text)) {
        m_ctx.prompter.showText(kRemarkControl, 2);
        return {false, m_sheet.text(row, col)};
    }
    if (LegacyText::byteLength(text) > kRemarkBytes) {
        m_ctx.prompter.showMessage(56, 2, QString::number(kRemarkBytes));
        return {false, m_sheet.text(row, col)};
    }
    m_sheet.setText(row, col, text);
    return {true, text};
}

ValidateResult CellEntry::validateDelay(int row, int col, const QString& text) {
    const QString stored = m_sheet.text(row, col);
    const QString t = text.trimmed();
    if (t.isEmpty() || !isNumeric(t)) {
        m_ctx.prompter.showMessage(68, 2);
        return {false, stored};
    }
    const qint64 value = leadingInteger(t);
    const int kc = m_sheet.groupStart(col);
    qint32 lMin = 0;
    qint32 lMax = 0;
    m_q.delayRange(row, kc, lMin, lMax);
    if (value < lMin || value > lMax) {
        m_ctx.prompter.showMessage(43, 2, QString::number(lMin), QString::number(lMax));
        return {false, stored};
    }
    if (m_sheet.text(row, kc + 2) == QLatin1String("0") && value % 2 != 0) {
        m_ctx.prompter.showMessage(158, 2);
        return {false, stored};
    }
    m_sheet.setText(row, col, QString::number(value));
    return {true, m_sheet.text(row, col)};
}

ValidateResult CellEntry::validateCombo(int row, int col, const QString& text) {
    if (!CellRules::listHasValue(m_rules.comboList(row, col), text)) {
        m_ctx.prompter.showMessage(67, 2);
        return {false, m_sheet.text(row, col)};
    }
    m_sheet.setText(row, col, text);
    return {true, text};
}

ValidateResult CellEntry::validateFunction(int row, int col, const QString& upper) {
    const QString stored = m_sheet.text(row, col);
    if (upper.isEmpty()) {
        // Emptying a function cell takes its group with it, as the Delete key does.
        if (!stored.isEmpty()) {
            m_clearing.ResetThisColBlock(row, col);
            markChanged();
        }
        return {true, QString()};
    }
    if (m_sheet.isInputCol(col))
        return ExactInputKino(row, col, upper);
    if (m_ctx.selout.CountByDigital(upper) <= 0) {
        m_ctx.prompter.showMessage(67, 2);
        return {false, stored};
    }
    const QString c = ChooseCategory(m_ctx.selout, upper, m_ctx.hooks.chooseCategory);
    if (c.isEmpty())
        return {false, stored};
    if (!UpdateKinoOutInp(row, col, c, m_ctx.selout.ValueByDigital(c, upper)))
        return {false, stored};
    return {true, m_sheet.text(row, col)};
}

ValidateResult CellEntry::ExactInputKino(int row, int col, const QString& text) {
    const QString stored = m_sheet.text(row, col);
    const QString upper = text.trimmed().toUpper();
    const CSelections& selinp = m_ctx.selinp;
    if (m_q.TopIsCOUNT(row) && m_sheet.groupOf(col) > 1) {
        // A counter's operand: another counter, or a number typed in.
        if (selinp.categoriesOfDigital(upper).contains(cat::COUNT))
            return acceptInput(row, col, cat::COUNT, selinp.ValueByDigital(cat::COUNT, upper));
        if (!counterOperandCellOk(row, col) || !ExactJyosu(row, col, upper))
            return {false, stored};
        writeCounterOperand(row, col, upper);
        return {true, m_sheet.text(row, col)};
    }
    if (selinp.CountByDigital(upper) <= 0) {
        m_ctx.prompter.showMessage(67, 2);
        return {false, stored};
    }
    if (m_q.ExistsEND(row, col, false)) {
        m_ctx.prompter.showMessage(156, 2);
        return {false, QString()};
    }
    const QString c = ChooseCategory(selinp, upper, m_ctx.hooks.chooseCategory);
    if (c.isEmpty())
        return {false, stored};
    return acceptInput(row, col, c, selinp.ValueByDigital(c, upper));
}

// In a counter row only input groups 2 and 3 take an operand, and none after an END.
bool CellEntry::counterOperandCellOk(int row, int col) {
    if (m_q.ExistsEND(row, col, false)) {
        m_ctx.prompter.showMessage(156, 2);
        return false;
    }
    if (!m_sheet.ColIs2or3Grp(col)) {
        m_ctx.prompter.showMessage(89, 2);
        return false;
    }
    return true;
}

ValidateResult CellEntry::acceptInput(int row, int col, const QString& category, int value) {
    const QString stored = m_sheet.text(row, col);
    const int group = m_sheet.groupOf(col);
    if (m_q.TopIsCOUNT(row) && group > 1) {
        if (!counterOperandCellOk(row, col))
            return {false, stored};
        if (category != cat::COUNT) {
            qint32 lMin = 0;
            qint32 lMax = 0;
            m_q.counterRange(row, lMin, lMax);
            m_ctx.prompter.showMessage(81, 2, QString::number(lMin), QString::number(lMax));
            return {false, stored};
        }
    } else {
        if (m_q.ExistsEND(row, col, false)) {
            m_ctx.prompter.showMessage(156, 2);
            return {false, QString()};
        }
        if (category == cat::COUNT && group != 1) {
            m_ctx.prompter.showMessage(87, 2);
            m_sheet.select(row, m_sheet.colInp());
            return {false, QString()};
        }
    }
    if (!UpdateKinoOutInp(row, col, category, value))
        return {false, stored};
    return {true, m_sheet.text(row, col)};
}

bool CellEntry::ExactJyosu(int row, int, const QString& text) {
    qint32 lMin = 0;
    qint32 lMax = 0;
    m_q.counterRange(row, lMin, lMax);
    const qint64 value = text.trimmed().toLongLong();
    const bool ok = SheetQueries::IsJyosu(text) && value >= lMin && value <= lMax;
    if (!ok)
        m_ctx.prompter.showMessage(81, 2, QString::number(lMin), QString::number(lMax));
    return ok;
}

// An adding counter row compares the sum with input group 3: its operand is the last one,
// so its relation is END from the moment it is entered.
void CellEntry::closeAddingCounterRow(int row, int col) {
    if (m_sheet.groupOf(col) == 3 && m_sheet.isInputCol(col) && m_q.isAddingCounterRow(row))
        m_sheet.setText(row, col + 2, QString::number(RelEnd));
}

void CellEntry::writeCounterOperand(int row, int col, const QString& number) {
    const QString text = QString::number(number.trimmed().toLongLong());
    if (m_sheet.text(row, col) == text && m_sheet.data(row, col).isEmpty())
        return;
    StepSheet::Batch batch(m_sheet);
    m_sheet.setCell(row, col, text, QString());
    closeAddingCounterRow(row, col);
    m_rules.SprashThisRow(row);
    markChanged();
}

bool CellEntry::CanInputOut(int row, int col, int value) {
    if (!isBranchCategory(m_ctx.selout.CategoryByValue(qint16(value))))
        return true;
    const int other = col == m_sheet.GetcolOutKino1() ? m_sheet.GetcolOutKino2() : m_sheet.GetcolOutKino1();
    if (!isBranchCategory(m_q.category(row, other)))
        return true;
    m_ctx.prompter.showMessage(112, 2);
    return false;
}

bool CellEntry::DoesSameCaegory(int side, const QString& oldCategory, const QString& newCategory) {
    if (side == 1)
        return (oldCategory == cat::COUNT) == (newCategory == cat::COUNT);
    return oldCategory == newCategory;
}

bool CellEntry::UpdateKinoOutInp(int row, int col, const QString& category, int value) {
    if (m_ctx.comparison || !StepSheet::isStepRow(row))
        return false;
    const bool output = m_sheet.isOutputCol(col);
    const CSelections& sels = output ? m_ctx.selout : m_ctx.selinp;
    const QString oldText = m_sheet.text(row, col);
    const QString oldCategory = m_sheet.data(row, col);
    const CSelection* entry = sels.Item(QString::number(qint16(value)));
    if (entry && oldText == entry->Digital && oldCategory == category)
        return true;
    if (output && !CanInputOut(row, col, value))
        return false;
    const bool kindChanged = oldText.isEmpty() || !DoesSameCaegory(output ? 2 : 1, oldCategory, category);
    StepSheet::Batch batch(m_sheet);
    // What the old function caused goes with it, as when its cell is cleared: its group's
    // settings, and a counter's operands.
    if (kindChanged && !oldText.isEmpty())
        m_clearing.ResetThisColBlock(row, col);
    const int group = m_sheet.groupOf(col);
    m_rules.WriteKino(row, col, false, sels, value);
    if (kindChanged && !output && group == 4)
        m_sheet.setText(row, col + 2, QString::number(RelEnd));
    if (kindChanged && !output)
        closeAddingCounterRow(row, col);
    if (kindChanged && output && isFlowCategory(category))
        m_sheet.setText(row, col + 1, QString::number(flowLogic(category)));
    m_rules.SprashThisRow(row);
    markChanged();
    if (m_ctx.hooks.functionChanged)
        m_ctx.hooks.functionChanged(row, col);
    return true;
}

bool CellEntry::SpaceOp(int row, int col) {
    if (m_ctx.comparison || CellRules::editorFor(m_sheet.colKind(col)) != CellEditor::Combo)
        return false;
    const StartEditResult start = fg_StartEdit(row, col);
    if (!start.allowed)
        return false;
    const int from = m_q.isEmptyCell(row, col) ? -1 : m_q.cellValue(row, col);
    for (int i = 1; i <= 10; ++i) {
        const QString candidate = QString::number(((from + i) % 10 + 10) % 10);
        if (CellRules::listHasValue(start.comboList, candidate)) {
            beginEdit();
            m_sheet.setText(row, col, candidate);
            fg_AfterEdit(row, col);
            return true;
        }
    }
    return false;
}

F2Result CellEntry::F2InputOp(int row, int col) {
    F2Result result;
    if (m_ctx.comparison)
        return result;
    const StartEditResult start = fg_StartEdit(row, col);
    if (!start.allowed)
        return result;
    if (start.editor != CellEditor::Function || !m_ctx.hooks.chooseFunction) {
        result.action = F2Action::StartEdit;
        result.start = start;
        return result;
    }
    const bool output = start.side == 2;
    const CSelections& sels = output ? m_ctx.selout : m_ctx.selinp;
    const std::optional<int> chosen = m_ctx.hooks.chooseFunction(start.side, start.orgValue, row);
    if (!chosen || !sels.Item(QString::number(qint16(*chosen))))
        return result;
    // The chosen function goes through the same rules as a typed one, with its category
    // known (a shared display text must not ask again).
    beginEdit();
    const bool ok = writeFunction(row, col, sels.CategoryByValue(qint16(*chosen)), *chosen);
    endEdit();
    result.action = ok ? F2Action::FunctionWritten : F2Action::Nothing;
    return result;
}

bool CellEntry::writeFunction(int row, int col, const QString& category, int value) {
    return m_sheet.isOutputCol(col) ? UpdateKinoOutInp(row, col, category, value)
                                    : acceptInput(row, col, category, value).accepted;
}

bool CellEntry::putFunction(int row, int col, const QString& digital, const QString& category) {
    const int kind = m_sheet.colKind(col);
    const QString upper = digital.trimmed().toUpper();
    if (m_ctx.comparison || !StepSheet::isStepRow(row) || upper.isEmpty() ||
        (kind != KindOutKino && kind != KindInpKino))
        return false;
    const CSelections& sels = kind == KindOutKino ? m_ctx.selout : m_ctx.selinp;
    const QScopedValueRollback replacing(m_replacing, true);
    if (const auto value = sels.valueInCategory(category, upper))
        return writeFunction(row, col, category, *value);
    return fg_ValidateEdit(row, col, upper).accepted;
}

StartEditResult CellEntry::typeCharacter(int row, int col, QChar ch) {
    if (m_ctx.comparison || !(ch.unicode() >= 33))
        return {};
    StartEditResult start = fg_StartEdit(row, col);
    if (!start.allowed)
        return start;
    if (start.editor == CellEditor::Combo && !CellRules::listHasValue(start.comboList, QString(ch))) {
        m_ctx.prompter.showMessage(67, 2);
        return {};
    }
    // A function cell typed into is edited as text; the dialog is F2's.
    if (start.editor == CellEditor::Function)
        start.editor = CellEditor::Text;
    return start;
}

} // namespace vkm
