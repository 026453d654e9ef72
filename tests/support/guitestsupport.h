#pragma once

// What the widget tests share. Header-only: vkm_testsupport links only the base library,
// and these helpers need the catalogue types.
#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "testsupport.h"

#include <QApplication>
#include <QTimer>
#include <functional>

namespace vkm::test {

// The output functions a window or dialog under test needs at the least: two plain outputs,
// a register, a counter with its limits and the three flow functions (jump, call, return).
// Tests append the entries they treat apart, so the values here stay at the front.
inline void addBasicOutputs(CSelections& s) {
    s.Add("OUT1", 1, "Output 1", "OUT", "0", "0");
    s.Add("OUT2", 2, "Output 2", "OUT", "0", "0");
    s.Add("R1", 40, "Register 1", "RGST", "0", "0");
    s.Add("C1", 60, "Counter 1", "COUNT", "0", "99");
    s.Add("JMP", 70, "Jump", "JMP", "0", "0");
    s.Add("CALL", 71, "Call", "CALL", "0", "0");
    s.Add("RET", 72, "Return", "RETURN", "0", "0");
}

// The state a window under test works on: a scratch settings store, scripted answers and
// the output and input catalogues, which the test fills.
struct GuiFixture {
    TempSettings ts;
    ScriptedPrompter prompter;
    CSelections out;
    CSelections inp;
};

// Runs action on the next modal dialog once it is up (it opens later, inside a nested loop).
inline void whenModal(std::function<void(QWidget*)> action, int triesLeft = 200) {
    QTimer::singleShot(5, [action = std::move(action), triesLeft]() mutable {
        if (QWidget* w = QApplication::activeModalWidget())
            action(w);
        else if (triesLeft > 0)
            whenModal(std::move(action), triesLeft - 1);
    });
}

} // namespace vkm::test
