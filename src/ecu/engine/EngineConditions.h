// What makes the engine hard to tune, and its lambda sensor hard to trust.
#pragma once

#include <optional>
#include <string_view>

namespace korvane::ecu {

// How long the exhaust takes from the cylinders to the sensor: the less the engine breathes, the longer.
struct TransportDelay {
    double idleMs = 0.0;      // at kIdleBar and below
    double fullLoadMs = 0.0;  // at kFullLoadBar and above; in between evenly

    static constexpr double kIdleBar = 0.35;
    static constexpr double kFullLoadBar = 1.0;
    static constexpr double kLongestMs = 2000.0;

    [[nodiscard]] double msAt(double manifoldBar) const;

    bool operator==(const TransportDelay&) const = default;
};

// Reads "400:80": milliseconds at idle and at full load, 0 to kLongestMs each; nothing for any other text.
[[nodiscard]] std::optional<TransportDelay> parseTransportDelay(std::string_view text);

enum class LambdaFault {
    None,
    Stuck,   // reads for ever what it read when the fault began
    Lean,    // its output is at the upper end
    Rich,    // its output is at the lower end
    Absent,  // unplugged: the input is drawn to 0 V and picks up a little noise
    Slow,    // its lag is ten times as long, and at least 3 s
};

// The defaults are an engine that is easy to tune.
struct EngineConditions {
    bool interpolate = false;  // fuel between the four nearest cells, need as with needByPlace
    bool needByPlace = false;  // of fuel, at the exact speed and pressure; else that of the cell's centre
    std::optional<TransportDelay> lambdaDelay;  // nothing: by the turns of the engine
    double lambdaLagMs = 60.0;                  // time constant of the sensor
    std::optional<double> lambdaNoise;          // percent of the reading; nothing: 0.06 everywhere
    LambdaFault lambdaFault = LambdaFault::None;
    double wetting = 0.0;        // percent of the fuel that wets the walls of the intake
    double wettingTime = 0.5;    // time constant with which it evaporates, seconds
    double enrichment = 0.0;     // percent more fuel when the throttle is opened quickly; it fades
    bool coldStart = false;      // winter: cold at the start, long to warm up, and lean while it does
    double throttleNoise = 0.0;  // of the throttle sensor, percent of its travel

    bool operator==(const EngineConditions&) const = default;
};

}  // namespace korvane::ecu
