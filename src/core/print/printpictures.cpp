#include "print/printpictures.h"

#include <QFile>
#include <QHash>

static void initPrintResource() {
    Q_INIT_RESOURCE(print);
}

namespace vkm {

namespace {

// The pictures are drawn at four times the size they are shown at.
constexpr int kDensity = 4;

// Width and height from a PNG's header chunk (big-endian at bytes 16 and 20); 0 when the
// bytes are not a PNG.
bool pngSize(const QByteArray& png, int& width, int& height) {
    static const QByteArray signature("\x89PNG\r\n\x1a\n", 8);
    if (png.size() < 24 || !png.startsWith(signature) || png.mid(12, 4) != "IHDR")
        return false;
    auto word = [&](int at) {
        return int((quint32(quint8(png[at])) << 24) | (quint32(quint8(png[at + 1])) << 16) |
                   (quint32(quint8(png[at + 2])) << 8) | quint32(quint8(png[at + 3])));
    };
    width = word(16);
    height = word(20);
    return width > 0 && height > 0;
}

} // namespace

PrintPicture printPicture(const QString& name) {
    static const bool registered = [] {
        initPrintResource();
        return true;
    }();
    (void)registered;
    static QHash<QString, PrintPicture> cache;
    const auto it = cache.constFind(name);
    if (it != cache.constEnd())
        return *it;
    PrintPicture picture;
    QFile file(QStringLiteral(":/print/") + name);
    int w = 0;
    int h = 0;
    if (!name.isEmpty() && file.open(QIODevice::ReadOnly)) {
        const QByteArray png = file.readAll();
        if (pngSize(png, w, h)) {
            picture.png = png;
            picture.width = w / kDensity;
            picture.height = h / kDensity;
            picture.scale = 1.0 / kDensity;
        }
    }
    cache.insert(name, picture);
    return picture;
}

} // namespace vkm
