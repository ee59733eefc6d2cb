// The exhaust from the cylinders to the lambda sensor, and the sensor.
#pragma once

#include <array>
#include <cstddef>

#include "ecu/engine/EngineConditions.h"
#include "ecu/engine/Step.h"

namespace korvane::ecu {

inline constexpr double kRichestReading = 10.0;
inline constexpr double kFreshAir = 20.0;  // the leanest

// The gas moves through the pipe in the order in which it was burnt, by the delay that holds at each moment.
class LambdaSensor {
public:
    // What happens to the reading from now on.
    void setFault(LambdaFault fault);
    // One step; a mixture of `burnt` leaves the cylinders.
    void step(double burnt, double rpm, double manifoldBar, const EngineConditions& conditions);

    // 10 to 20, without noise.
    [[nodiscard]] double reading() const;
    // Age of the gas at the sensor.
    [[nodiscard]] double delayMs() const { return 1000.0 * kStepSeconds * static_cast<double>(age_); }

private:
    struct Gas {
        double mixture = kFreshAir;
        double way = 0.0;  // that all gas had gone when this was burnt; the pipe's length is 1
    };
    static constexpr std::size_t kGases = 512;
    static_assert((kGases - 2) * kStepSeconds * 1000.0 > TransportDelay::kLongestMs);

    [[nodiscard]] Gas& gas(std::size_t age) { return pipe_.at((newest_ + kGases - age) % kGases); }
    void push(double burnt, double delayMs);

    std::array<Gas, kGases> pipe_{};
    std::size_t newest_ = 0;
    std::size_t oldest_ = 0;  // age of the gas that is arriving, by the way it has gone
    std::size_t age_ = 0;     // of what the sensor sees
    double value_ = kFreshAir;
    double held_ = kFreshAir;
    LambdaFault fault_ = LambdaFault::None;
};

// Milliseconds from the cylinders to the sensor at steady speed and load, in whole steps.
[[nodiscard]] double transportMs(const EngineConditions& conditions, double rpm, double manifoldBar);

}  // namespace korvane::ecu
