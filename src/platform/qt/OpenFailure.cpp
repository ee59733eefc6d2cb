#include "platform/qt/OpenFailure.h"

namespace korvane::platform {

namespace {

constexpr int kErrorNoDevice = 8002;
constexpr int kErrorNoPermission = 8010;
constexpr int kErrorCannotOpen = 8012;

}  // namespace

std::string deviceName(int port, const std::string& path) {
    return port == kPortOfPath ? path : "COM" + std::to_string(port) + " (" + path + ")";
}

RuntimeError openError(OpenFailure failure, const OpenAttempt& attempt) {
    const std::string port = "COM" + std::to_string(attempt.port);
    const std::string device = deviceName(attempt.port, attempt.path);
    const std::string orNameIt = "start the program with --port " + port + "=/dev/...";
    switch (failure) {
        case OpenFailure::NothingFound:
            return {kErrorNoDevice,
                    "No device stands for " + port + ": no serial port was found. Plug the adapter in, or " + orNameIt};
        case OpenFailure::NoDeviceForPort:
            return {kErrorNoDevice, "No device stands for " + port + ". Found: " + attempt.detail +
                                        ". Choose one of these, plug the adapter in, or " + orNameIt};
        case OpenFailure::Missing:
            return {kErrorNoDevice, device + ": no such device. Plug the adapter in, or " + orNameIt};
        case OpenFailure::NoPermission:
            return {kErrorNoPermission,
                    device +
                        ": no permission. Join the dialout group with \"sudo usermod -aG dialout $USER\", then log "
                        "out and in again."};
        case OpenFailure::InUse:
            return {kErrorInUse, device + ": in use by another program. Close that program and try again."};
        case OpenFailure::RefusedRate:
            return {kErrorSpeedRefused,
                    device + ": the device refuses " + std::to_string(attempt.baud) + " baud. Choose another speed."};
        case OpenFailure::Other:
            break;
    }
    return {kErrorCannotOpen, device + " can't be opened: " + attempt.detail + ". Is it a serial port?"};
}

}  // namespace korvane::platform
