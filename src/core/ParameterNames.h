// The ECU's named EEPROM parameters: one constant table.
#pragma once

#include <span>
#include <string_view>

namespace korvane::core {

// One named EEPROM cell. A 16-bit parameter is stored low byte first at `address` and the next cell.
struct ParameterName {
    std::string_view name;
    int address;  // 0 to 3000; 2999 and 3000 are no ECU cells (firmware version and type)
    bool is16bit;
};

// Every named parameter of the general layout, in rising order of address. Ranges of cells that have one name
// (ACCEL_OFF, BOOSTPID_SETPOINT, ...) appear with their first cell only; numbered names (IDLE_ADV0 .. IDLE_ADV4,
// INPUT1_LIMIT_OFF ..) appear one by one.
[[nodiscard]] std::span<const ParameterName> parameterNames();

// Address of the parameter named `name`, or -1.
[[nodiscard]] int addressOf(std::string_view name);

}  // namespace korvane::core
