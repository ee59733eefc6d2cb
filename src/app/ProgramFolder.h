// The program's own folder: ini files, logs, EEPROM images.
#pragma once

#include <filesystem>

namespace korvane::app {

// Where the system wants a program's data: $XDG_DATA_HOME or ~/.local/share. When it is made for the first time, the
// names and scales of the live channels are put into it.
[[nodiscard]] std::filesystem::path defaultFolder();

// $XDG_CONFIG_HOME or ~/.config, and the preferences in it.
[[nodiscard]] std::filesystem::path defaultPreferences();

// The decimal separator of the system's regional settings, '.' or ','.
[[nodiscard]] char systemDecimal();

}  // namespace korvane::app
