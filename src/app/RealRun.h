// Runs on the real machine: with a display, or without one.
#pragma once

#include "app/Options.h"

namespace korvane::app {

// Each runs the program until its main window is unloaded and returns the exit status. `argc` and `argv` are main's:
// the toolkit takes its own options from them.
[[nodiscard]] int runWithDisplay(const Options& options, int& argc, char** argv);
[[nodiscard]] int runHeadless(const Options& options, int& argc, char** argv);

}  // namespace korvane::app
