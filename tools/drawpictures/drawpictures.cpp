// drawpictures: draws the pictures of the step editor (cell pictures, tree icons, toolbar
// images) as PNG files into one folder.
//
//   drawpictures OUT_FOLDER
//
// The PNG files are kept in the source tree (src/app/pictures) and compiled into the editor
// as Qt resources; this program is run when a picture changes, through the build's
// "editor_pictures" target, and its output is committed. It needs no display: the
// offscreen platform is enough.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QString>
#include <cstdio>
#include <functional>

static QString g_out;
static int g_failures = 0;

static void save(const QString& name, int w, int h, const std::function<void(QPainter&)>& draw) {
    QImage img(w, h, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    draw(p);
    p.end();
    const QString path = g_out + "/" + name + ".png";
    if (!img.save(path, "PNG")) {
        std::fprintf(stderr, "drawpictures: cannot write %s\n", qPrintable(path));
        ++g_failures;
    }
}

// Cell pictures: a small sign on the left and the code's name, so that a cell reads at a
// glance without opening its list. 60 x 16, transparent so the cell's colour shows; the
// condensed face keeps the longest names ("POS EDG", "ANGLE1") inside a narrow column.
static void label(QPainter& p, const QString& text, const QColor& c, int x) {
    QFont f("DejaVu Sans Condensed");
    f.setPixelSize(10);
    f.setBold(true);
    p.setFont(f);
    p.setPen(c);
    p.drawText(QRect(x, 0, 60 - x, 16), Qt::AlignVCenter | Qt::AlignLeft, text);
}

// A signal trace in a 14 x 12 box: "levels" is a list of y positions (0 = high) per step.
static void trace(QPainter& p, const QColor& c, std::initializer_list<QPointF> pts) {
    QPainterPath path;
    bool first = true;
    for (QPointF pt : pts) {
        if (first)
            path.moveTo(pt);
        else
            path.lineTo(pt);
        first = false;
    }
    p.setPen(QPen(c, 1.6));
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
}

static void arrowHead(QPainter& p, const QColor& c, QPointF tip, bool up) {
    QPolygonF tri;
    const double d = up ? 1 : -1;
    tri << tip << QPointF(tip.x() - 3, tip.y() + 4 * d) << QPointF(tip.x() + 3, tip.y() + 4 * d);
    p.setPen(Qt::NoPen);
    p.setBrush(c);
    p.drawPolygon(tri);
}

static void badge(QPainter& p, const QColor& c, const QString& sign) {
    p.setPen(Qt::NoPen);
    p.setBrush(c);
    p.drawRoundedRect(QRectF(1, 2, 13, 12), 3, 3);
    QFont f("DejaVu Sans");
    f.setPixelSize(9);
    f.setBold(true);
    p.setFont(f);
    p.setPen(Qt::white);
    p.drawText(QRectF(1, 2, 13, 12), Qt::AlignCenter, sign);
}

static void cellPictures() {
    const QColor logic(0, 110, 40), delay(170, 90, 0), state(0, 70, 170), rel(120, 40, 140);
    struct L {
        int v;
        QString name;
        std::function<void(QPainter&)> sign;
    };
    const QList<L> logics = {
        {0, "LOW",
         [&](QPainter& p) {
             trace(p, logic, {{1, 13}, {14, 13}});
         }},
        {1, "HIGH",
         [&](QPainter& p) {
             trace(p, logic, {{1, 3}, {14, 3}});
         }},
        {2, "NOT",
         [&](QPainter& p) {
             trace(p, logic, {{1, 3}, {6, 3}, {6, 13}, {14, 13}});
         }},
        {3, "JMP", [&](QPainter& p) { badge(p, logic, QString::fromUtf8("\u2192")); }},
        {4, "INC", [&](QPainter& p) { badge(p, logic, "+1"); }},
        {5, "DEC", [&](QPainter& p) { badge(p, logic, "-1"); }},
        {6, "SET", [&](QPainter& p) { badge(p, logic, "S"); }},
        {7, "CLR", [&](QPainter& p) { badge(p, logic, "0"); }},
        {8, "ADD", [&](QPainter& p) { badge(p, logic, "+"); }},
        {9, "SUB", [&](QPainter& p) { badge(p, logic, "-"); }},
        {10, "CALL", [&](QPainter& p) { badge(p, logic, "C"); }},
        {11, "RET", [&](QPainter& p) { badge(p, logic, "R"); }},
    };
    for (const L& l : logics)
        save(QString("bLogic%1").arg(l.v), 60, 16, [&](QPainter& p) {
            l.sign(p);
            label(p, l.name, logic, 17);
        });

    const QList<L> delays = {
        {0, "TIMER",
         [&](QPainter& p) {
             p.setPen(QPen(delay, 1.4));
             p.drawEllipse(QRectF(2, 2, 12, 12));
             p.drawLine(QPointF(8, 8), QPointF(8, 4));
             p.drawLine(QPointF(8, 8), QPointF(11, 8));
         }},
        {2, "STC", [&](QPainter& p) { badge(p, delay, "#"); }},
        {4, "ANGLE1", [&](QPainter& p) { badge(p, delay, "1"); }},
        {6, "ANGLE2", [&](QPainter& p) { badge(p, delay, "2"); }},
        {8, "ANGLE3", [&](QPainter& p) { badge(p, delay, "3"); }},
    };
    for (const L& l : delays)
        save(QString("bDelayKind%1").arg(l.v), 60, 16, [&](QPainter& p) {
            l.sign(p);
            label(p, l.name, delay, 17);
        });

    const QList<L> states = {
        {0, "POS LEV",
         [&](QPainter& p) {
             trace(p, state, {{1, 3}, {14, 3}});
         }},
        {1, "POS EDG",
         [&](QPainter& p) {
             trace(p, state, {{1, 13}, {7, 13}, {7, 3}, {14, 3}});
             arrowHead(p, state, {7, 4}, true);
         }},
        {2, "NEG LEV",
         [&](QPainter& p) {
             trace(p, state, {{1, 13}, {14, 13}});
         }},
        {3, "NEG EDG",
         [&](QPainter& p) {
             trace(p, state, {{1, 3}, {7, 3}, {7, 13}, {14, 13}});
             arrowHead(p, state, {7, 12}, false);
         }},
    };
    for (const L& l : states)
        save(QString("bJyotai%1").arg(l.v), 60, 16, [&](QPainter& p) {
            l.sign(p);
            label(p, l.name, state, 17);
        });

    const QStringList rels = {"AND", "OR", "END", ">=", "<=", "=", "!=", "+", "-"};
    for (int v = 0; v < rels.size(); ++v)
        save(QString("bRel%1").arg(v), 60, 16, [&](QPainter& p) {
            p.setPen(Qt::NoPen);
            p.setBrush(v == 2 ? QColor(190, 30, 30) : rel);
            p.drawEllipse(QRectF(3, 4, 8, 8));
            label(p, rels[v], v == 2 ? QColor(190, 30, 30) : rel, 15);
        });
}

static void page(QPainter& p, QRectF r, const QColor& fill) {
    QPainterPath path;
    path.moveTo(r.topLeft());
    path.lineTo(r.right() - 5, r.top());
    path.lineTo(r.right(), r.top() + 5);
    path.lineTo(r.bottomRight());
    path.lineTo(r.bottomLeft());
    path.closeSubpath();
    p.setPen(QPen(QColor(70, 70, 70), 1.2));
    p.setBrush(fill);
    p.drawPath(path);
}

static void folder(QPainter& p, QRectF r, const QColor& c) {
    p.setPen(QPen(c.darker(160), 1.2));
    p.setBrush(c);
    QPainterPath path;
    path.moveTo(r.left(), r.top() + 2);
    path.lineTo(r.left() + r.width() * 0.4, r.top() + 2);
    path.lineTo(r.left() + r.width() * 0.5, r.top() + 4);
    path.lineTo(r.right(), r.top() + 4);
    path.lineTo(r.bottomRight());
    path.lineTo(r.bottomLeft());
    path.closeSubpath();
    p.drawPath(path);
}

static void magnifier(QPainter& p, double s) {
    p.setPen(QPen(QColor(40, 40, 40), 2.0 * s / 16));
    p.setBrush(QColor(200, 230, 255));
    p.drawEllipse(QRectF(2 * s / 16, 2 * s / 16, 8 * s / 16, 8 * s / 16));
    p.setPen(QPen(QColor(40, 40, 40), 3.0 * s / 16, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(9 * s / 16, 9 * s / 16), QPointF(14 * s / 16, 14 * s / 16));
}

static void treeIcons() {
    save("keyParent", 16, 16, [](QPainter& p) { folder(p, QRectF(1, 2, 14, 12), QColor(240, 200, 80)); });
    auto arrow = [](const QColor& c, bool hollow) {
        return [c, hollow](QPainter& p) {
            QPolygonF a;
            a << QPointF(2, 6) << QPointF(8, 6) << QPointF(8, 2) << QPointF(14, 8) << QPointF(8, 14)
              << QPointF(8, 10) << QPointF(2, 10);
            p.setPen(QPen(c.darker(140), 1));
            p.setBrush(hollow ? QColor(Qt::white) : c);
            p.drawPolygon(a);
        };
    };
    save("keyRArrowRed", 16, 16, arrow(QColor(220, 30, 60), false));
    save("keyRArrowBlue", 16, 16, arrow(QColor(30, 80, 200), false));
    save("keyRArrow2", 16, 16, arrow(QColor(20, 150, 60), true));
    save("keyFind", 16, 16, [](QPainter& p) { magnifier(p, 16); });

    // Category buttons: a coloured tile with a short tag of the category.
    struct C {
        QString key;
        QString tag;
        QColor colour;
    };
    const QList<C> cates = {
        {"keyCateIn", "IN", QColor(230, 0, 110)},    {"keyCateOut", "OUT", QColor(0, 64, 128)},
        {"keyCateRgst", "RG", QColor(0, 130, 130)},  {"keyCateCount", "CT", QColor(200, 110, 0)},
        {"keyCateJmp", "JP", QColor(110, 60, 160)},  {"keyCateSub", "SB", QColor(90, 120, 30)},
        {"keyCateCall", "CL", QColor(60, 90, 170)},  {"keyCateReturn", "RT", QColor(150, 40, 40)},
        {"keyCateOut_s", "OS", QColor(0, 100, 180)}, {"keyCateStep", "ST", QColor(80, 80, 80)},
        {"keyCateAll", "AL", QColor(170, 30, 120)},  {"keyCatePat", "PT", QColor(30, 130, 70)},
    };
    for (const C& c : cates)
        save(c.key, 16, 16, [&](QPainter& p) {
            p.setPen(Qt::NoPen);
            p.setBrush(c.colour);
            p.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3, 3);
            QFont f("DejaVu Sans");
            f.setPixelSize(c.tag.size() > 2 ? 6 : 8);
            f.setBold(true);
            p.setFont(f);
            p.setPen(Qt::white);
            p.drawText(QRectF(0, 0, 16, 16), Qt::AlignCenter, c.tag);
        });
}

static void undoArrow(QPainter& p) {
    p.setPen(QPen(QColor(30, 80, 170), 2.4, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(5, 6, 15, 13), 90 * 16, -240 * 16);
    QPolygonF a;
    a << QPointF(3, 6) << QPointF(11, 2) << QPointF(11, 10);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(30, 80, 170));
    p.drawPolygon(a);
}

static void toolbarImages() {
    const int s = 24;
    save("keyNew", s, s, [](QPainter& p) { page(p, QRectF(5, 2, 14, 19), Qt::white); });
    save("keyOPEN", s, s, [](QPainter& p) { folder(p, QRectF(2, 5, 20, 15), QColor(240, 200, 80)); });
    save("keySAVE", s, s, [](QPainter& p) {
        p.setPen(QPen(QColor(30, 40, 90), 1.2));
        p.setBrush(QColor(60, 90, 170));
        p.drawRoundedRect(QRectF(3, 3, 18, 18), 2, 2);
        p.setBrush(Qt::white);
        p.drawRect(QRectF(7, 3, 10, 7));
        p.setBrush(QColor(200, 200, 200));
        p.drawRect(QRectF(6, 14, 12, 7));
    });
    save("keyFind", s, s, [](QPainter& p) { magnifier(p, 24); });
    save("keyPRINT", s, s, [](QPainter& p) {
        page(p, QRectF(7, 2, 10, 8), Qt::white);
        p.setPen(QPen(QColor(60, 60, 60), 1.2));
        p.setBrush(QColor(150, 150, 150));
        p.drawRoundedRect(QRectF(2, 9, 20, 9), 2, 2);
        page(p, QRectF(7, 15, 10, 7), Qt::white);
    });
    save("keyCUT", s, s, [](QPainter& p) {
        p.setPen(QPen(QColor(60, 60, 60), 1.6));
        p.drawLine(QPointF(7, 3), QPointF(15, 16));
        p.drawLine(QPointF(17, 3), QPointF(9, 16));
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(QColor(200, 30, 30), 1.8));
        p.drawEllipse(QRectF(4, 15, 6, 6));
        p.drawEllipse(QRectF(14, 15, 6, 6));
    });
    save("keyCOPY", s, s, [](QPainter& p) {
        page(p, QRectF(3, 2, 12, 15), QColor(235, 235, 235));
        page(p, QRectF(9, 7, 12, 15), Qt::white);
    });
    save("keyPASTE", s, s, [](QPainter& p) {
        p.setPen(QPen(QColor(90, 60, 20), 1.2));
        p.setBrush(QColor(190, 140, 70));
        p.drawRoundedRect(QRectF(3, 4, 14, 17), 2, 2);
        p.setBrush(QColor(120, 120, 120));
        p.drawRect(QRectF(7, 2, 6, 4));
        page(p, QRectF(10, 9, 11, 13), Qt::white);
    });
    save("keyINSERT", s, s, [](QPainter& p) {
        p.setPen(QPen(QColor(80, 80, 80), 1));
        p.setBrush(Qt::white);
        p.drawRect(QRectF(8, 3, 14, 5));
        p.setBrush(QColor(255, 230, 120));
        p.drawRect(QRectF(8, 10, 14, 5));
        p.setBrush(Qt::white);
        p.drawRect(QRectF(8, 17, 14, 5));
        QPolygonF a;
        a << QPointF(1, 9) << QPointF(6, 12.5) << QPointF(1, 16);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(30, 130, 60));
        p.drawPolygon(a);
    });
    save("keyUNDO", s, s, undoArrow);
    // Redo: the undo arrow turned the other way.
    save("keyREDO", s, s, [](QPainter& p) {
        p.translate(24, 0);
        p.scale(-1, 1);
        undoArrow(p);
    });
    save("keyPULSE", s, s, [](QPainter& p) {
        p.setPen(QPen(QColor(0, 120, 60), 2));
        p.drawPolyline(QPolygonF({{2, 18}, {7, 18}, {7, 6}, {14, 6}, {14, 18}, {22, 18}}));
    });
    save("keyREM", s, s, [](QPainter& p) {
        page(p, QRectF(4, 2, 16, 20), QColor(255, 250, 210));
        p.setPen(QPen(QColor(200, 40, 40), 1.8));
        p.drawLine(QPointF(8, 16), QPointF(11, 7));
        p.drawLine(QPointF(12, 16), QPointF(15, 7));
    });
    save("keyMEMO", s, s, [](QPainter& p) {
        page(p, QRectF(4, 2, 16, 20), QColor(255, 250, 210));
        p.setPen(QPen(QColor(110, 110, 110), 1));
        for (int y = 8; y <= 18; y += 3)
            p.drawLine(QPointF(7, y), QPointF(17, y));
    });
    // "No function" of the easy customisation editor: a terminal crossed out.
    save("keyNO", s, s, [](QPainter& p) {
        p.setPen(QPen(QColor(60, 60, 60), 1.4));
        p.setBrush(QColor(230, 230, 230));
        p.drawEllipse(QRectF(7, 7, 10, 10));
        p.setPen(QPen(QColor(200, 30, 30), 2.4, Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QRectF(2.5, 2.5, 19, 19));
        p.drawLine(QPointF(5.5, 18.5), QPointF(18.5, 5.5));
    });
    save("keyHelp", s, s, [](QPainter& p) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(30, 100, 200));
        p.drawEllipse(QRectF(2, 2, 20, 20));
        QFont f("DejaVu Sans");
        f.setPixelSize(15);
        f.setBold(true);
        p.setFont(f);
        p.setPen(Qt::white);
        p.drawText(QRectF(2, 2, 20, 20), Qt::AlignCenter, "?");
    });
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: drawpictures OUT_FOLDER\n");
        return 2;
    }
    QGuiApplication app(argc, argv);
    g_out = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(g_out)) {
        std::fprintf(stderr, "drawpictures: cannot create %s\n", argv[1]);
        return 1;
    }
    cellPictures();
    treeIcons();
    toolbarImages();
    if (g_failures == 0)
        std::printf("pictures written to %s\n", qPrintable(QDir(g_out).absolutePath()));
    return g_failures == 0 ? 0 : 1;
}
