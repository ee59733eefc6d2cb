// What the firmware's settings and working maps mean to the engine.
#pragma once

#include <array>
#include <cstdint>

#include "ecu/memory/FirmwareMemory.h"

namespace korvane::ecu {

// Bits of the misc block's enable word.
enum class Function {
    Choke = 1,
    StartHelp = 2,
    Injection = 3,
    AccelPump = 4,
    Ignition = 5,
    EngineBrake = 10,
    ShiftLight = 14,
    RpmLimit = 15
};

struct Calibration {
    FirmwareType type;
    std::uint16_t enable = 0;
    double injectionsPerCycle = 2.0;
    int rpmLimit = 0;
    int rpmShift = 0;
    int idleRpm = 0;
    int idleValveMin = 0;  // percent
    int idleValveMax = 0;  // percent
    int brakeBelow = 0;    // the engine brake cuts fuel above brakeAbove and until brakeBelow
    int brakeAbove = 0;
    int chokeEnd = 0;  // degrees C
    int startHelpSeconds = 0;
    double throttleMin = 0.0;  // sensor value at 0 and 100 percent
    double throttleMax = 0.0;
    bool loadFromThrottle = false;
    double loadPerBar = 100.0;                // percent of load for a bar above loadStart
    double loadStart = 0.0;                   // bar
    std::array<double, 16> boostLimit{};      // bar absolute, by speed from 1000 in steps of 500
    std::array<double, kMapCells> pulse{};    // ms, of the working fuel map
    std::array<double, kMapCells> need{};     // ms that would give the best mixture
    std::array<double, kMapCells> advance{};  // degrees, of the working ignition map

    // Bits 14 and 15 switch their function off when set, all others switch it on.
    [[nodiscard]] bool enabled(Function function) const;
    // 0 to 1 for a sensor value, by the taught ends.
    [[nodiscard]] double throttleOf(int sensor) const;
    // Percent, as the rows of the maps count it; `throttle` 0 to 1.
    [[nodiscard]] double loadOf(double manifoldBar, double throttle) const;
    [[nodiscard]] double manifoldOf(double loadPercent) const;
    // Place in the maps: cell n of a row or column reaches from n to n + 1. Not bounded by the map.
    [[nodiscard]] static double columnAt(double rpm) { return (rpm - 1000.0) / 500.0; }
    [[nodiscard]] static double rowAt(double loadPercent) { return loadPercent / 10.0; }
    // Index of the map cell for that place; places beyond the map count as its edge.
    [[nodiscard]] int cellOf(double rpm, double loadPercent) const;
    // Milliseconds between the centres of the four nearest cells; beyond the outer centres as on them.
    [[nodiscard]] double pulseAt(double rpm, double loadPercent) const;
};

[[nodiscard]] Calibration calibrationOf(const FirmwareMemory& memory);

// Counts of the fuel map that would give the best mixture in each cell, not rounded; 0 beyond the map's cells.
[[nodiscard]] std::array<double, kMapCells> neededCounts(const FirmwareMemory& memory);

}  // namespace korvane::ecu
