// vkmstep-cli edit: a program edited by a script through the step editor's own rules, then
// saved as the editor saves it. Every message the editor shows is printed as it comes.
#include "clicontext.h"
#include "command.h"

#include "base/transcriptprompter.h"
#include "document/documents.h"
#include "document/editscript.h"
#include "document/editsession.h"
#include "sheet/stepsheeteditor.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>

namespace vkm::cli {
namespace {

const QString kSynopsis = QStringLiteral("edit [--inputs-first] [--system-clipboard] [--answer "
                                         "yes|no|all-yes|all-no|cancel]... (IN.gsp | --new) OUT.gsp SCRIPT");

// The desktop's clipboard, for scripts that exchange rows with the editor or other programs.
class SystemClipboard : public TextClipboard {
public:
    QString text() const override { return QGuiApplication::clipboard()->text(); }
    void setText(const QString& text) override { QGuiApplication::clipboard()->setText(text); }
};

// One --answer: all-yes and all-no are Yes and No given to all, which the renumbering
// question of step references takes as All Yes and All No.
struct GivenAnswer {
    Answer answer;
    bool toAll;
};

struct EditArguments {
    bool inputsFirst = false;
    bool systemClipboard = false;
    std::vector<GivenAnswer> answers;
    QString in; // "" for --new
    QString out;
    QString script; // "-" for standard input
};

bool parseArguments(const QStringList& args, EditArguments& a, QString& error) {
    QStringList positional;
    bool fresh = false;
    for (int i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (arg == QLatin1String("--inputs-first")) {
            a.inputsFirst = true;
        } else if (arg == QLatin1String("--system-clipboard")) {
            a.systemClipboard = true;
        } else if (arg == QLatin1String("--new")) {
            fresh = true;
        } else if (arg == QLatin1String("--answer")) {
            const QString v = args.value(++i).toLower();
            if (v == QLatin1String("yes"))
                a.answers.push_back({Answer::Yes, false});
            else if (v == QLatin1String("no"))
                a.answers.push_back({Answer::No, false});
            else if (v == QLatin1String("all-yes"))
                a.answers.push_back({Answer::Yes, true});
            else if (v == QLatin1String("all-no"))
                a.answers.push_back({Answer::No, true});
            else if (v == QLatin1String("cancel"))
                a.answers.push_back({Answer::Cancel, false});
            else {
                error = QStringLiteral("--answer takes yes, no, all-yes, all-no or cancel");
                return false;
            }
        } else if (arg.startsWith(QLatin1String("--"))) {
            error = QStringLiteral("unknown option ") + arg;
            return false;
        } else {
            positional << arg;
        }
    }
    if (positional.size() != (fresh ? 2 : 3))
        return false;
    a.in = fresh ? QString() : positional[0];
    a.out = positional[positional.size() - 2];
    a.script = positional.last();
    return true;
}

bool readScriptText(const QString& name, CliContext& ctx, QString& text) {
    QByteArray bytes;
    if (name == QLatin1String("-")) {
        QFile in;
        if (!in.open(stdin, QIODevice::ReadOnly)) {
            ctx.err() << "standard input: " << in.errorString() << '\n';
            return false;
        }
        bytes = in.readAll();
    } else if (!ctx.readFile(name, bytes)) {
        return false;
    }
    text = QString::fromUtf8(bytes);
    return true;
}

int runEdit(const QStringList& args, CliContext& ctx) {
    EditArguments a;
    QString error;
    if (!parseArguments(args, a, error)) {
        if (!error.isEmpty())
            ctx.err() << error << '\n';
        return ctx.usageError(kSynopsis);
    }
    QString text;
    if (!readScriptText(a.script, ctx, text))
        return 2;
    const QString scriptName = a.script == QLatin1String("-") ? QStringLiteral("standard input") : a.script;
    if (!ctx.loadCatalogues())
        return 1;

    ctx.out().setEncoding(QStringConverter::Utf8);
    TranscriptPrompter prompter(ctx.out());
    for (const GivenAnswer& given : a.answers)
        prompter.queueAnswer(given.answer, given.toAll);
    StepSheetEditor user(ctx.selout(), ctx.selinp(), prompter, false, a.inputsFirst);
    StepSheetEditor comparison(ctx.selout(), ctx.selinp(), prompter, true, a.inputsFirst);
    Documents documents(prompter, nullptr, ctx.selout(), ctx.selinp(), user, comparison);
    EditSession session(documents);
    // The renumbering question has All Yes and All No, which the answers given can choose.
    session.setReplaceConfirmation([&prompter](const QString& oldDigital, const QString& newDigital) {
        return prompter.confirmReplace(oldDigital, newDigital);
    });
    session.setOutput([&ctx](const QString& line) {
        ctx.out() << line << '\n';
        ctx.out().flush();
    });
    SystemClipboard systemClipboard;
    // The script's clipboard is its own unless it asks for the desktop's.
    if (a.systemClipboard && qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        user.setClipboard(&systemClipboard);
    EditScript script = stepEditorScript();
    if (!script.read(text, session, error)) {
        ctx.err() << scriptName << ": " << error << '\n';
        return 2;
    }
    if (!a.in.isEmpty()) {
        // The program is opened as the editor shows it: read, then written into the sheet.
        CSteps program;
        if (!ctx.readProgram(a.in, program))
            return 1;
        documents.userProgram() = std::move(program);
        documents.filePath(0) = a.in;
        user.conversion().PasteData(documents.userProgram());
    }
    // An action that could not be done (a clipboard file that cannot be read or written)
    // ends the run as a refused edit does: exit 1, and nothing is saved.
    if (!script.run(session, &error)) {
        ctx.err() << scriptName << ": " << error << '\n';
        documents.shutdown();
        return 1;
    }
    const bool saved = session.save(a.out);
    documents.shutdown();
    return saved ? 0 : 1;
}

// The desktop's clipboard needs a GUI application on the desktop's platform.
const DesktopOptionRegistration systemClipboardOption(QStringLiteral("edit"),
                                                      QStringLiteral("--system-clipboard"));

const CommandRegistration reg(
    {QStringLiteral("edit"),
     QStringLiteral(
         "edit [--inputs-first] [--system-clipboard] [--answer yes|no|all-yes|all-no|cancel]... (IN.gsp | "
         "--new) OUT.gsp SCRIPT\n                           edit a program with a "
         "script of editor actions and save it"),
     runEdit});

} // namespace
} // namespace vkm::cli
