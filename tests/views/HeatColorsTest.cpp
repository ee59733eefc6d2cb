#include <cmath>
#include <gtest/gtest.h>

#include "views/widgets/HeatColors.h"

namespace korvane::views {
namespace {

double linear(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double lightness(double red, double green, double blue) {
    const double light = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
    return 116 * std::cbrt(light) - 16;
}

// L* of a colour as usual eyes see it.
double lightness(const QColor& color) {
    return lightness(linear(color.redF()), linear(color.greenF()), linear(color.blueF()));
}

// And as eyes without the cones for green see it, after the usual matrix for linear light.
double lightnessWithoutGreenCones(const QColor& color) {
    const double red = linear(color.redF());
    const double green = linear(color.greenF());
    const double blue = linear(color.blueF());
    return lightness(0.367 * red + 0.861 * green - 0.228 * blue, 0.280 * red + 0.673 * green + 0.047 * blue,
                     -0.012 * red + 0.043 * green + 0.969 * blue);
}

TEST(HeatColors, RiseInLightnessByEvenSteps) {
    const double step = (lightness(heatColor(31)) - lightness(heatColor(0))) / 31;
    EXPECT_GT(step, 1.9);
    for (int level = 1; level < kHeatColors; ++level) {
        EXPECT_NEAR(lightness(heatColor(level)) - lightness(heatColor(level - 1)), step, 0.5) << level;
    }
}

TEST(HeatColors, HaveTheSameOrderForColourBlindEyes) {
    for (int level = 1; level < kHeatColors; ++level) {
        EXPECT_GT(lightnessWithoutGreenCones(heatColor(level)), lightnessWithoutGreenCones(heatColor(level - 1)) + 1)
            << level;
    }
}

TEST(HeatColors, GoFromBlueToYellow) {
    EXPECT_GT(heatColor(0).blue(), heatColor(0).red());
    EXPECT_LT(heatColor(31).blue(), heatColor(31).red());
}

TEST(HeatColors, BeyondTheLevelsAreThoseOfTheEnds) {
    EXPECT_EQ(heatColor(-1), heatColor(0));
    EXPECT_EQ(heatColor(99), heatColor(31));
}

}  // namespace
}  // namespace korvane::views
