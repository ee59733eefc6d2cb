// The parameters of the settings window that need special functions to be shown or stored.
#pragma once

#include "core/tables/SharedTables.h"
#include "fields/Field.h"
#include "settings/MiscControls.h"

namespace korvane::settings {

// One bit for each check box of chkMisc2.
[[nodiscard]] fields::Own flags(MiscControls& window, const core::SharedTables& tables);
// One bit for each option, those of PWM1 first.
[[nodiscard]] fields::Own pwmMode(MiscControls& window, const core::SharedTables& tables);
[[nodiscard]] fields::Own loadMode(MiscControls& window);
[[nodiscard]] fields::Own lambdaType(MiscControls& window);
// A number whose other values count as the usual one when it is stored.
[[nodiscard]] fields::Own ignitionEdge(MiscControls& window);
[[nodiscard]] fields::Own injectionMode(MiscControls& window);

// With it the longest injection time is shown, by the mode as last received.
[[nodiscard]] fields::Own shownMultiplier(MiscControls& window, const core::SharedTables& tables);
// The two halves of the idle setpoint. The high byte is added to what the box shows: the low one has to come first.
[[nodiscard]] fields::Own shownSetpointLow(MiscControls& window);
[[nodiscard]] fields::Own shownSetpointHigh(MiscControls& window);

}  // namespace korvane::settings
