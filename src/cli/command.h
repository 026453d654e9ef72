#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>
#include <functional>
#include <map>
#include <set>

namespace vkm::cli {

class CliContext;

// One sub-command of vkmstep-cli. Each command file registers itself with a static
// CommandRegistration; main() dispatches on the first argument.
struct Command {
    QString name;
    QString usage; // one line, shown by --help
    std::function<int(const QStringList& args, CliContext& ctx)> run;
};

std::map<QString, Command>& commandRegistry();

struct CommandRegistration {
    explicit CommandRegistration(Command c) { commandRegistry()[c.name] = std::move(c); }
};

// Commands that draw pages (fonts, painting) run under a GUI application object instead
// of a core one; main() creates it, drawing off screen.
std::set<QString>& guiCommands();
struct GuiCommandRegistration {
    explicit GuiCommandRegistration(const QString& name) { guiCommands().insert(name); }
};

// Options that need a service of the desktop (its clipboard): a command given one of them
// runs under a GUI application on the desktop's own platform when there is a display.
std::set<std::pair<QString, QString>>& desktopOptions(); // {command, option}
struct DesktopOptionRegistration {
    DesktopOptionRegistration(const QString& command, const QString& option) {
        desktopOptions().insert({command, option});
    }
};

} // namespace vkm::cli
