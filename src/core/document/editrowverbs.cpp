// The verbs of the step editor window's commands on rows, blocks and the clipboard, and of
// its find window, for edit scripts. Each selects what the user would select and runs the
// command the toolbar button runs on that selection.
#include "base/prompter.h"
#include "catalogue/cselections.h"
#include "document/editscript.h"
#include "document/editsession.h"
#include "sheet/stepsheeteditor.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>

namespace vkm {

namespace {

// What an argument of a verb is.
enum class Arg { Row, Column, Count, Side, Word };

struct Args {
    std::vector<int> numbers; // rows, columns, counts and sides (1 input, 2 output), in order
    QStringList words;        // Word arguments, in order
    QString rest;             // what follows the last argument
};

// Reads the arguments a verb takes; false with the reason in error.
bool readArgs(const QString& args, std::initializer_list<Arg> kinds, const EditSession& session, Args& out,
              QString& error) {
    QStringList words;
    if (!EditScript::splitWords(args, int(kinds.size()), words, &out.rest)) {
        error = QStringLiteral("%1 arguments are wanted").arg(kinds.size());
        return false;
    }
    int i = 0;
    for (Arg kind : kinds) {
        const QString& word = words[i++];
        std::optional<int> value;
        switch (kind) {
        case Arg::Row:
            value = EditScript::parseRow(word, error);
            break;
        case Arg::Column:
            value = EditScript::parseColumn(word, session.layout(), error);
            if (value == 0) {
                error = QStringLiteral("whole rows are taken by the -rows verbs");
                value.reset();
            }
            break;
        case Arg::Count: {
            bool ok = false;
            value = word.toInt(&ok);
            if (!ok || *value < 1 || *value > SheetLayout::kLastStepRow) {
                error = QStringLiteral("count \"%1\" is not 1 to 32").arg(word);
                value.reset();
            }
            break;
        }
        case Arg::Side:
            if (word == QLatin1String("input"))
                value = 1;
            else if (word == QLatin1String("output"))
                value = 2;
            else
                error = QStringLiteral("\"%1\" is not input or output").arg(word);
            break;
        case Arg::Word:
            out.words << word;
            continue;
        }
        if (!value)
            return false;
        out.numbers.push_back(*value);
    }
    return true;
}

void selectRows(EditSession& s, int anchor, int corner) {
    StepSheet& sheet = s.editor().sheet();
    sheet.setSelection(anchor, 1, corner, StepSheet::kCols - 1);
    sheet.setRowSelectionMode(true);
}

using Command = std::function<void(EditSession&)>;

// VERB ROW COLUMN ROW2 COLUMN2: the command on that block of cells.
EditVerb blockVerb(Command command) {
    return [command](const QString& args, const EditSession& session, QString& error) -> EditAction {
        Args a;
        if (!readArgs(args, {Arg::Row, Arg::Column, Arg::Row, Arg::Column}, session, a, error) ||
            !EditScript::nothingMore(a.rest, error))
            return {};
        return [command, n = a.numbers](EditSession& s) {
            s.editor().sheet().setSelection(n[0], n[1], n[2], n[3]);
            command(s);
        };
    };
}

// VERB ROW ROW2: the command on those whole rows (the step numbers clicked).
EditVerb rowsVerb(Command command) {
    return [command](const QString& args, const EditSession& session, QString& error) -> EditAction {
        Args a;
        if (!readArgs(args, {Arg::Row, Arg::Row}, session, a, error) ||
            !EditScript::nothingMore(a.rest, error))
            return {};
        return [command, n = a.numbers](EditSession& s) {
            selectRows(s, n[0], n[1]);
            command(s);
        };
    };
}

EditAction pasteVerb(const QString& args, const EditSession& session, QString& error) {
    Args a;
    if (!readArgs(args, {Arg::Row, Arg::Column}, session, a, error) ||
        !EditScript::nothingMore(a.rest, error))
        return {};
    return [n = a.numbers](EditSession& s) {
        s.editor().sheet().select(n[0], n[1]);
        s.editor().rowClipboard().pasteCommand();
    };
}

// insert ROW COUNT: COUNT rows selected from ROW down, then Insert.
EditAction insertVerb(const QString& args, const EditSession& session, QString& error) {
    Args a;
    if (!readArgs(args, {Arg::Row, Arg::Count}, session, a, error) || !EditScript::nothingMore(a.rest, error))
        return {};
    const int last = a.numbers[0] + a.numbers[1] - 1;
    if (last > SheetLayout::kLastStepRow) {
        error = QStringLiteral("rows %1 to %2 are not all steps").arg(a.numbers[0]).arg(last);
        return {};
    }
    return [row = a.numbers[0], last](EditSession& s) {
        selectRows(s, row, last);
        s.editor().rows().insertCommand();
    };
}

EditAction clearRemVerb(const QString& args, const EditSession&, QString& error) {
    if (!EditScript::nothingMore(args, error))
        return {};
    return [](EditSession& s) { s.editor().rows().ClearAllRem(); };
}

// The find window of the editor, opened on the current cell when it is not open yet.
FunctionFinder& findWindow(EditSession& s) {
    FunctionFinder& finder = s.editor().finder();
    if (!finder.isLoaded())
        finder.open();
    return finder;
}

void printFound(EditSession& s) {
    const StepSheet& sheet = s.editor().sheet();
    s.print(QStringLiteral("found %1 %2").arg(sheet.row()).arg(EditScript::columnName(sheet, sheet.col())));
}

// find TEXT input|output: the value chosen with that side's browse button, then Next.
EditAction findVerb(const QString& args, const EditSession& session, QString& error) {
    Args a;
    if (!readArgs(args, {Arg::Word, Arg::Side}, session, a, error) || !EditScript::nothingMore(a.rest, error))
        return {};
    return [digital = a.words[0].toUpper(), side = a.numbers[0]](EditSession& s) {
        FunctionFinder& finder = findWindow(s);
        finder.setFindValue({digital, QString()}, side);
        if (finder.Next())
            printFound(s);
    };
}

// replace OLD NEW input|output [all]: Replace (its fields opened) or Replace all.
EditAction replaceVerb(const QString& args, const EditSession& session, QString& error) {
    Args a;
    if (!readArgs(args, {Arg::Word, Arg::Word, Arg::Side}, session, a, error))
        return {};
    const bool all = a.rest.trimmed() == QLatin1String("all");
    if (!all && !EditScript::nothingMore(a.rest, error))
        return {};
    const int side = a.numbers[0];
    const QString replacement = a.words[1].toUpper();
    // The browse button offers the catalogue's functions only.
    const QStringList categories = session.catalogue(side).categoriesOfDigital(replacement);
    if (categories.isEmpty()) {
        error = QStringLiteral("no %1 function is named \"%2\"")
                    .arg(side == 2 ? QStringLiteral("output") : QStringLiteral("input"), a.words[1]);
        return {};
    }
    return [find = a.words[0].toUpper(), value = FunctionName{replacement, categories.first()}, side,
            all](EditSession& s) {
        FunctionFinder& finder = findWindow(s);
        finder.setFindValue({find, QString()}, side);
        finder.setReplaceValue(value, side);
        if (!finder.replaceEnabled())
            finder.Replace(); // the first press opens the replacement fields
        if (all) {
            finder.ReplaceAll();
            // The editor reports the number once it is active again.
            if (const int count = finder.takeReplacedCount())
                s.editor().prompter().showMessage(75, 2, QString::number(count));
            return;
        }
        finder.Replace();
        const FoundCell at = finder.position();
        const StepSheet& sheet = s.editor().sheet();
        if (at.row == sheet.row() && at.col == sheet.col() && sheet.text(at.row, at.col) == find)
            printFound(s);
    };
}

// clipboard-save FILE / clipboard-load FILE: the clipboard's text and a file's bytes. The
// clipboard holds Unicode text and the desktop's clipboard exchanges it as UTF-8, so a file
// is UTF-8 both ways and a save writes exactly the text's UTF-8 bytes (a byte order mark
// included, never added). A file that cannot be read or written, or bytes that are not
// UTF-8, end the script as a failed run, as a program that cannot be read does: exit 1 and
// nothing saved. Exit 2 stays for a line that is not understood; this one was, but what it
// needs is missing, and whatever followed would work on a clipboard the script did not mean.
EditAction clipboardFileVerb(const QString& args, bool save, QString& error) {
    const QString path = args.trimmed();
    if (path.isEmpty()) {
        error = QStringLiteral("a file name is wanted");
        return {};
    }
    return [path, save](EditSession& s) {
        TextClipboard& clipboard = s.editor().clipboard();
        const QString verb = save ? QStringLiteral("clipboard-save") : QStringLiteral("clipboard-load");
        const auto fail = [&](const QString& why) {
            s.fail(QStringLiteral("%1: %2: %3").arg(verb, path, why));
        };
        if (save) {
            QStringEncoder encoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
            const QByteArray bytes = encoder(clipboard.text());
            if (encoder.hasError()) {
                // A lone surrogate from the desktop's clipboard has no UTF-8 form.
                fail(QStringLiteral("the clipboard holds text that has no UTF-8 form"));
                return;
            }
            QSaveFile file(path);
            if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
                fail(file.errorString());
            return;
        }
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            fail(file.errorString());
            return;
        }
        const QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError) {
            fail(file.errorString());
            return;
        }
        // Stateless: bytes cut off at the end are an error too. A byte order mark is text
        // like any other, so that saving the clipboard again gives the same bytes.
        QStringDecoder decoder(QStringConverter::Utf8,
                               QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
        const QString text = decoder(bytes);
        if (decoder.hasError()) {
            fail(QStringLiteral("not valid UTF-8 text"));
            return;
        }
        clipboard.setText(text);
    };
}

} // namespace

