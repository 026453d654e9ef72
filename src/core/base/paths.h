#pragma once

#include <QString>

namespace vkm {

// Folders and files the program finds at run time.
namespace paths {

// Folder of the running executable.
QString exeFolder();

// The setting archive "VKM.e": the path given on the command line (override), else the
// environment variable VKM_ARCHIVE, else beside the executable, else in the installed
// data folder (<prefix>/share/vkmstep). Returns the first candidate that exists, or the
// path beside the executable when none does (so that a message can name it).
QString settingArchive(const QString& override = {});

// Installed data folder (<prefix>/share/vkmstep), from the executable's location.
QString installedDataFolder();

// Per-user data folder (kept unpacked setting files, the error log).
QString userDataFolder();

// The per-user error log.
QString errorLogFile();

// A file or folder delivered with the program, named relative to its data folder
// ("Help/Eng/Index.html"): beside the executable first (the build tree, or a copy run from
// one folder), then in the installed data folder. The first that exists, or "" when
// neither does.
QString dataPath(const QString& relative);

// The user guide (HTML) and the same guide as a printable manual (PDF), as dataPath names
// them.
inline constexpr char kHelpIndex[] = "Help/Eng/Index.html";
inline constexpr char kHelpManual[] = "step_help1.pdf";

// Help samples folder ("Help/SampleCodes") and its English sub-folder, found as dataPath
// finds them; "" when missing.
QString helpSamplesFolder();
QString helpSamplesFolderEnglish();

} // namespace paths
} // namespace vkm
