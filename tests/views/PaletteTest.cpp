#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "views/widgets/Palette.h"

namespace korvane::views {
namespace {

double channel(double value) {
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

// Contrast ratio as accessibility guidelines define it, 1 to 21.
double contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& color) {
        return 0.2126 * channel(static_cast<double>(color.redF())) +
               0.7152 * channel(static_cast<double>(color.greenF())) +
               0.0722 * channel(static_cast<double>(color.blueF()));
    };
    const double first = luminance(one);
    const double second = luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

TEST(Palette, ColoursOfTheProgramAreInBlueGreenRedOrder) {
    EXPECT_EQ(colorOf(controls::kRed, {}), QColor(255, 0, 0));
    EXPECT_EQ(colorOf(controls::kBlue, {}), QColor(0, 0, 255));
    EXPECT_EQ(colorOf(0x102030, {}), QColor(0x30, 0x20, 0x10));
}

TEST(Palette, SystemColoursAreLookedUp) {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(1, 2, 3));
    palette.setColor(QPalette::WindowText, QColor(4, 5, 6));
    palette.setColor(QPalette::Base, QColor(7, 8, 9));
    palette.setColor(QPalette::Text, QColor(10, 11, 12));
    EXPECT_EQ(colorOf(controls::kButtonFace, palette), QColor(1, 2, 3));
    EXPECT_EQ(colorOf(controls::kButtonText, palette), QColor(4, 5, 6));
    EXPECT_EQ(colorOf(controls::kWindowBackground, palette), QColor(7, 8, 9));
    EXPECT_EQ(colorOf(controls::kWindowText, palette), QColor(10, 11, 12));
}

TEST(Palette, TextsStandOutInLightAndDark) {
    for (const auto& palette : {Palette::light(), Palette::dark()}) {
        EXPECT_GE(contrast(palette.color(QPalette::WindowText), shades::surface(palette)), 7);
        EXPECT_GE(contrast(palette.color(QPalette::WindowText), shades::tile(palette)), 7);
        EXPECT_GE(contrast(shades::muted(palette), shades::surface(palette)), 4.5);
        EXPECT_GE(contrast(palette.color(QPalette::Text), shades::face(palette)), 7);
        EXPECT_GE(contrast(palette.color(QPalette::ButtonText), palette.color(QPalette::Button)), 4.5);
        EXPECT_GE(contrast(hues::kNeedle, shades::face(palette)), 3);
    }
}

TEST(Palette, EdgesStandOutFromAllGroundsInLightAndDark) {
    for (const auto& palette : {Palette::light(), Palette::dark()}) {
        const QColor edge = shades::edge(palette);
        EXPECT_GE(contrast(edge, shades::surface(palette)), 3);
        EXPECT_GE(contrast(edge, palette.color(QPalette::Window)), 3);
        EXPECT_GE(contrast(edge, palette.color(QPalette::Base)), 3);
    }
}

TEST(Palette, DarkIsDark) {
    EXPECT_TRUE(shades::isDark(Palette::dark()));
    EXPECT_FALSE(shades::isDark(Palette::light()));
}

TEST(Palette, AFlashingWindowFlashesItsCardsToo) {
    QPalette palette = Palette::light();
    palette.setColor(QPalette::Window, QColor(255, 0, 0));
    EXPECT_GT(shades::surface(palette).red(), 230);
    EXPECT_LT(shades::surface(palette).green(), 40);
    EXPECT_LT(shades::tile(palette).blue(), 40);
}

}  // namespace
}  // namespace korvane::views
