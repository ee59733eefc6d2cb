// A failure that the program's rules know by number and text.
#pragma once

#include <stdexcept>
#include <string>

namespace korvane::platform {

// what() is the description a user sees; number() the one that goes with it in a message. A failure inside a handler
// travels as this type to the handler's own trap, or to the door through which the event came in.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, const std::string& description) : std::runtime_error(description), number_(number) {}

    [[nodiscard]] int number() const noexcept { return number_; }

private:
    int number_;
};

// The numbers that more than one room raises.
inline constexpr int kErrorOverflow = 6;
inline constexpr int kErrorSubscript = 9;
inline constexpr int kErrorTypeMismatch = 13;
inline constexpr int kErrorObjectNotSet = 91;

}  // namespace korvane::platform
