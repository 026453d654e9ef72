// Showing a full 32-step program (PasteData), checking it (ExactInput), pasting 32 whole
// rows from the clipboard and inserting a row with the renumbering of the step references
// it moves, each as a fraction of one 16 ms display frame: median of many timed rounds.
#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/csteps.h"
#include "sheet/stepsheeteditor.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

using namespace vkm;

namespace {

constexpr double kFrameNs = 16e6;

double medianNs(int rounds, int perRound, const std::function<void()>& work) {
    std::vector<double> samples;
    for (int r = 0; r < rounds; ++r) {
        QElapsedTimer t;
        t.start();
        for (int i = 0; i < perRound; ++i)
            work();
        samples.push_back(double(t.nsecsElapsed()) / perRound);
    }
    std::sort(samples.begin(), samples.end());
    return samples[samples.size() / 2];
}

void fillCatalogues(CSelections& out, CSelections& in) {
    for (int i = 0; i < 200; ++i) {
        out.Add(QStringLiteral("Y%1").arg(i, 3, 10, QLatin1Char('0')), qint16(256 + i), {}, cat::OUT, "0",
                "0");
        in.Add(QStringLiteral("X%1").arg(i, 3, 10, QLatin1Char('0')), qint16(256 + i), {}, cat::IN, "0", "0");
    }
    out.Add("EMAKE", 511, {}, cat::OUT, "0", "0");
    out.Add("CN16", 16, {}, cat::COUNT, "0", "9999");
    in.Add("CN16", 16, {}, cat::COUNT, "0", "9999");
    for (int n = 1; n <= 32; ++n)
        out.Add(QStringLiteral("J%1").arg(n, 3, 10, QLatin1Char('0')), jumpTarget(n), {}, cat::JMP, "0", "0");
}

// 32 busy steps: ordinary rows with four inputs, pulses, counters and jumps.
CSteps fullProgram(const CSelections& out) {
    CSteps p;
    for (int n = 1; n <= 32; ++n) {
        auto o = std::make_shared<CStepOuts>();
        auto i = std::make_shared<CStepInps>();
        if (n % 8 == 0) {
            o->Add(1, jumpTarget(n % 32 + 1), 3, 0, 0, out);
            o->Add(2, -1, 0, 0, 0, out);
            i->Add(1, 256 + n, 0, RelEnd);
        } else if (n % 8 == 4) {
            o->Add(1, 16, LogicInc, 0, 0, out);
            o->Add(2, 511, 1, DelayStc, 5, out);
            i->CounterId = 0;
            i->Add(1, 16, 0, RelGe);
            i->Add(2, 100 + n, 0, RelEnd);
        } else {
            o->Add(1, qint16(256 + n), 1, DelayTimer, 50 + n, out);
            o->Add(2, qint16(256 + n), 0, DelayTimer, 100 + n, out);
            i->Add(1, 256 + n, 1, RelAnd);
            i->Add(2, 257 + n, 0, RelOr);
            i->Add(3, 258 + n, 2, RelAnd);
            i->Add(4, 259 + n, 0, RelEnd);
        }
        p.Add(o, i, QStringLiteral("step %1").arg(n), false, false);
    }
    return p;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    CSelections selout, selinp;
    fillCatalogues(selout, selinp);
    const CSteps program = fullProgram(selout);
    ScriptedPrompter prompter;
    StepSheetEditor editor(selout, selinp, prompter, false, false);
    editor.conversion().PasteData(program);
    if (!editor.ExactInput()) {
        std::fprintf(stderr, "benchmark program fails check message %d\n", editor.lastCheckFailure().message);
        return 1;
    }
    const double paste = medianNs(31, 50, [&] { editor.conversion().PasteData(program); });
    const double check = medianNs(31, 50, [&] { editor.ExactInput(); });

    // Every row copied, then pasted over itself as 32 whole rows.
    StepSheet& sheet = editor.sheet();
    sheet.setSelection(1, 1, StepSheet::kLastStepRow, StepSheet::kCols - 1);
    sheet.setRowSelectionMode(true);
    editor.rowClipboard().copySelection();
    const double pasteRows = medianNs(31, 50, [&] {
        if (!editor.rowClipboard().PasteFromBuf(1))
            std::abort();
    });

    // A row inserted at the top: every jump follows its step, the one to the last step is
    // refused, the last row is lost (the question answered Yes). The sheet is put back
    // before each insert, and that is timed with it.
    EditorHooks hooks;
    hooks.option = [](const BoolKey& key) { return key.name != keys::DoesAskInReplacing.name; };
    editor.setHooks(hooks);
    prompter.setDefaultAnswer(Answer::Yes);
    editor.conversion().PasteData(program);
    const QByteArray shown = sheet.saveCells();
    const double insert = medianNs(31, 50, [&] {
        sheet.loadCells(shown);
        sheet.setSelection(1, 1, 1, StepSheet::kCols - 1);
        sheet.setRowSelectionMode(true);
        if (!editor.rows().insertCommand())
            std::abort();
        prompter.clear();
    });
    if (sheet.text(2 + 7, sheet.GetcolOutKino1()) != QLatin1String("J010")) {
        std::fprintf(stderr, "the jump of step 8 was not renumbered\n");
        return 1;
    }

    const auto report = [](const char* what, double ns) {
        std::printf("%s: %.1f us = %.4f of a 16 ms frame\n", what, ns / 1000, ns / kFrameNs);
        return ns / kFrameNs <= 0.25;
    };
    bool ok = report("PasteData (32 steps)", paste);
    ok = report("ExactInput (32 steps)", check) && ok;
    ok = report("Paste of 32 whole rows", pasteRows) && ok;
    ok = report("Insert of a row with renumbering (restore included)", insert) && ok;
    return ok ? 0 : 1;
}
