// The wait until what was written to a file, or the names in a folder, would outlast a loss of power.
#pragma once

#include <filesystem>
#include <functional>
#include <system_error>

namespace korvane::platform {

// The result is false (no error) when the bytes are on the disk. An empty function: nothing waits.
using DiskFlush = std::function<std::error_code(const std::filesystem::path& fileOrFolder)>;

}  // namespace korvane::platform
