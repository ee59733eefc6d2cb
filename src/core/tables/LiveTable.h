// The live channels, and what follows from them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace korvane::core {

inline constexpr std::size_t kChannelCount = 31;

// One live channel: value = (raw + offset) * gain, but for the few channels that have rules of their own.
struct LiveValue {
    std::string name;
    std::string description;
    double limit = 10000.0;
    double gain = 1.0;
    double offset = 0.0;
    double value = 0.0;
    double raw = 0.0;
};

struct LiveTable {
    std::array<LiveValue, kChannelCount> liveValues;
    std::int32_t IdlePidWord = 0;
    std::int32_t BoostPidWord = 0;
    std::int16_t AccelWord = 0;
    std::int16_t MapPlace = 0;      // the map cell that the ECU runs in
    std::int16_t PrevMapPlace = 0;  // the one marked last
    std::int16_t ThrottleMin = 0;   // the throttle's byte when closed and when fully open
    std::int16_t ThrottleMax = 0;
};

}  // namespace korvane::core
