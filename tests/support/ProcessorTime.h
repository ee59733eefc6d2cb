// Marks of speed in tests: the processor time of this process, which other programs do not disturb much.
#pragma once

#include <algorithm>
#include <ctime>
#include <functional>

namespace korvane::support {

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KORVANE_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define KORVANE_SANITIZED
#endif

#ifdef KORVANE_SANITIZED
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif

// What a mark of so many seconds may take here: on a processor that is shared everything takes longer, and under the
// sanitizers much longer.
[[nodiscard]] constexpr double allowed(double seconds) {
    constexpr double kShared = 1.5;
    constexpr double kSlower = 20;
    return seconds * (kSanitized ? kSlower : kShared);
}

// The seconds that `work` takes at best of several runs: a run may be disturbed, none is faster than it can be.
[[nodiscard]] inline double bestSeconds(int runs, const std::function<void()>& work) {
    double best = 1e9;
    for (int i = 0; i < runs; ++i) {
        const std::clock_t begin = std::clock();
        work();
        best = std::min(best, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
    }
    return best;
}

}  // namespace korvane::support
