// A round dial with a needle, a peak marker and a number.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "live/Instrument.h"
#include "platform/EventPump.h"

namespace korvane::live {

// Design properties as a form stores them: those that differ from their stored default, by name.
using PropertyBag = std::map<std::string, double, std::less<>>;

// A point of a face, as fractions of the control's width and height (0 to 1, y downwards).
struct DialPoint {
    double x = 0;
    double y = 0;
};

struct DialLine {
    DialPoint inner;
    DialPoint outer;
};

// Values are clamped to Min..Max; positions are degrees clockwise from MinPos. Writing the value that is shown already
// redraws nothing. The peak marker waits ten ticks of 50 ms and then falls a degree a tick until it meets the needle.
class SarnMeter : public Instrument {
public:
    SarnMeter(controls::Window& window, std::string_view name, std::optional<int> index = {});

    controls::Property<double> Min{*this, 0};
    controls::Property<double> Max{*this, 100};
    controls::Property<double> MinPos{*this, 0};
    controls::Property<double> MaxPos{*this, 270};
    controls::Property<double> ViisariLength{*this, 0.6};  // needle length as a fraction of the radius
    controls::Property<std::string> BackPicture{*this};    // the face's name; another one redraws

    [[nodiscard]] double value() const { return value_; }
    // RuntimeError 11 when Max is 0: the needle's place is a share of Max.
    void setValue(double value);

    // 0 boost 0 to 3, 1 rpm 0 to 10000; any other number counts as 0. Resets value and peak.
    [[nodiscard]] int MeterType() const { return type_; }
    void setMeterType(int type);

    [[nodiscard]] double position() const { return position_; }  // needle, degrees from MinPos
    [[nodiscard]] int peakPosition() const { return peak_; }     // marker, whole degrees
    [[nodiscard]] int peakHold() const { return hold_; }         // ticks before the marker falls
    [[nodiscard]] const DialLine& needle() const { return needle_; }
    [[nodiscard]] const DialLine& peakLine() const { return peakLine_; }

    // The control stays square: its height always becomes its width, whichever of the two is assigned. A new size
    // redraws.
    void resize(int width) { Width = width; }

    // What a form stores of it, and how it comes back: ViisariLength is left out at 0.8 and reads as 0.7 when absent.
    [[nodiscard]] PropertyBag writeProperties() const;
    void readProperties(const PropertyBag& bag);

    [[nodiscard]] std::string_view kind() const override { return "dial"; }
    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

protected:
    void afterChange(const void* property) override;

private:
    [[nodiscard]] DialLine lineAt(double degrees) const;
    void redraw();
    void timerHighTick();

    double value_ = 0;
    double lastValue_ = 0;
    double position_ = 0;
    int peak_ = 0;
    int hold_ = 0;
    int type_ = 0;
    DialLine needle_;
    DialLine peakLine_;
    platform::EventPump& pump_;
    std::unique_ptr<platform::Alarm> timerHigh_;
};

}  // namespace korvane::live
