// The live channels by name.
#pragma once

#include <cstddef>
#include <cstdint>

namespace korvane::core {

// The value is the channel's number: its index in liveValues.
enum class LiveChannel : std::uint8_t {
    Rpm,
    WaterTemperature,
    AirTemperature,
    Voltage,
    Pressure,  // in the manifold, bar
    Throttle,  // percent
    Lambda,
    InjectionDuty,
    IdlePid,
    BoostPid,
    KType,  // a thermocouple's temperature
    IgnitionAdvance,
    Input0,  // the first of sixteen that take turns in the frames
    Input1,
    Input2,
    Input3,
    Input4,
    Input5,
    Input6,
    Input7,
    Accel,     // row of the acceleration enrichment
    MapPlace,  // cell of the map that the ECU runs in
    Flags,     // a bit for each lamp
    UpdateSpeed,
    Input12,
    Input13,
    Input14,
    Input15,
    Spare28,
    Spare29,
    Spare30,
};

[[nodiscard]] constexpr std::size_t indexOf(LiveChannel channel) {
    return static_cast<std::size_t>(channel);
}

// The channel of input 0 to 15. Inputs 8 to 11 write to the channels from Accel to UpdateSpeed.
[[nodiscard]] constexpr LiveChannel inputChannel(int input) {
    return static_cast<LiveChannel>(static_cast<int>(LiveChannel::Input0) + input);
}

}  // namespace korvane::core
