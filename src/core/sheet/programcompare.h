#pragma once

#include <QString>
#include <vector>

namespace vkm {

class CSelections;
class CSteps;
class StepSheet;
class StepSheetEditor;

// One cell of the step grid.
struct SheetCell {
    int row = 0;
    int col = 0;
    bool operator==(const SheetCell& o) const { return row == o.row && col == o.col; }
};

// Where two programs differ: cell by cell at the same row and column of two grids of the
// same layout (the user and the comparison editor are built alike), and in the program's
// own fields (author, memo file, memo, password). What "differs" means is decided here
// only: the editor's highlight and count and the command-line listing all ask these
// functions.
namespace programcompare {

// The cell shows something else in b than in a: its text, or for a function cell its
// category (one digital text may name functions of several categories). The step number
// column stands for the row itself: it differs when one row is disabled and the other not.
bool cellDiffers(const StepSheet& a, const StepSheet& b, int row, int col);

// Every differing cell of the step rows in reading order: row by row, and in a row the step
// column first, then left to right as the columns stand.
std::vector<SheetCell> differingCells(const StepSheet& a, const StepSheet& b);

// What a technician reads in a cell, for listings: a function as its digital text with
// the catalogue's name in brackets ("#" and the number for a value the catalogue lacks, as
// the grid shows it), a code by its name, a delay as the grid shows it, a remark in quotes;
// "(empty)" and "(none)" for a cell that holds nothing or does not apply to its row.
QString cellReading(const StepSheetEditor& editor, int row, int col);
// The field a column holds, named as a technician reads it ("output 1 delay value",
// "input 3 relation", "remark"; "disabled" for the step number column).
QString fieldName(const StepSheet& sheet, int col);

// One field that differs, with what each program holds there.
struct FieldDifference {
    QString field;
    QString a;
    QString b;
};

// The fields of one step that differ.
struct StepDifference {
    int step = 0;
    std::vector<FieldDifference> fields;
};

struct ProgramDifferences {
    std::vector<FieldDifference> program; // author, memo file, memo, password
    std::vector<StepDifference> steps;    // in step order
    bool isEmpty() const { return program.empty() && steps.empty(); }
    int fieldCount() const;
};

// The program's own fields that differ, in the order author, memo file, memo, password,
// each read as a listing prints it (a password never shows: only whether it is set).
std::vector<FieldDifference> programFieldDifferences(const CSteps& a, const CSteps& b);

// Two programs as the editor shows them, compared field by field: each is written into a
// grid of its own exactly as an editor window would show it, so that a step missing from
// one program compares as the empty row the editor shows for it, and a delay or an unknown
// function reads as it reads on the screen.
ProgramDifferences comparePrograms(const CSteps& a, const CSteps& b, const CSelections& selout,
                                   const CSelections& selinp);

} // namespace programcompare
} // namespace vkm
