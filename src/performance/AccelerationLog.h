// The log of pulls beside a car file: its name with ".txt" behind it, one line a pull.
//
//     2026-01-05 12:00:09    Speed: 50.9 - 132.6 km/h (2504 - 6518) Rpm:  Time: 5.15 s
#pragma once

#include <filesystem>
#include <string_view>

#include "platform/WallTime.h"

namespace korvane::performance {

// Raises RuntimeError if it can't be written.
void appendToLog(const std::filesystem::path& carFile, const platform::WallTime& when, std::string_view text);

}  // namespace korvane::performance
