// Faces and captions of dial and gauge, and what a form stores of the gauge.
#include <gtest/gtest.h>

#include "support/VirtualProgram.h"

namespace korvane::live {
namespace {

class Face : public support::VirtualProgram, public testing::Test {};

TEST_F(Face, OfADialFollowsItsType) {
    EXPECT_EQ(window.SarnMeterRpm.BackPicture.get(), "ImageRpm");
    EXPECT_EQ(window.SarnMeterboost.BackPicture.get(), "ImageBoost");
    window.SarnMeterboost.setMeterType(1);
    EXPECT_EQ(window.SarnMeterboost.BackPicture.get(), "ImageRpm");
}

TEST_F(Face, AnotherPictureRedrawsTheDial) {
    const int before = window.SarnMeterRpm.redraws();
    window.SarnMeterRpm.BackPicture = "Another";
    EXPECT_EQ(window.SarnMeterRpm.redraws(), before + 1);
}

TEST_F(Face, OfAGaugeKeepsItsCaptionWhenAnEmptyOneIsSet) {
    EXPECT_EQ(window.SarnGauge3.shownCaption(), "Throttle");
    window.SarnGauge3.Caption = "";
    EXPECT_EQ(window.SarnGauge3.Caption.get(), "");
    EXPECT_EQ(window.SarnGauge3.shownCaption(), "Throttle");
    window.SarnGauge3.Caption = "Boost";
    EXPECT_EQ(window.SarnGauge3.shownCaption(), "Boost");
}

TEST_F(Face, AGaugeIsStoredWithValueAndCaption) {
    window.SarnGauge3.setValue(42);
    const auto stored = window.SarnGauge3.writeProperties();
    EXPECT_EQ(stored.Value, 42);
    EXPECT_EQ(stored.Caption, "Throttle");
    window.SarnGauge3.readProperties({});
    EXPECT_EQ(window.SarnGauge3.value(), 0);
    EXPECT_EQ(window.SarnGauge3.Caption.get(), "Name");
}

}  // namespace
}  // namespace korvane::live
