#include "editorresources.h"

#include <QDir>
#include <QFile>

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
    const QString path = iconPath(key);
    return QFile::exists(path) ? QIcon(path) : QIcon();
}

QPixmap editorPixmap(const QString& key) {
    ensureEditorResources();
    return QPixmap(iconPath(key));
}

QIcon editorIconNoCase(const QString& key) {
    ensureEditorResources();
    const QStringList names = QDir(QStringLiteral(":/icons")).entryList();
    for (const QString& name : names)
        if (name.compare(key, Qt::CaseInsensitive) == 0)
            return QIcon(iconPath(name));
    return QIcon();
}

QString cellPicturePath(const QString& prefix, int value) {
    ensureEditorResources();
    return QStringLiteral(":/Pictures/") + prefix + QString::number(value);
}

} // namespace vkm
