#include "maps/grid/EnginePlace.h"

#include <algorithm>

namespace korvane::maps {

namespace {
constexpr int kPolls = 3;
constexpr int kShortestSilence = 1000;  // ms
}  // namespace

void EnginePlace::heard(int cell, platform::Micros now) {
    last_ = Heard{cell, now};
}

std::optional<int> EnginePlace::cell(MapGeometry shape, platform::Micros now, int pollMilliseconds) const {
    const auto silence =
        platform::Micros{std::max(kPolls * pollMilliseconds, kShortestSilence)} * platform::kMicrosPerMilli;
    if (!last_ || !shape.has(last_->cell) || now - last_->at > silence) {
        return std::nullopt;
    }
    return last_->cell;
}

}  // namespace korvane::maps
