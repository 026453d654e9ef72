#include "editorresources.h"

#include <QDir>
#include <QFile>
#include <QHash>

static void initEditorResource() {
    Q_INIT_RESOURCE(editor);
}

namespace vkm {

void ensureEditorResources() {
    static const bool done = [] {
        initEditorResource();
        return true;
    }();
    (void)done;
}

static QString iconPath(const QString& key) {
    return QStringLiteral(":/icons/") + key;
}

QIcon editorIcon(const QString& key) {
    ensureEditorResources();
    // Both editor windows and the dialogs show the same images: each is read once.
    static QHash<QString, QIcon> cache;
    const auto it = cache.constFind(key);
    if (it != cache.constEnd())
        return *it;
    const QString path = iconPath(key);
    // From a pixmap read as PNG: a path without a suffix would make QIcon consult the whole
    // MIME database, and an image of unnamed format makes Qt load every image format
    // plugin to ask it (milliseconds at every start), just to learn that it is a PNG.
    const QIcon icon = QFile::exists(path) ? QIcon(QPixmap(path, "PNG")) : QIcon();
    cache.insert(key, icon);
    return icon;
}

QPixmap editorPixmap(const QString& key) {
    ensureEditorResources();
    return QPixmap(iconPath(key), "PNG");
}

QIcon editorIconNoCase(const QString& key) {
    ensureEditorResources();
    const QStringList names = QDir(QStringLiteral(":/icons")).entryList();
    for (const QString& name : names)
        if (name.compare(key, Qt::CaseInsensitive) == 0)
            return editorIcon(name);
    return QIcon();
}

QIcon toolbarIcon(const QString& image) {
    // Read as PNG for the reason editorIcon gives.
    return QIcon(QPixmap(QStringLiteral(":/toolbar/") + image, "PNG"));
}

QString cellPicturePath(const QString& prefix, int value) {
    ensureEditorResources();
    return QStringLiteral(":/Pictures/") + prefix + QString::number(value);
}

} // namespace vkm
