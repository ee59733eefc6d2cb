// The program's own ini files. Unlike others they hold bare lines under their headers, found by position, not by key:
//
//     ; a comment
//     [Par0]
//     RPM
//     Engine speed    ; a comment again
//
// A section begins at its header, found without regard to case, and ends at the next line that begins with "[".
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::core {

// What is larger is no ini file of the program. It is read once for each of its sections, so the limit is tight.
inline constexpr std::size_t kLargestIniFile = std::size_t{1} << 20U;

inline constexpr std::int16_t kIniFileMissing = 1;
inline constexpr std::int16_t kIniSectionMissing = 2;

// The lines of a section, trimmed, without comments and empty lines; brackets around `section` may be left out. `error`
// becomes 0, kIniFileMissing or kIniSectionMissing, and with the latter two the result is one empty line. A file that
// can't be read or is too large has no sections.
[[nodiscard]] std::vector<std::string> ReadIniSection(const std::filesystem::path& file, std::string_view section,
                                                      std::int16_t& error);

// CannotOpen: the file can't be read, or is missing and can't be made. CopyFailed: the new content can't be written.
enum class IniStatus : int { Done = 0, NoArray = 1, NoLines = 2, CannotOpen = 3, CopyFailed = 4 };

// Replaces the section or adds it behind an empty line at the end, and leaves the other sections as they are, trimmed.
// `lines` is empty where a caller's value is no array. With every status but Done the file keeps its old content,
// or stays missing. It is replaced in one step.
[[nodiscard]] IniStatus WriteIniSection(const std::filesystem::path& file, std::string_view section,
                                        std::optional<std::span<const std::string>> lines);

// An unused name in the system's folder for temporary files; an empty path if the system has none.
[[nodiscard]] std::filesystem::path TempFileName();

// Deletes the file if there is one, a read-only one too. A folder stays. Failures are not reported.
void KillFile(const std::filesystem::path& path);

// `text` with a blank for each "-" and 9 - d for each digit d: "-12.5" gives " 87.4".
[[nodiscard]] std::string ComplementDigits(std::string_view text);

}  // namespace korvane::core
