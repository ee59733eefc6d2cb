// What the console drives.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "console/names/Names.h"
#include "controls/Window.h"
#include "platform/Machine.h"
#include "platform/QueuedDialogs.h"
#include "platform/TappedLine.h"

namespace korvane::console {

// The virtual ECU, changed while it runs.
class EcuControl {
public:
    virtual ~EcuControl() = default;

    // What is wrong with the key or the value, as a sentence; empty when it is done.
    [[nodiscard]] virtual std::string set(const std::string& key, const std::string& value) = 0;
    // Sparks that it has fired to clean the plugs, since the start.
    [[nodiscard]] virtual long sparksFired() const = 0;
    // How often each cell of its EEPROM has been written, since the start.
    [[nodiscard]] virtual std::vector<std::uint32_t> writes() const { return {}; }
};

// Pictures of windows on a display.
class Screenshots {
public:
    virtual ~Screenshots() = default;

    // Writes the window's picture to `file` (PNG). What went wrong, as a sentence; empty when it is done.
    [[nodiscard]] virtual std::string take(controls::Window& window, const std::filesystem::path& file) = 0;
};

// All of it outlives the console.
struct ConsoleContext {
    platform::Machine& machine;
    platform::QueuedDialogs& dialogs;
    platform::TappedLine& tap;
    const Names& names;
    EcuControl* ecu = nullptr;           // null when the line does not lead to the virtual ECU
    Screenshots* screenshots = nullptr;  // null without a display
    std::ostream& errors;                // for commands that run by themselves
    // Closes the main window as its close box would, and returns when the program has ended.
    std::function<void()> quit;
    // Whether the main window has been unloaded.
    std::function<bool()> programEnded;
};

}  // namespace korvane::console
