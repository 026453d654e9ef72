// Draws the application icon at build time: one list of shapes, written out as the scalable
// icon (SVG) and painted into PNG files of fixed sizes, so the two never differ.
//   appicon OUTDIR NAME SIZE...   ->  OUTDIR/NAME.svg, OUTDIR/SIZExSIZE/NAME.png
// The picture: a step grid (step numbers, output cells green, input cells white, one
// disabled row grey) crossed by a needle with its thread.
#include <QBuffer>
#include <QColor>
#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QSaveFile>
#include <QString>
#include <QTextStream>
#include <cstdio>
#include <vector>

namespace {

constexpr int kCanvas = 64; // the SVG's view box; PNG sizes are scaled from it

struct Shape {
    enum Kind { Rect, Polygon, Text, Curve } kind;
    std::vector<QPointF> points; // Rect: top left, size; Polygon: corners; Text: anchor; Curve: 4 points
    double radius = 0;           // Rect: corner radius; Text: font size; Curve: line width
    QString fill;                // "" none
    QString stroke;              // "" none
    QString text;
};

std::vector<Shape> iconShapes() {
    std::vector<Shape> s;
    s.push_back({Shape::Rect, {{2, 2}, {60, 60}}, 9, "#1f3a5f", "", ""});
    const char* out[] = {"#e0f0df", "#e0f0df", "#d0d0d0", "#e0f0df"};
    const char* in[] = {"#ffffff", "#ffffff", "#d0d0d0", "#ffffff"};
    for (int row = 0; row < 4; ++row) {
        const double y = 12 + 11 * row;
        s.push_back({Shape::Rect, {{9, y}, {8, 9}}, 0, "#9daab9", "#9daab9", ""});
        s.push_back({Shape::Rect, {{17, y}, {19, 9}}, 0, out[row], "#9daab9", ""});
        s.push_back({Shape::Rect, {{36, y}, {19, 9}}, 0, in[row], "#9daab9", ""});
        s.push_back({Shape::Text, {{13, y + 7}}, 7, "#1f3a5f", "", QString::number(row + 1)});
    }
    s.push_back({Shape::Polygon, {{50, 6}, {57, 9}, {27, 58}, {25, 57}}, 0, "#f2c14e", "#7a5a10", ""});
    s.push_back({Shape::Polygon, {{52.6, 7.6}, {54.6, 8.4}, {54.2, 9.6}, {52.4, 8.9}}, 0, "#1f3a5f", "", ""});
    s.push_back({Shape::Curve, {{54, 10}, {60, 22}, {44, 30}, {30, 28}}, 1.6, "", "#e05050", ""});
    return s;
}

QString num(double v) {
    return QString::number(v, 'g', 6);
}

QString svg(const std::vector<Shape>& shapes) {
    QString out;
    QTextStream t(&out);
    t << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << kCanvas << "\" height=\"" << kCanvas
      << "\" viewBox=\"0 0 " << kCanvas << ' ' << kCanvas << "\">\n";
    for (const Shape& sh : shapes) {
        const QString paint =
            QStringLiteral(" fill=\"%1\"").arg(sh.fill.isEmpty() ? "none" : sh.fill) +
            (sh.stroke.isEmpty() ? QString() : QStringLiteral(" stroke=\"%1\"").arg(sh.stroke));
        switch (sh.kind) {
        case Shape::Rect:
            t << "  <rect x=\"" << num(sh.points[0].x()) << "\" y=\"" << num(sh.points[0].y())
              << "\" width=\"" << num(sh.points[1].x()) << "\" height=\"" << num(sh.points[1].y())
              << "\" rx=\"" << num(sh.radius) << '"' << paint << "/>\n";
            break;
        case Shape::Polygon: {
            QStringList pts;
            for (const QPointF& p : sh.points)
                pts << num(p.x()) + ',' + num(p.y());
            t << "  <polygon points=\"" << pts.join(' ') << '"' << paint << "/>\n";
            break;
        }
        case Shape::Text:
            t << "  <text x=\"" << num(sh.points[0].x()) << "\" y=\"" << num(sh.points[0].y())
              << "\" font-family=\"DejaVu Sans, sans-serif\" font-size=\"" << num(sh.radius)
              << "\" font-weight=\"bold\" text-anchor=\"middle\"" << paint << '>' << sh.text << "</text>\n";
            break;
        case Shape::Curve:
            t << "  <path d=\"M" << num(sh.points[0].x()) << ' ' << num(sh.points[0].y()) << " C"
              << num(sh.points[1].x()) << ' ' << num(sh.points[1].y()) << ' ' << num(sh.points[2].x()) << ' '
              << num(sh.points[2].y()) << ' ' << num(sh.points[3].x()) << ' ' << num(sh.points[3].y())
              << "\" stroke-width=\"" << num(sh.radius) << '"' << paint << "/>\n";
            break;
        }
    }
    t << "</svg>\n";
    return out;
}

QImage png(const std::vector<Shape>& shapes, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.scale(double(size) / kCanvas, double(size) / kCanvas);
    for (const Shape& sh : shapes) {
        p.setBrush(sh.fill.isEmpty() ? QBrush(Qt::NoBrush) : QBrush(QColor(sh.fill)));
        p.setPen(sh.stroke.isEmpty() ? QPen(Qt::NoPen)
                                     : QPen(QColor(sh.stroke), sh.kind == Shape::Curve ? sh.radius : 1.0));
        switch (sh.kind) {
        case Shape::Rect:
            p.drawRoundedRect(QRectF(sh.points[0], QSizeF(sh.points[1].x(), sh.points[1].y())), sh.radius,
                              sh.radius);
            break;
        case Shape::Polygon:
            p.drawPolygon(sh.points.data(), int(sh.points.size()));
            break;
        case Shape::Text: {
            QFont font(QStringLiteral("DejaVu Sans"));
            font.setPixelSize(int(sh.radius));
            font.setBold(true);
            p.setFont(font);
            p.setPen(QColor(sh.fill));
            // The anchor is the middle of the baseline, as in the SVG.
            const double w = p.fontMetrics().horizontalAdvance(sh.text);
            p.drawText(QPointF(sh.points[0].x() - w / 2, sh.points[0].y()), sh.text);
            break;
        }
        case Shape::Curve: {
            QPainterPath path(sh.points[0]);
            path.cubicTo(sh.points[1], sh.points[2], sh.points[3]);
            p.drawPath(path);
            break;
        }
        }
    }
    return image;
}

bool save(const QString& path, const QByteArray& bytes) {
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.commit()) {
        std::fprintf(stderr, "appicon: cannot write %s: %s\n", qPrintable(path), qPrintable(f.errorString()));
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 3) {
        std::fprintf(stderr, "usage: appicon OUTDIR NAME SIZE...\n");
        return 2;
    }
    const QDir dir(args.at(1));
    const QString name = args.at(2);
    const std::vector<Shape> shapes = iconShapes();
    if (!dir.mkpath(QStringLiteral(".")) || !save(dir.filePath(name + ".svg"), svg(shapes).toUtf8()))
        return 1;
    for (int i = 3; i < args.size(); ++i) {
        bool ok = false;
        const int size = args.at(i).toInt(&ok);
        if (!ok || size < 16 || size > 1024) {
            std::fprintf(stderr, "appicon: not a size: %s\n", qPrintable(args.at(i)));
            return 2;
        }
        const QString sub = QStringLiteral("%1x%1").arg(size);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        if (!dir.mkpath(sub) || !png(shapes, size).save(&buffer, "PNG") ||
            !save(dir.filePath(sub + '/' + name + ".png"), bytes))
            return 1;
    }
    return 0;
}
