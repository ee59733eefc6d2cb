// The rates of the line, in baud, as the main window lists them.
#pragma once

#include <array>

namespace korvane::link {

inline constexpr std::array kSpeeds{9600, 19200, 38400, 57600, 76800, 115200, 230400};

}  // namespace korvane::link
