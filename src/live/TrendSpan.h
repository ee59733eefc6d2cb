// How much time the samples of a live trend span.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "platform/EventPump.h"

namespace korvane::live {

inline constexpr std::size_t kTrendPoints = 350;  // that a trend draws

// The scale below a trend counts samples, not time: this is how long the drawn ones really took.
class TrendSpan {
public:
    void add(platform::Micros now);

    [[nodiscard]] std::size_t samples() const { return count_; }
    // From the oldest sample that is drawn to the newest. Nothing before the second sample.
    [[nodiscard]] std::optional<platform::Micros> span() const;

private:
    std::array<platform::Micros, kTrendPoints> times_{};
    std::size_t next_ = 0;
    std::size_t count_ = 0;
};

// "350 samples, the last 70 s"; a sentence that there are none yet.
[[nodiscard]] std::string spanText(const TrendSpan& trend);

}  // namespace korvane::live
