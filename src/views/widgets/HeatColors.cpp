#include "views/widgets/HeatColors.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace korvane::views {

namespace {

// Colours of the CIE L*a*b* space: lightness 0 to 100, green to red, blue to yellow. Both ends and all between them can
// be shown on a screen.
struct Lab {
    double lightness, redness, yellowness;
};
constexpr Lab kLowest{25, 12, -42};
constexpr Lab kHighest{88, -4, 66};

// The white of a screen.
constexpr double kWhiteX = 0.9505;
constexpr double kWhiteZ = 1.089;

double cubed(double value) {
    constexpr double kEdge = 6.0 / 29.0;
    return value > kEdge ? value * value * value : 3 * kEdge * kEdge * (value - 4.0 / 29.0);
}

int channel(double light) {
    const double value = light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

QColor colorOf(const Lab& lab) {
    const double middle = (lab.lightness + 16) / 116;
    const double x = kWhiteX * cubed(middle + lab.redness / 500);
    const double y = cubed(middle);
    const double z = kWhiteZ * cubed(middle - lab.yellowness / 200);
    return {channel(3.2406 * x - 1.5372 * y - 0.4986 * z), channel(-0.9689 * x + 1.8758 * y + 0.0415 * z),
            channel(0.0557 * x - 0.2040 * y + 1.0570 * z)};
}

std::array<QColor, kHeatColors> makeColors() {
    std::array<QColor, kHeatColors> colors;
    for (int level = 0; level < kHeatColors; ++level) {
        const double share = level / (kHeatColors - 1.0);
        const auto between = [share](double low, double high) { return low + (high - low) * share; };
        colors[static_cast<std::size_t>(level)] =
            colorOf({between(kLowest.lightness, kHighest.lightness), between(kLowest.redness, kHighest.redness),
                     between(kLowest.yellowness, kHighest.yellowness)});
    }
    return colors;
}

}  // namespace

QColor heatColor(int level) {
    static const auto kColors = makeColors();
    return kColors.at(static_cast<std::size_t>(std::clamp(level, 0, kHeatColors - 1)));
}

}  // namespace korvane::views
