#include "clicontext.h"
#include "command.h"

#include "base/tempfolder.h"

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
std::set<std::pair<QString, QString>>& desktopOptions() {
    static std::set<std::pair<QString, QString>> options;
    return options;
}
} // namespace vkm::cli

static int usage(QTextStream& s) {
    s << "usage: vkmstep-cli [--archive PATH] [--codepage NAME] COMMAND [ARGS]\n"
         "       vkmstep-cli --version\n"
         "options:\n"
         "  --archive PATH   setting archive (else VKM_ARCHIVE, else beside the program)\n"
         "  --codepage NAME  code page of the texts in program and setting files (else the\n"
         "                   editor's \"CodePage\" setting, else windows-31j)\n"
         "commands:\n";
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

// Whether the command is given an option that needs the desktop.
static bool desktopOptionGiven(const QString& command, int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        if (desktopOptions().count({command, QString::fromLocal8Bit(argv[i])}))
            return true;
    return false;
}

int main(int argc, char** argv) {
    std::unique_ptr<QCoreApplication> application;
    const QString command = commandName(argc, argv);
    const bool desktop = desktopOptionGiven(command, argc, argv);
    if (guiCommands().count(command) || desktop) {
        // No window is ever shown: draw off screen, with or without a display, unless the
        // desktop's services are wanted and there is a desktop.
        const bool display =
            !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !(desktop && display))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        application = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication& app = *application;
    QStringList args = app.arguments().mid(1);
    QString archive;
    QString codePage;
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
        if (opt == QLatin1String("--codepage") && !args.isEmpty()) {
            codePage = args.takeFirst();
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
    if (!ctx.applySettings(codePage))
        return 2;
    // Every command may need the private temporary folder (unpacking, saving): without it
    // the tool stops before it starts, with the reason.
    if (!vkm::TempFolder::instance().isValid()) {
        err << vkm::TempFolder::instance().failureText() << '\n';
        return 1;
    }
    const int rc = it->second.run(args, ctx);
    ctx.out().flush();
    ctx.err().flush();
    return rc;
}
