#pragma once

#include <QByteArray>
#include <QStringList>

namespace vkm {

// The lines of a setting file as text: a line ends at CR LF, a lone CR or a lone LF
// (files edited on other systems keep their own line ends), every line is decoded from
// the legacy code page. A final line break does not start
// another line; an empty line inside the file stays an empty line.
QStringList settingFileLines(const QByteArray& content);

// Reads a whole setting file; false when it is missing or cannot be read (the error
// number is stored in *error).
bool readSettingFile(const QString& path, QByteArray& content, int* error);

} // namespace vkm
