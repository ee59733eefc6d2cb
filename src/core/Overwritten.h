// What of the ECU an operation is about to overwrite.
#pragma once

#include <cstdint>
#include <vector>

namespace korvane::core {

struct Overwritten {
    enum class Part : std::uint8_t { Other, Fuel, Ignition, Pwm, Misc, Settings };

    Part part = Part::Other;
    std::vector<std::int32_t> addresses = {};  // of settings; those outside the EEPROM count for nothing
};

}  // namespace korvane::core
