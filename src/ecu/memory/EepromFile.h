// The EEPROM as a text file: one number from 0 to 255 a line, the first line for cell 0.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace korvane::ecu {

inline constexpr int kEepromCells = 3001;

// Reads `path` into `cells`: as many cells as the file has lines, 3001 at most; blanks around a number and empty lines
// at the end are skipped. Only a regular file is opened. Returns an empty text, or one sentence that says what is wrong
// (`cells` is unchanged then).
[[nodiscard]] std::string readEepromFile(const std::filesystem::path& path, std::vector<std::uint8_t>& cells);

// Writes all of `cells` as replaceFile() does. A write that fails leaves what was there before. Returns as above.
[[nodiscard]] std::string writeEepromFile(const std::filesystem::path& path, std::span<const std::uint8_t> cells);

// Writes how often each cell has been written in the same form and way.
[[nodiscard]] std::string writeWearFile(const std::filesystem::path& path, std::span<const std::uint32_t> writes);

}  // namespace korvane::ecu
