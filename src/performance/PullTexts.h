// The lines that a pull leaves in the list.
#pragma once

#include <string>

#include "performance/PullTimer.h"

namespace korvane::performance {

[[nodiscard]] std::string startedText(const Reading& reading);
[[nodiscard]] std::string stoppedText(const Pull& pull);
[[nodiscard]] std::string summaryText(const Pull& pull);
// What the label of the running time shows: whole milliseconds.
[[nodiscard]] std::string elapsedText(platform::Micros elapsed);

}  // namespace korvane::performance
