#pragma once

// What the widget tests share. Header-only: vkm_testsupport links only the base library,
// and these helpers need the catalogue types.
#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "testsupport.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

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

// Runs action on the next modal dialog once it is up (it opens later, inside a nested
// loop). Keep the watch until the dialog should have come: when it goes, it waits a moment
// for a dialog that is late and then fails the test if none came, so that a command that
// opens nothing cannot pass for one that opened its dialog.
class [[nodiscard]] ModalWatch {
public:
    explicit ModalWatch(std::function<void(QWidget*)> action) : m_state(std::make_shared<State>()) {
        m_state->action = std::move(action);
        m_state->timer.setInterval(5);
        QObject::connect(&m_state->timer, &QTimer::timeout, [state = m_state.get()] {
            QWidget* w = QApplication::activeModalWidget();
            if (!w || state->seen)
                return;
            state->seen = true;
            state->timer.stop();
            state->action(w);
        });
        m_state->timer.start();
    }
    ModalWatch(const ModalWatch&) = delete;
    ModalWatch& operator=(const ModalWatch&) = delete;
    ~ModalWatch() {
        if (!m_state->seen && !QTest::qWaitFor([this] { return m_state->seen; }, 2000))
            ADD_FAILURE() << "no modal dialog came";
        m_state->timer.stop();
    }
    bool seen() const { return m_state->seen; }

private:
    struct State {
        std::function<void(QWidget*)> action;
        QTimer timer;
        bool seen = false;
    };
    std::shared_ptr<State> m_state;
};

inline ModalWatch whenModal(std::function<void(QWidget*)> action) {
    return ModalWatch(std::move(action));
}

} // namespace vkm::test
