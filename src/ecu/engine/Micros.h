// Time as the virtual ECU counts it.
#pragma once

#include <cstdint>

namespace korvane::ecu {

// Microseconds since an arbitrary zero that the caller chooses. Never decreasing from call to call; within +-290 years.
using Micros = std::int64_t;

}  // namespace korvane::ecu
