// The fuel that the modelled engine really needs, and the maps that are stored in the ECU at first.
#pragma once

namespace korvane::ecu {

// The mixture that the fuel need is stated for; air-fuel ratio, as the wideband sensor reads it.
inline constexpr double kBestMixture = 12.5;

// Milliseconds of injection, twice a cycle, that give kBestMixture. Smooth; rises with the manifold pressure (bar,
// absolute) and, but for a few percent above 4500, with the speed.
[[nodiscard]] double neededPulse(double rpm, double manifoldBar);

// Pattern of the stored fuel map's error.
enum class MapFault {
    Smooth,   // hills and valleys
    Rich,     // 12 percent everywhere
    Lean,     // 12 percent everywhere
    Checker,  // 12 percent rich and lean in turn, from cell to cell
    None,
};

// By how much the stored fuel map differs from the need in the cell that begins at `rpm` and has its middle at
// `loadPercent`: -0.12 (lean) to 0.12 (rich).
[[nodiscard]] double storedMapError(MapFault fault, double rpm, double loadPercent);

// Ignition advance in degrees of the stored map, 5 to 42.
[[nodiscard]] double storedAdvance(double rpm, double loadPercent);

}  // namespace korvane::ecu
