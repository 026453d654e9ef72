// vkmstep-cli custom FILE.txt: lists the customisable terminals of a customisation transfer
// text (read from the machine, or carried on a disk), one terminal a line: its location,
// the digital text of its function and every value property by name.
#include "clicontext.h"
#include "command.h"

#include "custom/customfield.h"
#include "custom/customizedata.h"

namespace vkm::cli {
namespace {

// A value, with the code's short text for the output codes that have one; "-" for a
// property the terminal has no place for.
QString valueText(const TerminalValue& v) {
    if (!v.present)
        return QStringLiteral("-");
    QString code;
    const QLatin1String name(v.name);
    if (name == QLatin1String("ChopDuty"))
        code = CCustomOuts::GetChopDutyInfo1(v.value);
    else if (name == QLatin1String("Zenpa"))
        code = CCustomOuts::GetZenpaInfo2(v.value);
    else if (name == QLatin1String("Hoji"))
        code = CCustomOuts::GetHojiInfo1(v.value);
    return code.isEmpty() ? QString::number(v.value) : QString::number(v.value) + u'(' + code + u')';
}

template <typename Terminal>
void listTerminal(QTextStream& out, const Terminal& t, const CSelections& functions) {
    // The digital text is printed as the catalogue spells it, padding included.
    out << t.Location << '\t' << functions.shownDigital(t.Kino);
    for (const TerminalValue& v : t.valueProperties())
        out << '\t' << v.name << '=' << valueText(v);
    out << '\n';
}

int runCustom(const QStringList& args, CliContext& ctx) {
    if (args.size() != 1)
        return ctx.usageError(QStringLiteral("custom FILE.txt"));
    if (!ctx.canRead(args.first()))
        return 1;
    if (!ctx.loadCatalogues())
        return 2;
    QByteArray image;
    CCustomInps inps = ctx.cusI();
    CCustomOuts outs = ctx.cusO();
    if (!ReadCustomizeData(args.first(), image, inps, outs, ctx.prompter())) {
        ctx.prompter().showMessage(4, 1, QStringLiteral("CUSTOMIZE"));
        return 1;
    }
    for (const CCustomInp& t : inps)
        listTerminal(ctx.out(), t, ctx.selCusInp());
    for (const CCustomOut& t : outs)
        listTerminal(ctx.out(), t, ctx.selCusOut());
    ctx.out().flush();
    return 0;
}

const CommandRegistration
    reg({QStringLiteral("custom"),
         QStringLiteral("custom FILE.txt          list the terminals of a customisation text"), runCustom});

} // namespace
} // namespace vkm::cli
