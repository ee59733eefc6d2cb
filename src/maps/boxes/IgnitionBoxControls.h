// Controls that the windows of the ignition-only box and of the limiter box have in common.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "controls/Controls.h"
#include "fields/Field.h"
#include "fields/ReadPlan.h"

namespace korvane::maps {

class IgnitionBoxControls {
public:
    explicit IgnitionBoxControls(controls::Window& window);

    // The launch control.
    controls::TextBox txtLaunchControlLimit;
    controls::ComboBox Combolaunchmode;
    controls::TextBox txtLaunchFixedDelay;
    controls::ComboBox ComboAccellimiter;
    controls::TextBox txtMaxAccel;

    controls::ComboBox Combosensortype;

protected:
    // The parameters behind the launch control, and the order in which it is read.
    [[nodiscard]] std::vector<fields::Field> launchFields();
    static const fields::ReadPlan kReadLaunch;
};

// Gives a list its rows and chooses the first.
void fillList(controls::ComboBox& list, std::initializer_list<std::string_view> rows);

}  // namespace korvane::maps
