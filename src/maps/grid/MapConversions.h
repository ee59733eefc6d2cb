// The ECU's map bytes in the tuner's units.
#pragma once

#include <cstdint>
#include <optional>

#include "core/tables/SharedTables.h"
#include "maps/grid/MapGeometry.h"

namespace korvane::maps {

// The maps of a firmware type.
[[nodiscard]] MapGeometry geometryOf(std::int32_t swType);

// Milliseconds of two crank turns, one four-stroke cycle.
[[nodiscard]] constexpr double cycleTime(int rpm) {
    return 2.0 * 1000.0 / (rpm / 60.0);
}

// Milliseconds of one fuel count, by injection mode and multiplier. An invalid mode becomes 2 in `tables`, for the
// next call.
[[nodiscard]] double ordinaryInjectionScale(core::SharedTables& tables);
[[nodiscard]] double largeInjectionScale(core::SharedTables& tables);

// The same, and nothing is changed.
[[nodiscard]] double ordinaryScaleNow(const core::SharedTables& tables);
[[nodiscard]] double largeScaleNow(const core::SharedTables& tables);

// What turns a fuel count into an injection time.
struct FuelModel {
    bool offsetInCounts = false;  // the offset is added to the counts, or else to the time
    double offset = 0.0;          // of the injectors, in counts or in units of `offsetUnit`
    float scale = 0.0F;           // milliseconds of one count
    double offsetUnit = 0.0;      // milliseconds
};

// `offset` is what the box of the injection offset says, `scale` the milliseconds of one count.
[[nodiscard]] FuelModel fuelModelOf(const core::SharedTables& tables, double offset, float scale);

// Milliseconds, cut to three decimals. RuntimeError 6 where an offset is too large for single precision.
[[nodiscard]] double fuelTime(std::uint8_t count, const FuelModel& model);

// Degrees, in steps of 0.2.
[[nodiscard]] double ignitionDegrees(std::uint8_t count);

// Milliseconds, cut to three decimals; `unit` is those of one count.
[[nodiscard]] double pwmTime(std::uint8_t count, double unit);

// Horsepower of four cylinders, cut to one decimal, when injectors of `size` ccm per minute are open for `pulse` of the
// `available` milliseconds. Empty where that is no number.
[[nodiscard]] std::optional<double> CalcPower(double size, double pulse, double available);

// The value rounded to its seven significant digits, as its text shows it. RuntimeError 6 for what is not finite.
[[nodiscard]] double asShown(float value);

}  // namespace korvane::maps
