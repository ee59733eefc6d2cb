#include "live/LiveUpdate.h"

#include <algorithm>
#include <exception>
#include <string_view>

#include "core/Numbers.h"
#include "live/ChannelTable.h"
#include "live/LiveDecode.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"

namespace korvane::live {

namespace {

constexpr double kUpdateSpeed = 16;  // of data that is live
constexpr int kFramesBetweenDraws = 5;
constexpr int kLastFrameCount = 3998;
constexpr double kOverrunRpm = 2000;
constexpr double kOverrunThrottle = 2.0;
constexpr double kCountsPerPercent = 2.56;  // of the injection's duty

// Steps are independent: one that fails is skipped and the next one runs.
template <class Step>
void skippingErrors(Step step) {
    try {
        step();
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): skipping is the rule
    }
}

bool belongsToNumber(char character) {
    return (character >= '0' && character <= '9') || character == '.' || character == '-' || character == '+' ||
           character == 'E';
}

// The number in the text, in the range of a float.
double numberIn(std::string_view text) {
    if (text.empty() || !std::all_of(text.begin(), text.end(), belongsToNumber)) {
        platform::raiseTypeMismatch();
    }
    const double number = core::val(text);
    static_cast<void>(core::toSingle(number));  // raises for one out of that range
    return number;
}

}  // namespace

LiveUpdate::LiveUpdate(FrmSarn2& window, const core::FirmwareIdentity& firmware, core::LiveTable& tables,
                       link::Windows& windows, TrendSink& trends)
    : window_(window), firmware_(firmware), tables_(tables), windows_(windows), trends_(trends) {}

void LiveUpdate::decodeLivePacket(std::span<std::uint8_t> payload) {
    decodeLive(payload, {firmware_.HwVersion, tables_.ThrottleMin, tables_.ThrottleMax}, tables_.liveValues);
    updateData_new();
    if (frameTaker_ != nullptr) {
        skippingErrors([&] { frameTaker_->liveFrame(); });
    }
}

void LiveUpdate::updateData_new() {
    const int second = window_.machine().pump.wallTime().second;
    showValues();
    showWords();
    showDials();
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

void LiveUpdate::showText(controls::Label& label, LiveChannel channel) {
    label.Caption = core::numberText(value(channel)).view();
}

void LiveUpdate::showValues() {
    for (const auto& row : kChannels) {
        const int number = static_cast<int>(core::indexOf(row.channel));
        switch (row.label) {
            case ChannelLabel::Value:
                showText(window_.lblValue(number), row.channel);
                break;
            case ChannelLabel::Input:
                showText(window_.lblValueMux(number - static_cast<int>(core::indexOf(LiveChannel::Input0))),
                         row.channel);
                break;
            case ChannelLabel::NameOnly:
                skippingErrors([&] { regulatorWord(row.channel) = core::toInt32(value(row.channel)); });
                break;
            default:
                break;
        }
    }
}

std::int32_t& LiveUpdate::regulatorWord(LiveChannel channel) const {
    return channel == LiveChannel::IdlePid ? tables_.IdlePidWord : tables_.BoostPidWord;
}

void LiveUpdate::showWords() {
    skippingErrors([&] { tables_.AccelWord = core::toInt16(value(LiveChannel::Accel)); });
    window_.lblAccel.Caption = core::numberText(tables_.AccelWord).view();
    skippingErrors([&] { tables_.MapPlace = core::toInt16(value(LiveChannel::MapPlace)); });
    tables_.liveValues[core::indexOf(LiveChannel::UpdateSpeed)].value = kUpdateSpeed;
}

void LiveUpdate::showDials() {
    skippingErrors([&] { window_.SarnMeterboost.setValue(value(channelOf(ChannelDial::Boost))); });
    skippingErrors([&] { window_.SarnGauge3.setValue(core::toInt32(value(channelOf(ChannelDial::Throttle)))); });
    pushSample(kTrendPlaces.front());
    skippingErrors([&] { window_.SarnMeterRpm.setValue(value(channelOf(ChannelDial::Rpm))); });
}

double LiveUpdate::sampleOf(LiveChannel channel) const {
    switch (channel) {
        case LiveChannel::InjectionDuty:
            return core::toCurrency(value(channel) / kCountsPerPercent);
        case LiveChannel::Rpm:
            return core::toInt16(value(channel) / 10);
        case LiveChannel::IdlePid:
        case LiveChannel::BoostPid:
            return regulatorWord(channel);
        default:
            return value(channel);
    }
}

void LiveUpdate::pushSample(const TrendPlace& place) {
    skippingErrors([&] { trends_.pushTrendSample(sampleOf(place.channel), place.series, place.trend); });
}

void LiveUpdate::pushSamples() {
    for (const auto& place : std::span(kTrendPlaces).subspan<1>()) {
        pushSample(place);
    }
}

// Flags that 32 bits can't hold light none.
void LiveUpdate::lightLamps() {
    std::int32_t liveFlags = 0;
    skippingErrors([&] { liveFlags = core::toInt32(value(channelOfLamps())); });
    auto mask = firmware_.BitMask.begin();
    for (auto& lamp : window_.imgLed) {
        lamp.Shown = (liveFlags & *mask++) != 0 ? controls::Picture::Green : controls::Picture::Grey;
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
    const auto number = [&](LiveChannel channel) {
        return numberIn(window_.lblValue(static_cast<int>(core::indexOf(channel))).Caption.get());
    };
    const double rpm = number(LiveChannel::Rpm);
    if (rpm > kOverrunRpm && number(LiveChannel::Throttle) < kOverrunThrottle) {
        return;
    }
    analyser_->addValues(static_cast<float>(number(LiveChannel::Lambda)), tables_.MapPlace, static_cast<float>(rpm),
                         static_cast<float>(number(LiveChannel::Pressure)));
}

}  // namespace korvane::live
