#include <gtest/gtest.h>

#include "views/ProgramViews.h"
#include "views/widgets/Palette.h"
#include "views/widgets/values/Dial.h"
#include "views/widgets/values/Gauge.h"

namespace korvane::views {
namespace {

struct DialTest : testing::Test, ProgramViews {
    DialTest() {
        window.resize(1366 * 15, 728 * 15);
        frame();
    }

    // The colour at a place given as fractions of the instrument's square.
    template <class Widget>
    [[nodiscard]] static QColor at(Widget& widget, double x, double y) {
        const QRect square = widget.square();
        const QPoint place(square.x() + static_cast<int>(x * square.width()),
                           square.y() + static_cast<int>(y * square.height()));
        return widget.grab().toImage().pixelColor(place);
    }
    [[nodiscard]] static bool isNeedle(const QColor& color) {
        return color.red() > 170 && color.green() < 110 && color.blue() < 110;
    }
    [[nodiscard]] static bool isPeak(const QColor& color) {
        return color.red() > 170 && color.green() > 110 && color.blue() < 110;
    }
};

// Half of the scale is 135 degrees clockwise from straight down: up to the left at 45 degrees. The cosine of 45 degrees
// is 0.7071, so that the middle of the needle's outer part, at 0.5 of the radius, is 0.1768 from the centre each way.
TEST_F(DialTest, TheNeedlePointsWhereTheValueIs) {
    auto& dial = find<Dial>("SarnMeterRpm");
    EXPECT_FALSE(isNeedle(at(dial, 0.3232, 0.3232)));
    window.SarnMeterRpm.setValue(5000);
    frame();
    EXPECT_TRUE(isNeedle(at(dial, 0.3232, 0.3232)));
    EXPECT_FALSE(isNeedle(at(dial, 0.3232, 0.6768)));
}

// Two thirds of the scale are 180 degrees: straight up. A needle of 0.7 of the radius ends at 0.15 of the side.
TEST_F(DialTest, TheNeedleEndsAtItsLength) {
    window.SarnMeterboost.setValue(2);
    frame();
    auto& dial = find<Dial>("SarnMeterboost");
    EXPECT_TRUE(isNeedle(at(dial, 0.5, 0.25)));
    EXPECT_FALSE(isNeedle(at(dial, 0.5, 0.12)));
}

// The plate is a quarter of the side wide and a tenth high, from 0.35 and 0.75 on. The needle is above the centre.
TEST_F(DialTest, TheNumberStandsOnItsPlateBelowTheHub) {
    auto& dial = find<Dial>("SarnMeterRpm");
    const QRect square = dial.square();
    window.SarnMeterRpm.setValue(5000);
    frame();
    const QImage before = dial.grab().toImage();
    window.SarnMeterRpm.setValue(5008);
    frame();
    const QImage after = dial.grab().toImage();
    QRect changed;
    for (int y = square.y() + square.height() * 6 / 10; y < square.bottom(); ++y) {
        for (int x = square.x(); x < square.right(); ++x) {
            if (before.pixel(x, y) != after.pixel(x, y)) {
                changed |= QRect(x, y, 1, 1);
            }
        }
    }
    const double side = square.width();
    EXPECT_FALSE(changed.isEmpty());
    EXPECT_GE((changed.left() - square.x()) / side, 0.35);
    EXPECT_LE((changed.right() - square.x()) / side, 0.60);
    EXPECT_GE((changed.top() - square.y()) / side, 0.75);
    EXPECT_LE((changed.bottom() - square.y()) / side, 0.85);
}

// 255 twips are 17 pixels.
TEST_F(DialTest, TheHubIsADiscOfItsOwnSize) {
    auto& dial = find<Dial>("SarnMeterRpm");
    window.SarnMeterRpm.setValue(5000);
    frame();
    const QPoint centre = dial.square().center();
    const QImage image = dial.grab().toImage();
    const QRgb ink = image.pixel(centre);
    EXPECT_EQ(image.pixel(centre + QPoint(7, 0)), ink);
    EXPECT_EQ(image.pixel(centre + QPoint(0, 7)), ink);
    EXPECT_NE(image.pixel(centre + QPoint(10, 0)), ink);
    EXPECT_NE(image.pixel(centre + QPoint(0, 10)), ink);
}

TEST_F(DialTest, ThePeakMarkerStaysWhereTheNeedleWas) {
    auto& dial = find<Dial>("SarnMeterRpm");
    window.SarnMeterRpm.setValue(5000);
    window.SarnMeterRpm.setValue(0);
    frame();
    EXPECT_TRUE(isPeak(at(dial, 0.3232, 0.3232)));
    EXPECT_FALSE(isPeak(at(dial, 0.25, 0.5)));
}

TEST_F(DialTest, TheModelsDialIsAsWideAsTheOneOnTheScreen) {
    const auto& dial = find<Dial>("SarnMeterRpm");
    EXPECT_EQ(window.SarnMeterRpm.Width, dial.square().width() * 15);
    EXPECT_EQ(window.SarnMeterRpm.Height, window.SarnMeterRpm.Width);
}

TEST_F(DialTest, TheScaleAgreesWithTheNeedle) {
    const DialScale rpm = dialScaleOf(1);
    EXPECT_DOUBLE_EQ(rpm.degreesOf(0), 0);
    EXPECT_DOUBLE_EQ(rpm.degreesOf(5000), 135);
    EXPECT_DOUBLE_EQ(rpm.degreesOf(10000), 270);
    const DialScale boost = dialScaleOf(0);
    EXPECT_DOUBLE_EQ(boost.degreesOf(1), 90);
    EXPECT_DOUBLE_EQ(boost.degreesOf(3), 270);
    const QPointF left = dialPoint(90, 1, 200);
    EXPECT_NEAR(left.x(), 0, 1e-9);
    EXPECT_NEAR(left.y(), 100, 1e-9);
    const QPointF down = dialPoint(0, 0.5, 200);
    EXPECT_NEAR(down.x(), 100, 1e-9);
    EXPECT_NEAR(down.y(), 150, 1e-9);
}

TEST_F(DialTest, UnknownTypesLookLikeBoost) {
    EXPECT_EQ(dialScaleOf(7).max, 3);
}

// 9400, between two lines, lies at 253.8 degrees, 16.2 before three o'clock: x = 0.5 + 0.5 r cos 16.2, y = 0.5 - 0.5 r
// sin 16.2 with r = 0.935, the middle of the zone's band.
TEST_F(DialTest, TheRedZoneIsOnTheFaceOfEngineSpeedAlone) {
    EXPECT_TRUE(isNeedle(at(find<Dial>("SarnMeterRpm"), 0.9489, 0.3696)));
    EXPECT_FALSE(isNeedle(at(find<Dial>("SarnMeterboost"), 0.9489, 0.3696)));
}

TEST_F(DialTest, ANeedleThatStandsIsNotPainted) {
    auto& dial = find<Dial>("SarnMeterRpm");
    window.SarnMeterRpm.setValue(5000);
    frame();
    const PaintCounter counter(dial);
    window.SarnMeterRpm.setValue(5000);
    frame();
    EXPECT_EQ(counter.count(), 0);
    window.SarnMeterRpm.setValue(5100);
    frame();
    EXPECT_EQ(counter.count(), 1);
}

TEST_F(DialTest, NumbersAreThoseOfTheModel) {
    window.SarnMeterRpm.setValue(12000);
    window.SarnMeterboost.setValue(1.08);
    window.SarnGauge3.setValue(101);
    frame();
    EXPECT_EQ(find<Dial>("SarnMeterRpm").number(), "10000");
    EXPECT_EQ(find<Dial>("SarnMeterboost").number(), "1.08");
    EXPECT_EQ(find<Gauge>("SarnGauge3").number(), "100");
}

// The gauge begins at 135 degrees, counted clockwise from three o'clock, and has 2.7 degrees a unit: 50 is straight up.
TEST_F(DialTest, TheGaugesPointerIsWhereItsTipIs) {
    auto& gauge = find<Gauge>("SarnGauge3");
    window.SarnGauge3.setValue(50);
    frame();
    EXPECT_TRUE(isNeedle(at(gauge, 0.5, 0.2)));
    window.SarnGauge3.setValue(0);
    frame();
    EXPECT_FALSE(isNeedle(at(gauge, 0.5, 0.2)));
    EXPECT_TRUE(isNeedle(at(gauge, 0.5 - 0.25 * 0.7071, 0.5 + 0.25 * 0.7071)));
}

}  // namespace
}  // namespace korvane::views
