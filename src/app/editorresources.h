#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace vkm {

// The editor's pictures are compiled into the static GUI library; this makes sure the
// resource is registered before the first picture is asked for.
void ensureEditorResources();

// Tree and toolbar images by image key ("keyParent", "keyNew", ...). A null icon when the
// key has no image.
QIcon editorIcon(const QString& key);
QPixmap editorPixmap(const QString& key);
// The same, with the key compared without regard to case ("keyCateOUT_S" finds
// "keyCateOut_s"), as the category toolbar names its images after the category.
QIcon editorIconNoCase(const QString& key);

// A picture of the main window's toolbar by its name ("keyCLOSE"), which the easy
// customisation window shows as well.
QIcon toolbarIcon(const QString& image);

// Resource path of a cell picture: prefix "bLogic", "bDelayKind", "bJyotai" or "bRel"
// and the cell's value, for example ":/Pictures/bLogic1".
QString cellPicturePath(const QString& prefix, int value);

} // namespace vkm
