#include "ecu/engine/EngineNeed.h"

#include <algorithm>
#include <array>

namespace korvane::ecu {

namespace {

// One smooth peak of the stored map's error over speed and load.
struct Hill {
    double height;
    double rpm;
    double rpmWidth;
    double load;
    double loadWidth;

    [[nodiscard]] double at(double atRpm, double atLoad) const {
        const double x = (atRpm - rpm) / rpmWidth;
        const double y = (atLoad - load) / loadWidth;
        return height / (1.0 + x * x + y * y);
    }
};

constexpr std::array kHills = {
    Hill{0.120, 2500.0, 900.0, 45.0, 18.0},
    Hill{-0.125, 5200.0, 1200.0, 85.0, 15.0},
    Hill{0.080, 7000.0, 900.0, 60.0, 15.0},
    Hill{-0.070, 1200.0, 600.0, 35.0, 12.0},
};

constexpr double kLargestError = 0.12;

double smoothError(double rpm, double loadPercent) {
    double error = 0.0;
    for (const Hill& hill : kHills) {
        error += hill.at(rpm, loadPercent);
    }
    return std::clamp(error, -kLargestError, kLargestError);
}

double volumetricEfficiency(double rpm) {
    constexpr double kPeak = 4500.0;
    if (rpm < kPeak) {
        const double below = (kPeak - rpm) / 3500.0;
        return 1.0 - 0.22 * below * below;
    }
    const double above = (rpm - kPeak) / 4000.0;
    return 1.0 - 0.04 * above * above;
}

}  // namespace

double neededPulse(double rpm, double manifoldBar) {
    return 0.35 + 4.4 * manifoldBar * volumetricEfficiency(std::clamp(rpm, 500.0, 10500.0));
}

double storedMapError(MapFault fault, double rpm, double loadPercent) {
    switch (fault) {
        case MapFault::Smooth:
            return smoothError(rpm, loadPercent);
        case MapFault::Rich:
            return kLargestError;
        case MapFault::Lean:
            return -kLargestError;
        case MapFault::Checker:
            return (static_cast<int>(rpm / 500.0) + static_cast<int>(loadPercent / 10.0)) % 2 == 0 ? kLargestError
                                                                                                   : -kLargestError;
        case MapFault::None:
            break;
    }
    return 0.0;
}

double storedAdvance(double rpm, double loadPercent) {
    const double speed = std::clamp((rpm - 1000.0) / 3500.0, 0.0, 1.0);
    const double load = std::clamp((loadPercent - 35.0) / 65.0, 0.0, 1.5);
    return std::clamp(14.0 + 24.0 * speed - 15.0 * load, 5.0, 42.0);
}

}  // namespace korvane::ecu
