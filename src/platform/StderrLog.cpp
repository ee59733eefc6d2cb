#include "platform/StderrLog.h"

#include <cstdlib>
#include <iostream>

namespace korvane::platform {

StderrLog::StderrLog() : enabled_(std::getenv("KORVANE_DEBUG") != nullptr) {}

void StderrLog::write(std::string_view line) {
    if (enabled_) {
        std::cerr << line << '\n';
    }
}

}  // namespace korvane::platform
