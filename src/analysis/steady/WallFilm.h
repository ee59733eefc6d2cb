// The share of the fuel that wets the walls of the intake, estimated from the samples.
#pragma once

#include <array>

#include "analysis/steady/Grid.h"

namespace korvane::steady {

// While the fuel's rate changes, a film on the walls takes or gives a part of it: with a share s the cylinders get
// 1 - s * d of what is injected, where d is how far the rate is from its own mean over the last moments. Within a cell
// lambda follows d by s.
class WallFilm {
public:
    // Time constant with which a film of petrol on warm walls evaporates; seconds.
    static constexpr double kSeconds = 0.5;

    void reset() { *this = WallFilm(); }
    // A sample of that cell: `off` is by how much more fuel it needed than is expected there.
    void add(std::size_t cell, double departure, double off, double weight);
    void commit();
    void discard();
    // 0 to 1.
    [[nodiscard]] double share() const;

private:
    struct Means {
        double departure = 0.0;
        double off = 0.0;
        int count = 0;
    };

    std::array<Means, kMostCells> means_{};
    double square_ = 0.0;
    double product_ = 0.0;
    double newSquare_ = 0.0;
    double newProduct_ = 0.0;
};

}  // namespace korvane::steady
