// What the steady agent is told before it starts.
#pragma once

#include <array>
#include <cstdint>

#include "analysis/steady/Grid.h"

namespace korvane::steady {

inline constexpr std::size_t kZones = 4;

using MapBytes = std::array<std::uint8_t, kMostCells>;

[[nodiscard]] constexpr std::array<float, kMostCells> sameTarget(float target) {
    std::array<float, kMostCells> targets{};
    targets.fill(target);
    return targets;
}

// Whether it is a mixture to drive with, as an air-fuel ratio. The keys stop at 10 and 16, a step beyond at the most.
[[nodiscard]] constexpr bool isTarget(float ratio) {
    return ratio >= 9.5F && ratio <= 16.5F;
}

struct SteadySetup {
    Grid grid;
    // Map counts that the injection offset adds to each cell; fuel is proportional to the byte and it.
    double offsetCounts = 0.0;
    std::array<float, kMostCells> targets = sameTarget(12.5F);
    // How far a cell may go from the baseline, per cent.
    double richAuthority = 15.0;
    double leanAuthority = 5.0;
    int lowest = 0;  // the stops of the keys
    int highest = 255;
    bool throttleKnown = true;
    bool lambdaControl = false;  // the ECU corrects by lambda itself
    bool carry = false;          // confident corrections to close neighbours that were never visited
    double coldBelow = 70.0;     // degrees C of water
    // Leaner than this times the target, at a load of so many per cent and more, is a danger.
    double leanLimit = 1.25;
    // The same where the agent itself has taken fuel away.
    double leanedLimit = 1.10;
    double leanFromLoad = 60.0;
    // Delay in each zone as the tuner fixed it, in ms; 0: to be estimated.
    std::array<double, kZones> fixedDelayMs{};
};

}  // namespace korvane::steady
