#include "live/LiveDecode.h"

#include <algorithm>
#include <exception>
#include <limits>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/tables/LiveChannel.h"

namespace korvane::live {

namespace {

using core::checked;
using core::LiveChannel;
using core::roundHalfEven;
using core::toCurrency;

constexpr double kUpdateSpeed = 16;  // in live data
constexpr float kTemperatureOffsetSince = 1.14F;
constexpr int kTemperatureOffset = 50;
constexpr std::uint8_t kFullThrottle = 100;
constexpr int kInputs = 16;

class Decoder {
public:
    Decoder(std::span<std::uint8_t> payload, std::span<core::LiveValue, core::kChannelCount> channels)
        : payload_(payload), channels_(channels) {}

    void throttle(const DecodeRules& rules);
    void fixedPart(const DecodeRules& rules);
    void newerPart();
    [[nodiscard]] core::LiveValue& channel(LiveChannel channel) { return channels_[core::indexOf(channel)]; }

private:
    [[nodiscard]] std::uint8_t& byte(std::size_t index) { return checked(payload_, index); }
    [[nodiscard]] double word(std::size_t index) { return byte(index) * 256 + byte(index + 1); }
    void setStandard(LiveChannel which, double raw) {
        auto& row = channel(which);
        row.raw = raw;
        row.value = (raw + row.offset) * row.gain;
    }
    void pressure();
    void lambda();

    std::span<std::uint8_t> payload_;
    std::span<core::LiveValue, core::kChannelCount> channels_;
};

void Decoder::throttle(const DecodeRules& rules) {
    auto& percent = byte(6);
    auto& row = channel(LiveChannel::Throttle);
    row.raw = percent;
    // The thousandth keeps a throttle that was never calibrated from dividing by zero. What no byte can hold leaves
    // the byte as it was read.
    const double span = rules.ThrottleMax - rules.ThrottleMin + 0.001;
    const double scaled = roundHalfEven(100 * std::max(percent - rules.ThrottleMin, 0) / span);
    if (scaled >= 0 && scaled <= std::numeric_limits<std::uint8_t>::max()) {
        percent = static_cast<std::uint8_t>(scaled);
    }
    percent = std::min(percent, kFullThrottle);
    row.value = (percent + row.offset) * row.gain;
}

// A pressure sensor of 2.5 bar at a supply of 5 V: kPa, then bar.
void Decoder::pressure() {
    auto& row = channel(LiveChannel::Pressure);
    row.raw = byte(5);
    row.value = (roundHalfEven((row.raw * 5 / 255 + 0.2) / 0.02) / 100 + row.offset) * row.gain;
}

// A wideband output of 0 to 5 V means 10 to 20.
void Decoder::lambda() {
    auto& row = channel(LiveChannel::Lambda);
    row.raw = byte(7);
    row.value = toCurrency(toCurrency(row.raw / 256 * 5 * 2 + 10) + toCurrency(row.offset)) * row.gain;
}

void Decoder::fixedPart(const DecodeRules& rules) {
    const int offset = rules.HwVersion >= kTemperatureOffsetSince ? kTemperatureOffset : 0;
    setStandard(LiveChannel::Rpm, word(0));
    setStandard(LiveChannel::WaterTemperature, byte(2) - offset);
    setStandard(LiveChannel::AirTemperature, byte(3) - offset);
    setStandard(LiveChannel::Voltage, byte(4) / 10.0);
    pressure();
    lambda();
    setStandard(LiveChannel::InjectionDuty, byte(8));
    setStandard(LiveChannel::Accel, byte(9));
    auto& place = channel(LiveChannel::MapPlace);
    place.raw = place.value = byte(10);
    setStandard(LiveChannel::Flags, word(11));
}

void Decoder::newerPart() {
    const std::size_t upper = payload_.size() - 1;
    if (upper > 12) {
        setStandard(LiveChannel::IdlePid, byte(13));
        setStandard(LiveChannel::BoostPid, byte(14));
    }
    if (upper > 14) {
        setStandard(LiveChannel::KType, byte(15) * 4 * 1.25);
    }
    if (upper > 15) {
        setStandard(LiveChannel::IgnitionAdvance, byte(16) / 5.0);
    }
    if (upper > 17) {
        const int selector = byte(17);
        setStandard(core::inputChannel(selector / kInputs), (selector % kInputs) * 256 + byte(18));
    }
}

}  // namespace

void decodeLive(std::span<std::uint8_t> payload, const DecodeRules& rules,
                std::span<core::LiveValue, core::kChannelCount> channels) {
    Decoder decoder(payload, channels);
    try {
        decoder.throttle(rules);
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): the throttle's failure is skipped
    }
    decoder.fixedPart(rules);
    decoder.newerPart();
    decoder.channel(LiveChannel::UpdateSpeed).value = kUpdateSpeed;
}

}  // namespace korvane::live
