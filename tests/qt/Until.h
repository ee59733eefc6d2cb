// Waiting for what the system does in its own time.
#pragma once

#include <functional>

#include "platform/EventPump.h"

namespace korvane::platform {

// Lets events run until `condition` holds; false if it does not within two seconds.
[[nodiscard]] inline bool until(EventPump& pump, const std::function<bool()>& condition) {
    const Micros end = pump.now() + 2'000'000;
    while (!condition() && pump.now() < end) {
        pump.wait(1);
    }
    return condition();
}

}  // namespace korvane::platform
