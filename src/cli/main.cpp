#include "clicontext.h"
#include "command.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <memory>

using namespace vkm::cli;

namespace vkm::cli {
std::map<QString, Command>& commandRegistry() {
    static std::map<QString, Command> registry;
    return registry;
}
std::set<QString>& guiCommands() {
    static std::set<QString> names;
    return names;
}
} // namespace vkm::cli

static int usage(QTextStream& s) {
    s << "usage: vkmstep-cli [--archive PATH] COMMAND [ARGS]\n       vkmstep-cli --version\ncommands:\n";
    for (const auto& [name, cmd] : commandRegistry())
        s << "  " << cmd.usage << '\n';
    s.flush();
    return 2;
}

// The command named on the command line, read before the application object exists
// ("" when there is none).
static QString commandName(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg == QLatin1String("--archive"))
            ++i;
        else if (!arg.startsWith(QLatin1String("--")))
            return arg;
    }
    return {};
}

int main(int argc, char** argv) {
    std::unique_ptr<QCoreApplication> application;
    if (guiCommands().count(commandName(argc, argv))) {
        // No window is ever shown: draw off screen, with or without a display.
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        application = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication& app = *application;
    QStringList args = app.arguments().mid(1);
    QString archive;
    while (!args.isEmpty() && args.first().startsWith(QLatin1String("--"))) {
        const QString opt = args.takeFirst();
        if (opt == QLatin1String("--version")) {
            QTextStream(stdout) << "vkmstep-cli " << VKM_VERSION << '\n';
            return 0;
        }
        if (opt == QLatin1String("--archive") && !args.isEmpty()) {
            archive = args.takeFirst();
            continue;
        }
        if (opt == QLatin1String("--help")) {
            QTextStream out(stdout);
            usage(out);
            return 0;
        }
        QTextStream err(stderr);
        err << "unknown option " << opt << '\n';
        return usage(err);
    }
    QTextStream err(stderr);
    if (args.isEmpty())
        return usage(err);
    const QString name = args.takeFirst();
    auto it = commandRegistry().find(name);
    if (it == commandRegistry().end()) {
        err << "unknown command " << name << '\n';
        return usage(err);
    }
    CliContext ctx(archive);
    const int rc = it->second.run(args, ctx);
    ctx.out().flush();
    ctx.err().flush();
    return rc;
}
