#include "sheet/stepsheeteditor.h"

namespace vkm {

StepSheetEditor::StepSheetEditor(const CSelections& selout, const CSelections& selinp, Prompter& prompter,
                                 bool isComparison, bool locateInpFirst, EditorHooks hooks)
    : m_ctx(selout, selinp, prompter, isComparison, locateInpFirst), m_queries(m_ctx),
      m_rules(m_ctx, m_queries), m_clearing(m_ctx, m_queries, m_rules),
      m_entry(m_ctx, m_queries, m_rules, m_clearing), m_conversion(m_ctx, m_queries, m_rules),
      m_rowClipboard(m_ctx, m_queries, m_rules), m_references(m_ctx, m_queries, m_entry),
      m_rows(m_ctx, m_queries, m_clearing, m_rowClipboard, m_references), m_finder(m_ctx, m_queries, m_entry),
      m_pulse(m_ctx, m_queries, m_rules) {
    m_ctx.hooks = std::move(hooks);
}

bool StepSheetEditor::ExactInput() {
    SheetChecks checks(m_ctx.sheet, m_queries, m_ctx.prompter);
    const bool ok = checks.run();
    m_lastFailure = checks.failure();
    return ok;
}

} // namespace vkm
