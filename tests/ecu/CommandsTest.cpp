// Each command of the line with its reply, byte by byte.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Wire.h"

namespace korvane::ecu::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kTypes[] = {10, 11, 12, 13, 14, 15, 20, 21, 30, 31, 32, 112, 210, 211, 212, 213};

bool isLarge(int type) {
    return type == 14 || type == 15 || type == 213;
}

Bytes half(std::uint8_t code, std::uint8_t end, int first) {
    return joined({code}, countingFrom(first), {end});
}

TEST(Commands, IdentityIsFeaturesVersionAndType) {
    Wire wire;
    EXPECT_THAT(wire.ask({'y', 0, 0x86}), ElementsAre('y', 5, 255, 255, 0x0D, 0x3A, 11, 0x86));
    Wire other("type=213,version=1140,features=257");
    EXPECT_THAT(other.ask({'y', 0, 0x86}), ElementsAre('y', 5, 1, 1, 0x04, 0x74, 213, 0x86));
}

TEST(Commands, AShortIdentityHasNoType) {
    Wire wire("identity=4");
    EXPECT_THAT(wire.ask({'y', 0, 0x86}), ElementsAre('y', 4, 255, 255, 0x0D, 0x3A, 0x86));
}

TEST(Commands, APollGetsALiveFrame) {
    Wire wire;
    const Bytes frame = wire.ask({'x'});
    ASSERT_EQ(frame.size(), 22U);
    EXPECT_EQ(frame[0], 'R');
    EXPECT_EQ(frame[1], 19);
    EXPECT_EQ(frame[21], 0xAD);
}

TEST(Commands, OlderFirmwareSendsAShorterLiveFrame) {
    for (const int length : {13, 14, 16, 18}) {
        Wire wire("payload=" + std::to_string(length));
        const Bytes frame = wire.ask({'x'});
        ASSERT_EQ(frame.size(), static_cast<std::size_t>(length) + 3);
        EXPECT_EQ(frame[1], length);
        EXPECT_EQ(frame.back(), 0xAD);
    }
}

TEST(Commands, EveryTypeAnswersEveryReadingCommand) {
    struct Row {
        Bytes request;
        std::uint8_t code;
        std::size_t length;
    };
    const Row rows[] = {
        {{'x'}, 'R', 19},        {{'y', 0, 0x86}, 'y', 5},    {{'a'}, 'a', 160},           {{'f'}, 'f', 160},
        {{'m'}, 'm', 9},         {{'R', 1, 0, 0xAD}, 'T', 3}, {{'U', 2, 0, 0xAA}, 'U', 4}, {{'e'}, 'e', 19},
        {{'S', 0, 0xAC}, 'S', 8}};
    for (const int type : kTypes) {
        Wire wire("type=" + std::to_string(type));
        for (const Row& row : rows) {
            const Bytes frame = wire.ask(row.request);
            ASSERT_EQ(frame.size(), row.length + 3) << type << " " << row.code;
            EXPECT_EQ(frame[0], row.code);
            EXPECT_EQ(frame[1], row.length);
            EXPECT_EQ(frame.back(), 255 - row.code);
        }
    }
}

TEST(Commands, OnlyLargeTypesHaveSecondHalves) {
    for (const int type : kTypes) {
        Wire wire("type=" + std::to_string(type));
        for (const std::uint8_t code : {std::uint8_t{247}, std::uint8_t{245}}) {
            const Bytes frame = wire.ask({code});
            if (isLarge(type)) {
                ASSERT_EQ(frame.size(), 163U) << type;
                EXPECT_EQ(frame[0], code);
                EXPECT_EQ(frame[1], 160);
                EXPECT_EQ(frame[162], 255 - code);
            } else {
                EXPECT_THAT(frame, ElementsAre(153, 0, 0x66)) << type;
            }
        }
        EXPECT_THAT(wire.ask(half(246, 9, 0)), ElementsAre(246, 1, isLarge(type) ? 1 : 0, 9));
        EXPECT_THAT(wire.ask(half(248, 7, 0)), ElementsAre(248, 1, isLarge(type) ? 1 : 0, 7));
    }
}

