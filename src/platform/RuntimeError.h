// A failure that the program's rules know by number and text.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace korvane::platform {

// what() is the description that a user sees, number() the number beside it in a message. A failure inside a handler is
// caught as this type by the handler itself or, at the latest, by Window::enter().
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, const std::string& description, std::string source = {})
        : std::runtime_error(description), number_(number), source_(std::move(source)) {}

    [[nodiscard]] int number() const noexcept { return number_; }
    // The name of the control that failed; empty for all failures but those of the serial control's state and rate.
    [[nodiscard]] const std::string& source() const noexcept { return source_; }

private:
    int number_;
    std::string source_;
};

// The numbers that more than one module raises.
inline constexpr int kErrorOverflow = 6;
inline constexpr int kErrorSubscript = 9;
inline constexpr int kErrorDivisionByZero = 11;
inline constexpr int kErrorTypeMismatch = 13;
inline constexpr int kErrorObjectNotSet = 91;
inline constexpr int kErrorInUse = 8005;         // a device that another program has open
inline constexpr int kErrorSpeedRefused = 8015;  // by the device

// For an index outside its table, a number that its type can't hold, a text that is no number, and a window or control
// that is not there.
[[noreturn]] inline void raiseSubscript() {
    throw RuntimeError(kErrorSubscript, "Subscript out of range");
}

[[noreturn]] inline void raiseOverflow() {
    throw RuntimeError(kErrorOverflow, "Overflow");
}

[[noreturn]] inline void raiseTypeMismatch() {
    throw RuntimeError(kErrorTypeMismatch, "Type mismatch");
}

[[noreturn]] inline void raiseObjectNotSet() {
    throw RuntimeError(kErrorObjectNotSet, "Object variable not set");
}

[[noreturn]] inline void raiseDivisionByZero() {
    throw RuntimeError(kErrorDivisionByZero, "Division by zero");
}

}  // namespace korvane::platform
