// A debug log that tests can read.
#pragma once

#include <string>
#include <vector>

#include "platform/DebugLog.h"

namespace korvane::platform {

class MemoryLog : public DebugLog {
public:
    void write(std::string_view line) override { lines.emplace_back(line); }

    std::vector<std::string> lines;
};

}  // namespace korvane::platform
