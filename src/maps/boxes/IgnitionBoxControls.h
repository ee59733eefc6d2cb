// Controls that the windows of the ignition-only box and of the limiter box have in common.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "controls/Controls.h"
#include "fields/Field.h"
#include "maps/boxes/ParameterGroup.h"

namespace korvane::maps {

class IgnitionBoxControls {
public:
    enum class BytePause { None, Ms50 };

    explicit IgnitionBoxControls(controls::Window& window);

    // The launch control.
    controls::TextBox txtLaunchControlLimit;
    controls::ComboBox Combolaunchmode;
    controls::TextBox txtLaunchFixedDelay;
    controls::ComboBox ComboAccellimiter;
    controls::TextBox txtMaxAccel;

    controls::ComboBox Combosensortype;

protected:
    // The launch control: the parameters behind it, its frame, and what stands in there. The boxes differ in the pause
    // between the two bytes of the limit.
    [[nodiscard]] std::vector<fields::Field> launchFields();
    [[nodiscard]] static ParameterGroupPlan launchPlan(BytePause pause);
    void placeLaunch(ParameterGroup& launchControl, int left, int top);
};

// Gives a list its rows and chooses the first.
void fillList(controls::ComboBox& list, std::initializer_list<std::string_view> rows);

}  // namespace korvane::maps