TEST(Commands, AMapReadGivesTheWorkingMap) {
    Wire wire;
    for (const auto& [code, kind] : {std::pair{'f', MapKind::Fuel}, {'a', MapKind::Ignition}}) {
        const Bytes frame = wire.ask({static_cast<std::uint8_t>(code)});
        ASSERT_EQ(frame.size(), 163U);
        EXPECT_TRUE(std::equal(frame.begin() + 2, frame.end() - 1, wire.ecu.workingMap(kind).begin()));
    }
}

TEST(Commands, ASecondHalfGoesOnAtCell160) {
    Wire wire("type=15");
    for (const auto& [code, kind] : {std::pair<int, MapKind>{245, MapKind::Fuel}, {247, MapKind::Ignition}}) {
        const Bytes frame = wire.ask({static_cast<std::uint8_t>(code)});
        ASSERT_EQ(frame.size(), 163U);
        EXPECT_TRUE(std::equal(frame.begin() + 2, frame.end() - 1, wire.ecu.workingMap(kind).begin() + 160)) << code;
    }
}

TEST(Commands, AMapHalfGoesToWorkingMemoryAndIsAcknowledged) {
    Wire wire;
    const MapCells stored = wire.ecu.storedMap(MapKind::Fuel);
    EXPECT_THAT(wire.ask(half('F', 0xB9, 3)), ElementsAre('F', 1, 1, 0xB9));
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[0], 3);
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[159], 162);
    EXPECT_EQ(wire.ecu.storedMap(MapKind::Fuel), stored);
    EXPECT_THAT(wire.ask({'c'}), IsEmpty());
    EXPECT_EQ(wire.ecu.storedMap(MapKind::Fuel)[159], 162);
    EXPECT_EQ(wire.ecu.eeprom()[16], 3);
}

TEST(Commands, IgnitionHasItsOwnLetters) {
    Wire wire;
    EXPECT_THAT(wire.ask(half('A', 0xBE, 7)), ElementsAre('A', 1, 1, 0xBE));
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Ignition)[0], 7);
    wire.send({'c'});
    EXPECT_NE(wire.ecu.eeprom()[180], 7) << "'c' is the fuel map's commit letter";
    wire.send({'b'});
    EXPECT_EQ(wire.ecu.eeprom()[180], 7);
}

TEST(Commands, ALargeMapIsWrittenInTwoHalves) {
    Wire wire("type=14");
    EXPECT_THAT(wire.ask(half('F', 0xB9, 0)), ElementsAre('F', 1, 1, 0xB9));
    EXPECT_THAT(wire.ask(half(246, 9, 1)), ElementsAre(246, 1, 1, 9));
    EXPECT_THAT(wire.ask(half('A', 0xBE, 2)), ElementsAre('A', 1, 1, 0xBE));
    EXPECT_THAT(wire.ask(half(248, 7, 3)), ElementsAre(248, 1, 1, 7));
    wire.send({'b', 'c', 'X', 0xA7});
    wire.arrives();
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[0], 0);
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[160], 1);
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Ignition)[0], 2);
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Ignition)[160], 3);
}

TEST(Commands, AMapHalfWithAWrongComplementChangesNothing) {
    Wire wire;
    const MapCells before = wire.ecu.workingMap(MapKind::Fuel);
    EXPECT_THAT(wire.ask(half('F', 0xB8, 3)), IsEmpty());
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel), before);
}

