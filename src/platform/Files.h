// Whole files: read with a bound, and replaced in one step.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::platform {

// The bytes of a regular file, or nothing if there is none, it can't be read or it holds more than `limit` bytes.
[[nodiscard]] std::optional<std::string> readFile(const std::filesystem::path& path, std::size_t limit);

// Puts `content`, or a copy of `source`, in the place of the file at `path` in one step: whoever reads it, at any
// moment, finds the old content or the new one, whole. On failure the old file stays as it was and the result is false.
// What is no regular file, or is marked read-only, is not replaced. A link stays, and what it leads to is replaced.
[[nodiscard]] bool replaceFile(const std::filesystem::path& path, std::string_view content);
[[nodiscard]] bool replaceFileByCopy(const std::filesystem::path& path, const std::filesystem::path& source);

// A name in `folder` that begins with `stem` and that no file bears.
[[nodiscard]] std::filesystem::path unusedName(const std::filesystem::path& folder, std::string_view stem);

}  // namespace korvane::platform
