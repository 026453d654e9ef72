#include "sheet/cellrules.h"

#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/steprules.h"
#include "sheet/sheetcontext.h"
#include "sheet/sheetqueries.h"

#include <QStringList>
#include <set>

namespace vkm {

const QString CellRules::kStateList = QStringLiteral("#0;POS LEV|#1;POS EDG|#2;NEG LEV|#3;NEG EDG");
const QString CellRules::kDelayKindList = QStringLiteral("#0;TIMER|#2;STC|#4;ANGLE1|#6;ANGLE2|#8;ANGLE3");
const QString CellRules::kLogicIoList = QStringLiteral("#0;LOW|#1;HIGH|#2;NOT");
const QString CellRules::kLogicCountList = QStringLiteral("#4;INC|#5;DEC|#6;SET|#7;CLR|#8;ADD|#9;SUB");
const QString CellRules::kRelList = QStringLiteral("#0;AND|#1;OR|#2;END");
const QString CellRules::kRelCountLowList = QStringLiteral("#3;>=|#4;<=|#5;=|#6;!=|#7;+|#8;-");
const QString CellRules::kRelCountHighList = QStringLiteral("#3;>=|#4;<=|#5;=|#6;!=");
const QString CellRules::kRelEndList = QStringLiteral("#2;END");

namespace {
// Every name a column of the kind can show, for naming a stored value that the list
// offered now does not hold (a relation of a counter row read from a file, say).
QString allNames(int kind) {
    switch (kind) {
    case KindState:
        return CellRules::kStateList;
    case KindDelayKind:
        return CellRules::kDelayKindList;
    case KindLogic:
        return CellRules::kLogicIoList + QLatin1Char('|') + CellRules::kLogicCountList;
    case KindRel:
        return CellRules::kRelList + QLatin1Char('|') + CellRules::kRelCountLowList;
    default:
        return {};
    }
}

// Calls f(value, name) for every entry of a list until it returns true.
template <typename F> bool forEachEntry(const QString& list, F f) {
    for (const QString& entry : list.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        const int semi = entry.indexOf(QLatin1Char(';'));
        if (entry.startsWith(QLatin1Char('#')) && semi > 1 && f(entry.mid(1, semi - 1), entry.mid(semi + 1)))
            return true;
    }
    return false;
}
} // namespace

CellRules::CellRules(SheetContext& context, const SheetQueries& queries)
    : m_ctx(context), m_sheet(context.sheet), m_q(queries) {}

CellEditor CellRules::editorFor(int colKind) {
    switch (colKind) {
    case KindLogic:
    case KindDelayKind:
    case KindState:
    case KindRel:
        return CellEditor::Combo;
    case KindOutKino:
    case KindInpKino:
        return CellEditor::Function;
    case KindRemark:
    case KindDelayValue:
        return CellEditor::Text;
    default:
        return CellEditor::None;
    }
}

QString CellRules::comboList(int row, int col) const {
    const int kc = m_sheet.groupStart(col);
    switch (m_sheet.colKind(col)) {
    case KindState:
        return kStateList;
    case KindDelayKind:
        return kDelayKindList;
    case KindLogic:
        return m_q.category(row, kc) == cat::COUNT ? kLogicCountList : kLogicIoList;
    case KindRel:
        break;
    default:
        return {};
    }
    if (!m_q.TopIsCOUNT(row))
        return kRelList;
    const int group = m_sheet.groupOf(col);
    if (group == 1) {
        // Only the counters below 32 can add and subtract.
        const int counter = m_ctx.selinp.ValueByDigital(cat::COUNT, m_sheet.text(row, m_sheet.colInp()));
        return counter >= 0 && counter < 32 ? kRelCountLowList : kRelCountHighList;
    }
    if (group == 2 && m_q.isAddingCounterRow(row))
        return kRelCountHighList;
    return kRelEndList;
}

QString CellRules::CreateInpList(const QString& list) {
    QString hint;
    forEachEntry(list, [&](const QString& value, const QString& name) {
        hint += QLatin1Char('[') + value + QLatin1Char(']') + name + QLatin1Char(' ');
        return false;
    });
    return hint;
}

bool CellRules::listHasValue(const QString& list, const QString& value) {
    return !value.isEmpty() &&
           forEachEntry(list, [&](const QString& v, const QString&) { return v == value; });
}

std::vector<std::pair<QString, QString>> CellRules::listEntries(const QString& list) {
    std::vector<std::pair<QString, QString>> entries;
    forEachEntry(list, [&](const QString& value, const QString& name) {
        entries.emplace_back(value, name);
        return false;
    });
    return entries;
}

QString CellRules::comboName(int row, int col) const {
    const QString value = m_sheet.text(row, col);
    QString name;
    forEachEntry(allNames(m_sheet.colKind(col)), [&](const QString& v, const QString& n) {
        if (v != value)
            return false;
        name = n;
        return true;
    });
    return name;
}

QString CellRules::displayText(int row, int col) const {
    const QString text = m_sheet.text(row, col);
    if (row == 0 || text.isEmpty() || m_q.isStar(row, col) ||
        editorFor(m_sheet.colKind(col)) != CellEditor::Combo)
        return text;
    const QString name = comboName(row, col);
    return name.isEmpty() ? text : name;
}

QString CellRules::codeForName(int colKind, const QString& nameOrValue) {
    const QString wanted = nameOrValue.trimmed();
    QString code;
    forEachEntry(allNames(colKind), [&](const QString& v, const QString& n) {
        if (v != wanted && n.compare(wanted, Qt::CaseInsensitive) != 0)
            return false;
        code = v;
        return true;
    });
    return code;
}

bool CellRules::DoesCannotEdit(int row, int col) const {
    return m_q.isStar(row, col);
}

bool CellRules::relationMustStayEnd(int row, int col) const {
    if (m_sheet.colKind(col) != KindRel)
        return false;
    const int group = m_sheet.groupOf(col);
    if (group == 4)
        return true;
    if (!m_q.TopIsCOUNT(row))
        return false;
    return group == 3 || (!m_q.isEmptyCell(row, col) && m_q.cellValue(row, col) == RelEnd);
}

bool CellRules::MustIMEON(int, int col) const {
    return m_sheet.colKind(col) == KindRemark;
}

QString CellRules::hintText(int row, int col) const {
    static const QString cannot = QStringLiteral("Cannot edit this cell.");
    static const QString edit = QStringLiteral("Edit:[F2], DoubleClick");
    if (m_ctx.comparison || !StepSheet::isStepRow(row) || col < 1 || col >= StepSheet::kCols)
        return {};
    if (m_q.isStar(row, col))
        return cannot;
    const int kind = m_sheet.colKind(col);
    const int kc = m_sheet.groupStart(col);
    const bool output = m_sheet.isOutputCol(col);
    qint32 lMin = 0;
    qint32 lMax = 0;
    const auto limits = [&] {
        return QStringLiteral("   Max:") + QString::number(lMax) + QStringLiteral("  Min:") +
               QString::number(lMin);
    };
    if (kind == KindRemark)
        return edit;
    if (kind == KindOutKino || kind == KindInpKino) {
        QString hint = QStringLiteral("Dialogue:[F2], DoubleClick    Can input directly");
        if (!output && m_q.TopIsCOUNT(row) && m_sheet.ColIs2or3Grp(col)) {
            m_q.counterRange(row, lMin, lMax);
            hint += limits();
        }
        return hint;
    }
    if (m_q.isEmptyCell(row, kc))
        return output ? QStringLiteral("Input output function at first.")
                      : QStringLiteral("Input input function at first.");
    if (kind == KindDelayValue) {
        m_q.delayRange(row, kc, lMin, lMax);
        return edit + limits();
    }
    if ((kind == KindLogic && isFlowCategory(m_q.category(row, kc))) || relationMustStayEnd(row, col))
        return cannot;
    return QStringLiteral("Combo:[F2]->[F4]    Direct:") + CreateInpList(comboList(row, col)) +
           QStringLiteral("   Toggle:[SPACE]");
}

void CellRules::WriteKino(int row, int col, bool clear, const CSelections& sels, int value) {
    if (clear) {
        m_sheet.setCell(row, col, QString(), QString());
        return;
    }
    const qint16 v = qint16(value);
    const CSelection* entry = sels.hasValue(v) ? sels.Item(QString::number(v)) : nullptr;
    if (!entry) {
        m_sheet.setCell(row, col, QLatin1Char('#') + QString::number(quint16(v)), QString());
        return;
    }
    m_sheet.setCell(row, col, entry->Digital, sels.CategoryByValue(v));
}

void CellRules::SetStarCell(int row, int col, int mode) {
    m_sheet.setCell(row, col, mode == 1 ? QString::fromLatin1(StepSheet::kStar) : QString(), QString());
}

// Works out which cells of the row the "***" rules cover and makes the row say so:
// covered cells get "***", "***" cells no rule covers any more go back to empty.
void CellRules::SprashThisRow(int row) {
    if (!StepSheet::isStepRow(row))
        return;
    StepSheet::Batch batch(m_sheet);
    std::set<int> stars;
    const int o1 = m_sheet.GetcolOutKino1();
    const int o2 = m_sheet.GetcolOutKino2();
    const int ci = m_sheet.colInp();
    bool inputsCovered = false;
    for (int g = 1; g <= 2; ++g) {
        const int kc = m_sheet.outputGroupCol(g);
        if (g == 2 && stars.count(o2))
            break;
        const QString c = m_q.isStar(row, kc) ? QString() : m_q.category(row, kc);
        if (isFlowCategory(c)) {
            // The category fixes the logic and a flow output takes no delay; the first
            // group's flow output is the whole step's action.
            stars.insert({kc + 2, kc + 3});
            if (kc == o1)
                stars.insert({o2, o2 + 1, o2 + 2, o2 + 3});
            if (c == cat::RETURN) {
                inputsCovered = true;
                for (int i = 0; i < 12; ++i)
                    stars.insert(ci + i);
            }
        } else if (c == cat::COUNT && !m_q.isEmptyCell(row, kc + 1) && !m_q.isStar(row, kc + 1)) {
            const int logic = m_q.cellValue(row, kc + 1);
            if (logic >= LogicInc && logic <= LogicSub)
                stars.insert(kc + 2);
            if (logic == LogicInc || logic == LogicDec || logic == LogicClr)
                stars.insert(kc + 3);
        }
    }
    if (!inputsCovered) {
        const bool counter = m_q.TopIsCOUNT(row);
        if (counter) {
            // Counters and their operands have no state.
            stars.insert({ci + 1, ci + 4});
            if (m_q.isAddingCounterRow(row))
                stars.insert(ci + 7);
        }
        for (int g = counter ? 2 : 1; g <= 4; ++g) {
            const int kc = m_sheet.inputGroupCol(g);
            if (m_q.category(row, kc) == cat::ALL) {
                stars.insert(kc + 1);
                m_sheet.setText(row, kc + 2, QString::number(RelEnd));
            }
        }
    }
    for (int col = 2; col < StepSheet::kCols; ++col) {
        const bool want = stars.count(col) > 0;
        if (want && !m_q.isStar(row, col))
            SetStarCell(row, col, 1);
        else if (!want && m_q.isStar(row, col))
            SetStarCell(row, col, 0);
    }
}

} // namespace vkm
