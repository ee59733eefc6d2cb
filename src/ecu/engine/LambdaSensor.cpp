#include "ecu/engine/LambdaSensor.h"

#include <algorithm>
#include <cmath>

namespace korvane::ecu {

namespace {

constexpr double kStepMs = 1000.0 * kStepSeconds;

// Where the load does not count: a fixed time and a few turns of the engine.
std::size_t stepsByTurns(double rpm) {
    return static_cast<std::size_t>(8.0 + 12000.0 / std::max(rpm, 300.0));
}

double lagSeconds(const EngineConditions& conditions, LambdaFault fault) {
    const double healthy = conditions.lambdaLagMs / 1000.0;
    return fault == LambdaFault::Slow ? std::max(10.0 * healthy, 3.0) : healthy;
}

}  // namespace

void LambdaSensor::setFault(LambdaFault fault) {
    held_ = reading();
    fault_ = fault;
}

void LambdaSensor::push(double burnt, double delayMs) {
    const double way = gas(0).way + kStepMs / std::max(delayMs, kStepMs);
    newest_ = (newest_ + 1) % kGases;
    gas(0) = {burnt, way};
    oldest_ = std::min(oldest_ + 1, kGases - 1);
    // Sums of shares of the pipe are not exact.
    constexpr double kEnd = 1.0 - 1e-6;
    while (oldest_ > 0 && way - gas(oldest_ - 1).way >= kEnd) {
        --oldest_;
    }
}

void LambdaSensor::step(double burnt, double rpm, double manifoldBar, const EngineConditions& conditions) {
    push(burnt, transportMs(conditions, rpm, manifoldBar));
    age_ = conditions.lambdaDelay ? oldest_ : stepsByTurns(rpm);
    follow(value_, gas(age_).mixture, lagSeconds(conditions, fault_));
}

double LambdaSensor::reading() const {
    switch (fault_) {
        case LambdaFault::Stuck:
            return held_;
        case LambdaFault::Lean:
            return kFreshAir;
        case LambdaFault::Rich:
        case LambdaFault::Absent:
            return kRichestReading;
        case LambdaFault::None:
        case LambdaFault::Slow:
            break;
    }
    return value_;
}

double transportMs(const EngineConditions& conditions, double rpm, double manifoldBar) {
    if (!conditions.lambdaDelay) {
        return kStepMs * static_cast<double>(stepsByTurns(rpm));
    }
    return kStepMs * std::max(std::round(conditions.lambdaDelay->msAt(manifoldBar) / kStepMs), 1.0);
}

}  // namespace korvane::ecu
