#include "sheet/sheetlayout.h"

namespace vkm {

SheetLayout::SheetLayout(bool locateInpFirst) : m_locateInpFirst(locateInpFirst) {
    m_colOut1 = m_locateInpFirst ? 14 : 2;
    m_colOut2 = m_locateInpFirst ? 18 : 6;
    m_colInp = m_locateInpFirst ? 2 : 10;
    m_kinds[0] = KindStep;
    m_kinds[1] = KindRemark;
    for (int g = 1; g <= 2; ++g)
        for (int i = 0; i < 4; ++i)
            m_kinds[std::size_t(outputGroupCol(g) + i)] = KindOutKino + i;
    for (int g = 1; g <= 4; ++g)
        for (int i = 0; i < 3; ++i)
            m_kinds[std::size_t(inputGroupCol(g) + i)] = KindInpKino + i;
    for (int c = 0; c < kCols; ++c) {
        if (c == 0)
            m_normalColors[std::size_t(c)] = sheetcolor::StepColumn;
        else if (c == 1)
            m_normalColors[std::size_t(c)] = sheetcolor::RemarkColumn;
        else
            m_normalColors[std::size_t(c)] = isOutputCol(c) ? sheetcolor::OutputCell : sheetcolor::InputCell;
    }
}

int SheetLayout::colKind(int col) const {
    return col >= 0 && col < kCols ? m_kinds[std::size_t(col)] : -1;
}

bool SheetLayout::isOutputCol(int col) const {
    return (col >= m_colOut1 && col < m_colOut1 + 4) || (col >= m_colOut2 && col < m_colOut2 + 4);
}

bool SheetLayout::isInputCol(int col) const {
    return col >= m_colInp && col < m_colInp + 12;
}

int SheetLayout::groupOf(int col) const {
    if (col >= m_colOut1 && col < m_colOut1 + 4)
        return 1;
    if (col >= m_colOut2 && col < m_colOut2 + 4)
        return 2;
    if (isInputCol(col))
        return (col - m_colInp) / 3 + 1;
    return 0;
}

int SheetLayout::groupStart(int col) const {
    if (isOutputCol(col))
        return outputGroupCol(groupOf(col));
    if (isInputCol(col))
        return inputGroupCol(groupOf(col));
    return -1;
}

QString SheetLayout::headerFont(int col) const {
    return colKind(col) == KindRel ? QString::fromLatin1(kSymbolFont) : QString();
}

quint32 SheetLayout::normalColor(int col) const {
    return col >= 0 && col < kCols ? m_normalColors[std::size_t(col)] : sheetcolor::InputCell;
}

} // namespace vkm
