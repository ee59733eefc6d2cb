// What no tuner can measure: the fuel and the mixture as they really are.
#pragma once

#include "ecu/engine/EngineNeed.h"

namespace korvane::ecu {

// At one moment of a running engine whose firmware injects. Pulses in milliseconds. What a map gives in one of its
// cells follows with the calibration: at the centre kBestMixture * need / pulse of that cell, and over the places where
// the engine ran in it kBestMixture / pulse of that cell * the mean of needMs / lengthening.
struct EngineTruth {
    // The place in the maps: cell (row, column) reaches from `column` to `column` + 1, its centre is at + 0.5. Not
    // bounded by the map.
    double column = 0.0;
    double row = 0.0;
    double needMs = 0.0;       // would give kBestMixture at this place, in a warm engine at steady load
    double neededMs = 0.0;     // the same at this moment: cold and accelerating as the engine is
    double givenMs = 0.0;      // what comes into the cylinders; 0 while the fuel is cut
    double lengthening = 1.0;  // factor above the last row, part of givenMs
    double mixture = 20.0;     // burnt now; at most 20, which is fresh air, and not bounded below
    double delayMs = 0.0;      // age of the gas at the sensor

    // The pulse that would give another mixture at this moment.
    [[nodiscard]] double neededFor(double target) const { return neededMs * kBestMixture / target; }
};

}  // namespace korvane::ecu
