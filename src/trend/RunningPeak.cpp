#include "trend/RunningPeak.h"

#include <algorithm>

#include "trend/Plot.h"

namespace korvane::trend {

double RunningPeak::of(std::span<const double> values, std::uint64_t pushes) {
    const auto added = static_cast<std::size_t>(std::min<std::uint64_t>(pushes - pushes_, values.size()));
    place_ += added;
    if (values.size() == count_ && (highest_ == 0 || place_ < values.size())) {
        take(values.first(added), highest_);
    } else {
        take(values, 0);
    }
    count_ = values.size();
    pushes_ = pushes;
    return highest_;
}

void RunningPeak::take(std::span<const double> values, double atLeast) {
    const double highest = peakOf(values);
    if (highest < atLeast) {
        return;
    }
    highest_ = highest;
    place_ = static_cast<std::size_t>(std::find(values.begin(), values.end(), highest) - values.begin());
}

}  // namespace korvane::trend