TEST(Commands, SingleCellsGoToWorkingMemory) {
    Wire wire;
    EXPECT_THAT(wire.ask({'g', 10, 10, 99, 99, 0x98}), IsEmpty());
    EXPECT_THAT(wire.ask({'i', 11, 11, 98, 98, 0x96}), IsEmpty());
    EXPECT_THAT(wire.ask({'P', 70, 70, 97, 97, 0xAF}), IsEmpty());
    for (const auto& [map, cell, value] :
         {std::tuple{MapKind::Fuel, 10U, 99}, {MapKind::Ignition, 11U, 98}, {MapKind::Pwm, 70U, 97}}) {
        EXPECT_EQ(wire.ecu.workingMap(map)[cell], value);
        EXPECT_NE(wire.ecu.storedMap(map)[cell], value);
    }
}

TEST(Commands, DoubledBytesThatDifferAreIgnored) {
    Wire wire;
    const MapCells before = wire.ecu.workingMap(MapKind::Fuel);
    wire.send({'g', 10, 11, 99, 99, 0x98});
    wire.send({'g', 10, 10, 99, 98, 0x98});
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel), before);
    wire.send({'W', 1, 0, 99, 98, 0xA8});
    EXPECT_NE(wire.ecu.eeprom()[1], 99);
    EXPECT_NE(wire.ecu.eeprom()[1], 98);
}

TEST(Commands, ACellOutsideTheMapIsIgnored) {
    Wire wire;
    wire.send({'g', 160, 160, 99, 99, 0x98});
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[160], 0);
    Wire large("type=15");
    large.send({'g', 160, 160, 99, 99, 0x98});
    EXPECT_EQ(large.ecu.workingMap(MapKind::Fuel)[160], 99);
}

TEST(Commands, TheMiscBlockIsReadWrittenAndStored) {
    Wire wire;
    // 7200, 6800 and the enable word low byte first; no offsets; 6 = 4.4 ms.
    EXPECT_THAT(wire.ask({'m'}), ElementsAre('m', 9, 0x20, 0x1C, 0x90, 0x1A, 0x3F, 0x0D, 0, 128, 6, 0x92));
    EXPECT_THAT(wire.ask({'M', 1, 2, 3, 4, 5, 6, 7, 8, 9, 0xB2}), IsEmpty());
    EXPECT_THAT(wire.ask({'m'}), ElementsAre('m', 9, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0x92));
    EXPECT_EQ(wire.ecu.eeprom()[2], 0x20);
    wire.send({'d'});
    EXPECT_EQ(wire.ecu.eeprom()[2], 1);
    EXPECT_EQ(wire.ecu.eeprom()[10], 9);
}

TEST(Commands, BytesOfTheEepromAreReadAndWritten) {
    Wire wire;
    EXPECT_THAT(wire.ask({'W', 0xF5, 0x03, 200, 200, 0xA8}), IsEmpty());
    EXPECT_EQ(wire.ecu.eeprom()[1013], 200);
    EXPECT_THAT(wire.ask({'R', 0xF5, 0x03, 0xAD}), ElementsAre('T', 3, 200, 0xF5, 0x03, 0xAB));
}

TEST(Commands, WordsOfTheEepromAreReadLowByteFirst) {
    Wire wire;
    // 900 at IDLEPID_SETPOINT_LO, cell 504.
    EXPECT_THAT(wire.ask({'U', 0xF8, 0x01, 0xAA}), ElementsAre('U', 4, 0x84, 0x03, 0xF8, 0x01, 0xAA));
}

TEST(Commands, WhereThereIsNoCellThereIs255) {
    Wire wire;
    wire.send({'W', 0xB9, 0x0B, 1, 1, 0xA8});
    EXPECT_THAT(wire.ask({'R', 0xB9, 0x0B, 0xAD}), ElementsAre('T', 3, 255, 0xB9, 0x0B, 0xAB));
    EXPECT_THAT(wire.ask({'U', 0xB8, 0x0B, 0xAA}), ElementsAre('U', 4, 0, 255, 0xB8, 0x0B, 0xAA));
}

