// The serial driver as the serial control sees it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "platform/PortFacts.h"

namespace korvane::platform {

class LineListener {
public:
    virtual ~LineListener() = default;

    // Bytes came in, in the order of the line. Called between handlers, never from inside write().
    virtual void lineReceived(std::span<const std::uint8_t> bytes) = 0;
    // The device went away (a cable pulled out). `reason` is a sentence for the user. The line is closed by then.
    virtual void lineLost(const std::string& reason) = 0;
};

class SerialLine {
public:
    virtual ~SerialLine() = default;

    // Opens the device behind COM`port` at `baud`, 8 data bits, no parity, 1 stop bit. Raises RuntimeError with a
    // description that says why it can't be opened and what the user can do about it.
    virtual void open(int port, int baud, LineListener& listener) = 0;
    virtual void close() = 0;

    // The device that COM`port` means, for people: "/dev/ttyUSB0, USB serial adapter". Empty if there is none now.
    [[nodiscard]] virtual std::string deviceOf(int port) = 0;

    // What can be found out about the device behind COM`port` without opening it.
    [[nodiscard]] virtual PortFacts factsOf(int port) { return {.device = deviceOf(port)}; }

    virtual void write(std::span<const std::uint8_t> bytes) = 0;
    // Bytes written that have not left the machine yet.
    [[nodiscard]] virtual std::size_t pendingOutput() = 0;

    // Whether bytes may come in faster than the program can handle them. On a line in memory all bytes are wanted.
    [[nodiscard]] virtual bool mayFlood() const { return true; }

    // The line's rate, read from the open device; setBaud returns false if the device refuses the rate.
    [[nodiscard]] virtual int baud() const = 0;
    [[nodiscard]] virtual bool setBaud(int baud) = 0;
};

}  // namespace korvane::platform
