// Clipboard text -> sheet: any bytes pasted as whole rows or as a block either change
// nothing (refused) or land as cells that copy back to text of the same form; a text that
// reads as copied cells is written again exactly as it was read.
#include "fuzzsupport.h"

#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "sheet/clipboardtext.h"
#include "sheet/stepsheeteditor.h"

#include <cstdint>
#include <cstdlib>

namespace {

struct Editor {
    Editor() {
        selout.Add("Y001", 256, "", "OUT", "0", "0");
        selout.Add("CN16", 16, "", "COUNT", "0", "9999");
        selout.Add("J002", vkm::jumpTarget(2), "", "JMP", "0", "0");
        selout.Add("RET", 10, "", "RETURN", "0", "0");
        selinp.Add("X001", 256, "", "IN", "0", "0");
        selinp.Add("CT10", 10, "", "COUNT", "0", "500");
        selinp.Add("ALL", 1000, "", "ALL", "0", "0");
    }
    vkm::CSelections selout, selinp;
    vkm::ScriptedPrompter prompter;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vkm::fuzz::muteErrorReports();
    static Editor catalogues;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const auto parsed = vkm::ClipboardText::parse(text);
    if (parsed) {
        QString again = vkm::ClipboardText::compose(*parsed);
        if (again != text && again + QStringLiteral("\r\n") != text)
            std::abort();
    }
    // The place pasted at comes from the input too: every layout, row and column is tried.
    const int place = size > 0 ? data[size - 1] : 0;
    vkm::StepSheetEditor editor(catalogues.selout, catalogues.selinp, catalogues.prompter, false,
                                (place & 1) != 0);
    vkm::StepSheet& sheet = editor.sheet();
    const int row = 1 + (place >> 1) % vkm::StepSheet::kLastStepRow;
    const int col = 1 + place % (vkm::StepSheet::kCols - 1);
    sheet.setSelection(row, col, row + (place & 3), col);
    sheet.setRowSelectionMode((place & 4) != 0);
    editor.clipboard().setText(text);
    const QByteArray before = sheet.saveCells();
    const bool pasted = editor.rowClipboard().PasteFromBuf(row);
    if (!pasted && sheet.saveCells() != before)
        std::abort(); // a refused paste changed the sheet
    if (pasted && !parsed)
        std::abort(); // pasted what does not read as copied cells
    if (pasted) {
        // Whatever landed copies back as copied cells, each in its column's form.
        const auto copied = vkm::ClipboardText::parse(editor.rowClipboard().copyText(
            1, vkm::StepSheet::kLastStepRow, 1, vkm::StepSheet::kCols - 1, true));
        if (!copied)
            std::abort();
        for (const auto& line : copied->rows)
            for (int i = 0; i < line.cells.size(); ++i)
                if (!vkm::ClipboardText::cellFits(sheet.colKind(i + 1), line.cells[i]))
                    std::abort();
    }
    catalogues.prompter.clear();
    return 0;
}
