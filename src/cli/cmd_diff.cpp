// vkmstep-cli diff A.gsp B.gsp: the steps in which two program files differ, field by field.
#include "clicontext.h"
#include "command.h"

#include "sheet/programcompare.h"

#include <QFile>
#include <QFileInfo>

namespace vkm::cli {
namespace {

using namespace programcompare;

void printFields(QTextStream& s, const std::vector<FieldDifference>& fields) {
    for (const FieldDifference& f : fields)
        s << "  " << f.field << ": " << f.a << " -> " << f.b << '\n';
}

// Why a path cannot be compared before it is read at all ("" when it can be read).
QString unreadable(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists())
        return QStringLiteral("no such file");
    if (info.isDir())
        return QStringLiteral("a folder, not a program file");
    if (!info.isFile())
        return QStringLiteral("not a regular file");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot be read (%1)").arg(file.errorString());
    return {};
}

int runDiff(const QStringList& args, CliContext& ctx) {
    if (args.size() != 2)
        return ctx.usageError(QStringLiteral("diff A.gsp B.gsp"));
    // Exit code 1 means "they differ": a file that cannot be read must not look like that.
    // Each reason names the file, so that it is clear which of the two is at fault.
    for (const QString& path : args) {
        const QString reason = unreadable(path);
        if (!reason.isEmpty()) {
            ctx.err() << "diff: " << path << ": " << reason << '\n';
            return 2;
        }
    }
    if (!ctx.loadCatalogues())
        return 2;
    CSteps programs[2];
    for (int i = 0; i < 2; ++i) {
        if (!ctx.readProgram(args[i], programs[i])) {
            ctx.err() << "diff: " << args[i] << ": not a step program the editor can open\n";
            return 2;
        }
    }
    const CSteps& a = programs[0];
    const CSteps& b = programs[1];
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
