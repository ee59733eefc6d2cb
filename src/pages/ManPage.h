// The manual page of a program, in the man macros of roff.
#pragma once

#include <string>
#include <string_view>

#include "pages/Page.h"

namespace korvane::pages {

// `date` as YYYY-MM-DD.
[[nodiscard]] std::string manPage(const Page& page, std::string_view version, std::string_view date);

}  // namespace korvane::pages
