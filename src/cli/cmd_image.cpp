// vkmstep-cli image FILE.gsp OUT.bin: the step image that a program file's transfer text holds.
#include "clicontext.h"
#include "command.h"

#include "link/memorymap.h"
#include "link/transfertext.h"

#include <QFile>
#include <QSaveFile>

namespace vkm::cli {
namespace {

int runImage(const QStringList& args, CliContext& ctx)
{
    if (args.size() != 2) {
        ctx.err() << "usage: vkmstep-cli image FILE.gsp OUT.bin\n";
        return 2;
    }
    bool ok = false;
    const QByteArray bytes = ParseData(args[0], ctx.prompter(), &ok);
    if (!ok || bytes.size() < memmap::kStepImageBytes) {
        ctx.prompter().showMessage(19, 1); // "Failed to read data."
        ctx.err() << args[0] << ": " << bytes.size() << " bytes of step data, " << memmap::kStepImageBytes
                  << " needed\n";
        return 1;
    }
    QSaveFile out(args[1]);
    const QByteArray image = bytes.left(memmap::kStepImageBytes);
    if (!out.open(QIODevice::WriteOnly) || out.write(image) != image.size() || !out.commit()) {
        ctx.err() << args[1] << ": " << out.errorString() << '\n';
        return 1;
    }
    return 0;
}

const CommandRegistration reg({QStringLiteral("image"),
                               QStringLiteral("image FILE.gsp OUT.bin   step image (1904 bytes) of a program file"),
                               runImage});

} // namespace
} // namespace vkm::cli
