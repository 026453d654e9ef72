#pragma once

#include "print/printsheet.h"

#include <QString>
#include <array>
#include <functional>

namespace vkm {

class CSelections;
class CSteps;
struct CStep;
class StepSheet;

// Receives the texts of the stages of a print, in order (the print dialog's status bar).
using StatusSink = std::function<void(const QString& text)>;

// What the print dialog asks for besides the program.
struct PrintOptions {
    QString fileToPrint;    // full name of the program's file, shown in the first row
    bool isEditing = false; // the program has unsaved changes
    bool printMemo = false; // the memo's lines go below the steps
    bool toFile = false;    // a saved workbook (its header names the file) rather than a printout
    bool locateInpFirst = false;
    // The relation title is the "8" of the symbol font where that font is installed, an
    // arrow of the sheet's own font elsewhere.
    bool symbolFontAvailable = true;
};

// Lays a step program out as the printed sheet "STEP": a row with the file name, a title
// row, one row per step up to the last used one, and the memo below. Each step is first
// written into a step sheet as the editor shows it, and the printed cells are read from
// there: the function names and categories, the doubled timer delays, the counter
// operands and the "***" cells are the editor's, never worked out a second time.
class StepPrintLayout {
public:
    static constexpr int kColumns = 28; // A to AB
    static constexpr const char* kSheetName = "STEP";
    static constexpr const char* kFontName = "Tahoma";
    static constexpr double kFontSize = 9;
    static constexpr double kTitleRowHeight = 25.5;
    static constexpr double kStepRowHeight = 14;
    // The relation title where the symbol font is missing: the solid right-pointing
    // pointer that the symbol font's "8" shows.
    static constexpr char16_t kRelationArrow = u'\u25BA';
    // Rows of the finished sheet (0-based): the file name, the titles, the first step.
    static constexpr int kFileNameRow = 0;
    static constexpr int kTitleRow = 1;
    static constexpr int kFirstStepRow = 2;

    // What a printed column holds.
    enum class Column { Step, Remark, Category, Function, Logic, DelayKind, Delay, State, Relation };

    StepPrintLayout(const CSelections& selout, const CSelections& selinp, PrintOptions options,
                    StatusSink status = {});

    // The whole sheet: the step rows, the layout and page setup, then the memo.
    PrintSheet build(const CSteps& program) const;

    // The stages of build(), in its order. PrintExcelRowsStep writes the titles
    // (SetTitleStep) and the steps from the top row; ArrangeFaceStep formats them and
    // inserts the file-name row above.
    void PrintExcelRowsStep(PrintSheet& sheet, const CSteps& program) const;
    void SetTitleStep(PrintSheet& sheet, int row) const;
    void ArrangeFaceStep(PrintSheet& sheet) const;
    void appendMemo(PrintSheet& sheet, const QString& memo) const;

    // First printed column (0-based) of output group g (1, 2) and input group g (1..4),
    // and what each printed column holds.
    int outputColumn(int group) const { return m_outCol[std::size_t(group)]; }
    int inputColumn(int group) const { return m_inpCol[std::size_t(group)]; }
    Column columnKind(int col) const { return m_kinds[std::size_t(col)]; }
    bool isOutputColumn(int col) const { return m_output[std::size_t(col)]; }
    static double columnWidth(Column kind, bool output);

    // The header codes of the page: the file's name only where there is a file.
    static QString headerCodes(bool toFile);
    // How many steps are printed: up to the last step that holds anything (0 for none).
    static int lastUsedStep(const CSteps& program);

private:
    void status(const QString& text) const;
    void GyoMukoOp(PrintSheet& sheet, int row) const;
    void writeStep(PrintSheet& sheet, int row, const CStep& step, const StepSheet& shown, int shownRow) const;
    void writeOutputs(PrintSheet& sheet, int row, const CStep& step, const StepSheet& shown,
                      int shownRow) const;
    void writeInputs(PrintSheet& sheet, int row, const CStep& step, const StepSheet& shown,
                     int shownRow) const;
    void styleTitles(PrintSheet& sheet, int row) const;
    void styleSteps(PrintSheet& sheet, int firstRow, int lastRow) const;

    const CSelections& m_selout;
    const CSelections& m_selinp;
    PrintOptions m_options;
    StatusSink m_status;
    std::array<int, 3> m_outCol{};
    std::array<int, 5> m_inpCol{};
    std::array<Column, kColumns> m_kinds{};
    std::array<bool, kColumns> m_output{};
};

} // namespace vkm
