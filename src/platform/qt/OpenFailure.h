// Why a port can't be opened, as a failure that tells the user what to do.
#pragma once

#include <string>
#include <string_view>

#include "platform/PortFacts.h"
#include "platform/RuntimeError.h"

namespace korvane::platform {

enum class OpenFailure { NothingFound, NoDeviceForPort, Missing, NoPermission, InUse, RefusedRate, Other };

// "COM3 (/dev/ttyUSB0)", or the path alone.
[[nodiscard]] std::string deviceName(int port, const std::string& path);

struct OpenAttempt {
    int port = 0;
    int baud = 0;
    std::string path;    // empty if the port has no device
    std::string detail;  // NoDeviceForPort: the ports that do have one; Other: the system's reason
};

// Numbers: 8002 no such device, 8005 in use, 8010 no permission, 8012 otherwise, 8015 the rate is refused.
[[nodiscard]] RuntimeError openError(OpenFailure failure, const OpenAttempt& attempt);

}  // namespace korvane::platform
