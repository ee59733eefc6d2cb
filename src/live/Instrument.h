// What a dial and a gauge share: a face with a number on it.
#pragma once

#include <string>

#include "controls/Control.h"

namespace korvane::live {

class Instrument : public controls::Control {
public:
    using Control::Control;

    [[nodiscard]] int redraws() const { return redraws_; }               // how often the face was drawn anew
    [[nodiscard]] const std::string& number() const { return number_; }  // the value as text

    [[nodiscard]] std::string_view mainProperty() const override { return "value"; }
    // Observers are notified of it when anything on the face changes.
    [[nodiscard]] const void* faceProperty() const { return &number_; }

protected:
    // Draws the face anew with `value` as its number.
    void redrawWith(double value);

private:
    int redraws_ = 0;
    std::string number_ = "0";
};

}  // namespace korvane::live
