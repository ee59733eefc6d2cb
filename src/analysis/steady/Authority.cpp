#include "analysis/steady/Authority.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

ByteRange authorityOf(const SteadySetup& setup, std::uint8_t baseline) {
    constexpr double kRounding = 1e-9;
    const double richer = std::floor(baseline * std::max(setup.richAuthority, 0.0) / 100.0 + kRounding);
    const double leaner = std::floor(baseline * std::max(setup.leanAuthority, 0.0) / 100.0 + kRounding);
    const double most = std::min(baseline + richer, static_cast<double>(setup.highest));
    const double least = std::max(baseline - leaner, static_cast<double>(setup.lowest));
    return {.least = std::min(static_cast<int>(least), static_cast<int>(baseline)),
            .most = std::max(static_cast<int>(most), static_cast<int>(baseline))};
}

}  // namespace korvane::steady
