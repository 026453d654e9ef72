// vkmstep-cli text IMAGE.bin OUT.gsp: the transfer text (a program file) of a step image.
#include "clicontext.h"
#include "command.h"

#include "link/memorymap.h"
#include "link/transfertext.h"

namespace vkm::cli {
namespace {

int runText(const QStringList& args, CliContext& ctx) {
    if (args.size() != 2)
        return ctx.usageError(QStringLiteral("text IMAGE.bin OUT.gsp"));
    QByteArray image;
    if (!ctx.readFile(args[0], image))
        return 1;
    bool ok = false;
    const QByteArray text = stepImageToText(image, &ok);
    if (!ok) {
        ctx.err() << args[0] << ": a step image has " << memmap::kStepImageBytes << " bytes, this file "
                  << image.size() << '\n';
        return 1;
    }
    return ctx.writeFile(args[1], text) ? 0 : 1;
}

const CommandRegistration
    reg({QStringLiteral("text"),
         QStringLiteral("text IMAGE.bin OUT.gsp   program file (transfer text) of a step image"), runText});

} // namespace
} // namespace vkm::cli
