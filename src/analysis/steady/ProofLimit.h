// Keeps each cell near to what it was at lambda's last proof of life, so that a fault that is not yet known can't do
// much.
#pragma once

#include <cstdint>

#include "analysis/steady/SteadySetup.h"

namespace korvane::steady {

class ProofLimit {
public:
    static constexpr double kMostPercent = 3.0;  // of a cell's byte, from one proof to the next

    // Lambda has been proved to follow, or the agent begins: from here on each cell may move anew.
    void proved(const MapBytes& map);
    // Whether the cell may have that byte now: all that it has had since the proof stays within kMostPercent. A single
    // count is always allowed, since a byte can't do less.
    [[nodiscard]] bool allows(std::size_t cell, int byte) const;
    // The cell gets that byte.
    void spend(std::size_t cell, int byte);
    // The map at the last proof.
    [[nodiscard]] const MapBytes& atProof() const { return proved_; }
    // A byte that the tuner has set is where the cell stands from now on.
    void settle(std::size_t cell, std::uint8_t byte);

private:
    MapBytes proved_{};
    MapBytes least_{};  // of each cell since the proof
    MapBytes most_{};
};

}  // namespace korvane::steady
