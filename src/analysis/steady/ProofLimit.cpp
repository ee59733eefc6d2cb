#include "analysis/steady/ProofLimit.h"

#include <algorithm>

namespace korvane::steady {

void ProofLimit::proved(const MapBytes& map) {
    proved_ = map;
    least_ = map;
    most_ = map;
}

bool ProofLimit::allows(std::size_t cell, int byte) const {
    const int least = std::min<int>(least_.at(cell), byte);
    const int most = std::max<int>(most_.at(cell), byte);
    return most - least <= 1 || 100.0 * (most - least) <= kMostPercent * least;
}

void ProofLimit::spend(std::size_t cell, int byte) {
    least_.at(cell) = static_cast<std::uint8_t>(std::min<int>(least_.at(cell), byte));
    most_.at(cell) = static_cast<std::uint8_t>(std::max<int>(most_.at(cell), byte));
}

void ProofLimit::settle(std::size_t cell, std::uint8_t byte) {
    proved_.at(cell) = byte;
    least_.at(cell) = byte;
    most_.at(cell) = byte;
}

}  // namespace korvane::steady
