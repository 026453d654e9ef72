#pragma once

// A step editor window over a small catalogue with scripted answers, driven as a user
// drives it, for the widget tests of the editor and its tool windows.
#include "appcontext.h"
#include "stepeditorwindow.h"
#include "steptablemodel.h"

#include "guitestsupport.h"

#include <QApplication>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace vkm::test {

inline void fillOutputs(CSelections& s) {
    test::addBasicOutputs(s);
    s.Add("XS", 80, "Shared name", "OUT", "0", "0");
    s.Add("XS", 81, "Shared name", "RGST", "0", "0");
}

inline void fillInputs(CSelections& s) {
    s.Add("IN1", 1, "Input 1", "IN", "0", "0");
    s.Add("IN2", 2, "Input 2", "IN", "0", "0");
    s.Add("IN3", 3, "Input 3", "IN", "0", "0");
    s.Add("C1", 60, "Counter 1", "COUNT", "0", "99");
    s.Add("STEP", 90, "Step", "STEP", "0", "0");
    s.Add("C5", 5, "Counter 5", "COUNT", "0", "500"); // below 32: it may add and subtract
}

// A window over a small catalogue, with scripted answers and a scratch settings store.
struct Editor : test::GuiFixture {
    AppContext ctx;
    std::unique_ptr<StepEditorWindow> win;

    explicit Editor(int usrcmp = 0, const std::function<void(Settings&)>& setup = {}) {
        fillOutputs(out);
        fillInputs(inp);
        if (setup)
            setup(*ts.settings);
        ctx.settings = ts.settings.get();
        ctx.prompter = &prompter;
        ctx.selout = &out;
        ctx.selinp = &inp;
        win = std::make_unique<StepEditorWindow>(ctx, usrcmp);
        win->resize(1260, 700);
        win->show();
        QApplication::setActiveWindow(win.get());
        win->grid()->setFocus();
    }
    StepSheetEditor& ed() { return win->editor(); }
    StepSheet& sheet() { return win->editor().sheet(); }
    QTableView* grid() { return win->grid(); }
    int out1() { return sheet().GetcolOutKino1(); }
    int out2() { return sheet().GetcolOutKino2(); }
    int in(int group) { return sheet().inputGroupCol(group); }

    void go(int row, int col) { grid()->setCurrentIndex(win->model()->index(row, col)); }
    // Where the step number of a row is shown; a click there selects the whole row (with
    // shift the selection of whole rows grows to it).
    QPoint stepPoint(int row) {
        QHeaderView* h = grid()->verticalHeader();
        return QPoint(h->width() / 2, h->sectionViewportPosition(row) + h->sectionSize(row) / 2);
    }
    void clickStep(int row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(grid()->verticalHeader()->viewport(), Qt::LeftButton, modifiers, stepPoint(row));
    }
    QWidget* openEditor(int row, int col) { return grid()->indexWidget(win->model()->index(row, col)); }
    // Types text on the cell as a user does: the first character opens the cell editor,
    // the rest goes into it, Enter ends the edit.
    void type(int row, int col, const QString& text) {
        go(row, col);
        // QTest can only name ASCII keys: other text comes as the input method commits it.
        if (text.at(0).unicode() < 128) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text.left(1));
            QApplication::sendEvent(grid(), &press);
        } else {
            QInputMethodEvent commit;
            commit.setCommitString(text.left(1));
            QApplication::sendEvent(grid(), &commit);
        }
        QWidget* e = openEditor(row, col);
        ASSERT_NE(e, nullptr) << "no cell editor opened on " << row << "," << col;
        auto* line = qobject_cast<QLineEdit*>(e);
        ASSERT_NE(line, nullptr);
        line->setText(text); // keyClicks cannot type double-byte characters
        QTest::keyClick(line, Qt::Key_Return);
        QCoreApplication::processEvents(); // the delegate commits through a queued call
    }
    void setup(int row, int col, const QString& text) {
        ASSERT_TRUE(ed().entry().enterText(row, col, text)) << row << "," << col << " " << text.toStdString();
    }
    void setupAll(int row, std::initializer_list<std::pair<int, QString>> cells) {
        for (const auto& [col, text] : cells)
            setup(row, col, text);
    }
    // An output group with function, logic and delay kind.
    void output(int row, int col, const QString& fn, const QString& logic, const QString& kind) {
        setup(row, col, fn);
        setup(row, col + 1, logic);
        setup(row, col + 2, kind);
    }
    std::vector<int> messages() const { return prompter.numbers(); }
};

} // namespace vkm::test
