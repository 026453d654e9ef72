#pragma once

#include "model/csteps.h"

#include <QByteArray>
#include <QString>
#include <optional>

namespace vkm {

class Prompter;
class CSelections;

// Temporary and removable-drive files on the way between the editor and the machine.
// Every temporary file lives in the private temporary folder (TempFolder::instance()).

enum UsrCmp { eUSR = 0, eCMP = 1 }; // user program / comparison program

// Fixed temporary names: index 1 -> "eusr2.tmp" (user) or "ecmp2.tmp" (comparison),
// index 2 -> "eusr3.tmp" whatever eUSRCMP is. "" for other indexes.
QString CreateTempName(int index, int eUSRCMP);

// A new, unused file "<prefix>….tmp" in the temporary folder (the program passes "VKM").
QString NewTempFile(const QString& prefix = QStringLiteral("VKM"));

// True for a file read from the machine: name beginning "VKM", extension "TMP" (any case),
// and its folder is the temporary folder.
bool IsThisFileFromMachine(const QString& sFullFname);

// Deletes every VKM*.tmp file of the temporary folder (and nothing anywhere else).
void DeleteVKMTemporaryFiles();

// Deletes the file if it exists. False when it exists and cannot be deleted.
bool Del(const QString& path);

// Copies a file (from a removable drive, a ".gsp" file, or the serial read) over the
// fixed temporary name of index/eUSRCMP, clearing a read-only mark on the old and the new
// copy. Returns that path, or "" when the source does not exist or the copy fails.
QString CopyFromFDToHD(int eUSRCMP, const QString& sFullFname, int index);

// Whether the destination can take a copy of the source: true for an existing destination
// and for a network path ("\\" or "//"), else when the destination's volume has at least
// the source's size free.
bool CheckFreeSpace(const QString& sScrFullFname, const QString& sDestFile);

// Waits until the folder of sPath (or sPath itself when it is a folder) exists and is
// writable: message 69 "Insert fd !" (OK / Cancel) until it is; Cancel gives false.
// Network paths are ready at once.
bool BeReadyDrive(const QString& sPath, Prompter& prompter);

// Writes the transfer text of a step image file to destination: message 93 for an empty
// destination; the text goes to "steptext.tmp" beside the image first; message 90 when
// the destination's volume is too small. The destination is replaced atomically, so a
// failing write leaves the previous file unchanged (reported as "CopyFiles", false).
bool CopyFiles(const QString& binaryImage, const QString& destination, Prompter& prompter);

// A transfer text file as bytes: copied over the fixed temporary name of index/eUSRCMP,
// parsed, and the copy then holds the parsed bytes in place of the text (its path goes to
// *imagePath). nullopt when the file is missing or cannot be parsed or written.
std::optional<QByteArray> readTransferFileToTemp(int eUSRCMP, const QString& sFullFname, int index,
                                                 Prompter& prompter, QString* imagePath = nullptr);

// Reads a transfer text file into program: copy to "eusr2.tmp"/"ecmp2.tmp", parse, write
// the bytes back as a step image, read it. True when the image was read.
bool ReadStepData(int eUSRCMP, const QString& sFullFname, CSteps& program, const CSelections& selout,
                  const CSelections& selinp, Prompter& prompter);

// Prepares a ready program for sending: its step image and then its transfer text in two
// new VKM temporary files. Returns the transfer text's path, or "" after message 50
// ("Failed to save data...") or 141 ("Failed o save as text file.").
QString transferFileForProgram(const CSteps& program, const CSelections& selout, const CSelections& selinp,
                               Prompter& prompter, const Clock& clock = systemClock());

// Prepares a customisation image for sending: the image in a new VKM temporary file, then
// its transfer text in a second one, over the customisation area (96 records) when the
// customisation data came from the machine, over the whole memory (1024 records, of which
// a customisation write sends those up to 0x1A78) when it came from a disk. Returns the
// transfer text's path, or "" after message 141 ("Failed o save as text file.").
QString transferFileForCustomImage(const QByteArray& image, bool fromMachine, Prompter& prompter);

} // namespace vkm
