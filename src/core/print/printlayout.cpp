#include "print/printlayout.h"

#include "base/scriptedprompter.h"
#include "model/codes.h"
#include "model/csteps.h"
#include "sheet/stepsheet.h"
#include "sheet/stepsheeteditor.h"

#include <QRegularExpression>
#include <span>

namespace vkm {

namespace {

const QString kStar = QString::fromLatin1(StepSheet::kStar);

// Logic codes whose output has no delay value of its own: jumps, calls, returns and the
// counter operations that take no operand.
bool logicHasNoDelay(int logic) {
    switch (logic) {
    case LogicJmp:
    case LogicInc:
    case LogicDec:
    case LogicClr:
    case LogicSub:
    case LogicCall:
    case LogicRet:
        return true;
    default:
        return false;
    }
}

bool isPlainLogic(int logic) {
    return logic == LogicLow || logic == LogicHigh || logic == LogicNot;
}

// A cell as the editor shows it: a number where the text is one, else the text.
void putShown(PrintCell& cell, const QString& text) {
    bool ok = false;
    const qint64 n = text.toLongLong(&ok);
    if (ok && !text.startsWith(QLatin1Char('+')))
        cell.setNumber(double(n));
    else if (!text.isEmpty())
        cell.setText(text);
}

void fillStars(PrintSheet& sheet, int row, int firstCol, int count) {
    for (int c = firstCol; c < firstCol + count; ++c)
        sheet.cell(row, c).setText(kStar);
}

} // namespace

StepPrintLayout::StepPrintLayout(const CSelections& selout, const CSelections& selinp, PrintOptions options,
                                 StatusSink status)
    : m_selout(selout), m_selinp(selinp), m_options(std::move(options)), m_status(std::move(status)) {
    // The groups come in the editor's order: ask its sheet where each group starts. A
    // printed output group has a category column in front of the editor's four columns,
    // an input group one in front of its three.
    const StepSheet layout(m_options.locateInpFirst);
    m_kinds[0] = Column::Step;
    m_kinds[1] = Column::Remark;
    int printed = 2;
    for (int col = 2; col < StepSheet::kCols;) {
        const int group = layout.groupOf(col);
        const bool output = layout.isOutputCol(col);
        static constexpr Column outputs[] = {Column::Category, Column::Function, Column::Logic,
                                             Column::DelayKind, Column::Delay};
        static constexpr Column inputs[] = {Column::Category, Column::Function, Column::State,
                                            Column::Relation};
        if (output)
            m_outCol[std::size_t(group)] = printed;
        else
            m_inpCol[std::size_t(group)] = printed;
        for (Column k : output ? std::span<const Column>(outputs) : std::span<const Column>(inputs)) {
            m_kinds[std::size_t(printed)] = k;
            m_output[std::size_t(printed)] = output;
            ++printed;
        }
        col += output ? 4 : 3;
    }
    Q_ASSERT(printed == kColumns);
}

void StepPrintLayout::status(const QString& text) const {
    if (m_status)
        m_status(text);
}

double StepPrintLayout::columnWidth(Column kind, bool output) {
    switch (kind) {
    case Column::Step:
        return 4;
    case Column::Remark:
        return 10;
    case Column::Category:
        return 6;
    case Column::Function:
        return output ? 7 : 6;
    case Column::Logic:
        return 6;
    case Column::DelayKind:
    case Column::Delay:
        return 7;
    case Column::State:
    case Column::Relation:
        return 3.5;
    }
    return PrintSheet::kDefaultColumnWidth;
}

QString StepPrintLayout::headerCodes(bool toFile) {
    if (toFile)
        return QStringLiteral("&9") + QStringLiteral("Filename:") + QStringLiteral("&F  ") +
               QStringLiteral("Sheetname:") + QStringLiteral("&A  &PPage  &D");
    return QStringLiteral("&9") + QStringLiteral("Sheetname:") + QStringLiteral("&A  &PPage  &D");
}

int StepPrintLayout::lastUsedStep(const CSteps& program) {
    int last = 0;
    int n = 0;
    for (const auto& step : program) {
        ++n;
        if (step && (!step->NOP || !step->Remark.isEmpty()))
            last = n;
    }
    return last;
}

PrintSheet StepPrintLayout::build(const CSteps& program) const {
    PrintSheet sheet(kColumns, QString());
    PrintExcelRowsStep(sheet, program);
    ArrangeFaceStep(sheet);
    if (m_options.printMemo && !program.Memo.isEmpty())
        appendMemo(sheet, program.Memo);
    return sheet;
}

// ---- rows -------------------------------------------------------------------------

void StepPrintLayout::SetTitleStep(PrintSheet& sheet, int row) const {
    sheet.cell(row, 0).setText(QStringLiteral("STEP"));
    sheet.cell(row, 1).setText(QStringLiteral("Remark"));
    const StepSheet layout(m_options.locateInpFirst);
    for (int col = 2; col < kColumns; ++col) {
        PrintCell& cell = sheet.cell(row, col);
        switch (columnKind(col)) {
        case Column::Category:
            cell.setText(QStringLiteral("Category"));
            break;
        case Column::Function:
            cell.setText(isOutputColumn(col) ? QStringLiteral("Output") : QStringLiteral("Input"));
            break;
        case Column::Logic:
            cell.setText(QStringLiteral("Logic"));
            break;
        case Column::DelayKind:
            cell.setText(QStringLiteral("Delay\nKind"));
            break;
        case Column::Delay:
            cell.setText(QStringLiteral("Delay"));
            break;
        case Column::State:
            cell.setText(QStringLiteral("Stat."));
            break;
        case Column::Relation: {
            // The editor's relation header: a glyph of the symbol font.
            const int shownCol = layout.inputGroupCol(1) + 2;
            if (m_options.symbolFontAvailable) {
                cell.setText(layout.headerText(shownCol));
                cell.style.font = layout.headerFont(shownCol);
            } else {
                cell.setText(QString(QChar(kRelationArrow)));
            }
            break;
        }
        case Column::Step:
        case Column::Remark:
            break;
        }
    }
}

void StepPrintLayout::PrintExcelRowsStep(PrintSheet& sheet, const CSteps& program) const {
    SetTitleStep(sheet, 0);
    // The editor's sheet of this program, written as the editor writes an opened program.
    ScriptedPrompter silent; // writing a program into a sheet asks nothing
    silent.setDefaultAnswer(Answer::No);
    silent.setCancelDialogsByDefault(true);
    StepSheetEditor shown(m_selout, m_selinp, silent, true, m_options.locateInpFirst);
    shown.conversion().PasteData(program);

    const int last = std::min(lastUsedStep(program), StepSheet::kLastStepRow);
    int n = 0;
    for (const auto& step : program) {
        if (++n > last)
            break;
        status(QStringLiteral("Printing:") + QString::number(step ? step->Row : n) + QStringLiteral(" row"));
        const int row = n; // below the title row
        sheet.cell(row, 0).setNumber(n);
        if (step)
            writeStep(sheet, row, *step, shown.sheet(), StepSheet::kFirstStepRow + n - 1);
    }
}

void StepPrintLayout::writeStep(PrintSheet& sheet, int row, const CStep& step, const StepSheet& shown,
                                int shownRow) const {
    if (!step.Remark.isEmpty())
        sheet.cell(row, 1).setText(step.Remark);
    if (step.GyoMuko)
        GyoMukoOp(sheet, row);
    if (step.NOP)
        return;
    writeOutputs(sheet, row, step, shown, shownRow);
    writeInputs(sheet, row, step, shown, shownRow);
}

void StepPrintLayout::writeOutputs(PrintSheet& sheet, int row, const CStep& step, const StepSheet& shown,
                                   int shownRow) const {
    if (!step.outs || step.outs->Count() == 0)
        return; // a row with a remark only
    for (int block = 1; block <= 2; ++block) {
        // An unused output: its function is -1 where the editor saved the step, the output
        // is missing where a program file held an empty record.
        const auto out = step.outs->Item(QString::number(block));
        const int pc = outputColumn(block);
        const int sc = shown.outputGroupCol(block);
        const QString function = shown.text(shownRow, sc);
        if (!out || out->Kino == -1 || function == kStar) {
            fillStars(sheet, row, pc, 5);
            continue;
        }
        const QString category = shown.data(shownRow, sc);
        if (!category.isEmpty())
            sheet.cell(row, pc).setText(category);
        sheet.cell(row, pc + 1).setText(function);
        sheet.cell(row, pc + 2).setText(CStepOuts::LogicJ(out->Logic));
        if (category != cat::RETURN && isPlainLogic(out->Logic))
            sheet.cell(row, pc + 3).setText(CStepOuts::DelayKindJ(out->DelayKind));
        if (!logicHasNoDelay(out->Logic))
            putShown(sheet.cell(row, pc + 4), shown.text(shownRow, sc + 3)); // the delay as shown
    }
}

void StepPrintLayout::writeInputs(PrintSheet& sheet, int row, const CStep& step, const StepSheet& shown,
                                  int shownRow) const {
    if (step.outs && step.outs->ExistRet(m_selout)) {
        // A returning step reads no inputs.
        for (int g = 1; g <= 4; ++g)
            fillStars(sheet, row, inputColumn(g), 4);
        return;
    }
    if (!step.inps)
        return;
    for (const auto& inp : *step.inps) {
        if (!inp || inp->Block < 1 || inp->Block > 4)
            continue;
        const int pc = inputColumn(inp->Block);
        const int sc = shown.inputGroupCol(inp->Block);
        const QString function = shown.text(shownRow, sc);
        if (function.isEmpty())
            continue; // after END: nothing
        if (function == kStar) {
            fillStars(sheet, row, pc, 4);
            continue;
        }
        const QString category = shown.data(shownRow, sc);
        if (category.isEmpty() && SheetQueries::IsJyosu(function)) {
            // A counter's operand is a number (the 16-bit field, unsigned), not a function.
            sheet.cell(row, pc + 1).setNumber(function.toInt());
        } else {
            if (!category.isEmpty())
                sheet.cell(row, pc).setText(category);
            sheet.cell(row, pc + 1).setText(function);
        }
        const QString state = shown.text(shownRow, sc + 1);
        if (state == kStar)
            sheet.cell(row, pc + 2).setText(kStar);
        else if (category != cat::COUNT && category != cat::ALL && !state.isEmpty()) {
            PrintCell& cell = sheet.cell(row, pc + 2);
            cell.picture = QStringLiteral("Jyotai") + state;
            cell.pictureText = CStepInps::JyotaiJ(state.toInt());
        }
        const QString rel = shown.text(shownRow, sc + 2);
        if (rel == kStar)
            sheet.cell(row, pc + 3).setText(kStar);
        else if (!rel.isEmpty())
            sheet.cell(row, pc + 3).setText(CStepInps::RelJ(rel.toInt()));
    }
}

// A disabled step: the whole row in the editor's colour of a disabled row.
void StepPrintLayout::GyoMukoOp(PrintSheet& sheet, int row) const {
    for (int c = 0; c < kColumns; ++c)
        sheet.cell(row, c).style.fill = sheetcolor::Disabled;
}

void StepPrintLayout::appendMemo(PrintSheet& sheet, const QString& memo) const {
    QStringList lines = memo.split(QRegularExpression(QStringLiteral("\r\n|\r|\n")));
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    int row = sheet.lastUsedRow() + 1;
    for (const QString& line : lines) {
        PrintCell& cell = sheet.cell(row++, 0);
        if (!line.isEmpty())
            cell.setText(line); // text even where it looks like a number
        cell.style.align = CellAlign::Left;
    }
}

// ---- layout -------------------------------------------------------------------------

void StepPrintLayout::ArrangeFaceStep(PrintSheet& sheet) const {
    const int titleRow = 0;
    const int lastStep = std::max(sheet.lastUsedRow(), titleRow);

    status(QStringLiteral("Setting sheet name..."));
    sheet.setName(QString::fromLatin1(kSheetName));

    status(QStringLiteral("Setting font / location..."));
    sheet.setFont(QString::fromLatin1(kFontName), kFontSize);
    styleSteps(sheet, titleRow + 1, lastStep);
    styleTitles(sheet, titleRow);

    status(QStringLiteral("Setting column width / height..."));
    for (int c = 0; c < kColumns; ++c)
        sheet.setColumnWidth(c, columnWidth(columnKind(c), isOutputColumn(c)));
    sheet.setRowHeight(titleRow, kTitleRowHeight);
    for (int r = titleRow + 1; r <= lastStep; ++r)
        sheet.setRowHeight(r, kStepRowHeight);

    status(QStringLiteral("Setting line..."));
    for (int r = titleRow; r <= lastStep; ++r)
        for (int c = 0; c < kColumns; ++c)
            sheet.cell(r, c).style.border = true;

    status(QStringLiteral("Removing line around."));
    sheet.page().gridLines = false;

    sheet.insertRow(kFileNameRow);
    PrintCell& name = sheet.cell(kFileNameRow, 0);
    name.setText(m_options.fileToPrint + (m_options.isEditing ? QStringLiteral("(editing)") : QString()));
    name.style.align = CellAlign::Left;
    name.style.bold = true;

    status(QStringLiteral("Setting page ... Header/Footer"));
    sheet.page().centerHeader = headerCodes(m_options.toFile);
    sheet.page().centerFooter = QString();

    status(QStringLiteral("Setting page ... Margin"));
    PageSetup& page = sheet.page();
    page.marginLeft = 0.4;
    page.marginRight = 0.4;
    page.marginTop = 0.4;
    page.marginBottom = 0.3;
    page.marginHeader = 0.1;
    page.marginFooter = 0.1;

    status(QStringLiteral("Setting page ... Other"));
    page.landscape = true;
    page.scale = 75;
}

void StepPrintLayout::styleTitles(PrintSheet& sheet, int row) const {
    for (int c = 0; c < kColumns; ++c) {
        CellStyle& s = sheet.cell(row, c).style;
        s.align = CellAlign::Center;
        s.bold = true;
        s.wrap = sheet.cell(row, c).text.contains(QLatin1Char('\n'));
        s.shrink = !s.wrap;
        // The editor's header colours: the step and remark columns plain, output groups
        // navy and input groups teal with white letters.
        if (c < 2) {
            s.fill = sheetcolor::FixedHeader;
        } else {
            s.fill = isOutputColumn(c) ? sheetcolor::OutputHeader : sheetcolor::InputHeader;
            s.color = sheetcolor::HeaderText;
        }
    }
}

void StepPrintLayout::styleSteps(PrintSheet& sheet, int firstRow, int lastRow) const {
    for (int r = firstRow; r <= lastRow; ++r) {
        for (int c = 0; c < kColumns; ++c) {
            PrintCell& cell = sheet.cell(r, c);
            CellStyle& s = cell.style;
            const Column kind = columnKind(c);
            switch (kind) {
            case Column::Remark:
            case Column::Category:
            case Column::Function:
                s.align = CellAlign::Left;
                break;
            case Column::Delay:
                s.align = CellAlign::Right;
                break;
            default:
                s.align = CellAlign::Center;
                break;
            }
            if (cell.text == kStar)
                s.align = CellAlign::Center;
            // Names fit their narrow columns; a remark is cut at its cell as typed.
            s.shrink = kind != Column::Remark;
            if (s.fill == CellStyle::kNoFill) { // a disabled row keeps its marking
                s.fill = kind == Column::Step     ? sheetcolor::StepColumn
                         : kind == Column::Remark ? sheetcolor::RemarkColumn
                         : isOutputColumn(c)      ? sheetcolor::OutputCell
                                                  : sheetcolor::InputCell;
            }
        }
    }
}

} // namespace vkm
