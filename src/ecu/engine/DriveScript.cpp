#include "ecu/engine/DriveScript.h"

#include <algorithm>
#include <array>

namespace korvane::ecu {

namespace {

constexpr double kCrankingRpm = 240.0;

constexpr std::array kStart = {
    Stretch{0.2, 0.0, 0.0, 0},
    Stretch{0.7, kCrankingRpm, 0.0, 0},
    Stretch{0.3, 1150.0, 0.0, 0},
    Stretch{0.4, kIdleSpeed, 0.0, 0},
};

constexpr std::array kIdling = {Stretch{20.0, kIdleSpeed, 0.0, 0}};

constexpr std::array kStandstill = {Stretch{1.5, 0.0, 0.0, 0}};

constexpr std::array kCruising = {
    Stretch{6.0, 2000.0, 0.25, 3}, Stretch{4.0, 2900.0, 0.30, 4},  Stretch{12.0, 3000.0, 0.17, 5},
    Stretch{5.0, 3200.0, 0.24, 5}, Stretch{12.0, 3250.0, 0.19, 5}, Stretch{6.0, 2900.0, 0.10, 5},
    Stretch{8.0, 2800.0, 0.15, 5},
};

constexpr std::array kPulling = {
    Stretch{1.5, 1800.0, 0.30, 2}, Stretch{6.0, 7050.0, 1.0, 2},     Stretch{0.4, 5000.0, 0.0, 0},
    Stretch{7.0, 7000.0, 1.0, 3},  Stretch{0.4, 5300.0, 0.0, 0},     Stretch{7.0, 6800.0, 1.0, 4},
    Stretch{6.0, 3000.0, 0.0, 4},  Stretch{3.0, kIdleSpeed, 0.0, 0},
};

constexpr std::array kLapping = {
    // From standstill up through the gears with more and more throttle.
    Stretch{6.0, kIdleSpeed, 0.0, 0},
    Stretch{1.2, 1600.0, 0.18, 1},
    Stretch{4.0, 4200.0, 0.28, 1},
    Stretch{0.5, 2500.0, 0.0, 0},
    Stretch{5.0, 4600.0, 0.38, 2},
    Stretch{0.5, 3200.0, 0.0, 0},
    Stretch{6.0, 5200.0, 0.50, 3},
    Stretch{0.4, 4000.0, 0.0, 0},
    // Open road.
    Stretch{5.0, 3900.0, 0.22, 4},
    Stretch{7.0, 3300.0, 0.14, 5},
    Stretch{6.0, 2700.0, 0.11, 5},
    Stretch{5.0, 3100.0, 0.30, 5},
    Stretch{4.0, 2200.0, 0.0, 5},
    // Full throttle, reaching the limiter once.
    Stretch{0.5, 2300.0, 0.5, 2},
    Stretch{6.0, 7000.0, 1.0, 2},
    Stretch{0.4, 5000.0, 0.0, 0},
    Stretch{7.0, 7300.0, 1.0, 3},
    Stretch{0.4, 5400.0, 0.0, 0},
    Stretch{5.0, 6600.0, 1.0, 4},
    Stretch{4.5, 4200.0, 0.0, 4},
    // Bends: half throttle at all speeds.
    Stretch{4.0, 5600.0, 0.33, 3},
    Stretch{4.0, 6700.0, 0.42, 3},
    Stretch{2.5, 5000.0, 0.0, 3},
    Stretch{5.0, 6200.0, 0.60, 3},
    Stretch{3.0, 6500.0, 0.25, 3},
    Stretch{3.0, 3600.0, 0.0, 3},
    Stretch{6.0, 4800.0, 0.24, 4},
    Stretch{6.0, 5600.0, 0.19, 4},
    Stretch{3.0, 4300.0, 0.10, 4},
    // Low revs and wide open, as uphill.
    Stretch{2.0, 1400.0, 0.0, 5},
    Stretch{6.0, 2300.0, 0.75, 5},
    Stretch{5.0, 3300.0, 0.95, 5},
    Stretch{4.0, 1700.0, 0.08, 4},
    Stretch{4.0, 1300.0, 0.20, 3},
    // Coast to a stop.
    Stretch{3.0, 1900.0, 0.35, 2},
    Stretch{3.0, kIdleSpeed, 0.0, 2},
};

std::span<const Stretch> roundOf(DriveKind kind) {
    switch (kind) {
        case DriveKind::Lap:
            return kLapping;
        case DriveKind::Idle:
            return kIdling;
        case DriveKind::Pull:
            return kPulling;
        case DriveKind::Cruise:
            return kCruising;
        case DriveKind::Off:
        case DriveKind::Bench:
            break;
    }
    return kStandstill;
}

}  // namespace

void DriveScript::begin(const Drive& drive, double rpm) {
    const bool turning = rpm > kCrankingRpm;
    drive_ = drive;
    round_ = roundOf(drive.kind);
    opening_ = turning || drive.kind == DriveKind::Off ? std::span<const Stretch>() : std::span<const Stretch>(kStart);
    opened_ = opening_.empty();
    next_ = 0;
    elapsed_ = 0.0;
    stretch_ = {.seconds = 0.0, .rpm = rpm, .throttle = 0.0, .gear = 0};
}

Demand DriveScript::advance(double seconds, double idleRpm, Noise& noise) {
    if (drive_.kind == DriveKind::Bench) {
        return {.rpm = static_cast<double>(drive_.rpm),
                .throttle = drive_.throttle / 100.0,
                .bench = true,
                .load = drive_.load};
    }
    elapsed_ += seconds;
    if (elapsed_ > stretch_.seconds) {
        nextStretch(idleRpm, noise);
        elapsed_ = seconds;
    }
    const bool toIdle = stretch_.rpm == kIdleSpeed;
    const double endRpm = toIdle ? idleRpm : stretch_.rpm;
    // Near idle the idle regulator takes over.
    const double way = std::min(elapsed_ / std::min(stretch_.seconds, toIdle ? 2.5 : stretch_.seconds), 1.0);
    return {.rpm = startRpm_ + (endRpm - startRpm_) * way,
            .throttle = stretch_.throttle,
            .gear = stretch_.gear,
            .idle = toIdle && way >= 1.0,
            .cranking = !opened_ && stretch_.rpm == kCrankingRpm};
}

void DriveScript::nextStretch(double idleRpm, Noise& noise) {
    startRpm_ = stretch_.rpm == kIdleSpeed ? idleRpm : stretch_.rpm;
    if (!opened_ && next_ == opening_.size()) {
        opened_ = true;
        next_ = 0;
    }
    if (!opened_) {
        stretch_ = opening_[next_++];
        return;
    }
    stretch_ = round_[next_];
    next_ = (next_ + 1) % round_.size();
    vary(noise);
}

void DriveScript::vary(Noise& noise) {
    const double pedal = 1.0 + 0.15 * std::clamp(noise.bell(), -1.5, 1.5);
    const double pace = 1.0 + 0.03 * std::clamp(noise.bell(), -1.5, 1.5);
    if (stretch_.throttle < 1.0) {
        stretch_.throttle = std::min(stretch_.throttle * pedal, 1.0);
    }
    if (stretch_.rpm > 0.0) {
        stretch_.rpm *= pace;
    }
}

}  // namespace korvane::ecu
