// Controls that the windows of the ignition-only box and of the limiter box have in common.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "controls/Controls.h"
#include "fields/Answers.h"
#include "fields/Field.h"
#include "link/ConnectionPanel.h"
#include "link/PortOpening.h"
#include "maps/boxes/ParameterEar.h"
#include "maps/boxes/ParameterGroup.h"

namespace korvane::maps {

class IgnitionBoxControls {
public:
    enum class BytePause { None, Ms50 };

    IgnitionBoxControls(controls::Window& window, link::ConnectionPanel& line);

    // The launch control.
    controls::TextBox txtLaunchControlLimit;
    controls::ComboBox Combolaunchmode;
    controls::TextBox txtLaunchFixedDelay;
    controls::ComboBox ComboAccellimiter;
    controls::TextBox txtMaxAccel;

    controls::ComboBox Combosensortype;

    fields::Answers answers;  // to reads and saves of parameters

private:
    ParameterEar ear_;
    link::PortOpening opening_;

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
