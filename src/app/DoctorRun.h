// The test of a port on the command line.
#pragma once

#include "app/Options.h"

namespace korvane::app {

// Writes what it found to standard output, a line each or as one JSON object, and returns the exit status: 0 if an ECU
// has answered, 1 if not. Before it sends it asks at the terminal, unless the options say that it may; where there is
// no terminal it sends nothing then. `argc` and `argv` are main's.
[[nodiscard]] int runDoctor(const Options& options, int& argc, char** argv);

}  // namespace korvane::app
