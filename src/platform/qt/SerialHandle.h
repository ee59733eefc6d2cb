// What the toolkit does not report about an open serial device, asked of the system itself.
#pragma once

#include <cstddef>
#include <cstdint>

namespace korvane::platform {

// The rate in baud that the device runs at; 0 if it does not report one.
[[nodiscard]] int deviceRate(int handle);

// Whether a device at `actual` baud can communicate with one at `asked`: clock dividers rarely give a rate exactly, and
// receivers accept a rate that is 3 % off.
[[nodiscard]] constexpr bool isSameRate(int asked, int actual) {
    const std::int64_t difference = std::int64_t{actual} - asked;
    return actual > 0 && (difference < 0 ? -difference : difference) * 100 <= std::int64_t{asked} * 3;
}

// Bytes that wait in the driver's output queue; 0 if it does not report them.
[[nodiscard]] std::size_t queuedOutput(int handle);

// Whether the device of the handle has been removed.
[[nodiscard]] bool isHungUp(int handle);

// Keeps every program that asks for this lock, another run of this one included, from using the device until the
// handle is closed. False if another program has it.
[[nodiscard]] bool lockDevice(int handle);

}  // namespace korvane::platform
