// The program's messages on standard error.
#pragma once

#include <string_view>

#include "core/OneLine.h"

namespace korvane::app {

using core::onOneLine;

// Writes `text`, on one line, to standard error behind the program's name.
void complain(std::string_view text);

}  // namespace korvane::app
