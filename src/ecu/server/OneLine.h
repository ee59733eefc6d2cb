// Texts for people, whatever bytes are in them.
#pragma once

#include <string>
#include <string_view>

namespace korvane::ecu {

// `text` with a question mark for each control character, line separators of Unicode included, so that it is one line.
[[nodiscard]] std::string oneLine(std::string_view text);

}  // namespace korvane::ecu
