// Text inside the program is UTF-8; files from older machines may be Windows-1252.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace korvane::core {

// The length of the well-formed character at the front of `bytes` (1 to 4), or 0 if there is none.
[[nodiscard]] std::size_t characterSize(std::string_view bytes);

// The number of the well-formed character `bytes`.
[[nodiscard]] char32_t codePointOf(std::string_view bytes);

void appendCodePoint(std::string& text, char32_t codePoint);

// Whether `bytes` is well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
[[nodiscard]] bool isUtf8(std::string_view bytes);

// The five bytes that Windows-1252 leaves open become the control characters of the same number.
[[nodiscard]] std::string fromWindows1252(std::string_view bytes);

// The text of a file as UTF-8, whichever of the two it was written in, without a byte order mark.
[[nodiscard]] std::string decode(std::string_view bytes);

}  // namespace korvane::core
