// The places of the maps in the EEPROM.
#pragma once

namespace korvane::ecu {

enum class MapKind { Fuel, Ignition, Pwm };

inline constexpr int kMapCells = 320;  // of any map image; firmware with small maps uses the first 160
inline constexpr int kHalfCells = 160;

// The EEPROM cell of map cell `index` (0 to 319), or -1 if that map cell is not kept: the PWM table keeps cells 64 to
// 159 only. The upper halves of large maps lie in an area that has no named parameter.
[[nodiscard]] int mapAddress(MapKind kind, int index);

// What the nine bytes of the misc block occupy: cells 2 to 10.
inline constexpr int kMiscAddress = 2;
inline constexpr int kMiscBytes = 9;

}  // namespace korvane::ecu
