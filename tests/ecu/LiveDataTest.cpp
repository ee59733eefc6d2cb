// The live payload against the engine behind it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Wire.h"

namespace korvane::ecu::test {
namespace {

int flagsOf(const Bytes& payload) {
    return payload.at(11) * 256 + payload.at(12);
}

// The engine at 3000, half load and a fifth of the throttle, long enough for lambda to settle.
Wire settled(const std::string& more = "") {
    Wire wire("drive=3000:50:20" + more);
    wire.poll();
    wire.pass(10.0);
    return wire;
}

TEST(LiveData, SaysWhatTheEngineDoes) {
    Wire wire = settled();
    const Bytes payload = wire.poll();
    EXPECT_EQ(payload[0] * 256 + payload[1], 3000);
    EXPECT_EQ(payload[6], 62) << "throttle sensor: 20 + 20 percent of 210";
    EXPECT_EQ(payload[9], 2) << "row of the acceleration pump";
    EXPECT_EQ(payload[10], 84) << "row 5 of 16 cells, column 4";
    EXPECT_NEAR(payload[5], 41, 2) << "0.5 bar: (1.0 V - 0.2 V) of 5 V in 255 steps";
    EXPECT_EQ(payload[16], wire.ecu.workingMap(MapKind::Ignition)[84]);
}

TEST(LiveData, DutyIsTheShareOfTheTimeBetweenInjections) {
    Wire wire = settled();
    // Two injections in the 40 ms of a cycle at 3000; 512 clocks of 18.432 MHz a count; full is 256.
    const double pulse = wire.ecu.workingMap(MapKind::Fuel)[84] * 512.0 / 18432.0;
    EXPECT_EQ(wire.poll()[8], static_cast<int>(pulse * 2.0 / 40.0 * 256.0 + 0.5));
}

TEST(LiveData, ALampForEachState) {
    Wire wire = settled();
    // Running, ignition, injection, choke (the engine is cold).
    EXPECT_EQ(flagsOf(wire.poll()), 0x2000 + 0x20 + 0x08 + 0x02);
}

TEST(LiveData, StartHelpEndsWithItsTime) {
    Wire wire("drive=3000:50:20");
    wire.poll();
    EXPECT_EQ(flagsOf(wire.poll()) & 0x04, 0x04);
    wire.pass(5.0);
    EXPECT_EQ(flagsOf(wire.poll()) & 0x04, 0);
}

TEST(LiveData, AStoppedEngineOnlySaysThatItStands) {
    Wire wire("drive=off");
    wire.poll();
    const Bytes payload = wire.poll();
    EXPECT_EQ(payload[0] * 256 + payload[1], 0);
    EXPECT_EQ(flagsOf(payload), 0x1000);
    EXPECT_EQ(payload[8], 0);
    EXPECT_NEAR(payload[4], 125, 2);
    EXPECT_EQ(payload[7], 255) << "fresh air";
    EXPECT_NEAR(payload[5], 92, 2) << "1 bar: (2.0 V - 0.2 V) of 5 V in 255 steps is 91.8";
}

TEST(LiveData, TemperaturesAreShiftedFromVersion1140On) {
    for (const auto& [version, expected] : {std::pair{"1139", 20}, {"1140", 70}, {"3386", 70}}) {
        Wire wire(std::string("drive=off,version=") + version);
        const Bytes payload = wire.poll();
        EXPECT_EQ(payload[2], expected) << version;
        EXPECT_EQ(payload[3], expected) << version;
    }
}

TEST(LiveData, MultiplexedChannelsTakeTurns) {
    Wire wire("drive=3000:50:20");
    int words[8] = {};
    for (int turn = 0; turn < 16; ++turn) {
        const Bytes payload = wire.poll();
        EXPECT_EQ(payload[17] / 16, turn % 8);
        words[turn % 8] = payload[17] % 16 * 256 + payload[18];
    }
    EXPECT_EQ(words[3], 50) << "load in percent";
    EXPECT_EQ(words[7], 140) << "target boost in kPa";
    for (int input = 4; input < 7; ++input) {
        EXPECT_LE(words[input], 255) << "input voltages are bytes";
    }
}

TEST(LiveData, ALargeMapHasItsOwnPlaces) {
    Wire wire("type=14,drive=3000:105:50");
    wire.poll();
    EXPECT_EQ(wire.poll()[10], 204) << "row 10 of 20 cells, column 4";
    EXPECT_EQ(wire.ecu.set("drive", "12000:160:100", wire.now), "");
    wire.pass(0.1);
    wire.poll();
    EXPECT_EQ(wire.ecu.engine().cell, 319);
    EXPECT_EQ(wire.poll()[10], 255) << "the most that a byte can say";
}

TEST(LiveData, PlacesBeyondTheMapAreItsEdge) {
    Wire wire("drive=700:0:0");
    wire.poll();
    EXPECT_EQ(wire.poll()[10], 0);
    EXPECT_EQ(wire.ecu.set("drive", "9900:130:100", wire.now), "");
    wire.pass(0.1);
    EXPECT_EQ(wire.poll()[10], 159);
}

TEST(LiveData, LimiterAndShiftLightFollowTheirSettings) {
    Wire wire("drive=6000:50:50");
    wire.poll();
    EXPECT_EQ(flagsOf(wire.poll()) & 0xC000, 0);
    wire.send({'W', 4, 0, 0x88, 0x88, 0xA8, 'W', 5, 0, 0x13, 0x13, 0xA8});  // shift light at 5000
    wire.pass(1.0);
    EXPECT_EQ(flagsOf(wire.poll()) & 0xC000, 0x4000);
    wire.send({'W', 2, 0, 0x88, 0x88, 0xA8, 'W', 3, 0, 0x13, 0x13, 0xA8});  // limit at 5000
    wire.pass(1.0);
    EXPECT_EQ(flagsOf(wire.poll()) & 0xC000, 0xC000);
    wire.send({'M', 0x88, 0x13, 0x88, 0x13, 0x3F, 0xCD, 0, 128, 6, 0xB2});  // both switched off
    wire.pass(1.0);
    EXPECT_EQ(flagsOf(wire.poll()) & 0xC000, 0);
}

// Its limit of 7200 comes from row 1908 and another one takes effect at the next start.
TEST(LiveData, ALimiterBoxTakesItsLimitAtItsStart) {
    Wire wire("type=112,drive=6000:50:50");
    wire.send({'W', 0x74, 7, 0x88, 0x88, 0xA8, 'W', 0x75, 7, 0x13, 0x13, 0xA8});  // 5000
    wire.send({'W', 2, 0, 0x88, 0x88, 0xA8, 'W', 3, 0, 0x13, 0x13, 0xA8});        // that of other boxes
    wire.pass(1.0);
    EXPECT_EQ(flagsOf(wire.poll()) & 0x8000, 0);
    EXPECT_EQ(wire.ask({'X', 0xA7}), (Bytes{170, 0, 85}));
    wire.pass(1.0);
    EXPECT_EQ(flagsOf(wire.poll()) & 0x8000, 0x8000);
}

TEST(LiveData, AnIgnitionBoxInjectsNothing) {
    Wire wire = settled(",type=31");
    const Bytes payload = wire.poll();
    EXPECT_EQ(payload[8], 0);
    EXPECT_EQ(flagsOf(payload) & 0x28, 0x20);
    EXPECT_NEAR(payload[7], (13.2 - 10.0) * 25.6, 8.0) << "the carburettor runs it a little rich";
}

TEST(LiveData, AnInjectionBoxFiresNothing) {
    Wire wire = settled(",type=20");
    const Bytes payload = wire.poll();
    EXPECT_EQ(payload[16], 0);
    EXPECT_EQ(flagsOf(payload) & 0x28, 0x08);
}

TEST(LiveData, LambdaFollowsFromTheFuelMapAndTheNeed) {
    Wire wire = settled();
    const double need = wire.ecu.trueFuelMap()[84];
    const double given = wire.ecu.workingMap(MapKind::Fuel)[84];
    EXPECT_NEAR(wire.poll()[7], (12.5 * need / given - 10.0) * 25.6, 8.0);
}

TEST(LiveData, LessFuelIsLeaner) {
    Wire wire = settled();
    const auto given = wire.ecu.workingMap(MapKind::Fuel)[84];
    wire.poll();
    const double before = wire.ecu.engine().afr;
    const auto less = static_cast<std::uint8_t>(given * 4 / 5);
    wire.send({'g', 84, 84, less, less, 0x98});
    wire.pass(2.0);
    wire.poll();
    EXPECT_NEAR(wire.ecu.engine().afr, before * given / less, 0.01);
    wire.send({'g', 85, 85, 255, 255, 0x98});
    wire.pass(2.0);
    wire.poll();
    EXPECT_NEAR(wire.ecu.engine().afr, before * given / less, 0.01) << "another cell does not matter";
}

TEST(LiveData, LambdaComesLaterThanTheFuel) {
    Wire wire = settled();
    wire.poll();
    const double before = wire.ecu.engine().afr;
    wire.send({'g', 84, 84, 255, 255, 0x98});
    wire.now += 30'000;
    wire.ecu.receive('x', wire.now);
    EXPECT_NEAR(wire.ecu.engine().afr, before, 0.01);
    wire.pass(0.5);
    wire.poll();
    EXPECT_LT(wire.ecu.engine().afr, before - 0.5);
}

TEST(LiveData, ARichMapReadsTenAndNoLess) {
    Wire wire = settled();
    wire.send({'g', 84, 84, 255, 255, 0x98});
    wire.pass(2.0);
    EXPECT_LT(wire.poll()[7], 8);
}

}  // namespace
}  // namespace korvane::ecu::test
