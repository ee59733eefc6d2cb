// Finds out what the system knows of a serial device.
#pragma once

#include <filesystem>
#include <string>

#include "platform/PortFacts.h"

namespace korvane::platform {

// Where the system keeps what it knows.
struct SystemFolders {
    std::filesystem::path processes = "/proc";
    std::filesystem::path devices = "/sys";
    std::filesystem::path notes = "/run/udev/data";  // of the device manager, "c188:0" for the device of these numbers
};

// Opens nothing but files of these folders, and sends nothing. `others` stays empty. A folder that can't be read has no
// facts.
[[nodiscard]] PortFacts probePort(const std::string& device, const SystemFolders& folders = {});

}  // namespace korvane::platform
