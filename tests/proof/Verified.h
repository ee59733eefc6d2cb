// What the program says of a send that it has read back, compared with what the ECU has.
#pragma once

#include <string>

#include "Bench.h"
#include "Operations.h"
#include "WayBack.h"

namespace korvane::proof {

// What the words of the verification claim though it does not hold, in words; empty if all of it holds. "verified"
// speaks of the working memory for a map and the misc block, and of the EEPROM for settings.
[[nodiscard]] std::string untruthOf(const Operation& operation, const Reference& reference, const Bench& bench);

}  // namespace korvane::proof
