// Text at the end of a file that grows: a log.
#pragma once

#include <filesystem>
#include <string_view>

namespace korvane::core {

// Adds `text` to the file, or makes the file. Raises RuntimeError on failure, and the file is then as it was before: a
// part of the text at its end would become a part of the next line.
void appendText(const std::filesystem::path& path, std::string_view text);

}  // namespace korvane::core
