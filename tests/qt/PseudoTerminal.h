// A serial line whose other end the test holds.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace korvane::platform {

class PseudoTerminal {
public:
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    // The device that the program opens.
    [[nodiscard]] const std::string& path() const { return path_; }

    // The device's end. The system transfers the bytes in its own time, so the calls wait for what is to come, two
    // seconds at most and without any event loop.
    void send(std::string_view bytes) const;
    void waitUntilSent() const;  // a line that ends with a line feed, to a device that nobody has opened yet
    [[nodiscard]] std::string received() const;  // so far
    [[nodiscard]] std::string received(std::size_t count) const;
    void hangUp();  // as when the cable is pulled out

    // The rate as the system reports it.
    [[nodiscard]] int rate() const;

    // Whether no program holds the device's lock.
    [[nodiscard]] bool isFree() const;

    // Another handle of the device that the program opens.
    [[nodiscard]] int otherHandle() const { return other_; }

private:
    int master_ = -1;
    int other_ = -1;
    std::string path_;
};

}  // namespace korvane::platform
