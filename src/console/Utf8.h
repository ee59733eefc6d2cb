// Walking through texts in UTF-8.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::console {

// The length of the well-formed character at `position` of `text` (1 to 4), or 0 if there is none.
[[nodiscard]] std::size_t characterLength(std::string_view text, std::size_t position);

// How many characters from `position` on stand in a JSON text as they are, one byte each.
[[nodiscard]] std::size_t plainLength(std::string_view text, std::size_t position);

// The number of the well-formed character `bytes`.
[[nodiscard]] char32_t codePointOf(std::string_view bytes);

void appendCodePoint(std::string& out, char32_t codePoint);

}  // namespace korvane::console
