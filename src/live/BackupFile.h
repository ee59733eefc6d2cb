// The names of EEPROM backups: "EEPROM_hh_mm_ss.txt", and "EEPROM_yyyy-mm-dd_hh_mm_ss.txt" for one whose name another
// took.
#pragma once

#include <filesystem>

#include "platform/WallTime.h"

namespace korvane::live {

// The path of a backup made at `now`, where no file is now. A backup of an earlier day that was there has got the day
// of its last write into its name, and "_2" or more behind it if a file bears that name. Raises RuntimeError if that
// fails: then the file is where it was.
[[nodiscard]] std::filesystem::path takeBackupPath(const std::filesystem::path& folder, const platform::WallTime& now);

}  // namespace korvane::live
