// The disk of the real machine.
#pragma once

#include <filesystem>
#include <system_error>

namespace korvane::platform {

// A DiskFlush.
[[nodiscard]] std::error_code flushToDisk(const std::filesystem::path& fileOrFolder);

}  // namespace korvane::platform
