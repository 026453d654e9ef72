// Cell entry of the step editor: starting an edit, validating what was typed or
// chosen, and the keys that change a cell directly.
#include "sheet/stepsheeteditor.h"

#include "base/legacytext.h"
#include "base/number.h"
#include "base/prompter.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/cstepouts.h"
#include "model/csteps.h"
#include "model/steprules.h"

namespace vkm {

namespace {
constexpr int kRemarkBytes = 20;
} // namespace

bool StepSheetEditor::DoesCannotEdit(int row, int col) const {
    return isStar(row, col);
}

bool StepSheetEditor::CheckEditable(int row, int col) {
    if (!DoesCannotEdit(row, col))
        return true;
    m_prompter.showMessage(42, 2);
    return false;
}

bool StepSheetEditor::MustInputCell(int row, int col) {
    if (!isEmptyCell(row, col))
        return true;
    m_prompter.showMessage(46, 2, m_sheet.headerText(col));
    return false;
}

bool StepSheetEditor::MustIMEON(int, int col) const {
    return m_sheet.colKind(col) == KindRemark;
}

bool StepSheetEditor::startEditRelation(int row, int col) {
    if (!MustInputCell(row, m_sheet.groupStart(col)))
        return false;
    const int group = m_sheet.groupOf(col);
    if (group == 4) {
        // The last relation of the block closes it: it is always END.
        m_prompter.showMessage(49, 2);
        m_sheet.setText(row, col, QString::number(RelEnd));
        return false;
    }
    if (TopIsCOUNT(row) && (group == 3 || (!isEmptyCell(row, col) && cellValue(row, col) == RelEnd))) {
        m_prompter.showMessage(49, 2);
        return false;
    }
    return true;
}

StartEditResult StepSheetEditor::fg_StartEdit(int row, int col) {
    StartEditResult result;
    if (m_comparison || !StepSheet::isStepRow(row) || col < 1 || col >= StepSheet::kCols)
        return result;
    if (!CheckEditable(row, col))
        return result;
    m_textBefore = m_sheet.text(row, col);
    result.textBefore = m_textBefore;
    const int kc = m_sheet.groupStart(col);
    bool ok = true;
    switch (m_sheet.colKind(col)) {
    case KindOutKino:
        ok = col != m_sheet.GetcolOutKino2() || MustInputCell(row, m_sheet.GetcolOutKino1());
        result.editor = CellEditor::Function;
        break;
    case KindInpKino:
        result.editor = CellEditor::Function;
        break;
    case KindLogic:
        if (isFlowCategory(category(row, kc))) {
            m_prompter.showMessage(42, 2);
            ok = false;
        } else {
            ok = MustInputCell(row, kc);
        }
        result.editor = CellEditor::Combo;
        break;
    case KindDelayKind:
    case KindDelayValue:
    case KindState:
        ok = MustInputCell(row, m_sheet.colKind(col) == KindState ? kc : col - 1);
        result.editor = m_sheet.colKind(col) == KindDelayValue ? CellEditor::Text : CellEditor::Combo;
        break;
    case KindRel:
        ok = startEditRelation(row, col);
        result.editor = CellEditor::Combo;
        break;
    default:
        result.editor = CellEditor::Text;
        break;
    }
    if (!ok) {
        result.editor = CellEditor::None;
        return result;
    }
    result.allowed = true;
    result.comboList = comboList(row, col);
    return result;
}

ValidateResult StepSheetEditor::fg_ValidateEdit(int row, int col, const QString& text) {
    if (m_comparison || !StepSheet::isStepRow(row) || col < 1)
        return {false, m_sheet.text(row, col)};
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

void StepSheetEditor::fg_AfterEdit(int row, int col) {
    if (m_comparison || !StepSheet::isStepRow(row))
        return;
    if (m_sheet.text(row, col) != m_textBefore)
        setChanged();
    refreshStars(row);
    if (m_hooks.pulseRefresh)
        m_hooks.pulseRefresh(row);
}

bool StepSheetEditor::enterText(int row, int col, const QString& text) {
    if (!fg_StartEdit(row, col).allowed)
        return false;
    if (!fg_ValidateEdit(row, col, text).accepted)
        return false;
    fg_AfterEdit(row, col);
    return true;
}

ValidateResult StepSheetEditor::validateRemark(int row, int col, const QString& text) {
    if (LegacyText::byteLength(text) > kRemarkBytes) {
        m_prompter.showMessage(56, 2, QString::number(kRemarkBytes));
        return {false, m_sheet.text(row, col)};
    }
    m_sheet.setText(row, col, text);
    return {true, text};
}

void StepSheetEditor::delayRange(int row, int outKinoCol, qint32& lMin, qint32& lMax) const {
    const int kc = outKinoCol;
    const int delayKind = isStar(row, kc + 2) ? 0 : cellValue(row, kc + 2);
    GetValueRange(category(row, kc), m_sheet.text(row, kc), 2, cellValue(row, kc + 1), delayKind, m_selout,
                  m_selinp, lMin, lMax);
}

void StepSheetEditor::counterRange(int row, qint32& lMin, qint32& lMax) const {
    GetValueRange(cat::COUNT, m_sheet.text(row, m_sheet.colInp()), 1, 0, 0, m_selout, m_selinp, lMin, lMax);
}

ValidateResult StepSheetEditor::validateDelay(int row, int col, const QString& text) {
    const QString stored = m_sheet.text(row, col);
    const QString t = text.trimmed();
    if (t.isEmpty() || !isNumeric(t)) {
        m_prompter.showMessage(68, 2);
        return {false, stored};
    }
    const qint64 value = leadingInteger(t);
    const int kc = m_sheet.groupStart(col);
    qint32 lMin = 0;
    qint32 lMax = 0;
    delayRange(row, kc, lMin, lMax);
    if (value < lMin || value > lMax) {
        m_prompter.showMessage(43, 2, QString::number(lMin), QString::number(lMax));
        return {false, stored};
    }
    if (m_sheet.text(row, kc + 2) == QLatin1String("0") && value % 2 != 0) {
        m_prompter.showMessage(158, 2);
        return {false, stored};
    }
    m_sheet.setText(row, col, QString::number(value));
    return {true, m_sheet.text(row, col)};
}

ValidateResult StepSheetEditor::validateCombo(int row, int col, const QString& text) {
    if (!listHasValue(comboList(row, col), text)) {
        m_prompter.showMessage(67, 2);
        return {false, m_sheet.text(row, col)};
    }
    m_sheet.setText(row, col, text);
    return {true, text};
}

ValidateResult StepSheetEditor::validateFunction(int row, int col, const QString& upper) {
    const QString stored = m_sheet.text(row, col);
    if (upper.isEmpty()) {
        // Emptying a function cell takes its group with it, as the Delete key does.
        if (!stored.isEmpty()) {
            ResetThisColBlock(row, col);
            setChanged();
        }
        return {true, QString()};
    }
    if (m_sheet.isInputCol(col))
        return ExactInputKino(row, col, upper);
    if (m_selout.CountByDigital(upper) <= 0) {
        m_prompter.showMessage(67, 2);
        return {false, stored};
    }
    const QString c = ChooseCategory(m_selout, upper, m_hooks.chooseCategory);
    if (c.isEmpty())
        return {false, stored};
    if (!UpdateKinoOutInp(row, col, c, m_selout.ValueByDigital(c, upper)))
        return {false, stored};
    return {true, m_sheet.text(row, col)};
}

ValidateResult StepSheetEditor::ExactInputKino(int row, int col, const QString& text) {
    const QString stored = m_sheet.text(row, col);
    const QString upper = text.trimmed().toUpper();
    if (TopIsCOUNT(row) && m_sheet.groupOf(col) > 1) {
        // A counter's operand: another counter, or a number typed in.
        if (m_selinp.categoriesOfDigital(upper).contains(cat::COUNT))
            return acceptInput(row, col, cat::COUNT, m_selinp.ValueByDigital(cat::COUNT, upper));
        if (!counterOperandCellOk(row, col) || !ExactJyosu(row, col, upper))
            return {false, stored};
        writeCounterOperand(row, col, upper);
        return {true, m_sheet.text(row, col)};
    }
    if (m_selinp.CountByDigital(upper) <= 0) {
        m_prompter.showMessage(67, 2);
        return {false, stored};
    }
    if (ExistsEND(row, col, false)) {
        m_prompter.showMessage(156, 2);
        return {false, QString()};
    }
    const QString c = ChooseCategory(m_selinp, upper, m_hooks.chooseCategory);
    if (c.isEmpty())
        return {false, stored};
    return acceptInput(row, col, c, m_selinp.ValueByDigital(c, upper));
}

// In a counter row only input groups 2 and 3 take an operand, and none after an END.
bool StepSheetEditor::counterOperandCellOk(int row, int col) {
    if (ExistsEND(row, col, false)) {
        m_prompter.showMessage(156, 2);
        return false;
    }
    if (!m_sheet.ColIs2or3Grp(col)) {
        m_prompter.showMessage(89, 2);
        return false;
    }
    return true;
}

ValidateResult StepSheetEditor::acceptInput(int row, int col, const QString& category, int value) {
    const QString stored = m_sheet.text(row, col);
    const int group = m_sheet.groupOf(col);
    if (TopIsCOUNT(row) && group > 1) {
        if (!counterOperandCellOk(row, col))
            return {false, stored};
        if (category != cat::COUNT) {
            qint32 lMin = 0;
            qint32 lMax = 0;
            counterRange(row, lMin, lMax);
            m_prompter.showMessage(81, 2, QString::number(lMin), QString::number(lMax));
            return {false, stored};
        }
    } else {
        if (ExistsEND(row, col, false)) {
            m_prompter.showMessage(156, 2);
            return {false, QString()};
        }
        if (category == cat::COUNT && group != 1) {
            m_prompter.showMessage(87, 2);
            m_sheet.select(row, m_sheet.colInp());
            return {false, QString()};
        }
    }
    if (!UpdateKinoOutInp(row, col, category, value))
        return {false, stored};
    return {true, m_sheet.text(row, col)};
}

bool StepSheetEditor::ExactJyosu(int row, int, const QString& text) {
    qint32 lMin = 0;
    qint32 lMax = 0;
    counterRange(row, lMin, lMax);
    const bool ok =
        IsJyosu(text) && text.trimmed().toLongLong() >= lMin && text.trimmed().toLongLong() <= lMax;
    if (!ok)
        m_prompter.showMessage(81, 2, QString::number(lMin), QString::number(lMax));
    return ok;
}

void StepSheetEditor::writeCounterOperand(int row, int col, const QString& number) {
    const QString text = QString::number(number.trimmed().toLongLong());
    if (m_sheet.text(row, col) == text && m_sheet.data(row, col).isEmpty())
        return;
    StepSheet::Batch batch(m_sheet);
    m_sheet.setCell(row, col, text, QString());
    refreshStars(row);
    setChanged();
}

bool StepSheetEditor::CanInputOut(int row, int col, int value) {
    if (!isBranchCategory(m_selout.CategoryByValue(qint16(value))))
        return true;
    const int other = col == m_sheet.GetcolOutKino1() ? m_sheet.GetcolOutKino2() : m_sheet.GetcolOutKino1();
    if (!isBranchCategory(category(row, other)))
        return true;
    m_prompter.showMessage(112, 2);
    return false;
}

bool StepSheetEditor::DoesSameCaegory(int side, const QString& oldCategory, const QString& newCategory) {
    if (side == 1)
        return (oldCategory == cat::COUNT) == (newCategory == cat::COUNT);
    return oldCategory == newCategory;
}

bool StepSheetEditor::UpdateKinoOutInp(int row, int col, const QString& category, int value) {
    if (m_comparison || !StepSheet::isStepRow(row))
        return false;
    const bool output = m_sheet.isOutputCol(col);
    const CSelections& sels = output ? m_selout : m_selinp;
    const QString oldText = m_sheet.text(row, col);
    const QString oldCategory = m_sheet.data(row, col);
    const CSelection* entry = sels.Item(QString::number(qint16(value)));
    if (entry && oldText == entry->Digital && oldCategory == category)
        return true;
    if (output && !CanInputOut(row, col, value))
        return false;
    const bool kindChanged = oldText.isEmpty() || !DoesSameCaegory(output ? 2 : 1, oldCategory, category);
    StepSheet::Batch batch(m_sheet);
    if (kindChanged && !oldText.isEmpty()) {
        const int width = output ? 4 : 3;
        for (int i = 1; i < width; ++i)
            m_sheet.setCell(row, col + i, QString(), QString());
    }
    WriteKino(row, col, false, sels, value);
    if (kindChanged && !output && m_sheet.groupOf(col) == 4)
        m_sheet.setText(row, col + 2, QString::number(RelEnd));
    if (kindChanged && output && isFlowCategory(category))
        m_sheet.setText(row, col + 1, QString::number(flowLogic(category)));
    refreshStars(row);
    setChanged();
    if (m_hooks.functionChanged)
        m_hooks.functionChanged(row, col);
    return true;
}

bool StepSheetEditor::SpaceOp(int row, int col) {
    const int kind = m_sheet.colKind(col);
    if (m_comparison || (kind != KindLogic && kind != KindDelayKind && kind != KindState && kind != KindRel))
        return false;
    const StartEditResult start = fg_StartEdit(row, col);
    if (!start.allowed)
        return false;
    const int from = isEmptyCell(row, col) ? -1 : cellValue(row, col);
    for (int i = 1; i <= 10; ++i) {
        const QString candidate = QString::number(((from + i) % 10 + 10) % 10);
        if (listHasValue(start.comboList, candidate)) {
            m_sheet.setText(row, col, candidate);
            fg_AfterEdit(row, col);
            return true;
        }
    }
    return false;
}

F2Action StepSheetEditor::F2InputOp(int row, int col) {
    const int kind = m_sheet.colKind(col);
    if (m_comparison || !fg_StartEdit(row, col).allowed)
        return F2Action::Nothing;
    if ((kind != KindOutKino && kind != KindInpKino) || !m_hooks.chooseFunction)
        return F2Action::StartEdit;
    const bool output = kind == KindOutKino;
    const CSelections& sels = output ? m_selout : m_selinp;
    const QString c = category(row, col);
    const int org = c.isEmpty() ? -1 : sels.ValueByDigital(c, m_sheet.text(row, col));
    const std::optional<int> chosen = m_hooks.chooseFunction(output ? 2 : 1, org, row);
    if (!chosen)
        return F2Action::Nothing;
    const CSelection* entry = sels.Item(QString::number(qint16(*chosen)));
    if (!entry)
        return F2Action::Nothing;
    // The chosen function goes through the same rules as a typed one, with its category
    // known (a shared display text must not ask again).
    const QString newCategory = sels.CategoryByValue(qint16(*chosen));
    const bool ok = output ? UpdateKinoOutInp(row, col, newCategory, *chosen)
                           : acceptInput(row, col, newCategory, *chosen).accepted;
    return ok ? F2Action::FunctionWritten : F2Action::Nothing;
}

bool StepSheetEditor::typeCharacter(int row, int col, QChar ch) {
    if (m_comparison || !(ch.unicode() >= 33))
        return false;
    const StartEditResult start = fg_StartEdit(row, col);
    if (!start.allowed)
        return false;
    if (start.editor == CellEditor::Combo && !listHasValue(start.comboList, QString(ch))) {
        m_prompter.showMessage(67, 2);
        return false;
    }
    return true;
}

QString StepSheetEditor::hintText(int row, int col) const {
    static const QString cannot = QStringLiteral("Cannot edit this cell.");
    if (m_comparison || !StepSheet::isStepRow(row) || col < 1 || col >= StepSheet::kCols)
        return {};
    if (isStar(row, col))
        return cannot;
    const int kind = m_sheet.colKind(col);
    const int kc = m_sheet.groupStart(col);
    const bool output = m_sheet.isOutputCol(col);
    qint32 lMin = 0;
    qint32 lMax = 0;
    if (kind == KindRemark)
        return QStringLiteral("Edit:[F2], DoubleClick");
    if (kind == KindOutKino || kind == KindInpKino) {
        QString hint = QStringLiteral("Dialogue:[F2], DoubleClick    Can input directly");
        if (!output && TopIsCOUNT(row) && m_sheet.ColIs2or3Grp(col)) {
            counterRange(row, lMin, lMax);
            hint += QStringLiteral("   Max:") + QString::number(lMax) + QStringLiteral("  Min:") +
                    QString::number(lMin);
        }
        return hint;
    }
    if (isEmptyCell(row, kc))
        return output ? QStringLiteral("Input output function at first.")
                      : QStringLiteral("Input input function at first.");
    if (kind == KindDelayValue) {
        delayRange(row, kc, lMin, lMax);
        return QStringLiteral("Edit:[F2], DoubleClick") + QStringLiteral("   Max:") + QString::number(lMax) +
               QStringLiteral("  Min:") + QString::number(lMin);
    }
    if (kind == KindLogic && isFlowCategory(category(row, kc)))
        return cannot;
    if (kind == KindRel) {
        const int group = m_sheet.groupOf(col);
        const bool endLocked = !isEmptyCell(row, col) && cellValue(row, col) == RelEnd;
        if (group == 4 || (TopIsCOUNT(row) && (group == 3 || endLocked)))
            return cannot;
    }
    return QStringLiteral("Combo:[F2]->[F4]    Direct:") + CreateInpList(comboList(row, col)) +
           QStringLiteral("   Toggle:[SPACE]");
}

} // namespace vkm
