// Milliseconds of injection for a count of the fuel map.
#pragma once

namespace korvane::ecu {

// The firmware's timer counts the 18.432 MHz clock divided by 256, 512 or 768; modes 1 and 2 use the slower counts.
// `large` firmware has the wider choice of multipliers.
[[nodiscard]] double msPerCount(int injectionMode, int multiplier, bool large);

// Milliseconds for a count of the injection offset.
[[nodiscard]] double msPerOffsetCount();

}  // namespace korvane::ecu
