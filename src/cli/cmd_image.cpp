// vkmstep-cli image FILE.gsp OUT.bin: the step image that a program file's transfer text holds.
#include "clicontext.h"
#include "command.h"

#include "link/memorymap.h"
#include "link/transfertext.h"

namespace vkm::cli {
namespace {

int runImage(const QStringList& args, CliContext& ctx) {
    if (args.size() != 2)
        return ctx.usageError(QStringLiteral("image FILE.gsp OUT.bin"));
    bool ok = false;
    const QByteArray bytes = ParseData(args[0], ctx.prompter(), &ok);
    if (!ok || bytes.size() < memmap::kStepImageBytes) {
        ctx.prompter().showMessage(19, 1); // "Failed to read data."
        ctx.err() << args[0] << ": " << bytes.size() << " bytes of step data, " << memmap::kStepImageBytes
                  << " needed\n";
        return 1;
    }
    return ctx.writeFile(args[1], bytes.left(memmap::kStepImageBytes)) ? 0 : 1;
}

const CommandRegistration
    reg({QStringLiteral("image"),
         QStringLiteral("image FILE.gsp OUT.bin   step image (1904 bytes) of a program file"), runImage});

} // namespace
} // namespace vkm::cli
