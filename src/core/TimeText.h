// A date and time as captions, cells and file names show it.
#pragma once

#include <string>

#include "platform/WallTime.h"

namespace korvane::core {

[[nodiscard]] std::string timeText(const platform::WallTime& time);            // "hh:mm:ss"
[[nodiscard]] std::string dateText(const platform::WallTime& time);            // "yyyy-mm-dd"
[[nodiscard]] std::string dateStamp(const platform::WallTime& time);           // "yymmdd"
[[nodiscard]] std::string hourMinuteStamp(const platform::WallTime& time);     // "_hhmm"
[[nodiscard]] std::string hourMinuteFileText(const platform::WallTime& time);  // "hh_mm"
[[nodiscard]] std::string timeFileText(const platform::WallTime& time);        // "hh_mm_ss"

}  // namespace korvane::core
