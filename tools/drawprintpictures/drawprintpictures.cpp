// Draws the state pictures of the printed step sheet ("Jyotai0" .. "Jyotai3") as PNG files
// into the folder it is given (src/core/print/pictures through the print_pictures target).
// The PNG files are sources, compiled into the print library as resources, and committed
// after a change is looked at.
//
// The state column of the printed sheet is narrow (3.5 characters), so a picture is the
// signal trace alone, without the state's name. It is drawn at four times the size it is
// shown at, so that a printed page stays sharp.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

// 24 x 16 units, four pixels a unit.
static void picture(const QString& file, std::initializer_list<QPointF> trace, int arrow) {
    QImage img(96, 64, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(4, 4);
    const QColor ink(0, 70, 170);
    QPainterPath path;
    path.addPolygon(QPolygonF(trace)); // an open trace: moved to the first point, lines on
    p.setPen(QPen(ink, 1.6, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    p.drawPath(path);
    if (arrow != 0) {
        // The edge's direction: an arrow head on the middle of the rising or falling line.
        const double d = arrow > 0 ? -1 : 1;
        QPolygonF head;
        head << QPointF(12, 8 + 3 * d) << QPointF(9, 8 - 1 * d) << QPointF(15, 8 - 1 * d);
        p.setPen(Qt::NoPen);
        p.setBrush(ink);
        p.drawPolygon(head);
    }
    p.end();
    if (!img.save(file, "PNG")) {
        std::fprintf(stderr, "drawprintpictures: cannot write %s\n", qPrintable(file));
        std::exit(1);
    }
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: drawprintpictures OUT_FOLDER\n");
        return 2;
    }
    QGuiApplication app(argc, argv);
    const QString out = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(out)) {
        std::fprintf(stderr, "drawprintpictures: cannot create %s\n", argv[1]);
        return 1;
    }
    picture(out + "/Jyotai0.png", {{2, 3}, {22, 3}}, 0);                      // positive level
    picture(out + "/Jyotai1.png", {{2, 13}, {12, 13}, {12, 3}, {22, 3}}, 1);  // positive edge
    picture(out + "/Jyotai2.png", {{2, 13}, {22, 13}}, 0);                    // negative level
    picture(out + "/Jyotai3.png", {{2, 3}, {12, 3}, {12, 13}, {22, 13}}, -1); // negative edge
    return 0;
}
