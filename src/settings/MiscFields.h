// The parameters of the settings window: which control shows each of them, and how.
#pragma once

#include <vector>

#include "core/tables/SharedTables.h"
#include "fields/Field.h"
#include "settings/MiscControls.h"

namespace korvane::settings {

// In the order in which a reply is matched. Both arguments must outlive the rows.
[[nodiscard]] std::vector<fields::Field> miscFields(MiscControls& window, core::SharedTables& tables);

}  // namespace korvane::settings
