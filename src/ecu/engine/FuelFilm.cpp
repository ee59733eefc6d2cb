#include "ecu/engine/FuelFilm.h"

#include "ecu/engine/Step.h"

namespace korvane::ecu {

double FuelFilm::pass(double injected, double share, double seconds) {
    film_ += share * injected * kStepSeconds;
    const double evaporated = film_ * (kStepSeconds / (kStepSeconds + seconds));
    film_ -= evaporated;
    return (1.0 - share) * injected + evaporated / kStepSeconds;
}

}  // namespace korvane::ecu
