// A debug log on the standard error stream, for developers: silent unless KORVANE_DEBUG is set.
#pragma once

#include "platform/DebugLog.h"

namespace korvane::platform {

class StderrLog : public DebugLog {
public:
    // Reads the environment once, here.
    StderrLog();

    void write(std::string_view line) override;

private:
    bool enabled_;
};

}  // namespace korvane::platform
