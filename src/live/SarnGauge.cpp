#include "live/SarnGauge.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace korvane::live {

namespace {

constexpr double kRadiansPerUnit = 0.04712388975;  // 2.7 degrees
constexpr double kStartAngle = 2.3561944875;       // 135 degrees

const SarnGauge& gauge(const controls::Object& object) {
    return dynamic_cast<const SarnGauge&>(object);
}

constexpr std::array kProperties{
    controls::PropertyInfo{
        "value", [](const controls::Object& object) -> controls::Value { return std::int64_t{gauge(object).value()}; },
        [](controls::Object& object, const controls::Value& value) {
            dynamic_cast<SarnGauge&>(object).setValue(controls::detail::fromValue<int>(value));
        }},
    controls::property<&SarnGauge::Caption>("Caption"),
};

}  // namespace

void SarnGauge::setValue(int value) {
    value_ = std::clamp(value, 0, kTickCount);
    if (value_ != lastValue_) {
        lastValue_ = value_;
        redrawWith(value_);
    }
}

void SarnGauge::step() {
    setValue(value_ + 1 > 99 ? 0 : value_ + 1);
}

void SarnGauge::readProperties(const Stored& stored) {
    setValue(stored.Value);
    Caption = stored.Caption;
}

void SarnGauge::afterChange(const void* property) {
    if (property == &Caption && !Caption.get().empty()) {
        shownCaption_ = Caption;
        changed(faceProperty());
    }
}

DialPoint SarnGauge::pointAt(double value, double radius) {
    const double angle = value * kRadiansPerUnit + kStartAngle;
    return {(std::cos(angle) * radius + 1) / 2, (std::sin(angle) * radius + 1) / 2};
}

std::vector<std::span<const controls::PropertyInfo>> SarnGauge::propertyTables() const {
    return controls::withTable<Control>(*this, kProperties);
}

}  // namespace korvane::live
