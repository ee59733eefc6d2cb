#include "analysis/steady/Corrector.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace korvane::steady {

std::string_view wordsOf(WhyHeld held) {
    constexpr std::array<std::string_view, 9> kWords = {
        "is being changed",
        "no samples",
        "not enough confidence",
        "on target",
        "at its limit",
        "changed not long ago",
        "too few visits to take fuel away",
        "edited by hand",
        "the agent does not correct now",
    };
    return kWords.at(static_cast<std::size_t>(held));
}

Correction Correction::heldBack(WhyHeld why) const {
    return {.errorPercent = errorPercent, .limited = limited, .held = why};
}

Correction Correction::into(const ByteRange& range, std::uint8_t byte) const {
    return {.step = std::clamp<int>(byte, range.least, range.most) - byte,
            .errorPercent = errorPercent,
            .limited = limited,
            .held = WhyHeld::No};
}

Correction Corrector::correct(const PulseMap& map, const CellNeed& need, std::uint8_t byte, const ByteRange& range,
                              double target) {
    if (need.weight <= 0.0) {
        return {};
    }
    const double wanted = need.need - std::log(target);
    const double share = wanted - map.logOf(byte);
    // Only what is missing beyond the standard error is acted on, and fuel is taken away only beyond the doubt too.
    const double margin = kErrors * need.error + (share < 0.0 ? need.doubt : 0.0);
    const double sure = std::copysign(std::max(std::fabs(share) - margin, 0.0), share);
    const double missing = map.countsOf(map.logOf(byte) + sure) - byte;
    Correction result{.errorPercent = 100.0 * std::expm1(share), .held = WhyHeld::NoConfidence};
    if (need.confidence < kLeastConfidence) {
        return result;
    }
    const bool inside = std::fabs(missing) < kDeadBand || std::fabs(result.errorPercent) < kDeadPercent;
    result.held = inside ? WhyHeld::OnTarget : WhyHeld::No;
    if (inside) {
        return result;
    }
    const int whole = std::max(1, static_cast<int>(std::lround(std::min(kGain * std::fabs(missing), 255.0))));
    const int step = missing > 0.0 ? whole : -whole;
    if (step < 0 && (need.visits < kLeanVisits || need.weight < kLeanWeight)) {
        return result.heldBack(WhyHeld::FewVisits);
    }
    result.limited = !range.holds(static_cast<int>(std::lround(std::clamp(map.countsOf(wanted), -1.0, 256.0))));
    // A byte beyond the range, as the tuner may have set it, may come nearer but not go further.
    result.step =
        step > 0 ? std::min(step, std::max(range.most - byte, 0)) : std::max(step, std::min(range.least - byte, 0));
    if (result.step == 0) {
        result.held = WhyHeld::AtItsLimit;
    }
    return result;
}

}  // namespace korvane::steady
