// The working fuel map as fuel: what the ECU injects at a place, if it uses one byte or interpolates between four.
#pragma once

#include <span>

#include "analysis/steady/SteadySetup.h"

namespace korvane::steady {

// All fuel is in logarithms of map counts with the injection offset added.
class PulseMap {
public:
    // Fuel of a byte; nothing at all counts as a tenth of a count.
    [[nodiscard]] double logOf(int byte) const;
    // Counts, not rounded, that give so much fuel.
    [[nodiscard]] double countsOf(double logFuel) const;

    void reset(const SteadySetup& setup, std::span<const std::uint8_t> bytes);
    void set(std::size_t cell, std::uint8_t byte);

    [[nodiscard]] const MapBytes& bytes() const { return bytes_; }
    [[nodiscard]] double fuel(std::size_t cell) const { return fuel_[cell]; }
    [[nodiscard]] double oneByte(std::size_t cell) const { return logs_[cell]; }
    [[nodiscard]] double fourBytes(const Corners& corners) const;

private:
    [[nodiscard]] double fuelOf(int byte) const;

    double offset_ = 0.0;
    MapBytes bytes_{};
    std::array<double, kMostCells> fuel_{};
    std::array<double, kMostCells> logs_{};
};

}  // namespace korvane::steady
