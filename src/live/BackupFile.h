// The names of EEPROM backups: "EEPROM_hh_mm_ss.txt", and "EEPROM_yyyy-mm-dd_hh_mm_ss.txt" for an older one whose name
// a new one needs.
#pragma once

#include <filesystem>

#include "platform/WallTime.h"

namespace korvane::live {

// The path of a backup made at `now`, where no file is now. A backup of an earlier day that had this name is renamed
// with the date of its last write, and "_2" or more behind it if that name is taken. Raises RuntimeError if that fails:
// then the file keeps its name.
[[nodiscard]] std::filesystem::path takeBackupPath(const std::filesystem::path& folder, const platform::WallTime& now);

}  // namespace korvane::live
