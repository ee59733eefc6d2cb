// What a file on the command line is.
#pragma once

#include <filesystem>

namespace korvane::program {

enum class FileKind { Tune, LargeTune, Setpoints, EepromImage, Log };

// By its beginning, as all of them may be named "*.txt": a tune begins with the header of its fuel map, an image of the
// EEPROM has a byte in each line that an upload takes. Setpoints are known by their ending ".lam". Anything else counts
// as a log, and so does what can't be read.
[[nodiscard]] FileKind kindOf(const std::filesystem::path& file);

}  // namespace korvane::program
