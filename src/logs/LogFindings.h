// A text about a log that has been loaded, for the user. Changes nothing.
#pragma once

#include <string>

#include "logs/clsTXTdata.h"

namespace korvane::logs {

// One line: the file's name, rows, time from and to, rows a second, and all that is suspicious, each with the first row
// that shows it. Empty before the first load.
[[nodiscard]] std::string findingsOf(const clsTXTdata& log);

}  // namespace korvane::logs
