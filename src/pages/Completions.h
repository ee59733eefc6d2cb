// What the shells complete behind a program's name.
#pragma once

#include <string>

#include "pages/Page.h"

namespace korvane::pages {

[[nodiscard]] std::string bashCompletion(const Page& page);
[[nodiscard]] std::string zshCompletion(const Page& page);
[[nodiscard]] std::string fishCompletion(const Page& page);

}  // namespace korvane::pages
