// The units in which the grids show the three maps, without a window.
#pragma once

#include <cstdint>

#include "core/tables/SharedTables.h"
#include "maps/grid/MapConversions.h"

namespace korvane::maps {

class MapUnits {
public:
    // `injectionOffset` is what the box of the misc block says.
    MapUnits(const core::SharedTables& tables, bool large, double injectionOffset)
        : fuel_(fuelModelOf(tables, injectionOffset,
                            static_cast<float>(large ? largeScaleNow(tables) : ordinaryScaleNow(tables)))),
          pwm_(tables.TickD) {}

    // RuntimeError 6 where the injection offset makes a time that single precision can't hold.
    [[nodiscard]] double fuel(std::uint8_t count) const { return fuelTime(count, fuel_); }
    [[nodiscard]] double ignition(std::uint8_t count) const { return ignitionDegrees(count); }
    [[nodiscard]] double pwm(std::uint8_t count) const { return pwmTime(count, pwm_); }

private:
    FuelModel fuel_;
    double pwm_;
};

}  // namespace korvane::maps
