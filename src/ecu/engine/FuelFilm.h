// Fuel that wets the walls of the intake and evaporates from there.
#pragma once

namespace korvane::ecu {

// A share of what is injected joins the film, and the film evaporates with a time constant. Nothing gets lost.
class FuelFilm {
public:
    // One step: the rate (per second, any unit of fuel) that comes into the cylinders while `injected` is injected and
    // `share` of it, 0 to 1, wets the walls; `seconds` is the time constant.
    [[nodiscard]] double pass(double injected, double share, double seconds);

private:
    double film_ = 0.0;
};

}  // namespace korvane::ecu
