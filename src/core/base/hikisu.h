#pragma once

#include <QString>

namespace vkm {

// The file named on the command line: the text between the first and the second double
// quote when the line holds one (Explorer quotes paths with blanks and may append more
// arguments), else the whole line. "" when the line is empty or the file does not exist.
QString hikisuFileName(const QString& commandLine);

} // namespace vkm
