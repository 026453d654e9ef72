// vkmstep-cli catalogue {out|in|cusin|cusout}: lists a function catalogue of the setting
// archive, one entry a line in file order: value, category and digital text, TAB-separated.
#include "clicontext.h"
#include "command.h"

namespace vkm::cli {

namespace {

const CSelections* catalogueByName(const QString& name, const CliContext& ctx) {
    if (name == QLatin1String("out"))
        return &ctx.selout();
    if (name == QLatin1String("in"))
        return &ctx.selinp();
    if (name == QLatin1String("cusin"))
        return &ctx.selCusInp();
    if (name == QLatin1String("cusout"))
        return &ctx.selCusOut();
    return nullptr;
}

int runCatalogue(const QStringList& args, CliContext& ctx) {
    const QString which = args.value(0);
    if (args.size() != 1 || !catalogueByName(which, ctx))
        return ctx.usageError(QStringLiteral("catalogue {out|in|cusin|cusout}"));
    if (!ctx.loadCatalogues())
        return 2;
    // Digital texts are printed exactly as stored: the customisation catalogues pad them
    // with blanks and the padding is part of the name.
    for (const CSelection& e : catalogueByName(which, ctx)->entries())
        ctx.out() << e.value << '\t' << e.Category << '\t' << e.Digital << '\n';
    ctx.out().flush();
    return 0;
}

const CommandRegistration reg({QStringLiteral("catalogue"),
                               QStringLiteral("catalogue {out|in|cusin|cusout}   list a function catalogue"),
                               runCatalogue});

} // namespace

} // namespace vkm::cli
