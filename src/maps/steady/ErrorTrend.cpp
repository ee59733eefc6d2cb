#include "maps/steady/ErrorTrend.h"

#include <utility>

namespace korvane::maps {

void ErrorTrend::begin(std::string agent, double seconds) {
    agent_ = std::move(agent);
    points_.clear();
    points_.reserve(kMost);
    start_ = next_ = seconds;
    step_ = kFirstStep;
}

void ErrorTrend::add(double seconds, double mean, double worst) {
    if (points_.size() == kMost) {
        for (std::size_t kept = 0; kept < kMost / 2; ++kept) {
            points_[kept] = points_[2 * kept];
        }
        points_.resize(kMost / 2);
        step_ *= 2.0;
    }
    points_.push_back({seconds - start_, mean, worst});
    skip(seconds);
}

}  // namespace korvane::maps
