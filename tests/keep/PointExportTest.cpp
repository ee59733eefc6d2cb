#include <gmock/gmock.h>
#include <memory>

#include "keep/PointSamples.h"
#include "keep/point/PointExport.h"

namespace korvane::keep {
namespace {

using testing::HasSubstr;

TEST(PointExportTest, AMapOfTheEcuIsKnownAsAWhole) {
    auto point = fullPoint();
    EXPECT_TRUE(mapOf(point, &Snapshot::fuel, MapFrom::Ecu).isKnown);
    EXPECT_EQ(mapOf(point, &Snapshot::fuel, MapFrom::Ecu).bytes[5], point.fuel.working[5]);
    EXPECT_EQ(mapOf(point, &Snapshot::fuel, MapFrom::Desk).bytes[5], point.fuel.edited[5]);
    point.fuel.working[160].reset();  // beyond the small map
    EXPECT_TRUE(mapOf(point, &Snapshot::fuel, MapFrom::Ecu).isKnown);
    point.fuel.working[159].reset();
    EXPECT_FALSE(mapOf(point, &Snapshot::fuel, MapFrom::Ecu).isKnown);
    point.pwm.working[63].reset();  // the ECU does not keep it
    EXPECT_TRUE(mapOf(point, &Snapshot::pwm, MapFrom::Ecu).isKnown);
    point.pwm.working[64].reset();
    EXPECT_FALSE(mapOf(point, &Snapshot::pwm, MapFrom::Ecu).isKnown);
}

TEST(PointExportTest, LargeMapsNeedBothHalves) {
    auto point = fullPoint();
    point.ecu.swType = 14;
    EXPECT_EQ(mapSizeOf(point.ecu), 320);
    point.ignition.working[319].reset();
    EXPECT_FALSE(mapOf(point, &Snapshot::ignition, MapFrom::Ecu).isKnown);
}

TEST(PointExportTest, ADeskOfZerosIsNotKnown) {
    EXPECT_FALSE(mapOf(Snapshot(), &Snapshot::fuel, MapFrom::Desk).isKnown);
    EXPECT_TRUE(mapOf(partPoint(), &Snapshot::pwm, MapFrom::Desk).isKnown);
}

TEST(PointExportTest, OnlyKnownCellsComeBack) {
    Snapshot point;
    point.fuel.working[3] = 7;
    core::MapImage desk;
    desk.fill(9);
    bringBack(point, &Snapshot::fuel, MapFrom::Ecu, desk);
    EXPECT_EQ(desk[3], 7);
    EXPECT_EQ(desk[4], 9);
    bringBack(point, &Snapshot::fuel, MapFrom::Desk, desk);
    EXPECT_EQ(desk[159], 0);
    EXPECT_EQ(desk[160], 9);  // of no small map
}

TEST(PointExportTest, ATuneHasWhatTheEcuHad) {
    const auto point = fullPoint();
    EXPECT_EQ(whyNoTune(point), "");
    const auto tables = std::make_unique<core::SharedTables>();
    fillTune(point, *tables);
    EXPECT_EQ(tables->FuelMapOut[100], point.fuel.working[100]);
    EXPECT_EQ(tables->IgnMapOut[100], point.ignition.working[100]);
    EXPECT_EQ(tables->PwmMapOut[100], point.pwm.working[100]);
    EXPECT_EQ(tables->MiscBlock[1], 9);
    EXPECT_EQ(tables->MiscBlock[9], 1);
    EXPECT_EQ(std::get<std::uint8_t>(tables->EEParams[365].value), 365 * 5 % 256);
    EXPECT_EQ(tables->EEParams[365].name, "MINTHR_OFF");
    // A word: 2 * 5, and 3 * 5 in its high byte.
    EXPECT_EQ(std::get<std::int32_t>(tables->EEParams[2].value), 10 + 256 * 15);
}

TEST(PointExportTest, ATuneHasTheDeskOfAMapThatTheEcuDidNotTell) {
    auto point = fullPoint();
    point.fuel.working[7].reset();
    const auto tables = std::make_unique<core::SharedTables>();
    fillTune(point, *tables);
    EXPECT_EQ(tables->FuelMapOut, point.fuel.edited);
}

TEST(PointExportTest, NoTuneHasAZeroForWhatIsNotKnown) {
    auto point = fullPoint();
    point.misc.reset();
    EXPECT_THAT(whyNoTune(point), HasSubstr("the misc block"));
    point.ignition = {};
    EXPECT_THAT(whyNoTune(point), HasSubstr("the ignition map"));
    point = fullPoint();
    point.fuel = point.pwm = {};
    point.ecu.swType = 30;  // it has neither
    EXPECT_EQ(whyNoTune(point), "");
}

TEST(PointExportTest, AnImageHasEachByte) {
    auto point = fullPoint();
    point.eeprom[2000] = {};
    const auto image = imageOf(point);
    EXPECT_EQ(image.refusal, "");
    EXPECT_EQ(image.bytes[1010], 1010 * 5 % 256);
    EXPECT_EQ(image.bytes[2000], 0);
    // The fuel map is kept from 16 on: what was stored last is what the ECU has there.
    EXPECT_EQ(image.bytes[16], point.fuel.kept[0]);
    EXPECT_EQ(image.bytes[400], point.pwm.kept[64]);
}

TEST(PointExportTest, NoImageHasAZeroThatAnUploadWouldSend) {
    auto point = fullPoint();
    point.eeprom[500] = {};
    point.eeprom[1010] = {};
    EXPECT_EQ(imageOf(point).refusal,
              "No image: 2 of the cells 0 to 1010 are not known, the first is 500. \"Backup EEPROM\" reads them all.");
    point = fullPoint();
    point.eeprom[16] = {};
    EXPECT_EQ(imageOf(point).refusal, "");
    point.fuel.kept[0].reset();
    EXPECT_NE(imageOf(point).refusal, "");
}

}  // namespace
}  // namespace korvane::keep
