// Numbers in log files, as the system's regional settings write them.
#pragma once

#include <string>
#include <string_view>

namespace korvane::logs {

// The number that the whole of `text` is: an optional sign, digits with an optional `decimal`, an optional exponent
// behind an E. Raises RuntimeError 13 for any other text, 6 for a number that no double holds.
[[nodiscard]] double numberOf(std::string_view text, char decimal);

// Whether it is one of these numbers; `number` is then its value.
[[nodiscard]] bool isNumber(std::string_view text, char decimal, double& number);

}  // namespace korvane::logs
