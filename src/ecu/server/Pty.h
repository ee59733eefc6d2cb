// A pseudo-terminal as the serial line.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "ecu/server/Descriptor.h"

namespace korvane::ecu {

// Opened in raw mode, and held open at both ends, so that the other side may come and go.
class Pty {
public:
    // Throws std::system_error when the system gives no pseudo-terminal.
    Pty();

    [[nodiscard]] const std::string& slavePath() const { return slavePath_; }
    // For poll(): readable when bytes from the other side are there.
    [[nodiscard]] int descriptor() const { return master_.number(); }
    // Appends what is there, `most` bytes at most; never waits.
    void read(std::vector<std::uint8_t>& to, std::size_t most) const;
    // Never waits: bytes that do not fit the terminal's buffer are lost, as on a line without a receiver.
    void write(std::span<const std::uint8_t> bytes) const;
    // The speed in baud that the other side has set last, also one without a constant in the system; 0 if not known.
    [[nodiscard]] int baud() const;
    // Removes the exclusive mode, in which nobody else can open the terminal. It stays set when a program is killed,
    // because the terminal is still open here.
    void clearExclusiveMark() const;

private:
    Descriptor master_;
    Descriptor slave_;
    std::string slavePath_;
};

// A link to a device, removed with this object.
class DeviceLink {
public:
    // Replaces an old link at `path`, dangling or not. Throws std::system_error when `path` can't be had, also when
    // it is anything but a link.
    DeviceLink(std::filesystem::path path, std::string target);
    DeviceLink(const DeviceLink&) = delete;
    DeviceLink& operator=(const DeviceLink&) = delete;
    ~DeviceLink();

private:
    std::filesystem::path path_;
    std::string target_;
};

}  // namespace korvane::ecu
