#pragma once

#include "base/settingkeys.h"
#include "catalogue/choosecategory.h"
#include "sheet/stepsheet.h"
#include "sheet/textclipboard.h"

#include <functional>
#include <optional>

namespace vkm {

class CSelections;
class Prompter;

// Opens the function selection dialog for a function cell: side 1 input, 2 output, the
// cell's current function number (-1 when empty), the step number. nullopt = cancelled.
using FunctionChooser = std::function<std::optional<int>(int inOut, int orgValue, int row)>;

// What the window around the editor wants to hear of. Every hook may be empty.
struct EditorHooks {
    FunctionChooser chooseFunction;            // F2 / double click on a function cell
    CategoryChooser chooseCategory;            // a digital text shared by several categories
    std::function<void()> changed;             // sets the document's IsChanged
    std::function<void(int row)> pulseRefresh; // after an edit: refresh (or open) the pulse editor
    std::function<void(int row, int col)> functionChanged; // tells an open find window
    std::function<void()> snapshot; // takes an undo snapshot before rows or a block change
    // An accepted edit of one cell (typed, chosen in a list or the selection dialog)
    // changed the sheet: cellsBefore is the sheet as the edit found it (saveCells), once
    // per edit, before the changed flag is set.
    std::function<void(const QByteArray& cellsBefore)> cellEdited;
    // An option of the settings store, read when it is needed (the key's default when empty).
    std::function<bool(const BoolKey& key)> option;
    // Asks whether a function is replaced by another (renumbering step references): a
    // ReplaceAnswer. Empty: the Yes/No question of message 84.
    std::function<int(const QString& oldDigital, const QString& newDigital)> confirmReplace;
};

// What the rule classes of one editor window share: the sheet, the two catalogues, the
// prompter their messages go through (style 2), whether the window shows the comparison
// program (nothing can be edited there) and the window's hooks.
struct SheetContext {
    SheetContext(const CSelections& out, const CSelections& inp, Prompter& p, bool isComparison,
                 bool locateInpFirst)
        : sheet(locateInpFirst), selout(out), selinp(inp), prompter(p), comparison(isComparison) {}
    SheetContext(const SheetContext&) = delete;
    SheetContext& operator=(const SheetContext&) = delete;

    void setChanged() const {
        if (hooks.changed)
            hooks.changed();
    }
    void takeSnapshot() const {
        if (hooks.snapshot)
            hooks.snapshot();
    }
    bool option(const BoolKey& key) const { return hooks.option ? hooks.option(key) : key.defaultValue; }
    TextClipboard& clipboard() const { return externalClipboard ? *externalClipboard : ownClipboard; }

    StepSheet sheet;
    const CSelections& selout;
    const CSelections& selinp;
    Prompter& prompter;
    const bool comparison;
    EditorHooks hooks;
    // The clipboard copied cells go to: the window's (the system's), else one of the
    // editor's own.
    TextClipboard* externalClipboard = nullptr;
    mutable MemoryClipboard ownClipboard;
};

} // namespace vkm
