// vkmstep-cli diff A.gsp B.gsp: the steps in which two program files differ, field by field.
#include "clicontext.h"
#include "command.h"

#include "sheet/programcompare.h"

#include <QFileInfo>

namespace vkm::cli {
namespace {

using namespace programcompare;

void printFields(QTextStream& s, const std::vector<FieldDifference>& fields) {
    for (const FieldDifference& f : fields)
        s << "  " << f.field << ": " << f.a << " -> " << f.b << '\n';
}

int runDiff(const QStringList& args, CliContext& ctx) {
    if (args.size() != 2)
        return ctx.usageError(QStringLiteral("diff A.gsp B.gsp"));
    // Exit code 1 means "they differ": a file that cannot be read must not look like that.
    for (const QString& path : args) {
        if (!QFileInfo(path).isFile()) {
            ctx.err() << path << ": no such file\n";
            return 2;
        }
    }
    CSteps a, b;
    if (!ctx.readProgram(args[0], a) || !ctx.readProgram(args[1], b)) {
        ctx.err() << "diff: cannot compare, a program could not be read\n";
        return 2;
    }
    const ProgramDifferences d = comparePrograms(a, b, ctx.selout(), ctx.selinp());
    QTextStream& s = ctx.out();
    s.setEncoding(QStringConverter::Utf8);
    if (!d.program.empty()) {
        s << "Program\n";
        printFields(s, d.program);
    }
    for (const StepDifference& step : d.steps) {
        s << "Step " << step.step << '\n';
        printFields(s, step.fields);
    }
    if (d.isEmpty()) {
        s << "The programs are the same.\n";
        return 0;
    }
    const int fields = d.fieldCount();
    const auto steps = d.steps.size();
    s << fields << (fields == 1 ? " difference in " : " differences in ");
    if (steps > 0)
        s << steps << (steps == 1 ? " step" : " steps") << (d.program.empty() ? "" : " and ");
    if (!d.program.empty())
        s << "the program's own fields";
    s << '\n';
    return 1;
}

const CommandRegistration
    reg({QStringLiteral("diff"),
         QStringLiteral("diff A.gsp B.gsp         the steps in which two programs differ, "
                        "field by field (exit 1 when they differ)"),
         runDiff});

} // namespace
} // namespace vkm::cli
