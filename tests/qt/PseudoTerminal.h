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

    // The device's end: send puts bytes on the line, received takes what has come so far, hangUp pulls the cable.
    void send(std::string_view bytes) const;
    [[nodiscard]] std::string received() const;
    void hangUp();

    // The rate as the system tells it.
    [[nodiscard]] int rate() const;

    // Another handle of the device that the program opens.
    [[nodiscard]] int otherHandle() const { return other_; }

private:
    int master_ = -1;
    int other_ = -1;
    std::string path_;
};

}  // namespace korvane::platform
