// What the facts about a serial device mean for the tuner.
#pragma once

#include <vector>

#include "doctor/Finding.h"
#include "platform/PortFacts.h"

namespace korvane::doctor {

// In the order in which they would keep the line from working; nothing behind a fault that hides the rest.
[[nodiscard]] std::vector<Finding> findingsOf(const platform::PortFacts& facts);

// Whether a line could be opened as far as the facts tell.
[[nodiscard]] bool mayWork(const std::vector<Finding>& findings);

}  // namespace korvane::doctor
