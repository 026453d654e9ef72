#pragma once

#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "sheet/stepsheeteditor.h"

#include <gtest/gtest.h>
#include <memory>

namespace vkm::test {

// Small catalogues that hold one or two functions of every category the editor reacts to.
inline void fillOutputCatalogue(CSelections& s) {
    s.Add("OUT001", 1, "", "OUT", "0", "0");
    s.Add("OUT002", 2, "", "OUT", "0", "0");
    s.Add("EMAKE", 3, "", "OUT", "0", "0");
    s.Add("RG01", 4, "", "RGST", "0", "0");
    s.Add("CNT01", 5, "", "COUNT", "0", "9999");
    s.Add("MD01", 6, "", "MODE", "0", "0");
    s.Add("RET", 10, "", "RETURN", "0", "0");
    s.Add("SUB01", 11, "", "SUB", "0", "0");
    s.Add("J001", jumpTarget(1), "", "JMP", "0", "0");
    s.Add("J002", jumpTarget(2), "", "JMP", "0", "0");
    s.Add("C001", callTarget(1), "", "CALL", "0", "0");
}

inline void fillInputCatalogue(CSelections& s) {
    s.Add("IN001", 1, "", "IN", "0", "0");
    s.Add("IN002", 2, "", "IN", "0", "0");
    s.Add("IN003", 3, "", "IN", "0", "0");
    s.Add("IN004", 4, "", "IN", "0", "0");
    s.Add("ALLON", 5, "", "ALL", "0", "0");
    s.Add("CT10", 10, "", "COUNT", "0", "500");
    s.Add("CT11", 11, "", "COUNT", "0", "500");
    s.Add("CT40", 40, "", "COUNT", "0", "65535");
    s.Add("S001", jumpTarget(1), "", "STEP", "0", "0");
}

// An editor over the small catalogues with a recording prompter, counting the changes it
// reports and the undo snapshots it asks for.
class SheetFixture {
public:
    explicit SheetFixture(bool locateInpFirst = false, bool comparison = false) {
        fillOutputCatalogue(selout);
        fillInputCatalogue(selinp);
        editor = std::make_unique<StepSheetEditor>(selout, selinp, prompter, comparison, locateInpFirst,
                                                   countingHooks());
    }
    // The hooks that count; a test adds its own to them.
    EditorHooks countingHooks() {
        EditorHooks hooks;
        hooks.changed = [this] { ++changedCount; };
        hooks.snapshot = [this] { ++snapshots; };
        return hooks;
    }
    StepSheet& sheet() { return editor->sheet(); }
    int o1() { return sheet().GetcolOutKino1(); }
    int o2() { return sheet().GetcolOutKino2(); }
    int in(int group) { return sheet().inputGroupCol(group); }
    int out(int group) { return sheet().outputGroupCol(group); }

    // Writes a whole output group as the editor would show it (no rules applied).
    void putOut(int row, int group, const QString& digital, const QString& logic, const QString& kind,
                const QString& delay) {
        const int kc = out(group);
        sheet().setCell(row, kc, digital, selout.CategoryByDigitalOnly(digital));
        sheet().setText(row, kc + 1, logic);
        sheet().setText(row, kc + 2, kind);
        sheet().setText(row, kc + 3, delay);
    }
    void putIn(int row, int group, const QString& digital, const QString& state, const QString& rel) {
        const int kc = in(group);
        sheet().setCell(row, kc, digital, selinp.CategoryByDigitalOnly(digital));
        sheet().setText(row, kc + 1, state);
        sheet().setText(row, kc + 2, rel);
    }
    // A complete ordinary row: OUT001 HIGH TIMER 100 when IN001 POS LEV END.
    void putSimpleRow(int row) {
        putOut(row, 1, "OUT001", "1", "0", "100");
        putIn(row, 1, "IN001", "0", "2");
    }
    // Types into a cell as the user does (start, validate, after-edit).
    bool type(int row, int col, const QString& text) { return editor->entry().enterText(row, col, text); }
    // Types the cells of a row one after the other; each must be accepted.
    void typeAll(int row, std::initializer_list<std::pair<int, QString>> cells) {
        for (const auto& [col, text] : cells)
            ASSERT_TRUE(type(row, col, text)) << row << "," << col << " " << text.toStdString();
    }
    // Whole rows selected from anchor to corner, as a click on the step numbers selects them.
    void selectRows(int anchor, int corner) {
        sheet().setSelection(anchor, 1, corner, StepSheet::kCols - 1);
        sheet().setRowSelectionMode(true);
    }
    // Every data cell of a row, text and category, and its disabled state.
    QStringList rowCells(int row) {
        QStringList cells{sheet().isRowDisabled(row) ? "disabled" : "enabled"};
        for (int c = 1; c < StepSheet::kCols; ++c)
            cells << sheet().text(row, c) + "|" + sheet().data(row, c);
        return cells;
    }

    CSelections selout, selinp;
    ScriptedPrompter prompter;
    std::unique_ptr<StepSheetEditor> editor;
    int changedCount = 0;
    int snapshots = 0;
};

} // namespace vkm::test
