#include "stepheaderview.h"

#include "steptablemodel.h"

#include "sheet/stepsheet.h"

#include <QFontDatabase>
#include <QPainter>

namespace vkm {

StepHeaderView::StepHeaderView(Qt::Orientation orientation, QWidget* parent)
    : QHeaderView(orientation, parent) {
    setSectionsClickable(true);
    setHighlightSections(false);
}

bool StepHeaderView::hasSymbolFont() {
    // Asked for every header section painted; the font database answer does not change.
    static const bool has = QFontDatabase::hasFamily(QString::fromLatin1(StepSheet::kSymbolFont));
    return has;
}

QSize StepHeaderView::sizeHint() const {
    if (orientation() == Qt::Horizontal && minimumHeight() == maximumHeight())
        return {length(), minimumHeight()};
    if (orientation() == Qt::Vertical && minimumWidth() == maximumWidth())
        return {minimumWidth(), length()};
    return QHeaderView::sizeHint();
}

void StepHeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    if (!model() || !rect.isValid())
        return;
    const Qt::Orientation o = orientation();
    painter->save();
    painter->fillRect(rect, model()->headerData(logicalIndex, o, Qt::BackgroundRole).value<QColor>());
    painter->setPen(QColor::fromRgb(sheetcolor::CellBorder));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    painter->drawLine(rect.topRight(), rect.bottomRight());

    const QString text = model()->headerData(logicalIndex, o, Qt::DisplayRole).toString();
    const QString symbolFont =
        model()->headerData(logicalIndex, o, StepTableModel::HeaderFontRole).toString();
    const QColor fore = model()->headerData(logicalIndex, o, Qt::ForegroundRole).value<QColor>();
    if (!symbolFont.isEmpty() && !hasSymbolFont()) {
        // Marlett's "8": a small solid triangle pointing right.
        const QPointF c = QRectF(rect).center();
        QPolygonF tri;
        tri << QPointF(c.x() - 3, c.y() - 5) << QPointF(c.x() + 3, c.y()) << QPointF(c.x() - 3, c.y() + 5);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(fore);
        painter->drawPolygon(tri);
    } else {
        QFont f = font();
        if (!symbolFont.isEmpty())
            f.setFamily(symbolFont);
        if (o == Qt::Horizontal)
            f.setBold(true);
        painter->setFont(f);
        painter->setPen(fore);
        painter->drawText(rect.adjusted(2, 0, -2, 0), Qt::AlignCenter | Qt::TextWordWrap, text);
    }
    painter->restore();
}

} // namespace vkm
