// Whole files: read with a bound, replaced in one step, and moved.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/DiskFlush.h"
#include "platform/WallTime.h"

namespace korvane::platform {

// The bytes of a regular file, or nothing if there is none, it can't be read or it holds more than `limit` bytes.
[[nodiscard]] std::optional<std::string> readFile(const std::filesystem::path& path, std::size_t limit);

// Gives the bytes of a file, in pieces of any size, to the sink. May be called more than once, for the whole each time.
using FileSink = std::function<void(std::string_view)>;
using FileContent = std::function<void(const FileSink&)>;

// Replaces the file at `path` by `content`, or makes the file, in one step: a reader finds at any moment the old
// content, or no file, or the whole new content. The old file's permissions stay. A link stays, and what
// it leads to is replaced. What is no regular file, is marked read-only or can't be written is not replaced. Nothing is
// changed on failure; the result says why with the value of an errno, and is false (no error) when it is done.
//
// The content is written beside the file under its name, cut if need be, with ".korvane-" and 12 hexadecimal digits
// behind it. Such files, left behind by a program that was killed, are removed before. If that happens to a file that a
// running program is writing, it is made anew, up to three times in all.
//
// `toDisk` as NewFile::takePlace() takes it.
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& path, const FileContent& content,
                                          const DiskFlush& toDisk = {});
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& path, std::string_view content,
                                          const DiskFlush& toDisk = {});

// Gives the regular file at `from`, or the link to one, the name `to`. A file of that name is not replaced: the result
// is then std::errc::file_exists. What is no regular file is not moved.
[[nodiscard]] std::error_code moveFile(const std::filesystem::path& from, const std::filesystem::path& to);

// When the file was written last, in local time. Where `error` says why not, a time without meaning.
[[nodiscard]] WallTime lastWrite(const std::filesystem::path& path, std::error_code& error);

inline constexpr std::string_view kHexDigits = "0123456789abcdef";
inline constexpr std::size_t kUnusedDigits = 12;

// A name in `folder` that no file has: `stem` with kUnusedDigits hexadecimal digits behind it.
[[nodiscard]] std::filesystem::path unusedName(const std::filesystem::path& folder, std::string_view stem);

}  // namespace korvane::platform
