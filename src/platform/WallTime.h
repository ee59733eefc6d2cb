// A date and time of day, local time, as captions and file names show it.
#pragma once

#include <compare>
#include <cstdint>

namespace korvane::platform {

struct WallTime {
    int year = 2026;
    int month = 1;  // 1 to 12
    int day = 1;    // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;

    auto operator<=>(const WallTime&) const = default;
};

// Seconds since 1970-01-01 00:00:00 of the same (local) calendar, leap seconds left out, and back.
[[nodiscard]] std::int64_t secondsOf(const WallTime& time);
[[nodiscard]] WallTime wallTimeOf(std::int64_t seconds);
// Whether a clock can show it.
[[nodiscard]] bool isMoment(const WallTime& time);

}  // namespace korvane::platform
