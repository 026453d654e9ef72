#include "sheet/programcompare.h"

#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "model/csteps.h"
#include "sheet/stepsheeteditor.h"

namespace vkm::programcompare {

namespace {

// A memo or remark on one line: line ends become "\n" so that a listing stays one line per
// field.
QString quoted(const QString& text) {
    QString flat = text;
    flat.replace(QLatin1String("\r\n"), QLatin1String("\\n"));
    flat.replace(QLatin1Char('\r'), QLatin1String("\\n"));
    flat.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return QLatin1Char('"') + flat + QLatin1Char('"');
}

void compareText(std::vector<FieldDifference>& into, const QString& field, const QString& a,
                 const QString& b) {
    if (a != b)
        into.push_back({field, a.isEmpty() ? QStringLiteral("(empty)") : quoted(a),
                        b.isEmpty() ? QStringLiteral("(empty)") : quoted(b)});
}

} // namespace

bool cellDiffers(const StepSheet& a, const StepSheet& b, int row, int col) {
    if (!StepSheet::isStepRow(row) || !StepSheet::isValidCell(row, col))
        return false;
    if (col == 0)
        return a.isRowDisabled(row) != b.isRowDisabled(row);
    if (a.text(row, col) != b.text(row, col))
        return true;
    const int kind = a.colKind(col);
    return (kind == KindOutKino || kind == KindInpKino) && a.data(row, col) != b.data(row, col);
}

std::vector<SheetCell> differingCells(const StepSheet& a, const StepSheet& b) {
    std::vector<SheetCell> cells;
    for (int row = StepSheet::kFirstStepRow; row <= StepSheet::kLastStepRow; ++row)
        for (int col = 0; col < StepSheet::kCols; ++col)
            if (cellDiffers(a, b, row, col))
                cells.push_back({row, col});
    return cells;
}

QString fieldName(const StepSheet& sheet, int col) {
    const QString group = QString::number(sheet.groupOf(col));
    switch (sheet.colKind(col)) {
    case KindStep:
        return QStringLiteral("disabled");
    case KindRemark:
        return QStringLiteral("remark");
    case KindOutKino:
        return QStringLiteral("output %1 function").arg(group);
    case KindLogic:
        return QStringLiteral("output %1 logic").arg(group);
    case KindDelayKind:
        return QStringLiteral("output %1 delay kind").arg(group);
    case KindDelayValue:
        return QStringLiteral("output %1 delay value").arg(group);
    case KindInpKino:
        return QStringLiteral("input %1 function").arg(group);
    case KindState:
        return QStringLiteral("input %1 state").arg(group);
    case KindRel:
        return QStringLiteral("input %1 relation").arg(group);
    default:
        return QStringLiteral("column %1").arg(col);
    }
}

QString cellReading(const StepSheetEditor& editor, int row, int col) {
    const StepSheet& sheet = editor.sheet();
    if (col == 0)
        return sheet.isRowDisabled(row) ? QStringLiteral("yes") : QStringLiteral("no");
    const QString text = sheet.text(row, col);
    if (text.isEmpty())
        return QStringLiteral("(empty)");
    if (text == QLatin1String(StepSheet::kStar))
        return QStringLiteral("(none)");
    const int kind = sheet.colKind(col);
    if (kind == KindRemark)
        return quoted(text);
    if (kind == KindOutKino || kind == KindInpKino) {
        // A cell without a category holds a counter's operand typed as a number, or a value
        // no catalogue knows ("#" and its number): both read as they stand.
        const QString category = sheet.data(row, col);
        const CSelections& sels = kind == KindOutKino ? editor.selout() : editor.selinp();
        const auto value = sels.valueInCategory(category, text);
        const CSelection* entry = value ? sels.Item(QString::number(*value)) : nullptr;
        return entry && !entry->Advice.isEmpty()
                   ? text + QStringLiteral(" (") + entry->Advice + QLatin1Char(')')
                   : text;
    }
    return editor.rules().displayText(row, col);
}

int ProgramDifferences::fieldCount() const {
    std::size_t n = program.size();
    for (const StepDifference& s : steps)
        n += s.fields.size();
    return int(n);
}

std::vector<FieldDifference> programFieldDifferences(const CSteps& a, const CSteps& b) {
    std::vector<FieldDifference> fields;
    compareText(fields, QStringLiteral("author"), a.Author, b.Author);
    compareText(fields, QStringLiteral("memo file"), a.MemoFile, b.MemoFile);
    compareText(fields, QStringLiteral("memo"), a.Memo, b.Memo);
    // A password is never printed: only that it differs.
    if (a.Password != b.Password)
        fields.push_back({QStringLiteral("password"), a.Password.isEmpty() ? "(none)" : "(set)",
                          b.Password.isEmpty()   ? "(none)"
                          : a.Password.isEmpty() ? "(set)"
                                                 : "(set, another)"});
    return fields;
}

ProgramDifferences comparePrograms(const CSteps& a, const CSteps& b, const CSelections& selout,
                                   const CSelections& selinp) {
    // Showing a program asks nothing; a prompter is needed all the same.
    ScriptedPrompter silent;
    silent.setCancelDialogsByDefault(true);
    StepSheetEditor left(selout, selinp, silent, true, false);
    StepSheetEditor right(selout, selinp, silent, true, false);
    left.conversion().PasteData(a);
    right.conversion().PasteData(b);

    ProgramDifferences result;
    result.program = programFieldDifferences(a, b);
    for (const SheetCell& cell : differingCells(left.sheet(), right.sheet())) {
        if (result.steps.empty() || result.steps.back().step != cell.row)
            result.steps.push_back({cell.row, {}});
        result.steps.back().fields.push_back({fieldName(left.sheet(), cell.col),
                                              cellReading(left, cell.row, cell.col),
                                              cellReading(right, cell.row, cell.col)});
    }
    return result;
}

} // namespace vkm::programcompare
