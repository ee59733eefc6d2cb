// The only clock of the program and the only source of its events.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/WallTime.h"

namespace korvane::platform {

// Microseconds since the start of the program.
using Micros = std::int64_t;
inline constexpr Micros kMicrosPerMilli = 1000;
inline constexpr Micros kMicrosPerSecond = 1000 * kMicrosPerMilli;

// A call at one moment. Belongs to the pump that made it and must not outlive it.
class Alarm {
public:
    virtual ~Alarm() = default;

    // Calls once when the clock reaches `due` (at the next chance if that has passed). Replaces an earlier moment.
    virtual void callAt(Micros due) = 0;
    virtual void cancel() = 0;
};

// Program: handlers of the program, which do not run while the program blocks or while a message box is shown.
// Command: orders from outside, of a script or the system; they do not run while the program blocks. Device: what
// happens outside the program (a byte arrives on a line in memory); it may always run and calls no handler.
enum class AlarmKind { Program, Command, Device };

class EventPump {
public:
    virtual ~EventPump() = default;

    [[nodiscard]] virtual Micros now() const = 0;
    [[nodiscard]] virtual WallTime wallTime() const = 0;

    // Lets every event that is due run once.
    virtual void pump() = 0;
    // Lets events run for `milliseconds`.
    virtual void wait(int milliseconds) = 0;
    // Blocks: no handler of the program runs for `milliseconds`. A real machine goes on showing its windows.
    virtual void sleep(int milliseconds) = 0;
    // Calls once when all events have run that are due by then, those included that fall due while others take their
    // time, and the handlers that they set off have returned. Where events never end it calls after `patience`. On a
    // virtual machine it calls before the return, on a real one later, from the event loop.
    virtual void whenSettled(std::function<void()> call, Micros patience) = 0;

    [[nodiscard]] virtual std::unique_ptr<Alarm> makeAlarm(std::function<void()> call,
                                                           AlarmKind kind = AlarmKind::Program) = 0;

    [[nodiscard]] std::int64_t milliseconds() const { return now() / kMicrosPerMilli; }
};

}  // namespace korvane::platform