TEST(Commands, ThePwmTableComesCellByCell) {
    for (const Bytes& request : {Bytes{'p', 0, 0x8F}, Bytes{'p'}}) {
        Wire wire;
        wire.send({'P', 70, 70, 97, 97, 0xAF});
        const Bytes frames = wire.ask(request);
        ASSERT_EQ(frames.size(), 160U * 5);
        for (std::size_t i = 0; i < 160; ++i) {
            EXPECT_EQ(frames[5 * i], 'p');
            EXPECT_EQ(frames[5 * i + 1], 2);
            EXPECT_EQ(frames[5 * i + 2], i);
            EXPECT_EQ(frames[5 * i + 4], 0x8F);
        }
        EXPECT_EQ(frames[5 * 70 + 3], 97);
    }
}

TEST(Commands, ThePwmTableIsStoredAtTheEndOfItsTransfer) {
    for (const Bytes& end : {Bytes{'o', 0x90}, Bytes{'o'}}) {
        Wire wire;
        wire.send({'P', 70, 70, 97, 97, 0xAF});
        EXPECT_THAT(wire.ask(end), IsEmpty());
        EXPECT_EQ(wire.ecu.storedMap(MapKind::Pwm)[70], 97);
        EXPECT_EQ(wire.ecu.eeprom()[406], 97);
    }
}

TEST(Commands, EndOfPwmAndRestartMayFollowEachOther) {
    Wire wire;
    wire.send({'P', 70, 70, 97, 97, 0xAF, 'o', 0x90, 'X', 0xA7});
    EXPECT_THAT(wire.arrives(), ElementsAre(170, 0, 0x55));
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Pwm)[70], 97);
}

TEST(Commands, TheSettingsBlockGathersItsParameters) {
    Wire wire;
    const auto cells = wire.ecu.eeprom();
    Bytes expected = {'e', 19};
    for (const int address :
         {350, 351, 352, 353, 354, 355, 356, 357, 358, 359, 11, 12, 361, 362, 363, 364, 13, 365, 366}) {
        expected.push_back(cells[static_cast<std::size_t>(address)]);
    }
    expected.push_back(0x9A);
    EXPECT_EQ(wire.ask({'e'}), expected);
    EXPECT_EQ(expected[19], 20);
    EXPECT_EQ(expected[20], 230);
}

TEST(Commands, TheThrottleEndsAreTaught) {
    Wire wire("drive=3000:50:20");
    wire.poll();
    EXPECT_THAT(wire.ask({'(', 0xD7}), IsEmpty());
    EXPECT_EQ(wire.ecu.eeprom()[365], 62) << "20 at the stop, 230 at full, 20 percent of the way";
    EXPECT_EQ(wire.ecu.set("drive", "3000:50:90", wire.now), "");
    wire.poll();
    wire.send({')', 0xD6});
    EXPECT_EQ(wire.ecu.eeprom()[366], 209);
    EXPECT_EQ(wire.ecu.eeprom()[365], 62);
}

TEST(Commands, ARestartAnswersWhenItIsOverAndLosesWorkingMaps) {
    Wire wire;
    const MapCells stored = wire.ecu.storedMap(MapKind::Fuel);
    wire.send({'g', 10, 10, 99, 99, 0x98, 'X', 0xA7, 'x', 'm'});
    EXPECT_THAT(wire.arrives(100'000), IsEmpty()) << "while it starts it is deaf";
    EXPECT_THAT(wire.arrives(), ElementsAre(170, 0, 0x55));
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel), stored);
    EXPECT_EQ(wire.poll().size(), 19U);
}

// The debug words of an answer.
struct DebugWords {
    int ignition;
    int spark;
};

DebugWords askDebugWords(Wire& wire) {
    const Bytes frame = wire.ask({'S', 0, 0xAC});
    EXPECT_EQ(frame.size(), 11U);
    // Half a turn at 3000 is 10 ms, 720 counts of 1/72 ms.
    EXPECT_EQ(frame.at(4) + 256 * frame.at(5), 720);
    return {frame.at(2) + 256 * frame.at(3), frame.at(6) + 256 * frame.at(7)};
}

bool isGood(int word) {
    return word == 0x5555 || word == 0xAAAA;
}

