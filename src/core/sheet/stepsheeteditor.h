#pragma once

#include "sheet/cellclearing.h"
#include "sheet/cellentry.h"
#include "sheet/cellrules.h"
#include "sheet/functionfinder.h"
#include "sheet/pulsepair.h"
#include "sheet/rowclipboard.h"
#include "sheet/rowoperations.h"
#include "sheet/sheetchecks.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetconversion.h"
#include "sheet/sheetqueries.h"
#include "sheet/stepreferences.h"

namespace vkm {

// One step editor window's sheet with the rules that work on it, each concern a class of
// its own: questions about cells and rows (queries), what cells offer and the "***" cells
// (rules), entering a cell (entry), clearing cells (clearing), program and sheet into each
// other (conversion), the checks before a program leaves the editor, copy and paste
// (clipboard), row commands (rows) with the renumbering of step references (references),
// find and replace (finder) and pulse pairs (pulse). Messages go through the prompter;
// nothing here touches a widget.
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
    RowClipboard& rowClipboard() { return m_rowClipboard; }
    StepReferences& references() { return m_references; }
    RowOperations& rows() { return m_rows; }
    FunctionFinder& finder() { return m_finder; }
    PulsePair& pulse() { return m_pulse; }
    const PulsePair& pulse() const { return m_pulse; }
    // The clipboard copies go to (nullptr: one of the editor's own). Not owned.
    void setClipboard(TextClipboard* clipboard) { m_ctx.externalClipboard = clipboard; }
    TextClipboard& clipboard() const { return m_ctx.clipboard(); }

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
    RowClipboard m_rowClipboard;
    StepReferences m_references;
    RowOperations m_rows;
    FunctionFinder m_finder;
    PulsePair m_pulse;
    CheckFailure m_lastFailure;
};

} // namespace vkm
