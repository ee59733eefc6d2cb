// The live channels, and what follows from them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>

#include "core/tables/Members.h"

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

template <>
inline constexpr auto kMembers<LiveValue> =
    std::tuple{Member{"name", &LiveValue::name},     Member{"description", &LiveValue::description},
               Member{"limit", &LiveValue::limit},   Member{"gain", &LiveValue::gain},
               Member{"offset", &LiveValue::offset}, Member{"value", &LiveValue::value},
               Member{"raw", &LiveValue::raw}};

template <>
inline constexpr auto kMembers<LiveTable> =
    std::tuple{Member{"liveValues", &LiveTable::liveValues},     Member{"IdlePidWord", &LiveTable::IdlePidWord},
               Member{"BoostPidWord", &LiveTable::BoostPidWord}, Member{"AccelWord", &LiveTable::AccelWord},
               Member{"MapPlace", &LiveTable::MapPlace},         Member{"PrevMapPlace", &LiveTable::PrevMapPlace},
               Member{"ThrottleMin", &LiveTable::ThrottleMin},   Member{"ThrottleMax", &LiveTable::ThrottleMax}};

}  // namespace korvane::core
