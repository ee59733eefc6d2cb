// Any bytes as one line of text.
#pragma once

#include <string>
#include <string_view>

namespace korvane::core {

// `text` as one line of UTF-8, whatever is in it: "?" for each control character, each separator of lines and each byte
// that is part of no character.
[[nodiscard]] std::string onOneLine(std::string_view text);

}  // namespace korvane::core
