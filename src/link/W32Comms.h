// The rate of an open port, past the control's Settings. The source of each failure is the control's name.
#pragma once

#include <cstdint>

#include "controls/MSComm.h"

namespace korvane::link {

// The line's rate in baud. RuntimeError 8018 when the port is closed, 8021 when the device does not tell.
[[nodiscard]] std::int32_t GetPortBaud(const controls::MSComm& port);

// Forces the rate on the open device. RuntimeError 8018 when the port is closed, 8021 when the device does not tell its
// present state, 8015 when it refuses the rate.
void SetCustomBaud(controls::MSComm& port, std::int32_t rate);

}  // namespace korvane::link
