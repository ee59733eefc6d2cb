// The share of the fuel that wets the walls of the intake, estimated from the samples.
#pragma once

#include <array>

#include "analysis/steady/Grid.h"

namespace korvane::steady {

// How far the fuel's rate is from its own mean over the last moments, as a share of it, for each time of WallFilm.
using Departures = std::array<double, 2>;

// While the fuel's rate changes, a film on the walls takes or gives a part of it: with shares s the cylinders get
// 1 - s * d of what is injected, where d are the departures. Within a cell lambda follows d by s. Nobody knows how fast
// the film evaporates: two shares of a quick and a slow one together are near to any in between.
class WallFilm {
public:
    // Time constants with which films evaporate; seconds.
    static constexpr Departures kSeconds = {0.3, 1.2};

    void reset() { *this = WallFilm(); }
    // A sample of that cell: `off` is by how much more fuel it needed than is expected there.
    void add(std::size_t cell, const Departures& departures, double off, double weight);
    void commit();
    void discard();
    // By how much more fuel a sample needed for the sake of the films.
    [[nodiscard]] double lackOf(const Departures& departures) const {
        const Departures shares = this->shares();
        return shares[0] * departures[0] + shares[1] * departures[1];
    }
    // 0 to 1 each.
    [[nodiscard]] Departures shares() const;

private:
    struct Means {
        Departures departures{};
        double off = 0.0;
        int count = 0;
    };

    // Of the departures with themselves and each other, and with what was off.
    struct Sums {
        Departures square{};
        double cross = 0.0;
        Departures product{};
    };

    std::array<Means, kMostCells> means_{};
    Sums known_;
    Sums waiting_;
};

}  // namespace korvane::steady
