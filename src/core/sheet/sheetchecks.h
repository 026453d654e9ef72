#pragma once

namespace vkm {

class Prompter;
class SheetQueries;
class StepSheet;

// The cell a failing check pointed at (row and column -1 when it selects none).
struct CheckFailure {
    int message = 0;
    int row = -1;
    int col = -1;
};

// The consistency checks that run before a program leaves the editor (save, print,
// send). They read the sheet only; a failing check selects its cell, shows its message
// (style 2) and stops the run.
class SheetChecks {
public:
    SheetChecks(StepSheet& sheet, const SheetQueries& queries, Prompter& prompter);

    // Runs the checks in order; the first failure wins.
    bool run();
    CheckFailure failure() const { return m_failure; }

private:
    bool fail(int message, int row, int col);
    bool check01();
    bool check02();
    bool check03();
    bool check04();
    bool check05();
    bool check07();
    bool check08();
    bool check09();
    bool check10();
    bool check11();
    bool check12();
    bool checkGroupComplete(int row, int kc, int width);
    bool checkEven(int row, int kc);
    bool checkDelayRange(int row, int kc);

    StepSheet& m_sheet;
    const SheetQueries& m_q;
    Prompter& m_prompter;
    CheckFailure m_failure;
};

} // namespace vkm
