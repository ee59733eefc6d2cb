// What the engine is told to do.
#pragma once

#include <optional>
#include <string_view>

namespace korvane::ecu {

enum class DriveKind {
    Lap,     // start, pulls, cruise, overrun, idle, over and over
    Idle,    // start, then idle for ever
    Pull,    // full throttle through the gears, over and over
    Cruise,  // steady road speed with slow changes
    Off,     // engine stopped, ignition on
    Bench,   // exactly the speed, load and throttle given
};

struct Drive {
    DriveKind kind = DriveKind::Lap;
    // For Bench only.
    int rpm = 0;            // 0 to 12000
    double load = 0.0;      // percent as the rows of the maps count it, 0 to 160
    double throttle = 0.0;  // percent, 0 to 100

    bool operator==(const Drive&) const = default;
};

// Reads "lap", "idle", "pull", "cruise", "off" or "rpm:load:throttle" (as "3000:50:20"); nothing for any other text.
[[nodiscard]] std::optional<Drive> parseDrive(std::string_view text);

}  // namespace korvane::ecu
