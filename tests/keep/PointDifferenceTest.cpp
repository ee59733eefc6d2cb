#include <gtest/gtest.h>

#include "keep/PointSamples.h"
#include "keep/point/PointDifference.h"

namespace korvane::keep {
namespace {

TEST(PointDifferenceTest, IsNothingBetweenEqualPoints) {
    EXPECT_EQ(differenceOf(fullPoint(), fullPoint()), PointDifference());
    EXPECT_EQ(wordsOf({}), "nothing");
}

TEST(PointDifferenceTest, CountsWhatIsKnownInBoth) {
    Snapshot one;
    Snapshot other;
    one.fuel.working[0] = 1;
    other.fuel.working[0] = 2;  // 1
    one.ignition.working[319] = 1;
    other.ignition.working[319] = 2;  // 2
    one.pwm.working[70] = 1;
    one.fuel.kept[5] = 1;  // not what it runs on
    other.fuel.kept[5] = 2;
    one.fuel.edited[5] = 1;  // not of the ECU
    one.eeprom[11] = {1, link::Known::Told};
    other.eeprom[11] = {2, link::Known::Sent};  // 1
    one.eeprom[12] = {1, link::Known::Told};
    other.eeprom[13] = {1, link::Known::Told};
    one.misc = MiscBytes{1, 2, 3};
    other.misc = MiscBytes{1, 3, 4};  // 2
    EXPECT_EQ(differenceOf(one, other), (PointDifference{2, 3}));
    other.misc.reset();
    EXPECT_EQ(differenceOf(one, other), (PointDifference{2, 1}));
}

// The fuel map is kept at 16 to 175, the ignition map at 180 to 339, cells 64 to 159 of the PWM table from 400 on.
TEST(PointDifferenceTest, CountsNoCellThatKeepsAMap) {
    Snapshot one;
    Snapshot other;
    for (const int address : {15, 16, 175, 176, 180, 339, 340, 400, 495, 496}) {
        one.eeprom.at(static_cast<std::size_t>(address)) = {1, link::Known::Told};
        other.eeprom.at(static_cast<std::size_t>(address)) = {2, link::Known::Told};
    }
    EXPECT_EQ(differenceOf(one, other).settings, 4);  // 15, 176, 340, 496
}

TEST(PointDifferenceTest, AMapAsItWasOnTheDeskIsWhatTheTunerHasSent) {
    const auto point = fullPoint();
    auto now = point;
    for (std::size_t cell = 0; cell < 160; ++cell) {
        now.fuel.working.at(cell) = point.fuel.edited.at(cell);
    }
    for (std::size_t cell = 160; cell < 320; ++cell) {
        now.fuel.working.at(cell).reset();
    }
    EXPECT_GT(differenceOf(now, point).mapCells, 0);
    EXPECT_EQ(changesSince(point, now).mapCells, 0);
    now.ignition.working[7] = static_cast<std::uint8_t>(*point.ignition.working[7] + 1);
    now.eeprom[0].byte ^= 1U;
    EXPECT_EQ(changesSince(point, now), (PointDifference{1, 1}));
    now.fuel.working[3] = static_cast<std::uint8_t>(point.fuel.edited[3] + 1);
    EXPECT_EQ(changesSince(point, now).mapCells, differenceOf(now, point).mapCells);
}

TEST(PointDifferenceTest, AnEmptyDeskWasNotSent) {
    auto point = fullPoint();
    point.fuel.edited = {};
    auto now = point;
    now.fuel.working.fill(0);
    EXPECT_GT(changesSince(point, now).mapCells, 0);
}

TEST(PointDifferenceTest, HasWords) {
    EXPECT_EQ(wordsOf({1, 0}), "1 map cell");
    EXPECT_EQ(wordsOf({0, 2}), "2 settings");
    EXPECT_EQ(wordsOf({12, 1}), "12 map cells and 1 setting");
}

TEST(PointDifferenceTest, APointCoversWhatItKnows) {
    EXPECT_TRUE(covers(fullPoint(), fullPoint()));
    auto less = fullPoint();
    less.fuel.working[3].reset();
    less.fuel.edited = {};
    less.misc.reset();
    less.eeprom[7] = {};
    EXPECT_TRUE(covers(fullPoint(), less));
    EXPECT_FALSE(covers(less, fullPoint()));
}

TEST(PointDifferenceTest, APointDoesNotCoverWhatHasChanged) {
    const auto after = [](auto change) {
        auto now = fullPoint();
        change(now);
        return covers(fullPoint(), now);
    };
    EXPECT_FALSE(after([](auto& now) { now.pwm.working[3] = 77; }));
    EXPECT_FALSE(after([](auto& now) { now.ignition.kept[3] = 77; }));
    EXPECT_FALSE(after([](auto& now) { now.fuel.edited[3] = 77; }));
    EXPECT_FALSE(after([](auto& now) { now.misc->at(8) = 77; }));
    EXPECT_FALSE(after([](auto& now) { now.eeprom[9].byte = 77; }));
    EXPECT_FALSE(after([](auto& now) { now.ecu.swType = 12; }));
    EXPECT_FALSE(after([](auto& now) { now.ecu.hwVersion = 3.0F; }));
    EXPECT_TRUE(after([](auto& now) { now.eeprom[9].known = link::Known::Told; }));  // the byte was sent before
    EXPECT_TRUE(after([](auto& now) { now.time.year = 2030; }));
}

}  // namespace
}  // namespace korvane::keep
