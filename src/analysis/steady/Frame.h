// One live frame, as the steady agent takes it.
#pragma once

#include <cstddef>

namespace korvane::steady {

// Bits of the ECU's status word that matter here.
enum class Lamp : unsigned {
    Choke = 1,
    StartHelp = 2,
    Injection = 3,
    AccelPump = 4,
    MotorBrake = 10,
    Launch = 11,
    Stopped = 12,
    Running = 13,
    RpmLimiter = 15
};

struct Frame {
    double seconds = 0.0;  // of a clock that never goes back
    double rpm = 0.0;
    double load = 0.0;      // per cent, as the rows of the map count it
    double throttle = 0.0;  // per cent; means nothing unless SteadySetup::throttleKnown
    double lambda = 0.0;    // as an air-fuel ratio
    double duty = 0.0;      // of the injectors, in counts: 256 is always open
    double waterC = 0.0;
    std::size_t cell = 0;  // that the ECU says it uses
    unsigned lamps = 0;

    [[nodiscard]] bool lit(Lamp lamp) const { return ((lamps >> static_cast<unsigned>(lamp)) & 1U) != 0; }
};

}  // namespace korvane::steady
