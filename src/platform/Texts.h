// Comparing and trimming of texts in UTF-8.
#pragma once

#include <string_view>

namespace korvane::platform {

// `text` without the blanks and tabs at its ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

// Whether the two are the same but for upper and lower case, in the letters that English and Finnish use.
[[nodiscard]] bool sameText(std::string_view one, std::string_view other);

}  // namespace korvane::platform
