#include "ecu/engine/FuelFilm.h"

#include "ecu/engine/Step.h"

namespace korvane::ecu {

double FuelFilm::pass(double injected, double share) {
    film_ += share * injected * kStepSeconds;
    const double evaporated = film_ * (kStepSeconds / (kStepSeconds + kSeconds));
    film_ -= evaporated;
    return (1.0 - share) * injected + evaporated / kStepSeconds;
}

}  // namespace korvane::ecu
