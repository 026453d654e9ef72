// vkmstep-cli text IMAGE.bin OUT.gsp: the transfer text (a program file) of a step image.
#include "clicontext.h"
#include "command.h"

#include "link/memorymap.h"
#include "link/transfertext.h"

#include <QFile>
#include <QSaveFile>

namespace vkm::cli {
namespace {

int runText(const QStringList& args, CliContext& ctx)
{
    if (args.size() != 2) {
        ctx.err() << "usage: vkmstep-cli text IMAGE.bin OUT.gsp\n";
        return 2;
    }
    QFile in(args[0]);
    if (!in.open(QIODevice::ReadOnly)) {
        ctx.err() << args[0] << ": " << in.errorString() << '\n';
        return 1;
    }
    bool ok = false;
    const QByteArray text = stepImageToText(in.readAll(), &ok);
    if (!ok) {
        ctx.err() << args[0] << ": a step image has " << memmap::kStepImageBytes << " bytes, this file "
                  << in.size() << '\n';
        return 1;
    }
    QSaveFile out(args[1]);
    if (!out.open(QIODevice::WriteOnly) || out.write(text) != text.size() || !out.commit()) {
        ctx.err() << args[1] << ": " << out.errorString() << '\n';
        return 1;
    }
    return 0;
}

const CommandRegistration reg({QStringLiteral("text"),
                               QStringLiteral("text IMAGE.bin OUT.gsp   program file (transfer text) of a step image"),
                               runText});

} // namespace
} // namespace vkm::cli
