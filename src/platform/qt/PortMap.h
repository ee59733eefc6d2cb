// Which devices COM1 to COM15 mean.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/EventPump.h"
#include "platform/PreferencesStore.h"

namespace korvane::platform {

inline constexpr int kPortCount = 15;

struct FoundPort {
    std::string path;         // "/dev/ttyUSB0"
    std::string byId;         // "/dev/serial/by-id/usb-...", empty if the device has no such link
    std::string description;  // "FT232R USB UART", may be empty
    bool isUsb = false;
};

// Device paths by port number.
using FixedPorts = std::map<int, std::string>;

// `options`, and for the numbers that they leave out what the preferences name under "Ports".
[[nodiscard]] FixedPorts fixedPorts(const PreferencesStore& preferences, FixedPorts options);

// The links in `folder` by the device that they lead to.
[[nodiscard]] std::map<std::string, std::string> linksByDevice(const std::filesystem::path& folder);

// The serial devices of this computer, in no order.
[[nodiscard]] std::vector<FoundPort> findSerialPorts();

class PortMap {
public:
    using Finder = std::function<std::vector<FoundPort>()>;

    // `find` is asked anew when the last answer is more than a second old.
    PortMap(const EventPump& pump, FixedPorts fixed, Finder find = findSerialPorts);

    // The fixed devices have their given numbers. The found ones get the other numbers in order: USB adapters first, by
    // their link or else their path, then the other ports.
    [[nodiscard]] std::map<int, FoundPort> ports();

    // The device path of COM`port`, empty if none.
    [[nodiscard]] std::string pathOf(int port);
    // "/dev/ttyUSB0, FT232R USB UART", empty if the port has no device.
    [[nodiscard]] std::string describe(int port);

private:
    const std::vector<FoundPort>& found();

    const EventPump& pump_;
    FixedPorts fixed_;
    Finder find_;
    std::vector<FoundPort> found_;
    std::optional<Micros> foundAt_;
};

}  // namespace korvane::platform
