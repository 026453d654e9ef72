#include "document/editscript.h"

#include "document/editsession.h"
#include "sheet/sheetlayout.h"

#include <QRegularExpression>

namespace vkm {

namespace {
// The fields of an output or input group in column order after its function:
// "out1.logic" is the column after out1's.
const QStringList& groupFields(bool output) {
    static const QStringList outFields = {QString(), QStringLiteral("logic"), QStringLiteral("kind"),
                                          QStringLiteral("delay")};
    static const QStringList inFields = {QString(), QStringLiteral("state"), QStringLiteral("rel")};
    return output ? outFields : inFields;
}
} // namespace

void EditScript::addVerb(const QString& name, EditVerb verb) {
    m_verbs[name] = std::move(verb);
}

bool EditScript::read(const QString& text, const EditSession& session, QString& error) {
    std::vector<Line> actions;
    const QStringList lines = text.split(QRegularExpression(QStringLiteral("\r\n|\n|\r")));
    for (int i = 0; i < lines.size(); ++i) {
        const QString& line = lines[i];
        int start = 0;
        while (start < line.size() && (line[start] == QLatin1Char(' ') || line[start] == QLatin1Char('\t')))
            ++start;
        const QString body = line.mid(start);
        if (body.trimmed().isEmpty() || body.startsWith(QLatin1Char('#')))
            continue;
        QStringList words;
        QString args;
        splitWords(body, 1, words, &args);
        const auto verb = m_verbs.find(words.value(0));
        QString why;
        EditAction action;
        if (verb == m_verbs.end())
            why = QStringLiteral("unknown command \"%1\"").arg(words.value(0));
        else
            action = verb->second(args, session, why);
        if (!action) {
            error = QStringLiteral("line %1: %2")
                        .arg(i + 1)
                        .arg(why.isEmpty() ? QStringLiteral("not understood") : why);
            return false;
        }
        actions.push_back({i + 1, std::move(action)});
    }
    m_actions = std::move(actions);
    return true;
}

bool EditScript::run(EditSession& session, QString* error) const {
    for (const Line& line : m_actions) {
        line.action(session);
        const QString failure = session.takeFailure();
        if (!failure.isEmpty()) {
            if (error)
                *error = QStringLiteral("line %1: %2").arg(line.number).arg(failure);
            return false;
        }
    }
    return true;
}

bool EditScript::splitWords(const QString& args, int count, QStringList& words, QString* rest) {
    words.clear();
    int pos = 0;
    const auto isBlank = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); };
    for (int n = 0; n < count; ++n) {
        while (pos < args.size() && isBlank(args[pos]))
            ++pos;
        const int start = pos;
        while (pos < args.size() && !isBlank(args[pos]))
            ++pos;
        if (pos == start)
            return false;
        words << args.mid(start, pos - start);
    }
    if (rest)
        *rest = pos < args.size() ? args.mid(pos + 1) : QString();
    return true;
}

std::optional<int> EditScript::parseRow(const QString& word, QString& error) {
    bool ok = false;
    const int row = word.toInt(&ok);
    if (!ok || row < SheetLayout::kFirstStepRow || row > SheetLayout::kLastStepRow) {
        error = QStringLiteral("step \"%1\" is not 1 to 32").arg(word);
        return std::nullopt;
    }
    return row;
}

std::optional<int> EditScript::parseColumn(const QString& word, const SheetLayout& layout, QString& error) {
    bool numeric = false;
    const int number = word.toInt(&numeric);
    if (numeric) {
        if (number >= 0 && number < SheetLayout::kCols)
            return number;
        error = QStringLiteral("column %1 is not 0 to %2").arg(word).arg(SheetLayout::kCols - 1);
        return std::nullopt;
    }
    const QString name = word.toLower();
    if (name == QLatin1String("step"))
        return 0;
    if (name == QLatin1String("remark"))
        return SheetLayout::GetcolRemark();
    static const QRegularExpression group(
        QStringLiteral("^(out|in)([1-4])(?:\\.(logic|kind|delay|state|rel))?$"));
    const QRegularExpressionMatch m = group.match(name);
    if (m.hasMatch()) {
        const bool output = m.captured(1) == QLatin1String("out");
        const int g = m.captured(2).toInt();
        const int offset = groupFields(output).indexOf(m.captured(3));
        if (offset >= 0 && (!output || g <= 2))
            return (output ? layout.outputGroupCol(g) : layout.inputGroupCol(g)) + offset;
    }
    error = QStringLiteral("no column \"%1\"").arg(word);
    return std::nullopt;
}

QString EditScript::columnName(const SheetLayout& layout, int col) {
    const bool output = layout.isOutputCol(col);
    if (!output && !layout.isInputCol(col))
        return col == SheetLayout::GetcolRemark() ? QStringLiteral("remark") : QStringLiteral("step");
    const int group = layout.groupOf(col);
    const QString field = groupFields(output).value(
        col - (output ? layout.outputGroupCol(group) : layout.inputGroupCol(group)));
    return (output ? QStringLiteral("out%1") : QStringLiteral("in%1")).arg(group) +
           (field.isEmpty() ? QString() : QLatin1Char('.') + field);
}

bool EditScript::nothingMore(const QString& rest, QString& error) {
    if (rest.trimmed().isEmpty())
        return true;
    error = QStringLiteral("unexpected \"%1\"").arg(rest.trimmed());
    return false;
}

QString EditScript::unescaped(const QString& text) {
    QString out;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('\\') && i + 1 < text.size()) {
            const QChar next = text[i + 1];
            if (next == QLatin1Char('n')) {
                out += QLatin1Char('\n');
                ++i;
                continue;
            }
            if (next == QLatin1Char('\\')) {
                out += QLatin1Char('\\');
                ++i;
                continue;
            }
        }
        out += text[i];
    }
    return out;
}

EditScript stepEditorScript() {
    EditScript script;
    addCellVerbs(script);
    addDocumentVerbs(script);
    addRowVerbs(script);
    return script;
}

} // namespace vkm
