#pragma once

#include "print/printjob.h"
#include "print/printsheet.h"

#include <QRectF>
#include <QSizeF>
#include <QString>
#include <vector>

class QPagedPaintDevice;
class QPainter;

namespace vkm {

// Whether the symbol font of the relation title is installed here.
bool symbolFontAvailable();

// Draws a printed sheet on the pages of a paper device (a printer, a PDF file) as a
// spreadsheet prints it: the sheet's page setup (orientation, margins, scale, centre
// header and footer), cells with their fills, borders, fonts and alignment, pictures
// over their cells, and left-aligned texts running on over empty neighbours. A sheet too
// large for one page goes on as many as it needs, down first, then across.
class SheetPainter {
public:
    // fields: what the header codes name (the page number and count are filled in here).
    SheetPainter(const PrintSheet& sheet, HeaderFields fields);

    // Sets the device's orientation and margins from the sheet's page setup, keeping its
    // paper size; the page is painted whole (the margins are the sheet's, not the
    // device's).
    void applyPageSetup(QPagedPaintDevice& device) const;

    // The rows and columns of each page for a paper of this size in points.
    struct Page {
        int firstRow, lastRow, firstCol, lastCol;
    };
    std::vector<Page> pages(const QSizeF& paperPoints) const;

    // Applies the page setup and paints every page; false with errorString() when the
    // device cannot be painted on.
    bool paint(QPagedPaintDevice& device);
    QString errorString() const { return m_error; }

private:
    void paintPage(QPainter& p, const Page& page, int number, int count, double dotsPerPoint,
                   const QSizeF& paper) const;
    void paintHeader(QPainter& p, const QString& codes, double y, bool top, int number, int count,
                     double dotsPerPoint, const QSizeF& paper) const;
    void paintCell(QPainter& p, int row, int col, const QRectF& rect, const QRectF& textRect, double zoom,
                   double dotsPerPoint) const;

    const PrintSheet& m_sheet;
    HeaderFields m_fields;
    QString m_error;
};

// A printer (or any paper device) as the target of a print.
class PagedTarget : public SheetTarget {
public:
    explicit PagedTarget(QPagedPaintDevice& device) : m_device(device) {}
    bool open() override { return true; }
    bool output(const PrintSheet& sheet) override;
    QString errorString() const override { return m_error; }

private:
    QPagedPaintDevice& m_device;
    QString m_error;
};

// A PDF file as the target of a print: written in one piece, replacing the file only
// when the whole document was made.
class PdfTarget : public SheetTarget {
public:
    explicit PdfTarget(QString path) : m_path(std::move(path)) {}
    bool open() override { return true; }
    bool output(const PrintSheet& sheet) override;
    QString errorString() const override { return m_error; }

private:
    QString m_path;
    QString m_error;
};

// The header fields of a printout made now: the sheet's name and today's date.
HeaderFields printHeaderFields(const PrintSheet& sheet);

} // namespace vkm
