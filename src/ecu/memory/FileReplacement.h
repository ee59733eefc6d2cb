// Files that are written whole or not at all.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace korvane::ecu {

// Twelve random hexadecimal digits.
[[nodiscard]] std::string randomDigits();

// Functions that a test may replace.
struct ReplacementSteps {
    std::function<std::string()> digits = randomDigits;
    std::function<void(const std::filesystem::path&)> written = [](const std::filesystem::path&) {};
};

// Puts `content` in the place of the file at `path`, which keeps its mode, or makes a new file. A link at `path` stays,
// and what it leads to is replaced. The content is first written to a file beside it, with the name of the file (cut to
// fit), ".korvane-" and digits; such files of an earlier run that was killed are removed. What is no regular file or is
// marked read-only is not replaced. Returns an empty text, or the reason why the old file is still there.
[[nodiscard]] std::string replaceFile(const std::filesystem::path& path, std::string_view content,
                                      const ReplacementSteps& steps = {});

}  // namespace korvane::ecu
