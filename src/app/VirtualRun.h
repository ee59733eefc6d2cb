// A run on the virtual machine: no display, and a clock that jumps from event to event.
#pragma once

#include "app/Options.h"

namespace korvane::app {

// Takes commands until the program has ended; returns the exit status.
[[nodiscard]] int runVirtual(const Options& options);

}  // namespace korvane::app
