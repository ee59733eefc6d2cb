// The EEPROM of an ECU of a given firmware type before it is changed.
#pragma once

#include <cstdint>
#include <vector>

#include "ecu/engine/EngineNeed.h"
#include "ecu/memory/FirmwareType.h"

namespace korvane::ecu {

// All 3001 cells: settings that make the modelled engine run, and its stored maps (EngineNeed.h).
[[nodiscard]] std::vector<std::uint8_t> factoryContents(const FirmwareType& type, MapFault mapFault);

}  // namespace korvane::ecu
