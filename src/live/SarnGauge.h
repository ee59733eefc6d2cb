// A 270-degree arc with 100 ticks, a pointer, a value and a caption.
#pragma once

#include "live/SarnMeter.h"

namespace korvane::live {

// Shows 0 to 100; values outside are clamped.
class SarnGauge : public Instrument {
public:
    using Instrument::Instrument;

    controls::Property<std::string> Caption{*this, "Name"};
    // The caption on the face: an empty Caption leaves the one before.
    [[nodiscard]] const std::string& shownCaption() const { return shownCaption_; }

    // What a form stores of it.
    struct Stored {
        int Value = 0;
        std::string Caption = "Name";
    };
    [[nodiscard]] Stored writeProperties() const { return {value_, Caption}; }
    void readProperties(const Stored& stored);

    [[nodiscard]] int value() const { return value_; }
    void setValue(int value);
    // One up, and from above 99 back to 0.
    void step();

    [[nodiscard]] DialPoint pointerTip() const { return pointAt(value_, kOuterRadius); }

    static constexpr int kTickCount = 100;
    // Tick i, 1 to 100, at the angle of value i.
    [[nodiscard]] static DialLine tick(int i) { return {pointAt(i, kInnerRadius), pointAt(i, kOuterRadius)}; }
    // The two lines that end the arc, from the centre.
    [[nodiscard]] static DialLine startLine() { return {{0.5, 0.5}, pointAt(0, kOuterRadius)}; }
    [[nodiscard]] static DialLine endLine() { return {{0.5, 0.5}, pointAt(kTickCount, kOuterRadius)}; }

    [[nodiscard]] std::string_view kind() const override { return "gauge"; }
    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

protected:
    void afterChange(const void* property) override;

private:
    static constexpr double kInnerRadius = 0.7;
    static constexpr double kOuterRadius = 0.9;
    [[nodiscard]] static DialPoint pointAt(double value, double radius);

    int value_ = 0;
    int lastValue_ = 0;
    std::string shownCaption_ = "Name";
};

}  // namespace korvane::live
