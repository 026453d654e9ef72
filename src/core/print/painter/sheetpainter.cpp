#include "print/painter/sheetpainter.h"

#include "print/printpictures.h"
#include "sheet/stepsheet.h"

#include <QDate>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QImage>
#include <QLocale>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <algorithm>
#include <functional>

namespace vkm {

namespace {

constexpr double kInch = 72.0;         // points
constexpr double kTextPadding = 2.25;  // points between a cell's edge and its text (3 pixels)
constexpr double kBorderWidth = 0.75;  // points: the spreadsheet's thin line (one pixel)
constexpr double kHeaderFontSize = 10; // points, where the header sets no size

QColor rgb(quint32 c) {
    return QColor::fromRgb(QRgb(0xFF000000u | c));
}

QRectF scaled(const QRectF& r, double k) {
    return QRectF(r.x() * k, r.y() * k, r.width() * k, r.height() * k);
}

// Groups consecutive sizes into pages of at most `room` (at least one item a page).
std::vector<std::pair<int, int>> split(int count, double room, const std::function<double(int)>& size) {
    std::vector<std::pair<int, int>> parts;
    int first = 0;
    double used = 0;
    for (int i = 0; i < count; ++i) {
        const double s = size(i);
        if (i > first && used + s > room) {
            parts.emplace_back(first, i - 1);
            first = i;
            used = 0;
        }
        used += s;
    }
    if (count > 0)
        parts.emplace_back(first, count - 1);
    return parts;
}

} // namespace

bool symbolFontAvailable() {
    return QFontDatabase::hasFamily(QString::fromLatin1(StepSheet::kSymbolFont));
}

HeaderFields printHeaderFields(const PrintSheet& sheet) {
    HeaderFields f;
    f.sheetName = sheet.name();
    f.date = QLocale().toString(QDate::currentDate(), QLocale::ShortFormat);
    return f;
}

SheetPainter::SheetPainter(const PrintSheet& sheet, HeaderFields fields)
    : m_sheet(sheet), m_fields(std::move(fields)) {}

void SheetPainter::applyPageSetup(QPagedPaintDevice& device) const {
    const PageSetup& setup = m_sheet.page();
    QPageLayout layout = device.pageLayout();
    layout.setUnits(QPageLayout::Point);
    layout.setOrientation(setup.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    layout.setMode(QPageLayout::FullPageMode);
    layout.setMargins(QMarginsF(setup.marginLeft * kInch, setup.marginTop * kInch, setup.marginRight * kInch,
                                setup.marginBottom * kInch));
    device.setPageLayout(layout);
}

std::vector<SheetPainter::Page> SheetPainter::pages(const QSizeF& paper) const {
    const PageSetup& setup = m_sheet.page();
    const double zoom = std::max(setup.scale, 10) / 100.0;
    const double width = (paper.width() - (setup.marginLeft + setup.marginRight) * kInch) / zoom;
    const double height = (paper.height() - (setup.marginTop + setup.marginBottom) * kInch) / zoom;
    const int rows = std::max(m_sheet.lastUsedRow() + 1, 1);
    const auto colParts = split(m_sheet.columnCount(), width,
                                [&](int c) { return PrintSheet::columnWidthPoints(m_sheet.columnWidth(c)); });
    const auto rowParts = split(rows, height, [&](int r) { return m_sheet.rowHeight(r); });
    std::vector<Page> result;
    for (const auto& [c1, c2] : colParts)
        for (const auto& [r1, r2] : rowParts)
            result.push_back(Page{r1, r2, c1, c2});
    return result;
}

bool SheetPainter::paint(QPagedPaintDevice& device) {
    applyPageSetup(device);
    const QSizeF paper = device.pageLayout().fullRect(QPageLayout::Point).size();
    const std::vector<Page> all = pages(paper);
    QPainter p;
    if (!p.begin(&device)) {
        m_error = QStringLiteral("the printer or file cannot be written");
        return false;
    }
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    const double dotsPerPoint = device.logicalDpiX() / kInch;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (i > 0 && !device.newPage()) {
            m_error = QStringLiteral("cannot start page %1").arg(i + 1);
            p.end();
            return false;
        }
        paintPage(p, all[i], int(i) + 1, int(all.size()), dotsPerPoint, paper);
    }
    if (!p.end()) {
        m_error = QStringLiteral("the printer or file cannot be finished");
        return false;
    }
    return true;
}

void SheetPainter::paintPage(QPainter& p, const Page& page, int number, int count, double dotsPerPoint,
                             const QSizeF& paper) const {
    const PageSetup& setup = m_sheet.page();
    const double zoom = std::max(setup.scale, 10) / 100.0;
    const QPointF origin(setup.marginLeft * kInch, setup.marginTop * kInch);
    // Left edges of the page's columns and top edges of its rows, in points of the sheet.
    std::vector<double> colX{0};
    for (int c = page.firstCol; c <= page.lastCol; ++c)
        colX.push_back(colX.back() + PrintSheet::columnWidthPoints(m_sheet.columnWidth(c)));
    std::vector<double> rowY{0};
    for (int r = page.firstRow; r <= page.lastRow; ++r)
        rowY.push_back(rowY.back() + m_sheet.rowHeight(r));
    // A cell's rectangle on the paper, in device dots.
    auto cellRect = [&](int row, int col1, int col2) {
        const double y = rowY[std::size_t(row - page.firstRow)];
        const QRectF pts(
            origin.x() + zoom * colX[std::size_t(col1 - page.firstCol)], origin.y() + zoom * y,
            zoom * (colX[std::size_t(col2 - page.firstCol + 1)] - colX[std::size_t(col1 - page.firstCol)]),
            zoom * m_sheet.rowHeight(row));
        return scaled(pts, dotsPerPoint);
    };
    for (int r = page.firstRow; r <= page.lastRow; ++r) {
        for (int c = page.firstCol; c <= page.lastCol; ++c) {
            const PrintCell& cell = m_sheet.cell(r, c);
            // Left-aligned text runs on over the empty cells to its right, as on a sheet.
            int last = c;
            if (cell.type == PrintCell::Type::Text && cell.style.align == CellAlign::Left && !cell.style.wrap)
                while (last < page.lastCol && m_sheet.cell(r, last + 1).isEmpty())
                    ++last;
            paintCell(p, r, c, cellRect(r, c, c), cellRect(r, c, last), zoom, dotsPerPoint);
        }
    }
    // Borders last, so that no fill covers a neighbour's line.
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Qt::black, kBorderWidth * zoom * dotsPerPoint));
    for (int r = page.firstRow; r <= page.lastRow; ++r)
        for (int c = page.firstCol; c <= page.lastCol; ++c)
            if (m_sheet.cell(r, c).style.border)
                p.drawRect(cellRect(r, c, c));
    paintHeader(p, setup.centerHeader, setup.marginHeader * kInch, true, number, count, dotsPerPoint, paper);
    paintHeader(p, setup.centerFooter, paper.height() - setup.marginFooter * kInch, false, number, count,
                dotsPerPoint, paper);
}

