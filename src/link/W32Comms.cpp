#include "link/W32Comms.h"

namespace korvane::link {

namespace {
constexpr int kErrorReadState = 8021;
}  // namespace

std::int32_t GetPortBaud(const controls::MSComm& port) {
    const int baud = port.lineBaud();
    if (baud <= 0) {
        throw platform::RuntimeError(kErrorReadState, "Could not read current state of the port", port.path());
    }
    return baud;
}

void SetCustomBaud(controls::MSComm& port, std::int32_t rate) {
    static_cast<void>(GetPortBaud(port));
    if (!port.setLineBaud(rate)) {
        throw platform::RuntimeError(platform::kErrorSpeedRefused, "Could not set port to specified baud rate",
                                     port.path());
    }
}

}  // namespace korvane::link
