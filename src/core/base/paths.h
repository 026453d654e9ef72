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

// Help samples folder: the executable's folder joined with "Help/SampleCodes", and its
// English sub-folder.
QString helpSamplesFolder();
QString helpSamplesFolderEnglish();

} // namespace paths
} // namespace vkm
