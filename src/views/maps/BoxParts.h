// The parts that the windows of the ignition-only box and of the limiter box have in common.
#pragma once

#include "maps/boxes/IgnitionBoxControls.h"
#include "maps/boxes/ParameterGroup.h"
#include "views/frame/GroupCard.h"

namespace korvane::views {

// The boxes and lists of the launch control.
void addLaunch(GroupCard& card, maps::IgnitionBoxControls& window);

// The group's read and save buttons.
void addTransfer(GroupCard& card, maps::ParameterGroup& group, char readMnemonic, char saveMnemonic);

}  // namespace korvane::views
