#include <cmath>

#include "EditingBench.h"
#include "core/Numbers.h"
#include "maps/panes/MapStatus.h"

namespace korvane::maps {
namespace {

constexpr MapNoun kNoun{"Fuel", "fuel", "ms"};

TEST(StatusWords, ACellNamesItsPlaceValueAndCount) {
    EXPECT_EQ(cellWords(kNoun, kOrdinaryMaps, 35, {.edited = {4.35, 87}, .received = {4.35, 87}}),
              "Fuel, 2500 RPM, 20-30 %: 4.35 ms, count 87");
}

TEST(StatusWords, AnEditedCellNamesItsOldValueToo) {
    EXPECT_EQ(cellWords(kNoun, kLargeMaps, 319, {.edited = {4.35, 87}, .received = {4.2, 84}}),
              "Fuel, 10500 RPM, 150-160 %: 4.35 ms (was 4.2), count 87 (was 84)");
}

TEST(StatusWords, PowerAndAPulseThatIsTooLongAreSaid) {
    EXPECT_EQ(cellWords(kNoun, kOrdinaryMaps, 0,
                        {.edited = {4, 80}, .received = {4, 80}, .tooLong = true, .power = 38.5, .injectorSize = 550}),
              "Fuel, 1000 RPM, 0-10 %: 4 ms, count 80, 38.5 hp with 550 cc, too long for this speed");
}

TEST(StatusWords, ABlockHasItsSumWithoutTheErrorsOfFloatingPoint) {
    EXPECT_EQ(blockWords(kNoun, {3, 5}, 64.6830000002), "Fuel block of 3 cells, sum 64.683 ms");
}

TEST(StatusWords, UnsentCellsAreCountedMapByMap) {
    const auto words = [](UnsentCells fuel, UnsentCells ignition) {
        return unsentWords(std::vector<UnsentOfMap>{{"fuel", fuel}, {"ignition", ignition}});
    };
    EXPECT_EQ(words({}, {}), "");
    EXPECT_EQ(words({12, 0}, {}), "Not sent: 12 fuel");
    EXPECT_EQ(words({12, 0}, {3, 0}), "Not sent: 12 fuel, 3 ignition");
    EXPECT_EQ(words({0, 1}, {}), "Not stored: 1 fuel");
    EXPECT_EQ(words({12, 1}, {0, 2}), "Not sent: 12 fuel; not stored: 1 fuel, 2 ignition");
}

TEST(StatusWords, WhatHasBecomeOfWhatWasSentIsToldMapByMap) {
    using link::Store;
    const auto words = [](Store fuel, Store pwm) {
        return storeWords(std::vector<StoreOfMap>{{"fuel", fuel}, {"PWM", pwm}});
    };
    EXPECT_EQ(words(Store::Nothing, Store::Nothing), "");
    EXPECT_EQ(words(Store::NotOrdered, Store::Nothing), "Sent fuel: not told to store");
    EXPECT_EQ(words(Store::Ordered, Store::Acknowledged),
              "Sent fuel: told to store, not acknowledged; sent PWM: acknowledged, told to store");
    EXPECT_EQ(words(Store::Seen, Store::Lost),
              "Sent fuel: stored, seen after a restart; sent PWM: not stored, gone with the restart");
    EXPECT_EQ(words(Store::NotKept, Store::Nothing), "Sent fuel: not stored, seen after a restart");
    EXPECT_EQ(words(Store::InDoubt, Store::Nothing), "Sent fuel: not told to store, perhaps gone");
    EXPECT_EQ(words(Store::AsStored, Store::Unknown), "");
}

TEST(StatusWords, MapsThatWereOnlyReadAreNamed) {
    using link::Store;
    const auto words = [](Store fuel, Store pwm) {
        return unknownWords(std::vector<StoreOfMap>{{"fuel", fuel}, {"PWM", pwm}});
    };
    EXPECT_EQ(words(Store::Unknown, Store::Unknown), "Not known whether stored: fuel, PWM");
    EXPECT_EQ(words(Store::AsStored, Store::Unknown), "Not known whether stored: PWM");
    EXPECT_EQ(words(Store::NotOrdered, Store::Nothing), "");
}

class MapStatusTest : public GridEditingTest {
protected:
    MapStatusTest() {
        tables_.IgnMapIn.fill(50);
        tables_.IgnMapOut.fill(50);
        window_.populateIGN();
    }
    [[nodiscard]] MapStatus status() const { return statusOf(window_); }
};

TEST_F(MapStatusTest, TellsOfTheCellWithTheFocus) {
    EXPECT_EQ(status().cell, "");
    window_.setFocus(&window_.ign(17));
    EXPECT_EQ(status().cell, "Ignition, 1500 RPM, 10-20 %: 10 deg, count 50");
    window_.ign(17).keyDown(kKeyPlus, 0);
    EXPECT_EQ(status().cell, "Ignition, 1500 RPM, 10-20 %: 10.2 deg (was 10), count 51 (was 50)");
    window_.setFocus(&window_.btnReadIgn);
    EXPECT_EQ(status().cell, "");
}

// The scale of mode 2 is TickB; the time between two injections at 1000 rpm is 120 ms / 2. No offset.
TEST_F(MapStatusTest, TellsThePowerOfAFuelCell) {
    tables_.FuelMapOut[0] = 100;
    tables_.NewInjectorSize = 550;
    window_.populateFuelOUT();
    window_.setFocus(&window_.fuel(0));
    const double time = std::floor(100 * static_cast<double>(static_cast<float>(tables_.TickB)) * 1000) / 1000;
    const double power = std::floor(550 / 10.51 * (time / 60) / 0.6 * 4.0 * 10.0) / 10;
    EXPECT_EQ(status().cell, "Fuel, 1000 RPM, 0-10 %: " + core::textOf(time) + " ms (was 0), count 100 (was 0), " +
                                 core::textOf(power) + " hp with 550 cc");
}

TEST_F(MapStatusTest, TellsTargetAndMeanOfTheAnalyser) {
    window_.fillTargets();
    window_.setFocus(&window_.analys(17));
    EXPECT_EQ(status().cell, "Air-fuel ratio, 1500 RPM, 10-20 %: target 12.5");
    analyser_.averages[17] = 13.25F;
    EXPECT_EQ(status().cell, "Air-fuel ratio, 1500 RPM, 10-20 %: target 12.5, measured 13.25");
}

TEST_F(MapStatusTest, SumsAllCellsThatTheBlockCommandsActOn) {
    selectBlock(window_.ign, 15, 16);
    EXPECT_EQ(status().block, "Ignition block of 2 cells, sum 20 deg");
    forgetBlock(window_.ign);
    EXPECT_EQ(status().block, "");
}

TEST_F(MapStatusTest, TheBlockOfTheGridWithTheFocusComesFirst) {
    window_.fuel.fill.NeverRead = false;
    selectBlock(window_.fuel, 0, 3);
    selectBlock(window_.ign, 0, 1);
    EXPECT_EQ(status().block, "Fuel block of 4 cells, sum 0 ms");
    window_.setFocus(&window_.pwm(70));
    EXPECT_EQ(status().block, "Fuel block of 4 cells, sum 0 ms");
    window_.setFocus(&window_.ign(5));
    selectBlock(window_.ign, 0, 1);
    EXPECT_EQ(status().block, "Ignition block of 2 cells, sum 20 deg");
}

TEST_F(MapStatusTest, CountsTheUnsentCellsOfAllMaps) {
    tables_.FuelMapOut[3] = 1;
    tables_.IgnMapOut[3] = 1;
    tables_.IgnMapOut[4] = 1;
    EXPECT_EQ(status().unsent, "Not sent: 1 fuel, 2 ignition");
}

TEST_F(MapStatusTest, SaysNothingWhereNoNumberCanBeDrawn) {
    window_.fuel.fill.NeverRead = false;
    tables_.InjOff_type = 0;
    window_.txtMisc(2).Text = "1e300";
    window_.setFocus(&window_.fuel(0));
    EXPECT_EQ(status().cell, "");
}

}  // namespace
}  // namespace korvane::maps
