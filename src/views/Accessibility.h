// What screen readers hear of the widgets that the views paint themselves.
#pragma once

namespace korvane::views {

// Readouts speak as texts, lamps as indicators that are on or off, dials and gauges as dials, pictures as charts, map
// grids as tables. Once for the application; again does nothing.
void installAccessibility();

}  // namespace korvane::views
