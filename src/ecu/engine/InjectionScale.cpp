#include "ecu/engine/InjectionScale.h"

namespace korvane::ecu {

namespace {

constexpr double kClockPerMs = 18432.0;
constexpr double kTick256 = 256.0 / kClockPerMs;
constexpr double kTick512 = 512.0 / kClockPerMs;
constexpr double kTick768 = 768.0 / kClockPerMs;
constexpr double kTick1014 = 1014.0 / kClockPerMs;

double widePulse(int multiplier) {
    switch (multiplier) {
        case 6:
            return kTick768 + kTick768;
        case 5:
            return kTick512 + kTick768;
        case 4:
            return kTick512 + kTick512;
        case 3:
            return kTick768;
        default:
            return kTick512;
    }
}

}  // namespace

double msPerCount(int injectionMode, int multiplier, bool large) {
    if (injectionMode != 1 && injectionMode != 2) {
        return kTick256;
    }
    if (large) {
        return widePulse(multiplier);
    }
    if (injectionMode == 1) {
        return kTick1014;
    }
    return multiplier == 3 ? kTick768 : kTick512;
}

double msPerOffsetCount() {
    return kTick256 / 4.0;
}

}  // namespace korvane::ecu
