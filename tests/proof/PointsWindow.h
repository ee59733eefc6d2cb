// The window of the restore points, as a tuner uses it.
#pragma once

#include <string>

#include "Bench.h"
#include "keep/restore/FrmRestore.h"

namespace korvane::proof {

[[nodiscard]] keep::FrmRestore& openPoints(Desk& desk);

// Ticks what is to come back of the point, and presses the button. `point` is the name of its file.
void restorePoint(Desk& desk, const std::string& point, bool settings, bool asEdited);

// The newest point that was made for this reason.
[[nodiscard]] std::string pointOf(Desk& desk, std::string_view reason);

}  // namespace korvane::proof
