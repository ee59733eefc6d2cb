#include <cmath>

#include "LiveBench.h"
#include "controls/ModelBench.h"
#include "live/SarnGauge.h"

namespace korvane::live {
namespace {

constexpr double kTolerance = 4e-9;  // the face's angles have ten digits or fewer, which moves a point by up to 3e-9
const double kHalfRoot2 = std::sqrt(0.5);

class SarnGaugeTest : public controls::ModelBench {
protected:
    static void expectPoint(const DialPoint& point, double x, double y) {
        EXPECT_NEAR(point.x, x, kTolerance);
        EXPECT_NEAR(point.y, y, kTolerance);
    }

    SarnGauge gauge_{window_, "SarnGauge3"};
};

TEST_F(SarnGaugeTest, StartsAtZeroWithTheStoredCaption) {
    EXPECT_EQ(gauge_.value(), 0);
    EXPECT_EQ(gauge_.number(), "0");
    EXPECT_EQ(gauge_.Caption.get(), "Name");
}

TEST_F(SarnGaugeTest, ClampsItsValue) {
    gauge_.setValue(101);
    EXPECT_EQ(gauge_.value(), 100);
    EXPECT_EQ(gauge_.number(), "100");
    gauge_.setValue(-1);
    EXPECT_EQ(gauge_.value(), 0);
    EXPECT_EQ(gauge_.number(), "0");
}

TEST_F(SarnGaugeTest, TheSameValueTwiceRedrawsOnce) {
    gauge_.setValue(40);
    gauge_.setValue(40);
    EXPECT_EQ(gauge_.redraws(), 1);
    gauge_.setValue(100);
    gauge_.setValue(500);
    EXPECT_EQ(gauge_.redraws(), 2);
}

// 135 degrees at 0 with y downwards: down and left. 2.7 degrees a unit, 405 at 100: down and right.
TEST_F(SarnGaugeTest, ThePointerTurnsOver270Degrees) {
    expectPoint(gauge_.pointerTip(), (1 - 0.9 * kHalfRoot2) / 2, (1 + 0.9 * kHalfRoot2) / 2);
    gauge_.setValue(100);
    expectPoint(gauge_.pointerTip(), (1 + 0.9 * kHalfRoot2) / 2, (1 + 0.9 * kHalfRoot2) / 2);
    gauge_.setValue(10);  // 162 degrees
    expectPoint(gauge_.pointerTip(), (1 - 0.9 * 0.951056516295) / 2, (1 + 0.9 * 0.309016994375) / 2);
}

// 4.712388975 is 5.38469e-9 short of 270 degrees.
TEST_F(SarnGaugeTest, ItsAnglesHaveTheirTenDigits) {
    gauge_.setValue(50);
    EXPECT_NEAR(gauge_.pointerTip().x - 0.5, -2.4231105e-9, 1e-13);
    EXPECT_NEAR(gauge_.pointerTip().y, 0.05, kTolerance);
}

TEST_F(SarnGaugeTest, TicksRunFrom7TenthsTo9TenthsOfTheRadius) {
    EXPECT_EQ(SarnGauge::kTickCount, 100);
    const auto last = SarnGauge::tick(100);
    expectPoint(last.inner, (1 + 0.7 * kHalfRoot2) / 2, (1 + 0.7 * kHalfRoot2) / 2);
    expectPoint(last.outer, (1 + 0.9 * kHalfRoot2) / 2, (1 + 0.9 * kHalfRoot2) / 2);
    for (int i = 1; i <= 100; ++i) {
        gauge_.setValue(i);
        expectPoint(SarnGauge::tick(i).outer, gauge_.pointerTip().x, gauge_.pointerTip().y);
    }
}

TEST_F(SarnGaugeTest, TheEndLinesRunFromTheCentreTo9TenthsOfTheRadius) {
    expectPoint(SarnGauge::startLine().inner, 0.5, 0.5);
    expectPoint(SarnGauge::startLine().outer, (1 - 0.9 * kHalfRoot2) / 2, (1 + 0.9 * kHalfRoot2) / 2);
    expectPoint(SarnGauge::endLine().inner, 0.5, 0.5);
    expectPoint(SarnGauge::endLine().outer, (1 + 0.9 * kHalfRoot2) / 2, (1 + 0.9 * kHalfRoot2) / 2);
}

TEST_F(SarnGaugeTest, StepsUpAndFromAbove99BackTo0) {
    gauge_.setValue(97);
    gauge_.step();
    EXPECT_EQ(gauge_.value(), 98);
    gauge_.step();
    EXPECT_EQ(gauge_.value(), 99);
    gauge_.step();
    EXPECT_EQ(gauge_.value(), 0);
    gauge_.step();
    EXPECT_EQ(gauge_.value(), 1);
}

TEST_F(SarnGaugeTest, IsReachedByName) {
    gauge_.findProperty("value")->set(gauge_, controls::Value(std::int64_t{33}));
    EXPECT_EQ(gauge_.value(), 33);
    gauge_.findProperty("Caption")->set(gauge_, controls::Value(std::string("Throttle")));
    EXPECT_EQ(gauge_.Caption.get(), "Throttle");
}

}  // namespace
}  // namespace korvane::live
