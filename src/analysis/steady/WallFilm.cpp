#include "analysis/steady/WallFilm.h"

#include <algorithm>

namespace korvane::steady {

void WallFilm::add(std::size_t cell, const Departures& departures, double off, double weight) {
    constexpr int kMemory = 60;  // samples
    Means& means = means_.at(cell);
    means.count = std::min(means.count + 1, kMemory);
    const Departures x = {departures[0] - means.departures[0], departures[1] - means.departures[1]};
    const double y = off - means.off;
    means.off += y / means.count;
    const double part = weight * (1.0 - 1.0 / means.count);  // of a difference from a mean that the sample is in
    for (std::size_t i = 0; i < x.size(); ++i) {
        means.departures[i] += x[i] / means.count;
        waiting_.square[i] += part * x[i] * x[i];
        waiting_.product[i] += part * x[i] * y;
    }
    waiting_.cross += part * x[0] * x[1];
}

void WallFilm::commit() {
    for (std::size_t i = 0; i < known_.square.size(); ++i) {
        known_.square[i] += waiting_.square[i];
        known_.product[i] += waiting_.product[i];
    }
    known_.cross += waiting_.cross;
    discard();
}

void WallFilm::discard() {
    waiting_ = {};
}

// Least squares; where one share would be negative, the other alone.
Departures WallFilm::shares() const {
    constexpr double kDoubt = 0.5;  // what there is to see before it is believed
    constexpr double kMost = 0.6;
    const Departures own = {known_.square[0] + kDoubt, known_.square[1] + kDoubt};
    const double cross = known_.cross;
    const double whole = own[0] * own[1] - cross * cross;
    Departures shares = {(own[1] * known_.product[0] - cross * known_.product[1]) / whole,
                         (own[0] * known_.product[1] - cross * known_.product[0]) / whole};
    for (std::size_t i = 0; i < shares.size(); ++i) {
        if (shares[1 - i] < 0.0) {
            shares[i] = known_.product[i] / own[i];
        }
    }
    return {std::clamp(shares[0], 0.0, kMost), std::clamp(shares[1], 0.0, kMost)};
}

}  // namespace korvane::steady
