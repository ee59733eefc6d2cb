// The fuel that the modelled engine really needs, and the maps that are stored in the ECU at first.
#pragma once

namespace korvane::ecu {

// The mixture that the fuel need is stated for; air-fuel ratio, as the wideband sensor reads it.
inline constexpr double kBestMixture = 12.5;

// Milliseconds of injection, twice a cycle, that give kBestMixture. Smooth; rises with the manifold pressure (bar,
// absolute) and, but for a few percent above 4500, with the speed.
[[nodiscard]] double neededPulse(double rpm, double manifoldBar);

// By how much the stored fuel map differs from the need at that place: -0.12 (lean) to 0.12 (rich), smooth.
[[nodiscard]] double storedMapError(double rpm, double loadPercent);

// Ignition advance in degrees of the stored map, 5 to 42.
[[nodiscard]] double storedAdvance(double rpm, double loadPercent);

}  // namespace korvane::ecu
