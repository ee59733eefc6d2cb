#include <gtest/gtest.h>

#include "core/ParameterNames.h"
#include "ecu/engine/Calibration.h"
#include "ecu/engine/InjectionScale.h"

namespace korvane::ecu {
namespace {

FirmwareMemory memoryOf(int type) {
    return {firmwareType(type), {}};
}

void write(FirmwareMemory& memory, std::string_view name, int value) {
    memory.write(core::addressOf(name), static_cast<std::uint8_t>(value));
}

// Counts of 256, 512, 768 and 1014 clocks of 18.432 MHz.
constexpr double kTick256 = 0.0138889;
constexpr double kTick512 = 0.0277778;
constexpr double kTick768 = 0.0416667;
constexpr double kTick1014 = 0.0550130;

TEST(InjectionScale, OfSmallFirmwareFollowsModeAndMultiplier) {
    EXPECT_NEAR(msPerCount(2, 2, false), kTick512, 1e-7);
    EXPECT_NEAR(msPerCount(2, 3, false), kTick768, 1e-7);
    EXPECT_NEAR(msPerCount(1, 2, false), kTick1014, 1e-7);
    EXPECT_NEAR(msPerCount(1, 3, false), kTick1014, 1e-7);
    EXPECT_NEAR(msPerCount(4, 2, false), kTick256, 1e-7);
    EXPECT_NEAR(msPerCount(0, 3, false), kTick256, 1e-7);
}

TEST(InjectionScale, OfLargeFirmwareIsWider) {
    for (const int mode : {1, 2}) {
        EXPECT_NEAR(msPerCount(mode, 6, true), 2 * kTick768, 1e-6);
        EXPECT_NEAR(msPerCount(mode, 5, true), kTick512 + kTick768, 1e-6);
        EXPECT_NEAR(msPerCount(mode, 4, true), 2 * kTick512, 1e-6);
        EXPECT_NEAR(msPerCount(mode, 3, true), kTick768, 1e-7);
        EXPECT_NEAR(msPerCount(mode, 2, true), kTick512, 1e-7);
    }
    EXPECT_NEAR(msPerCount(4, 6, true), kTick256, 1e-7);
}

TEST(InjectionScale, OfTheOffsetIsAQuarterOfAFineCount) {
    EXPECT_NEAR(msPerOffsetCount(), 0.0034722, 1e-7);
}

TEST(Calibration, PulseIsCountsTimesScaleAndTheOffset) {
    FirmwareMemory memory = memoryOf(11);
    memory.setCell(MapKind::Fuel, 84, 100);
    EXPECT_NEAR(calibrationOf(memory).pulse[84], 2.77778, 1e-4);
    memory.write(8, 20);
    EXPECT_NEAR(calibrationOf(memory).pulse[84], 2.77778 + 20 * 0.0034722, 1e-4);
    write(memory, "INJ_MODE_OFFSET", 4);
    EXPECT_NEAR(calibrationOf(memory).pulse[84], 1.38889 + 20 * 0.0034722, 1e-4);
}

TEST(Calibration, TheNeedInCountsAllowsForScaleAndOffset) {
    FirmwareMemory memory = memoryOf(11);
    const double before = neededCounts(memory)[84];
    write(memory, "INJ_MODE_OFFSET", 4);
    EXPECT_NEAR(neededCounts(memory)[84], 2 * before, 1e-6);
    memory.write(8, 16);
    EXPECT_NEAR(neededCounts(memory)[84], 2 * before - 4, 1e-6) << "16 offset counts are 4 fine counts";
    EXPECT_EQ(neededCounts(memory)[160], 0);
}

TEST(Calibration, AdvanceIsAFifthOfADegreeACountAndTheOffset) {
    FirmwareMemory memory = memoryOf(11);
    memory.setCell(MapKind::Ignition, 84, 100);
    EXPECT_NEAR(calibrationOf(memory).advance[84], 20.0, 1e-9);
    memory.write(9, 108);
    EXPECT_NEAR(calibrationOf(memory).advance[84], 18.0, 1e-9);
}

TEST(Calibration, LoadFollowsGainOffsetAndSource) {
    FirmwareMemory memory = memoryOf(11);
    EXPECT_NEAR(calibrationOf(memory).loadOf(0.5, 0.2), 50.0, 1e-9);
    write(memory, "MAPGAIN_OFF", 5);
    EXPECT_NEAR(calibrationOf(memory).loadOf(0.5, 0.2), 25.0, 1e-9);
    write(memory, "MAPOFFSET_OFF", 10);
    EXPECT_NEAR(calibrationOf(memory).loadOf(0.5, 0.2), 20.0, 1e-9);
    EXPECT_NEAR(calibrationOf(memory).manifoldOf(20.0), 0.5, 1e-9);
    EXPECT_EQ(calibrationOf(memory).loadOf(0.05, 0.2), 0.0);
    write(memory, "LOAD_MODE", 1);
    EXPECT_NEAR(calibrationOf(memory).loadOf(0.5, 0.2), 20.0, 1e-9);
}

TEST(Calibration, ThrottleIsTheShareBetweenItsTaughtEnds) {
    FirmwareMemory memory = memoryOf(11);
    EXPECT_NEAR(calibrationOf(memory).throttleOf(125), 0.5, 1e-9);
    EXPECT_EQ(calibrationOf(memory).throttleOf(10), 0.0);
    EXPECT_EQ(calibrationOf(memory).throttleOf(255), 1.0);
    write(memory, "MINTHR_OFF", 100);
    write(memory, "MAXTHR_OFF", 150);
    EXPECT_NEAR(calibrationOf(memory).throttleOf(125), 0.5, 1e-9);
    EXPECT_NEAR(calibrationOf(memory).throttleOf(110), 0.2, 1e-9);
    write(memory, "MAXTHR_OFF", 100);
    EXPECT_EQ(calibrationOf(memory).throttleOf(101), 1.0) << "no division by zero";
}

TEST(Calibration, CellsAreRowsOfColumns) {
    const Calibration small = calibrationOf(memoryOf(11));
    EXPECT_EQ(small.cellOf(1000, 0), 0);
    EXPECT_EQ(small.cellOf(1499, 9.9), 0);
    EXPECT_EQ(small.cellOf(1500, 10.0), 17);
    EXPECT_EQ(small.cellOf(8500, 99), 159);
    EXPECT_EQ(small.cellOf(20000, 500), 159);
    EXPECT_EQ(small.cellOf(0, -5), 0);
    const Calibration large = calibrationOf(memoryOf(14));
    EXPECT_EQ(large.cellOf(1500, 10.0), 21);
    EXPECT_EQ(large.cellOf(10500, 155), 319);
}

TEST(Calibration, TwoFunctionsAreOnWhenTheirBitIsClear) {
    FirmwareMemory memory = memoryOf(11);
    memory.write(6, 0xFF);
    memory.write(7, 0xFF);
    EXPECT_TRUE(calibrationOf(memory).enabled(Function::Injection));
    EXPECT_FALSE(calibrationOf(memory).enabled(Function::RpmLimit));
    EXPECT_FALSE(calibrationOf(memory).enabled(Function::ShiftLight));
    memory.write(6, 0);
    memory.write(7, 0);
    EXPECT_FALSE(calibrationOf(memory).enabled(Function::Injection));
    EXPECT_TRUE(calibrationOf(memory).enabled(Function::RpmLimit));
    EXPECT_TRUE(calibrationOf(memory).enabled(Function::ShiftLight));
}

}  // namespace
}  // namespace korvane::ecu
