// The rate of an open port, set and read without the control's Settings. Each failure has the control's name as its
// source.
#pragma once

#include <cstdint>

#include "controls/MSComm.h"

namespace korvane::link {

// The line's rate in baud. RuntimeError 8018 when the port is closed, 8021 when the device does not report it.
[[nodiscard]] std::int32_t GetPortBaud(const controls::MSComm& port);

// Forces the rate on the open device. RuntimeError 8018 when the port is closed, 8021 when the device does not report
// its present rate, 8015 when it refuses the rate.
void SetCustomBaud(controls::MSComm& port, std::int32_t rate);

}  // namespace korvane::link
