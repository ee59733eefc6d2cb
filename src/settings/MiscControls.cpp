#include "settings/MiscControls.h"

#include "settings/MiscLabels.h"
#include "settings/MiscLayout.h"
#include "settings/MiscTexts.h"

namespace korvane::settings {

MiscControls::MiscControls(platform::Machine& machine) : Window(machine, "frmMisc") {
    describeControls(*this);
    labelControls(*this);
    layOutControls(*this);
}

}  // namespace korvane::settings
