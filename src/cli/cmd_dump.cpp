// vkmstep-cli dump FILE.gsp: a readable listing of a program file, stable enough to diff.
#include "clicontext.h"
#include "command.h"

#include "catalogue/cselections.h"
#include "link/transfertext.h"
#include "model/codes.h"
#include "model/csteps.h"
#include "model/steprules.h"

#include <QRegularExpression>

namespace vkm::cli {
namespace {

QString orCode(const QString& text, int code) {
    return text.isEmpty() ? QLatin1Char('#') + QString::number(code) : text;
}

void dumpOutput(QTextStream& s, const CStepOut* out, int block, const CSelections& selout) {
    s << "  out" << block << ": ";
    if (!out || out->Kino == -1) {
        s << "-\n";
        return;
    }
    const QString category = selout.CategoryByValue(out->Kino);
    s << selout.shownDigital(out->Kino) << ' ' << orCode(CStepOuts::LogicJ(out->Logic), out->Logic);
    if (isFlowCategory(category)) {
        s << '\n';
        return;
    }
    s << ' ' << orCode(CStepOuts::DelayKindJ(out->DelayKind), out->DelayKind) << ' '
      << shownDelay(out->DelayEtc, category, out->DelayKind) << '\n';
}

void dumpInputs(QTextStream& s, const CStepInps& inps, const CSelections& selinp) {
    const bool counter = isCounterStep(inps, selinp);
    bool afterEnd = false;
    for (int block = 1; block <= 4; ++block) {
        const auto inp = inps.Item(QString::number(block));
        s << "  in" << block << ": ";
        if (!inp || afterEnd) {
            s << "-\n";
            continue;
        }
        if (counter && block > 1 && MustJyosu(inps.CounterId, block))
            s << quint16(inp->Kino);
        else
            s << selinp.shownDigital(inp->Kino);
        if (!counter)
            s << ' ' << orCode(CStepInps::JyotaiJ(inp->Jyotai), inp->Jyotai);
        s << ' ' << orCode(CStepInps::RelJ(inp->Rel), inp->Rel) << '\n';
        afterEnd = inp->Rel == RelEnd;
    }
}

void dumpProgram(QTextStream& s, const CSteps& p, const CliContext& ctx) {
    s << "author: " << p.Author << '\n' << "memo file: " << p.MemoFile << '\n' << "memo:";
    for (const QString& line : p.Memo.split(QRegularExpression(QStringLiteral("\r\n|\r|\n"))))
        s << (p.Memo.isEmpty() ? "" : "\n  | ") << line;
    s << '\n';
    for (const auto& step : p) {
        // An empty step is left out, unless it carries a remark (a heading the
        // technician wrote between blocks of steps).
        if (step->NOP && step->Remark.isEmpty())
            continue;
        s << "step " << step->Row << (step->GyoMuko ? " disabled" : "");
        if (!step->Remark.isEmpty())
            s << " \"" << step->Remark << '"';
        s << '\n';
        if (step->NOP)
            continue;
        for (int block = 1; block <= 2; ++block)
            dumpOutput(s, step->outs ? step->outs->Item(QString::number(block)).get() : nullptr, block,
                       ctx.selout());
        if (step->inps && step->inps->CounterId != 0)
            s << "  counter id: " << step->inps->CounterId << '\n';
        if (step->inps)
            dumpInputs(s, *step->inps, ctx.selinp());
        else
            s << "  inputs: -\n";
    }
}

int runDump(const QStringList& args, CliContext& ctx) {
    if (args.size() != 1)
        return ctx.usageError(QStringLiteral("dump FILE.gsp"));
    if (!ctx.loadCatalogues())
        return 1;
    bool ok = false;
    const QByteArray image = ParseData(args[0], ctx.prompter(), &ok);
    CSteps program;
    if (!ok || !program.fromImage(image, ctx.selout(), ctx.selinp())) {
        ctx.prompter().showMessage(19, 1); // "Failed to read data."
        return 1;
    }
    ctx.out().setEncoding(QStringConverter::Utf8);
    dumpProgram(ctx.out(), program, ctx);
    return 0;
}

const CommandRegistration reg({QStringLiteral("dump"),
                               QStringLiteral("dump FILE.gsp            readable listing of a program file"),
                               runDump});

} // namespace
} // namespace vkm::cli
