#include "live/TrendSpan.h"

#include <algorithm>

#include "core/Numbers.h"

namespace korvane::live {

namespace {

constexpr double kTenths = 10;

}  // namespace

void TrendSpan::add(platform::Micros now) {
    times_.at(next_) = now;
    next_ = (next_ + 1) % kTrendPoints;
    count_ = std::min(count_ + 1, kTrendPoints);
}

std::optional<platform::Micros> TrendSpan::span() const {
    if (count_ < 2) {
        return std::nullopt;
    }
    const std::size_t newest = (next_ + kTrendPoints - 1) % kTrendPoints;
    const std::size_t oldest = (next_ + kTrendPoints - count_) % kTrendPoints;
    return times_.at(newest) - times_.at(oldest);
}

std::string spanText(const TrendSpan& trend) {
    const auto span = trend.span();
    if (!span) {
        return "No samples yet.";
    }
    const double seconds =
        core::roundHalfEven(static_cast<double>(*span) / platform::kMicrosPerSecond * kTenths) / kTenths;
    return std::to_string(trend.samples()) + " samples, the last " + core::textOf(seconds) +
           " s. The scale below the plot is not this time.";
}

}  // namespace korvane::live
