#include "performance/RoadSpeed.h"

#include "core/Numbers.h"

namespace korvane::performance {

namespace {
constexpr double kPi = 3.1415;
}

double roadSpeed(double rpm, const Gearing& gearing) {
    const double engine = rpm / 10 * 6;
    const double wheel = core::quotient(engine * 10, core::finite(gearing.gear * gearing.finalDrive));
    return core::finite(gearing.tyre * wheel * kPi / 10000);
}

double shownSpeed(double speed) {
    return core::finite(core::toInt(speed * 10) / 10);
}

}  // namespace korvane::performance
