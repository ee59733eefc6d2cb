// The EEPROM as a box of a given firmware type has it before anybody changes it.
#pragma once

#include <cstdint>
#include <vector>

#include "ecu/memory/FirmwareType.h"

namespace korvane::ecu {

// All 3001 cells: settings that make the modelled engine run, and its stored maps (EngineNeed.h).
[[nodiscard]] std::vector<std::uint8_t> factoryContents(const FirmwareType& type);

}  // namespace korvane::ecu
