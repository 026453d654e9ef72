#pragma once

#include <QHeaderView>

namespace vkm {

// The header row and step-number column of the step grid, painted in the sheet's own
// colours (navy output headers, dark input headers, white text) with silver borders.
// The relation header is the "8" of the Marlett symbol font: a small right-pointing
// arrow, drawn by hand where that font is missing.
class StepHeaderView : public QHeaderView {
    Q_OBJECT
public:
    explicit StepHeaderView(Qt::Orientation orientation, QWidget* parent = nullptr);

    static bool hasSymbolFont();

    // A header of fixed thickness (the header row's height, the step column's width) has
    // that thickness as its hint: the table asks for the hint on every layout, and
    // measuring the text of every section for an answer known beforehand is wasted.
    QSize sizeHint() const override;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
};

} // namespace vkm
