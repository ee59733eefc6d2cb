// Accessibility of the widgets that the views paint themselves.
#pragma once

namespace korvane::views {

// Readouts are texts, lamps are indicators that are on or off, dials and gauges are dials, pictures are charts, map
// grids are tables. To be called once for the application; a second call does nothing.
void installAccessibility();

}  // namespace korvane::views
