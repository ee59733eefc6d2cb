#include "ecu/memory/MapStore.h"

namespace korvane::ecu {

namespace {

constexpr int kFuelLower = 16;
constexpr int kIgnitionLower = 180;
constexpr int kPwmStart = 400;
constexpr int kFirstKeptPwmCell = 64;
constexpr int kFuelUpper = 1100;
constexpr int kIgnitionUpper = 1260;

}  // namespace

int mapAddress(MapKind kind, int index) {
    const bool lower = index < kHalfCells;
    switch (kind) {
        case MapKind::Fuel:
            return lower ? kFuelLower + index : kFuelUpper + index - kHalfCells;
        case MapKind::Ignition:
            return lower ? kIgnitionLower + index : kIgnitionUpper + index - kHalfCells;
        case MapKind::Pwm:
            return lower && index >= kFirstKeptPwmCell ? kPwmStart + index - kFirstKeptPwmCell : -1;
    }
    return -1;
}

}  // namespace korvane::ecu
