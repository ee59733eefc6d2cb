// The speed of a terminal as a number.
#pragma once

namespace korvane::ecu {

// Output speed of the terminal behind `descriptor` in baud, also one that has no constant of its own; 0 if it is not
// known.
[[nodiscard]] int terminalSpeed(int descriptor);

}  // namespace korvane::ecu
