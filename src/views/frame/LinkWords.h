// How the state of the line is said and drawn in a window.
#pragma once

#include <QString>

#include "link/LinkState.h"
#include "views/widgets/values/LinkBadge.h"

namespace korvane::views {

// A transfer that has the line counts as a state of its own.
[[nodiscard]] LinkBadge::Look linkLook(const link::LinkState& link);
// "Live", "Late", "Busy".
[[nodiscard]] QString linkWord(const link::LinkState& link);
// Of the data, "12 s"; of the silence before any; empty while the port is closed.
[[nodiscard]] QString linkAge(const link::LinkState& link);
// What the state means, what can be done about it, and the counts, one a line.
[[nodiscard]] QString linkTip(const link::LinkState& link);

}  // namespace korvane::views
