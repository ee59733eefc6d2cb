// Files that a process holds on the real machine.
#pragma once

#include <filesystem>
#include <memory>

namespace korvane::platform {

// A FileHold. On a file system without locks every file can be held by any number. Null, too, for what can't be opened.
[[nodiscard]] std::shared_ptr<const void> holdFile(const std::filesystem::path& file);

}  // namespace korvane::platform
