// What each save button of the settings window writes.
#pragma once

#include <span>

#include "fields/SavePlan.h"
#include "settings/MiscControls.h"

namespace korvane::settings {

struct SaveButton {
    controls::CommandButton MiscControls::*button;
    fields::SavePlan plan;
};

[[nodiscard]] std::span<const SaveButton> saveButtons();

}  // namespace korvane::settings
