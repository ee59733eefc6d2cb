#include "maps/notes/LiveStrip.h"

#include <array>
#include <charconv>
#include <cmath>

#include "core/Numbers.h"
#include "core/tables/LiveChannel.h"

namespace korvane::maps {

namespace {

using core::LiveChannel;

constexpr double kCountsPerPercent = 2.56;  // of the injection's duty
constexpr double kLargest = 1e6;            // no engine reaches it
constexpr double kLeastRatio = 5;           // an air-fuel ratio is above it, lambda below

// A number of fixed decimals without an allocation.
class FixedText {
public:
    FixedText(double value, int decimals) {
        if (std::isfinite(value) && std::abs(value) < kLargest) {
            auto* const end = characters_.data() + characters_.size();
            const auto result = std::to_chars(characters_.data(), end, value, std::chars_format::fixed, decimals);
            text_ = {characters_.data(), static_cast<std::size_t>(result.ptr - characters_.data())};
        }
    }
    FixedText(const FixedText&) = delete;
    FixedText& operator=(const FixedText&) = delete;
    ~FixedText() = default;

    [[nodiscard]] std::string_view view() const { return text_; }

private:
    std::array<char, 24> characters_{};
    std::string_view text_ = LiveStrip::kNothing;
};

}  // namespace

void LiveStrip::show(const core::LiveTable& live, const Cell& cell) {
    const auto value = [&](LiveChannel channel) { return live.liveValues[core::indexOf(channel)].value; };
    // Each frame sets it.
    if (value(LiveChannel::UpdateSpeed) == 0) {
        return;
    }
    Rpm = FixedText(value(LiveChannel::Rpm), 0).view();
    Load = FixedText(value(LiveChannel::Pressure), 2).view();
    Throttle = FixedText(value(LiveChannel::Throttle), 0).view();
    Duty = FixedText(value(LiveChannel::InjectionDuty) / kCountsPerPercent, 1).view();
    Pulse = cell.pulse.empty() ? kNothing : cell.pulse;
    showMixture(value(LiveChannel::Lambda), cell.target);
}

// A target is an air-fuel ratio: beside a reading in lambda it would mislead.
void LiveStrip::showMixture(double value, std::optional<float> target) {
    const bool isRatio = value >= kLeastRatio;
    MixtureName = isRatio ? "AFR" : "Lambda";
    core::NumberText text;
    text.append(FixedText(value, 2).view());
    if (isRatio && target) {
        text.append('/');
        text.append(FixedText(static_cast<double>(*target), 1).view());
    }
    Mixture = text.view();
}

}  // namespace korvane::maps
