// Where a developer reads what no window shows.
#pragma once

#include <string_view>

namespace korvane::platform {

class DebugLog {
public:
    virtual ~DebugLog() = default;
    virtual void write(std::string_view line) = 0;
};

}  // namespace korvane::platform
