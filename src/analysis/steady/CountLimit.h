// How many counts all cells together may move in a second.
#pragma once

#include <array>
#include <cstddef>

namespace korvane::steady {

// In any second, however it is laid, no more than kCountsPerSecond are spent.
class CountLimit {
public:
    static constexpr std::size_t kCountsPerSecond = 5;

    CountLimit() { spentAt_.fill(kNever); }
    // Counts that may be spent now.
    [[nodiscard]] int left(double seconds) const;
    void spend(double seconds, int counts);

private:
    static constexpr double kNever = -1e9;

    std::array<double, kCountsPerSecond> spentAt_{};  // the last counts, the oldest of them at next_
    std::size_t next_ = 0;
};

}  // namespace korvane::steady