TEST(Commands, DebugWordsAreTheGoodPatternsInTurn) {
    Wire wire("drive=3000:50:20");
    wire.poll();
    for (int i = 0; i < 300; ++i) {
        const DebugWords words = askDebugWords(wire);
        EXPECT_EQ(words.ignition, i % 2 == 0 ? 0x5555 : 0xAAAA);
        EXPECT_EQ(words.spark, words.ignition);
    }
}

// With a chance of a quarter, 1000 words have 250 bad ones, with a standard deviation of 14.
TEST(Commands, AnIgnitionFaultDamagesDebugWordsByItsChance) {
    Wire wire("drive=3000:50:20,ignfault=0.25");
    wire.poll();
    int badIgnition = 0;
    int badSpark = 0;
    int badBoth = 0;
    for (int i = 0; i < 1000; ++i) {
        const DebugWords words = askDebugWords(wire);
        badIgnition += isGood(words.ignition) ? 0 : 1;
        badSpark += isGood(words.spark) ? 0 : 1;
        badBoth += isGood(words.ignition) || isGood(words.spark) ? 0 : 1;
    }
    EXPECT_NEAR(badIgnition, 250, 70);
    EXPECT_NEAR(badSpark, 250, 70);
    EXPECT_NEAR(badBoth, 62, 40) << "each word has its own luck";
}

TEST(Commands, AnIgnitionFaultIsSwitchedOnAndOffWhileItRuns) {
    Wire wire("drive=3000:50:20");
    wire.poll();
    EXPECT_EQ(wire.ecu.set("ignfault", "1", wire.now), "");
    for (int i = 0; i < 50; ++i) {
        const DebugWords words = askDebugWords(wire);
        EXPECT_FALSE(isGood(words.ignition));
        EXPECT_FALSE(isGood(words.spark));
    }
    EXPECT_EQ(wire.ecu.set("ignfault", "0", wire.now), "");
    EXPECT_TRUE(isGood(askDebugWords(wire).ignition));
}

TEST(Commands, AnIgnitionFaultLeavesLiveDataAsTheyAre) {
    Wire good;
    Wire bad("ignfault=1");
    for (int i = 0; i < 20; ++i) {
        static_cast<void>(good.ask({'S', 0, 0xAC}));
        static_cast<void>(bad.ask({'S', 0, 0xAC}));
        EXPECT_EQ(good.poll(), bad.poll());
    }
}

TEST(Commands, SparkCleaningFiresHundreds) {
    Wire wire;
    EXPECT_THAT(wire.ask({'!', 1, 25, 0xDE}), IsEmpty());
    EXPECT_EQ(wire.ecu.sparksFired(), 2500);
    EXPECT_THAT(wire.ask({'!', 1, 255, 0xDE}), IsEmpty());
    EXPECT_EQ(wire.ecu.sparksFired(), 28000);
}

TEST(Commands, WhatItDoesNotKnowIsAnsweredSo) {
    Wire wire;
    for (const std::uint8_t code : Bytes{0, 'l', 170, 255}) {
        EXPECT_THAT(wire.ask({code}), ElementsAre(153, 0, 0x66));
    }
}

TEST(Commands, ABrokenRequestDoesNotWedgeIt) {
    Wire wire;
    wire.send({'F', 1, 2, 3});
    wire.pass(0.3);
    EXPECT_EQ(wire.poll().size(), 19U);
}

TEST(Commands, SurvivesAnyBytes) {
    Wire wire;
    Noise noise(99);
    for (int i = 0; i < 200'000; ++i) {
        wire.ecu.receive(static_cast<std::uint8_t>(noise.next() >> 56U), wire.now);
        wire.now += 174;
        if (i % 100 == 0) {
            wire.arrives(0);
        }
    }
    wire.pass(1.0);
    wire.arrives();
    EXPECT_EQ(wire.poll().size(), 19U);
}

}  // namespace
}  // namespace korvane::ecu::test