void SheetPainter::paintCell(QPainter& p, int row, int col, const QRectF& rect, const QRectF& textRect,
                             double zoom, double dotsPerPoint) const {
    const double zoomDots = zoom * dotsPerPoint;
    const PrintCell& cell = m_sheet.cell(row, col);
    const CellStyle& s = cell.style;
    if (s.fill != CellStyle::kNoFill)
        p.fillRect(rect, rgb(s.fill));
    if (!cell.text.isEmpty()) {
        QFont font(s.font.isEmpty() ? m_sheet.fontName() : s.font);
        font.setStyleHint(QFont::SansSerif);
        // Points of the paper at the sheet's scale; the device turns points into its dots.
        font.setPointSizeF((s.fontSize > 0 ? s.fontSize : m_sheet.fontSize()) * zoom);
        font.setBold(s.bold);
        const double pad = kTextPadding * zoomDots;
        const QRectF inner = textRect.adjusted(pad, 0, -pad, 0);
        if (s.shrink && !s.wrap) {
            const double wide = QFontMetricsF(font, p.device()).horizontalAdvance(cell.text);
            if (wide > inner.width() && inner.width() > 0)
                font.setPointSizeF(font.pointSizeF() * inner.width() / wide);
        }
        p.setFont(font);
        p.setPen(rgb(s.color));
        int flags = Qt::AlignVCenter | (s.align == CellAlign::Center  ? Qt::AlignHCenter
                                        : s.align == CellAlign::Right ? Qt::AlignRight
                                                                      : Qt::AlignLeft);
        if (s.wrap)
            flags |= Qt::TextWordWrap;
        p.save();
        p.setClipRect(textRect);
        p.drawText(inner, flags, cell.text);
        p.restore();
    }
    if (!cell.picture.isEmpty()) {
        const PrintPicture pic = printPicture(cell.picture);
        QImage image;
        if (!pic.isNull() && image.loadFromData(pic.png, "PNG")) {
            // The picture's shown size in pixels of 96 dpi, as the workbook places it.
            const QSizeF size(pic.width * 0.75 * zoomDots, pic.height * 0.75 * zoomDots);
            const QRectF target(rect.center() - QPointF(size.width() / 2, size.height() / 2), size);
            p.drawImage(target, image);
        }
    }
}

void SheetPainter::paintHeader(QPainter& p, const QString& codes, double y, bool top, int number, int count,
                               double dotsPerPoint, const QSizeF& paper) const {
    if (codes.isEmpty())
        return;
    HeaderFields fields = m_fields;
    fields.page = number;
    fields.pages = count;
    const HeaderText text = expandHeaderCodes(codes, fields);
    QFont font(m_sheet.fontName());
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(text.fontSize > 0 ? text.fontSize : kHeaderFontSize);
    p.setFont(font);
    p.setPen(Qt::black);
    const double height = font.pointSizeF() * 2;
    const PageSetup& setup = m_sheet.page();
    const QRectF band(setup.marginLeft * kInch, top ? y : y - height,
                      paper.width() - (setup.marginLeft + setup.marginRight) * kInch, height);
    p.drawText(scaled(band, dotsPerPoint), Qt::AlignHCenter | (top ? Qt::AlignTop : Qt::AlignBottom),
               text.text);
}

bool PagedTarget::output(const PrintSheet& sheet) {
    SheetPainter painter(sheet, printHeaderFields(sheet));
    if (!painter.paint(m_device)) {
        m_error = painter.errorString();
        return false;
    }
    return true;
}

bool PdfTarget::output(const PrintSheet& sheet) {
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly)) {
        m_error = m_path + QStringLiteral(": ") + file.errorString();
        return false;
    }
    {
        QPdfWriter writer(&file);
        writer.setCreator(QStringLiteral("VKM Step"));
        writer.setTitle(sheet.name());
        SheetPainter painter(sheet, printHeaderFields(sheet));
        if (!painter.paint(writer)) {
            m_error = painter.errorString();
            file.cancelWriting();
            return false;
        }
    }
    if (!file.commit()) {
        m_error = m_path + QStringLiteral(": ") + file.errorString();
        return false;
    }
    return true;
}

} // namespace vkm
