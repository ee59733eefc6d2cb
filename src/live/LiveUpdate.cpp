#include "live/LiveUpdate.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <string_view>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"

namespace korvane::live {

namespace {

using core::checked;
using core::roundHalfEven;
using core::toCurrency;

constexpr std::size_t kSpeedChannel = 23;  // "updatespeed" of the log: a constant in live data
constexpr double kSpeedConstant = 16;
constexpr float kTemperatureOffsetSince = 1.14F;  // firmware version
constexpr std::uint8_t kFullThrottle = 100;
constexpr int kFramesBetweenDraws = 5;
constexpr int kLastFrameCount = 3998;
constexpr double kOverrunRpm = 2000;
constexpr double kOverrunThrottle = 2.0;

// Each step stands alone: one that fails is skipped and the next one runs.
template <class Step>
void skippingErrors(Step step) {
    try {
        step();
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): skipping is the rule
    }
}

// What the text says, in the range of a float.
double numberIn(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789+-.E") != std::string_view::npos) {
        throw platform::RuntimeError(platform::kErrorTypeMismatch, "Type mismatch");
    }
    const double number = core::val(text);
    if (std::abs(number) > std::numeric_limits<float>::max()) {
        throw platform::RuntimeError(platform::kErrorOverflow, "Overflow");
    }
    return number;
}

double wordAt(std::span<const std::uint8_t> payload, std::size_t index) {
    return checked(payload, index) * 256 + checked(payload, index + 1);
}

}  // namespace

LiveUpdate::LiveUpdate(FrmSarn2& window, core::SharedTables& tables, link::Windows& windows, TrendSink& trends)
    : window_(window), tables_(tables), windows_(windows), trends_(trends) {}

void LiveUpdate::decodeLivePacket(std::span<std::uint8_t> payload) {
    decodeThrottle(payload);
    decodeFixedPart(payload);
    decodeNewerPart(payload);
    tables_.liveValues[kSpeedChannel].value = kSpeedConstant;
    updateData_new();
}

void LiveUpdate::decodeThrottle(std::span<std::uint8_t> payload) {
    auto& channel = tables_.liveValues[5];
    skippingErrors([&] {
        auto& byte = checked(payload, 6);
        channel.raw = byte;
        // The thousandth keeps a throttle that was never calibrated from dividing by zero. What no byte can hold leaves
        // the byte as it was read.
        const double span = tables_.ThrottleMax - tables_.ThrottleMin + 0.001;
        const double scaled = roundHalfEven(100 * std::max(byte - tables_.ThrottleMin, 0) / span);
        if (scaled >= 0 && scaled <= std::numeric_limits<std::uint8_t>::max()) {
            byte = static_cast<std::uint8_t>(scaled);
        }
        byte = std::min(byte, kFullThrottle);
        channel.value = (byte + channel.offset) * channel.gain;
    });
}

void LiveUpdate::setStandard(std::size_t channel, double raw) {
    auto& row = tables_.liveValues[channel];
    row.raw = raw;
    row.value = (raw + row.offset) * row.gain;
}

void LiveUpdate::decodeFixedPart(std::span<const std::uint8_t> payload) {
    setStandard(0, wordAt(payload, 0));
    const int offset = tables_.HwVersion >= kTemperatureOffsetSince ? 50 : 0;
    setStandard(1, checked(payload, 2) - offset);
    setStandard(2, checked(payload, 3) - offset);
    setStandard(3, checked(payload, 4) / 10.0);

    // A pressure sensor of 2.5 bar at a supply of 5 V: kPa, then bar.
    auto& pressure = tables_.liveValues[4];
    pressure.raw = checked(payload, 5);
    pressure.value = (roundHalfEven((pressure.raw * 5 / 255 + 0.2) / 0.02) / 100 + pressure.offset) * pressure.gain;

    // A wideband output of 0 to 5 V stands for 10 to 20.
    auto& lambda = tables_.liveValues[6];
    lambda.raw = checked(payload, 7);
    lambda.value = toCurrency(toCurrency(lambda.raw / 256 * 5 * 2 + 10) + toCurrency(lambda.offset)) * lambda.gain;

    setStandard(7, checked(payload, 8));
    setStandard(20, checked(payload, 9));
    auto& place = tables_.liveValues[21];
    place.raw = place.value = checked(payload, 10);
    setStandard(22, wordAt(payload, 11));
}

void LiveUpdate::decodeNewerPart(std::span<const std::uint8_t> payload) {
    const std::size_t upper = payload.size() - 1;
    if (upper > 12) {
        setStandard(8, checked(payload, 13));
        setStandard(9, checked(payload, 14));
    }
    if (upper > 14) {
        setStandard(10, checked(payload, 15) * 4 * 1.25);
    }
    if (upper > 15) {
        setStandard(11, checked(payload, 16) / 5.0);
    }
    if (upper > 17) {
        const int selector = checked(payload, 17);
        setStandard(12 + static_cast<std::size_t>(selector / 16), (selector % 16) * 256 + checked(payload, 18));
    }
}

