#pragma once

#include "print/printlayout.h"

#include <QString>

namespace vkm {

class CSelections;
class CSteps;
class Prompter;
class StepSheetEditor;

// Where a finished sheet goes: a workbook file, a printer, a PDF file.
class SheetTarget {
public:
    virtual ~SheetTarget() = default;
    // Makes the writer or the device ready; false when there is none to be had.
    virtual bool open() = 0;
    // Puts the sheet out; false (with errorString) when that failed, leaving no
    // half-written file behind.
    virtual bool output(const PrintSheet& sheet) = 0;
    virtual QString errorString() const = 0;
};

// The program of a step editor as it is printed: what a save would write. A check that
// fails shows its own message and then 150 ("Unable to print step."); a grid that cannot
// be turned into a program shows 80 and then 50 ("Failed to save data...").
bool ProgramForPrint(StepSheetEditor& editor, const CSteps& current, Prompter& prompter, CSteps& out);

// False, with message 77 ("No data to print!"), when no step of the program holds anything.
bool HasStepsToPrint(const CSteps& program, Prompter& prompter);

// Prints a program or saves it as a workbook: makes the target ready ("Creating excel
// object..."), lays the program out with its status texts, puts the sheet out and says
// "Success to print to excel.". False when the target cannot be had ("Microsoft Excel is
// not installed!") or the output failed (reported to the error reporter).
bool PrintToExcelStep(const CSteps& program, const CSelections& selout, const CSelections& selinp,
                      const PrintOptions& options, SheetTarget& target, const StatusSink& status = {});

} // namespace vkm
