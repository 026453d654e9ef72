#pragma once

#include <QByteArray>
#include <QString>

namespace vkm {

class CCustomInps;
class CCustomOuts;
class CSelectKino;
class CustomizeEasySheet;
class Prompter;

// Loads a customisation data file (transfer text read from the machine or carried on a
// disk) as the customisation image and fills the terminals' values from it: the file is
// copied to "eusr3.tmp", parsed, and the copy then holds the bytes. The image and the
// tables change only when both tables read the whole image; otherwise they stay as they
// were and false is returned (the caller shows message 4).
bool ReadCustomizeData(const QString& path, QByteArray& image, CCustomInps& cusI, CCustomOuts& cusO,
                       Prompter& prompter);

// Builds the transfer text that writes the grid's functions into the machine: fresh
// terminal descriptions from the setting archive, their values from the customisation
// image, the functions of the grid's rows, all written into a copy of the image; then its
// transfer text over the customisation area (fromMachine) or the whole memory. Returns the
// transfer text's path, or "" when it cannot be built (the archive's own message, 142
// for a description that cannot be read, 80 for a row without a known function, 141 when
// the text cannot be written).
QString GetFileNameToTransferCustom(const CustomizeEasySheet& sheet, CSelectKino& kino,
                                    const QByteArray& image, bool fromMachine, Prompter& prompter);

} // namespace vkm
