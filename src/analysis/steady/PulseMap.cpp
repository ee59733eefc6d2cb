#include "analysis/steady/PulseMap.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

double PulseMap::fuelOf(int byte) const {
    return std::max(byte + offset_, 0.1);
}

double PulseMap::logOf(int byte) const {
    return std::log(fuelOf(byte));
}

double PulseMap::countsOf(double logFuel) const {
    return std::exp(logFuel) - offset_;
}

void PulseMap::reset(const SteadySetup& setup, std::span<const std::uint8_t> bytes) {
    offset_ = setup.offsetCounts;
    bytes_.fill(0);
    const std::size_t count = std::min({bytes.size(), bytes_.size(), setup.grid.cells()});
    for (std::size_t cell = 0; cell < kMostCells; ++cell) {
        set(cell, cell < count ? bytes[cell] : std::uint8_t{0});
    }
}

void PulseMap::set(std::size_t cell, std::uint8_t byte) {
    bytes_.at(cell) = byte;
    fuel_.at(cell) = fuelOf(byte);
    logs_.at(cell) = logOf(byte);
}

double PulseMap::fourBytes(const Corners& corners) const {
    double fuel = 0.0;
    for (std::size_t i = 0; i < corners.cell.size(); ++i) {
        fuel += corners.share[i] * fuel_[corners.cell[i]];
    }
    return std::log(fuel);
}

}  // namespace korvane::steady
