// vkmstep-cli dump FILE.gsp: a readable listing of a program file, stable enough to diff.
#include "clicontext.h"
#include "command.h"

#include "catalogue/cselections.h"
#include "link/transfertext.h"
#include "model/codes.h"
#include "model/csteps.h"

#include <QRegularExpression>

namespace vkm::cli {
namespace {

// Function names as the editor shows them; a value the catalogue lacks stays visible.
QString functionText(const CSelections& sels, int kino) {
    if (const CSelection* e = sels.Item(QString::number(qint16(kino))))
        return e->Digital;
    return QLatin1Char('#') + QString::number(quint16(kino));
}

QString orCode(const QString& text, int code) {
    return text.isEmpty() ? QLatin1Char('#') + QString::number(code) : text;
}

// Which counter operands are numbers typed in, by counter identifier: the pattern's
// character for the input group is '1'.
bool operandIsNumber(int counterId, int block) {
    static const char* const patterns[] = {"01", "00", "011", "001", "010", "000"};
    if (counterId < 0 || counterId > 5)
        return false;
    const QByteArray p(patterns[counterId]);
    return block - 1 < p.size() && p[block - 1] == '1';
}

void dumpOutput(QTextStream& s, const CStepOut* out, int block, const CSelections& selout) {
    s << "  out" << block << ": ";
    if (!out || out->Kino == -1) {
        s << "-\n";
        return;
    }
    const QString category = selout.CategoryByValue(out->Kino);
    s << functionText(selout, out->Kino) << ' ' << orCode(CStepOuts::LogicJ(out->Logic), out->Logic);
    if (category == cat::JMP || category == cat::SUB || category == cat::CALL || category == cat::RETURN) {
        s << '\n';
        return;
    }
    // The machine counts timers in 2 ms units; the editor shows milliseconds.
    const bool doubled = out->DelayKind == DelayTimer &&
                         (category == cat::IN || category == cat::OUT || category == cat::RGST);
    s << ' ' << orCode(CStepOuts::DelayKindJ(out->DelayKind), out->DelayKind) << ' '
      << (doubled ? qint64(out->DelayEtc) * 2 : qint64(out->DelayEtc)) << '\n';
}

void dumpInputs(QTextStream& s, const CStepInps& inps, const CSelections& selinp) {
    const auto first = inps.Item(QStringLiteral("1"));
    const bool counter = first && selinp.CategoryByValue(qint16(first->Kino)) == cat::COUNT;
    bool afterEnd = false;
    for (int block = 1; block <= 4; ++block) {
        const auto inp = inps.Item(QString::number(block));
        s << "  in" << block << ": ";
        if (!inp || afterEnd) {
            s << "-\n";
            continue;
        }
        if (counter && block > 1 && operandIsNumber(inps.CounterId, block))
            s << quint16(inp->Kino);
        else
            s << functionText(selinp, inp->Kino);
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
