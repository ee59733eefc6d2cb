// How far the steady agent may move a cell from the baseline.
#pragma once

#include <cstdint>

#include "analysis/steady/SteadySetup.h"

namespace korvane::steady {

struct ByteRange {
    int least = 0;
    int most = 255;

    [[nodiscard]] bool holds(int byte) const { return byte >= least && byte <= most; }
    bool operator==(const ByteRange&) const = default;
};

// The bytes that a cell with that baseline may have. A part of a count is never given. The baseline itself is always
// allowed, also where the keys would stop before it.
[[nodiscard]] ByteRange authorityOf(const SteadySetup& setup, std::uint8_t baseline);

}  // namespace korvane::steady
