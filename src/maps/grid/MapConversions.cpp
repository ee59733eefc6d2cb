#include "maps/grid/MapConversions.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/Numbers.h"
#include "core/ParameterNumber.h"
#include "core/tables/Module1.h"

namespace korvane::maps {

namespace {

constexpr int kLargestCount = 255;

constexpr double kFlowPerHorsepower = 10.51;  // ccm per minute
constexpr double kFuelFactor = 0.6;
constexpr double kCylinders = 4.0;

double injectionMode(const core::SharedTables& tables) {
    return core::parameterNumber(tables, tables.addresses.INJ_MODE_OFFSET);
}

double injectionMultiplier(const core::SharedTables& tables) {
    return core::parameterNumber(tables, tables.addresses.INJ_MULTIPLIER_OFF);
}

void keepModeValid(core::SharedTables& tables) {
    const double mode = injectionMode(tables);
    if (mode != 1.0 && mode != 2.0 && mode != 4.0) {
        core::checked(tables.EEParams, tables.addresses.INJ_MODE_OFFSET).value = std::uint8_t{2};
    }
}

double cutToThousandths(double value) {
    return core::toInt(core::finite(value * 1000.0)) / 1000.0;
}

// Powers of ten by which a single-precision number multiplies exactly in double precision.
constexpr std::array kExactPowers{1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};
constexpr double kSevenDigits = 1e6;

}  // namespace

MapGeometry geometryOf(std::int32_t swType) {
    return core::hasLargeMaps(swType) ? kLargeMaps : kOrdinaryMaps;
}

double ordinaryScaleNow(const core::SharedTables& tables) {
    const double mode = injectionMode(tables);
    if (mode == 2.0) {
        return injectionMultiplier(tables) == 3.0 ? tables.TickC : tables.TickB;
    }
    return mode == 1.0 ? tables.TickA : tables.TickD;
}

double largeScaleNow(const core::SharedTables& tables) {
    const double mode = injectionMode(tables);
    if (mode != 1.0 && mode != 2.0) {
        return tables.TickD;
    }
    const double multiplier = injectionMultiplier(tables);
    if (multiplier == 6.0) {
        return tables.TickC + tables.TickC;
    }
    if (multiplier == 5.0) {
        return tables.TickB + tables.TickC;
    }
    if (multiplier == 4.0) {
        return tables.TickB + tables.TickB;
    }
    return multiplier == 3.0 ? tables.TickC : tables.TickB;
}

double ordinaryInjectionScale(core::SharedTables& tables) {
    const double scale = ordinaryScaleNow(tables);
    keepModeValid(tables);
    return scale;
}

double largeInjectionScale(core::SharedTables& tables) {
    const double scale = largeScaleNow(tables);
    keepModeValid(tables);
    return scale;
}

FuelModel fuelModelOf(const core::SharedTables& tables, double offset, float scale) {
    return {tables.InjOff_type != 0, offset, scale, tables.TickF};
}

double fuelTime(std::uint8_t count, const FuelModel& model) {
    if (model.offsetInCounts) {
        const double counts = std::min<double>(count + model.offset, kLargestCount);
        return cutToThousandths(counts * static_cast<double>(model.scale));
    }
    const double time = asShown(static_cast<float>(count) * model.scale);
    return cutToThousandths(asShown(core::toSingle(time + model.offsetUnit * model.offset)));
}

double ignitionDegrees(std::uint8_t count) {
    return core::toInt(count * 200.0) / 1000.0;
}

double pwmTime(std::uint8_t count, double unit) {
    return core::toInt(count * unit * 1000.0) / 1000.0;
}

std::optional<double> CalcPower(double size, double pulse, double available) {
    const double share = pulse / available;
    const double power = core::toInt(size / kFlowPerHorsepower * share / kFuelFactor * kCylinders * 10.0) / 10.0;
    const bool number = std::isfinite(available) && available != 0.0 && std::isfinite(power);
    return number ? std::optional(power) : std::nullopt;
}

double asShown(float value) {
    const double size = std::abs(static_cast<double>(value));
    for (const double power : kExactPowers) {
        // From 0.0001 to ten million: the product is exact, so its rounding is that of the digits.
        if (const double digits = size * power; digits >= kSevenDigits && digits < 10.0 * kSevenDigits) {
            return std::copysign(core::roundHalfEven(digits) / power, value);
        }
    }
    return value == 0.0F ? 0.0 : core::val(core::numberText(core::toSingle(size)).view()) * std::copysign(1.0, value);
}

}  // namespace korvane::maps
