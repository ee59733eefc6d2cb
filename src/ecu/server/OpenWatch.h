// Who else has a device open.
#pragma once

#include <filesystem>

#include "ecu/server/Descriptor.h"

namespace korvane::ecu {

// Counts how often others open and close a file while this object exists. Where the system can't report that, it
// reports nothing.
class OpenWatch {
public:
    explicit OpenWatch(const std::filesystem::path& path);

    // For poll(): readable when something has happened; negative where nothing ever will.
    [[nodiscard]] int descriptor() const { return events_.number(); }
    // Takes note of what has happened since the last call. True if the file was closed and nobody has it open now.
    [[nodiscard]] bool lastOneLeft();

private:
    Descriptor events_;
    int watched_ = -1;
    long opened_ = 0;
};

}  // namespace korvane::ecu
