// Payloads of the answers that are more than a copy of memory.
#pragma once

#include <array>
#include <cstdint>

#include "ecu/engine/Calibration.h"
#include "ecu/engine/EngineModel.h"
#include "ecu/memory/FirmwareMemory.h"
#include "ecu/server/EcuSettings.h"

namespace korvane::ecu {

using LivePayload = std::array<std::uint8_t, 19>;
using IdentityPayload = std::array<std::uint8_t, 5>;
using SettingsBlock = std::array<std::uint8_t, 19>;
using DebugPayload = std::array<std::uint8_t, 8>;

// The multiplexed channels, in the order in which they take turns.
enum class MuxChannel {
    Pulse,        // injected pulse, hundredths of a millisecond
    Oil,          // oil temperature, degrees C + 50
    Speed,        // road speed, km/h
    Load,         // percent, as the rows of the maps count it
    OilPressure,  // input voltages, 5 V = 255
    FuelPressure,
    Knock,
    BoostTarget,  // kPa, absolute
    Count
};

// The sensor values at one moment, with `noise` added.
[[nodiscard]] LivePayload livePayload(const EngineModel& engine, const Calibration& calibration, int version,
                                      MuxChannel channel, Noise& noise);

// Feature word, version and type; a short identity is its first four bytes.
[[nodiscard]] IdentityPayload identityPayload(const EcuSettings& settings);

// Acceleration pump, start help, choke, voltage correction, charge time, throttle ends.
[[nodiscard]] SettingsBlock settingsBlock(const FirmwareMemory& memory);

// Ignition debug word, half-turn time, spark debug word, advance time; times in counts of 1/72 ms. The debug words
// alternate between their two good patterns (`turn` even, odd). With probability `fault` each of the two has a wrong
// bit.
[[nodiscard]] DebugPayload debugPayload(const EngineState& state, unsigned turn, double fault, Noise& noise);

}  // namespace korvane::ecu
