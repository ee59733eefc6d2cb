// The driver: the wanted speed and throttle at each moment.
#pragma once

#include <span>

#include "ecu/engine/Drive.h"
#include "ecu/engine/Noise.h"

namespace korvane::ecu {

// One stretch of a drive. Speed runs evenly from where the stretch before ended.
struct Stretch {
    double seconds;
    double rpm;       // at the end; kIdleSpeed: whatever the idle regulator holds
    double throttle;  // 0 to 1, all along
    int gear;         // 0 is neutral
};

inline constexpr double kIdleSpeed = -1.0;

// What is asked of the engine at one moment.
struct Demand {
    double rpm = 0.0;
    double throttle = 0.0;
    int gear = 0;
    bool idle = false;  // held by the idle regulator
    bool cranking = false;
    bool bench = false;  // rpm, throttle and load hold exactly
    double load = 0.0;   // bench only, percent
};

class DriveScript {
public:
    // Begins a drive at the present speed of the engine; one that is stopped is cranked first.
    void begin(const Drive& drive, double rpm);

    // Moves on by `seconds` (far less than a stretch). Each round of a drive differs a little from the one before.
    [[nodiscard]] Demand advance(double seconds, double idleRpm, Noise& noise);

private:
    void nextStretch(double idleRpm, Noise& noise);
    void vary(Noise& noise);

    Drive drive_;
    std::span<const Stretch> opening_;
    std::span<const Stretch> round_;
    std::size_t next_ = 0;
    bool opened_ = false;
    Stretch stretch_{};
    double elapsed_ = 0.0;
    double startRpm_ = 0.0;
};

}  // namespace korvane::ecu