void LiveUpdate::updateData_new() {
    const int second = window_.machine().pump.wallTime().second;
    showValues();
    showWords();
    showMeters();
    pushSamples();
    lightLamps();
    if (window_.chkDatalog.Value == 1 && rowWriter_ != nullptr) {
        skippingErrors([&] { rowWriter_->writeLiveRow(); });
    }
    skippingErrors([&] { drawTrends(second); });
    countPacket(second);
    if (windows_.frmMisc != nullptr) {
        skippingErrors([&] { windows_.frmMisc->MarkAccelCell(tables_.AccelWord); });
    }
    frameCounter_ = frameCounter_ >= kLastFrameCount ? 0 : frameCounter_ + 1;
    skippingErrors([&] { feedAnalyser(); });
    if (auto* const place = link::partOf<link::EnginePlacePart>(windows_.curMapWindow)) {
        skippingErrors([&] { place->updateMapPlace(); });
    }
}

void LiveUpdate::showText(controls::Label& label, std::size_t channel) {
    label.Caption = core::numberText(value(channel)).view();
}

// The labels 8 and 9 are the regulators' in name only: their words go to labels that the window has not got.
void LiveUpdate::showValues() {
    for (std::size_t channel = 0; channel < 8; ++channel) {
        showText(window_.lblValue(static_cast<int>(channel)), channel);
    }
    skippingErrors([&] { tables_.IdlePidWord = core::toInt32(value(8)); });
    skippingErrors([&] { tables_.BoostPidWord = core::toInt32(value(9)); });
    showText(window_.lblValue(10), 10);
    showText(window_.lblValue(11), 11);
    for (int i = 0; i < window_.lblValueMux.count(); ++i) {
        showText(window_.lblValueMux(i), 12 + static_cast<std::size_t>(i));
    }
}

void LiveUpdate::showWords() {
    skippingErrors([&] { tables_.AccelWord = core::toInt16(value(20)); });
    window_.lblAccel.Caption = core::numberText(tables_.AccelWord).view();
    skippingErrors([&] { tables_.MapPlace = core::toInt16(value(21)); });
    tables_.liveValues[kSpeedChannel].value = kSpeedConstant;
}

void LiveUpdate::showMeters() {
    skippingErrors([&] { window_.SarnMeterboost.setValue(value(4)); });
    skippingErrors([&] { window_.SarnGauge3.setValue(core::toInt32(value(5))); });
    trends_.pushTrendSample(value(5), 1, 0);
    skippingErrors([&] { window_.SarnMeterRpm.setValue(value(0)); });
}

void LiveUpdate::pushSamples() {
    trends_.pushTrendSample(value(4), 0, 0);
    trends_.pushTrendSample(value(6), 2, 0);
    skippingErrors([&] { trends_.pushTrendSample(toCurrency(value(7) / 2.56), 3, 0); });
    skippingErrors([&] { trends_.pushTrendSample(core::toInt16(value(0) / 10), 4, 0); });
    trends_.pushTrendSample(value(3), 0, 2);
    trends_.pushTrendSample(value(1), 1, 2);
    trends_.pushTrendSample(value(2), 2, 2);
    trends_.pushTrendSample(tables_.IdlePidWord, 3, 2);
    trends_.pushTrendSample(tables_.BoostPidWord, 4, 2);
}

// Flags that 32 bits can't hold light none.
void LiveUpdate::lightLamps() {
    std::int32_t liveFlags = 0;
    skippingErrors([&] { liveFlags = core::toInt32(value(22)); });
    for (int n = 0; n < window_.imgLed.count(); ++n) {
        const bool lit = (liveFlags & tables_.BitMask[static_cast<std::size_t>(n)]) != 0;
        window_.imgLed(n).Shown = lit ? controls::Picture::Green : controls::Picture::Grey;
    }
}

// Sees the second of the packet count before countPacket() changes it.
void LiveUpdate::drawTrends(int second) {
    if (window_.chkSlowTrend.Value == 1) {
        if (second != packetSecond_) {
            trends_.drawTrends();
        }
        return;
    }
    if (trendCounter_ > kFramesBetweenDraws) {
        trends_.drawTrends();
        trendCounter_ = 0;
    }
    ++trendCounter_;
}

void LiveUpdate::countPacket(int second) {
    if (second == packetSecond_) {
        ++packetCount_;
        return;
    }
    packetSecond_ = second;
    window_.lblPackets.Caption = core::numberText(packetCount_).view();
    packetCount_ = 0;
}

// Reads the numbers back from the labels; "1.#INF" is none, and ends the step. Overrun carries no useful lambda.
void LiveUpdate::feedAnalyser() {
    if (analyser_ == nullptr) {
        return;
    }
    const auto number = [&](int label) { return numberIn(window_.lblValue(label).Caption.get()); };
    if (number(0) > kOverrunRpm && number(5) < kOverrunThrottle) {
        return;
    }
    analyser_->addValues(static_cast<float>(number(6)), tables_.MapPlace, static_cast<float>(number(0)),
                         static_cast<float>(number(4)));
}

}  // namespace korvane::live
