#pragma once

#include <QString>

namespace vkm {

class Prompter;

// Whether a workbook is held open by another program, so that it cannot be replaced: a
// spreadsheet program's lock file lies beside it, or the file cannot be moved aside and
// back (copied to "bak_" + its name, deleted, copied back, the copy deleted). A file that
// does not exist is not in use.
bool FileIsInUse(const QString& path);

// The save dialog of a workbook ("Specify excel file name"), starting at defaultPath. A
// file that is held open is refused with a message and the dialog comes again. "" when
// the user cancelled.
QString GetExcelFullFname(Prompter& prompter, const QString& defaultPath);

} // namespace vkm
