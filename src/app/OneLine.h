// The program's messages on standard error.
#pragma once

#include <string>
#include <string_view>

namespace korvane::app {

// `text` as one line of UTF-8, whatever is in it: "?" for each control character, each separator of lines and each byte
// that is part of no character.
[[nodiscard]] std::string onOneLine(std::string_view text);

// Writes `text`, on one line, to standard error behind the program's name.
void complain(std::string_view text);

}  // namespace korvane::app
