#include "live/SarnMeter.h"

#include <array>
#include <cmath>

#include "core/Numbers.h"
#include "platform/Machine.h"

namespace korvane::live {

namespace {

using controls::Object;
using controls::property;
using controls::PropertyInfo;
using controls::Value;
using platform::kMicrosPerMilli;

constexpr double kRadiansPerDegree = 3.14159265 / 180;
constexpr double kNeedleStart = 0.17;  // of the radius: the hub hides the rest
constexpr int kPeakHoldTicks = 10;
constexpr platform::Micros kPeakTick = 50 * kMicrosPerMilli;

constexpr double kLengthWhenAbsent = 0.7;
constexpr double kLengthNotWritten = 0.8;

const SarnMeter& meter(const Object& object) {
    return dynamic_cast<const SarnMeter&>(object);
}
SarnMeter& meter(Object& object) {
    return dynamic_cast<SarnMeter&>(object);
}

constexpr std::array kProperties{
    PropertyInfo{"value", [](const Object& object) -> Value { return meter(object).value(); },
                 [](Object& object, const Value& value) { meter(object).setValue(controls::detail::numberOf(value)); }},
    PropertyInfo{"MeterType", [](const Object& object) -> Value { return std::int64_t{meter(object).MeterType()}; },
                 [](Object& object, const Value& value) {
                     meter(object).setMeterType(controls::detail::fromValue<int>(value));
                 }},
    property<&SarnMeter::Min>("Min"),
    property<&SarnMeter::Max>("Max"),
    property<&SarnMeter::MinPos>("MinPos"),
    property<&SarnMeter::MaxPos>("MaxPos"),
    property<&SarnMeter::ViisariLength>("ViisariLength"),
    property<&SarnMeter::BackPicture>("BackPicture"),
};

}  // namespace

SarnMeter::SarnMeter(controls::Window& window, std::string_view name, std::optional<int> index)
    : Instrument(window, name, index),
      pump_(window.machine().pump),
      timerHigh_(pump_.makeAlarm([this] { timerHighTick(); })) {
    needle_ = peakLine_ = lineAt(0);
    timerHigh_->callAt(pump_.now() + kPeakTick);
}

void SarnMeter::setValue(double value) {
    value_ = value < Min ? Min.get() : value > Max ? Max.get() : value;
    if (Max.get() == 0) {
        platform::raiseDivisionByZero();
    }
    position_ = (value_ - Min) / Max * (MaxPos - MinPos);
    if (value_ != lastValue_) {
        redraw();
        lastValue_ = value_;
    }
}

void SarnMeter::setMeterType(int type) {
    type_ = type == 1 ? 1 : 0;
    Min = 0;
    Max = type_ == 1 ? 10000 : 3;
    MinPos = 0;
    MaxPos = 270;
    setValue(Min);
    lastValue_ = value_;
    peak_ = static_cast<int>(core::toInt(position_));
    const std::string face = type_ == 1 ? "ImageRpm" : "ImageBoost";
    if (BackPicture == face) {
        redraw();
    } else {
        BackPicture = face;
    }
}

void SarnMeter::afterChange(const void* property) {
    if (property == &Width || property == &Height) {
        Height = Width;
        redraw();
    } else if (property == &BackPicture) {
        redraw();
    }
}

PropertyBag SarnMeter::writeProperties() const {
    PropertyBag bag;
    const auto store = [&](const char* name, double value, double left) {
        if (value != left) {
            bag[name] = value;
        }
    };
    store("Min", Min, 0);
    store("Max", Max, 100);
    store("MinPos", MinPos, 0);
    store("MaxPos", MaxPos, 270);
    store("MeterType", type_, 0);
    store("Value", value_, Min);
    store("ViisariLength", ViisariLength, kLengthNotWritten);
    return bag;
}

void SarnMeter::readProperties(const PropertyBag& bag) {
    const auto stored = [&](std::string_view name, double absent) {
        const auto found = bag.find(name);
        return found == bag.end() ? absent : found->second;
    };
    setMeterType(core::toInt32(stored("MeterType", 0)));
    Min = stored("Min", 0);
    Max = stored("Max", 100);
    MinPos = stored("MinPos", 0);
    MaxPos = stored("MaxPos", 270);
    ViisariLength = stored("ViisariLength", kLengthWhenAbsent);
    setValue(stored("Value", 0));
}

DialLine SarnMeter::lineAt(double degrees) const {
    const double angle = -(degrees + 90 - MinPos) * kRadiansPerDegree;
    const auto end = [&](double radius) {
        return DialPoint{(std::cos(angle) * radius + 1) / 2, (1 - std::sin(angle) * radius) / 2};
    };
    return {end(kNeedleStart), end(ViisariLength)};
}

void SarnMeter::redraw() {
    needle_ = lineAt(position_);
    if (position_ >= peak_) {
        peak_ = core::toInt16(position_);
        peakLine_ = lineAt(peak_);
        hold_ = kPeakHoldTicks;
    }
    redrawWith(value_);
}

void SarnMeter::timerHighTick() {
    if (position_ < peak_) {
        if (hold_ > 0) {
            --hold_;
        } else {
            --peak_;
            peakLine_ = lineAt(peak_);
            changed(faceProperty());
        }
    }
    timerHigh_->callAt(pump_.now() + kPeakTick);
}

std::vector<std::span<const PropertyInfo>> SarnMeter::propertyTables() const {
    return controls::withTable<Control>(*this, kProperties);
}

}  // namespace korvane::live
