// The highest of a series' newest values, found again and again while values are added.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace korvane::trend {

// Looks at the values that are new since the last call, and at all of them only when the highest has left them.
class RunningPeak {
public:
    // Of `values`, the newest first, of a series that has had so many in all; at least 0.
    [[nodiscard]] double of(std::span<const double> values, std::uint64_t pushes);

private:
    void take(std::span<const double> values, double atLeast);

    double highest_ = 0;
    std::size_t place_ = 0;  // of the newest that is as high; none where 0 is the highest
    std::size_t count_ = 0;  // of the values at the last call
    std::uint64_t pushes_ = 0;
};

}  // namespace korvane::trend
