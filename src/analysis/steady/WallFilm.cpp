#include "analysis/steady/WallFilm.h"

#include <algorithm>

namespace korvane::steady {

void WallFilm::add(std::size_t cell, double departure, double off, double weight) {
    constexpr int kMemory = 60;  // samples
    Means& means = means_.at(cell);
    means.count = std::min(means.count + 1, kMemory);
    const double x = departure - means.departure;
    const double y = off - means.off;
    means.departure += x / means.count;
    means.off += y / means.count;
    const double part = 1.0 - 1.0 / means.count;  // of a difference from a mean that the sample is in
    newSquare_ += weight * part * x * x;
    newProduct_ += weight * part * x * y;
}

void WallFilm::commit() {
    square_ += newSquare_;
    product_ += newProduct_;
    discard();
}

void WallFilm::discard() {
    newSquare_ = 0.0;
    newProduct_ = 0.0;
}

double WallFilm::share() const {
    constexpr double kDoubt = 0.5;  // what there is to see before it is believed
    constexpr double kMost = 0.6;
    return std::clamp(product_ / (square_ + kDoubt), 0.0, kMost);
}

}  // namespace korvane::steady
