#pragma once

#include <QString>

namespace vkm {

class Settings;

// Applies the "General"/"CodePage" value when the store has one. The value is not
// created at start: most users never need anything but the machine's own code page.
// Returns false when the store names a code page that is not known (the current one
// stays in force).
bool applyCodePageSetting(const Settings& settings);

} // namespace vkm
