// The verbs of the step editor window for edit scripts: each reads its arguments when the
// script is read and acts on the session's editor as the window's keys and dialogs do.
#include "catalogue/cselections.h"
#include "document/documents.h"
#include "document/editscript.h"
#include "document/editsession.h"
#include "sheet/stepsheeteditor.h"

namespace vkm {

namespace {

struct Cell {
    int row = 0;
    int col = 0;
};

// ROW COLUMN at the start of args; the rest of the line after them goes to rest.
std::optional<Cell> readCell(const QString& args, const EditSession& session, QString& error,
                             QString* rest = nullptr, bool stepColumn = false) {
    QStringList words;
    if (!EditScript::splitWords(args, 2, words, rest)) {
        error = QStringLiteral("a step and a column are wanted");
        return std::nullopt;
    }
    const std::optional<int> row = EditScript::parseRow(words[0], error);
    const std::optional<int> col =
        row ? EditScript::parseColumn(words[1], session.layout(), error) : std::nullopt;
    if (!row || !col)
        return std::nullopt;
    if (*col == 0 && !stepColumn) {
        error = QStringLiteral("the step number column cannot be edited");
        return std::nullopt;
    }
    return Cell{*row, *col};
}

// type ROW COLUMN TEXT: the text typed into the cell and Enter. A code cell takes the
// number of its list entry or the entry's name.
EditAction typeVerb(const QString& args, const EditSession& session, QString& error) {
    QString text;
    const auto cell = readCell(args, session, error, &text);
    if (!cell)
        return {};
    const int kind = session.layout().colKind(cell->col);
    if (CellRules::editorFor(kind) == CellEditor::Combo) {
        const QString code = CellRules::codeForName(kind, text);
        if (!code.isEmpty())
            text = code;
    }
    return [c = *cell, text](EditSession& s) {
        s.goTo(c.row, c.col);
        s.editor().entry().enterText(c.row, c.col, text);
    };
}

// space ROW COLUMN: Space on a code cell.
EditAction spaceVerb(const QString& args, const EditSession& session, QString& error) {
    QString rest;
    const auto cell = readCell(args, session, error, &rest);
    if (!cell || !EditScript::nothingMore(rest, error))
        return {};
    return [c = *cell](EditSession& s) {
        s.goTo(c.row, c.col);
        s.editor().entry().SpaceOp(c.row, c.col);
    };
}

// delete ROW COLUMN [ROW2 COLUMN2]: the Delete key on a cell or a block; the step number
// column selects whole rows.
EditAction deleteVerb(const QString& args, const EditSession& session, QString& error) {
    QString rest;
    const auto from = readCell(args, session, error, &rest, true);
    if (!from)
        return {};
    Cell to = *from;
    if (!rest.trimmed().isEmpty()) {
        QString tail;
        const auto second = readCell(rest, session, error, &tail, true);
        if (!second || !EditScript::nothingMore(tail, error))
            return {};
        to = *second;
    }
    if ((from->col == 0) != (to.col == 0)) {
        error = QStringLiteral("whole rows and cells cannot be mixed");
        return {};
    }
    return [from = *from, to](EditSession& s) {
        StepSheet& sheet = s.editor().sheet();
        const bool rows = from.col == 0;
        sheet.setSelection(from.row, rows ? 1 : from.col, to.row, rows ? StepSheet::kCols - 1 : to.col);
        sheet.setRowSelectionMode(rows);
        s.editor().clearing().DeleteOp();
    };
}

// choose ROW COLUMN VALUE|cancel: F2 on the cell, the selection dialog answering with the
// function of that value (decimal, or hexadecimal with 0x) or cancelled.
EditAction chooseVerb(const QString& args, const EditSession& session, QString& error) {
    QString rest;
    const auto cell = readCell(args, session, error, &rest);
    if (!cell)
        return {};
    QStringList words;
    QString tail;
    if (!EditScript::splitWords(rest, 1, words, &tail) || !EditScript::nothingMore(tail, error)) {
        if (error.isEmpty())
            error = QStringLiteral("a function value or \"cancel\" is wanted");
        return {};
    }
    std::optional<int> value;
    if (words[0].compare(QLatin1String("cancel"), Qt::CaseInsensitive) != 0) {
        bool ok = false;
        const int v = words[0].startsWith(QLatin1String("0x"), Qt::CaseInsensitive)
                          ? words[0].mid(2).toInt(&ok, 16)
                          : words[0].toInt(&ok);
        const int kind = session.layout().colKind(cell->col);
        const bool output = kind == KindOutKino;
        const CSelections& sels = output ? session.catalogue(2) : session.catalogue(1);
        // The dialog offers the catalogue's functions only (other cells open no dialog).
        const bool function = CellRules::editorFor(kind) == CellEditor::Function;
        if (!ok || v < -32768 || v > 65535 || (function && !sels.hasValue(qint16(v)))) {
            error = QStringLiteral("no %1 function has the value \"%2\"")
                        .arg(output ? QStringLiteral("output") : QStringLiteral("input"), words[0]);
            return {};
        }
        value = int(qint16(v));
    }
    return [c = *cell, value](EditSession& s) {
        s.goTo(c.row, c.col);
        s.setNextChoice(value);
        // A cell that is not a function cell opens its own editor on F2; nothing is typed
        // into it, so the edit ends unchanged.
        s.editor().entry().F2InputOp(c.row, c.col);
        s.setNextChoice(std::nullopt);
    };
}

// undo: the toolbar's Undo (its question takes the script's answers).
EditAction undoVerb(const QString& args, const EditSession&, QString& error) {
    if (!EditScript::nothingMore(args, error))
        return {};
    return [](EditSession& s) { s.document().UndoCommand(); };
}

// redo: what the last undo took back comes again (no question; nothing when there is
// nothing to redo).
EditAction redoVerb(const QString& args, const EditSession&, QString& error) {
    if (!EditScript::nothingMore(args, error))
        return {};
    return [](EditSession& s) {
        if (!s.document().RedoCommand())
            s.print(QStringLiteral("nothing to redo"));
    };
}

EditAction authorVerb(const QString& args, const EditSession&, QString&) {
    return [text = EditScript::unescaped(args)](EditSession& s) { s.enterAccount(std::nullopt, text); };
}

EditAction passwordVerb(const QString& args, const EditSession&, QString&) {
    return [text = EditScript::unescaped(args)](EditSession& s) { s.enterAccount(text, std::nullopt); };
}

EditAction memoVerb(const QString& args, const EditSession&, QString&) {
    return [text = EditScript::unescaped(args)](EditSession& s) { s.enterMemo(text); };
}

} // namespace

void addCellVerbs(EditScript& script) {
    script.addVerb(QStringLiteral("type"), typeVerb);
    script.addVerb(QStringLiteral("space"), spaceVerb);
    script.addVerb(QStringLiteral("delete"), deleteVerb);
    script.addVerb(QStringLiteral("choose"), chooseVerb);
}

void addDocumentVerbs(EditScript& script) {
    script.addVerb(QStringLiteral("undo"), undoVerb);
    script.addVerb(QStringLiteral("redo"), redoVerb);
    script.addVerb(QStringLiteral("author"), authorVerb);
    script.addVerb(QStringLiteral("password"), passwordVerb);
    script.addVerb(QStringLiteral("memo"), memoVerb);
}

} // namespace vkm
