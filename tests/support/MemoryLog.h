// A debug log that tests can read.
#pragma once

#include <string>
#include <vector>

#include "platform/DebugLog.h"

namespace korvane::support {

class MemoryLog : public platform::DebugLog {
public:
    void write(std::string_view line) override { lines.emplace_back(line); }

    std::vector<std::string> lines;
};

}  // namespace korvane::support