void addRowVerbs(EditScript& script) {
    const auto copy = [](EditSession& s) { s.editor().rowClipboard().copySelection(); };
    const auto cut = [](EditSession& s) { s.editor().rows().cutCommand(); };
    script.addVerb(QStringLiteral("copy"), blockVerb(copy));
    script.addVerb(QStringLiteral("copy-rows"), rowsVerb(copy));
    script.addVerb(QStringLiteral("cut"), blockVerb(cut));
    script.addVerb(QStringLiteral("cut-rows"), rowsVerb(cut));
    script.addVerb(QStringLiteral("paste"), pasteVerb);
    script.addVerb(QStringLiteral("paste-rows"),
                   rowsVerb([](EditSession& s) { s.editor().rowClipboard().pasteCommand(); }));
    script.addVerb(QStringLiteral("insert"), insertVerb);
    script.addVerb(QStringLiteral("rem"), rowsVerb([](EditSession& s) { s.editor().rows().RemOp(); }));
    script.addVerb(QStringLiteral("clear-rem"), clearRemVerb);
    script.addVerb(QStringLiteral("find"), findVerb);
    script.addVerb(QStringLiteral("replace"), replaceVerb);
    script.addVerb(QStringLiteral("clipboard-save"),
                   [](const QString& args, const EditSession&, QString& error) {
                       return clipboardFileVerb(args, true, error);
                   });
    script.addVerb(QStringLiteral("clipboard-load"),
                   [](const QString& args, const EditSession&, QString& error) {
                       return clipboardFileVerb(args, false, error);
                   });
}

} // namespace vkm
