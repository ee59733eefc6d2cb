// What is known of that which an operation is about to overwrite.
#pragma once

#include <string>
#include <string_view>

#include "core/Overwritten.h"
#include "keep/point/Snapshot.h"

namespace korvane::keep {

enum class HowMuch : std::uint8_t { Nothing, Some, All };

// How much of it a point has: of a map all cells that an ECU of this type has of it, of the misc block what the ECU ran
// on or what its EEPROM has. Of Part::Other nobody knows what it is, and all counts as known.
[[nodiscard]] HowMuch knownOf(const core::Overwritten& overwritten, const Snapshot& point);

// "The fuel map of the ECU was not read: no restore point has what was overwritten." `older` is when the newest point
// that has it was made and why; empty if there is none.
[[nodiscard]] std::string overwritingText(const core::Overwritten& overwritten, std::string_view what, HowMuch known,
                                          const std::string& older);

}  // namespace korvane::keep
