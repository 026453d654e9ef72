#pragma once

#include "sheet/cellclearing.h"
#include "sheet/cellentry.h"
#include "sheet/cellrules.h"
#include "sheet/sheetchecks.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetconversion.h"
#include "sheet/sheetqueries.h"

namespace vkm {

// One step editor window's sheet with the rules that work on it, each concern a class of
// its own: questions about cells and rows (queries), what cells offer and the "***" cells
// (rules), entering a cell (entry), clearing cells (clearing), program and sheet into each
// other (conversion) and the checks before a program leaves the editor. Messages go
// through the prompter; nothing here touches a widget.
class StepSheetEditor {
public:
    StepSheetEditor(const CSelections& selout, const CSelections& selinp, Prompter& prompter,
                    bool isComparison, bool locateInpFirst, EditorHooks hooks = {});
    StepSheetEditor(const StepSheetEditor&) = delete;
    StepSheetEditor& operator=(const StepSheetEditor&) = delete;

    StepSheet& sheet() { return m_ctx.sheet; }
    const StepSheet& sheet() const { return m_ctx.sheet; }
    bool isComparison() const { return m_ctx.comparison; }
    void setHooks(EditorHooks hooks) { m_ctx.hooks = std::move(hooks); }
    const EditorHooks& hooks() const { return m_ctx.hooks; }
    const CSelections& selout() const { return m_ctx.selout; }
    const CSelections& selinp() const { return m_ctx.selinp; }
    Prompter& prompter() const { return m_ctx.prompter; }

    const SheetQueries& queries() const { return m_queries; }
    CellRules& rules() { return m_rules; }
    const CellRules& rules() const { return m_rules; }
    CellEntry& entry() { return m_entry; }
    CellClearing& clearing() { return m_clearing; }
    SheetConversion& conversion() { return m_conversion; }
    const SheetConversion& conversion() const { return m_conversion; }

    // The checks before a program leaves the editor; the failing one selects its cell
    // and shows its message.
    bool ExactInput();
    // The failure of the last ExactInput run (message 0 when it passed).
    CheckFailure lastCheckFailure() const { return m_lastFailure; }

private:
    SheetContext m_ctx;
    SheetQueries m_queries;
    CellRules m_rules;
    CellClearing m_clearing;
    CellEntry m_entry;
    SheetConversion m_conversion;
    CheckFailure m_lastFailure;
};

} // namespace vkm
