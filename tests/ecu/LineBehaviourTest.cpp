// Time on the line, and the faults.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Wire.h"

namespace korvane::ecu::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Bytes mapHalf(std::uint8_t code, std::uint8_t end) {
    return joined({code}, countingFrom(0), {end});
}

// Ten seconds of a poll every 10 ms and what came of it.
Bytes tenSeconds(std::string_view list) {
    Wire wire(list);
    Bytes all;
    for (int i = 0; i < 1000; ++i) {
        wire.ecu.receive('x', wire.now);
        const Bytes part = wire.arrives(10'000);
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

TEST(LineBehaviour, BytesComeAtThePaceOfTheLine) {
    Wire wire;
    wire.ecu.setBaud(9600);
    wire.ecu.receive('x', 0);
    Bytes bytes;
    for (int i = 1; i <= 22; ++i) {
        // 10 bits at 9600 baud are 1041.67 microseconds.
        const auto due = static_cast<double>(wire.ecu.nextDue().value());
        EXPECT_NEAR(due, 1041.667 * i, 1.0);
        wire.ecu.take(static_cast<Micros>(due) - 1, bytes);
        EXPECT_EQ(bytes.size(), static_cast<std::size_t>(i) - 1);
        wire.ecu.take(static_cast<Micros>(due), bytes);
        EXPECT_EQ(bytes.size(), static_cast<std::size_t>(i));
    }
    EXPECT_EQ(wire.ecu.nextDue(), std::nullopt);
}

TEST(LineBehaviour, TheDefaultSpeedIs57600) {
    Wire wire;
    wire.ecu.receive('x', 1000);
    EXPECT_EQ(wire.ecu.nextDue(), 1174);
}

TEST(LineBehaviour, NothingIsUnderWayAtTheStart) {
    Wire wire;
    EXPECT_EQ(wire.ecu.nextDue(), std::nullopt);
    EXPECT_THAT(wire.arrives(), IsEmpty());
}

TEST(LineBehaviour, AShortPwmRequestIsDueWhenItsSilenceIsOver) {
    Wire wire;
    wire.ecu.receive('p', 1000);
    EXPECT_EQ(wire.ecu.nextDue(), 1000 + 50'000 + 174);
    EXPECT_THAT(wire.arrives(1000 + 50'000 + 174), ElementsAre('p'));
}

TEST(LineBehaviour, PollsFasterThanTheLineBuildNoBacklog) {
    Wire wire;
    wire.ecu.setBaud(9600);
    for (int i = 0; i < 1000; ++i) {
        wire.ecu.receive('x', wire.now);
        wire.ecu.receive(0, wire.now);
        wire.arrives(10'000);
    }
    // Two live frames of 22 bytes at most.
    EXPECT_LE(wire.arrives().size(), 44U);
}

// An answer of 11 bytes takes 11.5 ms.
TEST(LineBehaviour, DebugPollsFasterThanTheLineBuildNoBacklog) {
    Wire wire;
    wire.ecu.setBaud(9600);
    for (int i = 0; i < 1000; ++i) {
        for (const std::uint8_t byte : Bytes{'S', 0, 0xAC}) {
            wire.ecu.receive(byte, wire.now);
        }
        wire.arrives(10'000);
    }
    EXPECT_LE(wire.arrives().size(), 44U);
}

TEST(LineBehaviour, NoiseFromThePcBuildsNoBacklog) {
    Wire wire;
    for (int i = 0; i < 1000; ++i) {
        wire.ecu.receive(0, wire.now);
        wire.arrives(174);
    }
    EXPECT_LE(wire.arrives().size(), 44U);
}

TEST(LineBehaviour, RequestsFasterThanTheLineBuildABoundedBacklog) {
    Wire wire;
    wire.ecu.setBaud(9600);
    for (int i = 0; i < 10'000; ++i) {
        wire.ecu.receive('f', wire.now++);
    }
    EXPECT_LE(wire.arrives(60'000'000).size(), 2048U + 163U);
}

TEST(LineBehaviour, TheSameSeedAndRequestsGiveTheSameBytes) {
    const std::string_view faulty = "seed=5,lose=0.01,flip=0.01,add=0.01";
    EXPECT_EQ(tenSeconds(faulty), tenSeconds(faulty));
    EXPECT_EQ(tenSeconds(""), tenSeconds(""));
    EXPECT_NE(tenSeconds("seed=5"), tenSeconds("seed=6"));
}

TEST(LineBehaviour, TheSeedMayChangeOnTheWay) {
    Wire one("drive=3000:50:20");
    Wire two("drive=3000:50:20,seed=2");
    EXPECT_EQ(one.ecu.set("seed", "9", 0), "");
    EXPECT_EQ(two.ecu.set("seed", "9", 0), "");
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(one.poll(), two.poll());
    }
}

TEST(LineBehaviour, FaultsDamageTheShareOfBytesThatTheySay) {
    EXPECT_EQ(tenSeconds("").size(), 22'000U);
    EXPECT_NEAR(static_cast<double>(tenSeconds("lose=0.1").size()), 19'800.0, 200.0);
    EXPECT_NEAR(static_cast<double>(tenSeconds("add=0.1").size()), 24'200.0, 200.0);
    const Bytes clean = tenSeconds("");
    const Bytes flipped = tenSeconds("flip=0.1");
    ASSERT_EQ(flipped.size(), clean.size());
    int different = 0;
    for (std::size_t i = 0; i < clean.size(); ++i) {
        different += clean[i] != flipped[i] ? 1 : 0;
    }
    EXPECT_NEAR(different, 2200, 200);
}

TEST(LineBehaviour, FaultsMayBeginAndEndWhileItRuns) {
    Wire wire;
    EXPECT_EQ(wire.ecu.set("lose", "1", wire.now), "");
    EXPECT_THAT(wire.poll(), IsEmpty());
    EXPECT_EQ(wire.ecu.set("lose", "0", wire.now), "");
    EXPECT_EQ(wire.poll().size(), 19U);
}

TEST(LineBehaviour, ALateEcuAnswersThatMuchLater) {
    Wire wire("late=100");
    wire.ecu.receive('x', 0);
    EXPECT_EQ(wire.ecu.nextDue(), 100'174);
    EXPECT_EQ(wire.ecu.set("late", "0", 0), "");
}

TEST(LineBehaviour, ALateEcuStillAnswersEveryPoll) {
    Wire wire("late=500");
    std::size_t bytes = 0;
    for (int i = 0; i < 100; ++i) {
        wire.ecu.receive('x', wire.now);
        bytes += wire.arrives(10'000).size();
    }
    EXPECT_EQ(bytes + wire.arrives().size(), 2200U);
}

TEST(LineBehaviour, ASilentEcuHears) {
    Wire wire("silent=1");
    wire.send({'g', 10, 10, 99, 99, 0x98});
    EXPECT_THAT(wire.ask({'x', 'y', 0, 0x86, 'X', 0xA7}), IsEmpty());
    wire.send({'g', 10, 10, 99, 99, 0x98});
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[10], 99);
    EXPECT_EQ(wire.ecu.set("silent", "0", wire.now), "");
    EXPECT_EQ(wire.poll().size(), 19U);
}

TEST(LineBehaviour, RefusedHalvesAreAnsweredWithZeroAndNotTaken) {
    Wire wire("refuse=F+248,type=14");
    EXPECT_THAT(wire.ask(mapHalf('F', 0xB9)), ElementsAre('F', 1, 0, 0xB9));
    EXPECT_NE(wire.ecu.workingMap(MapKind::Fuel)[0], 0);
    EXPECT_THAT(wire.ask(mapHalf(246, 9)), ElementsAre(246, 1, 1, 9));
    EXPECT_THAT(wire.ask(mapHalf('A', 0xBE)), ElementsAre('A', 1, 1, 0xBE));
    EXPECT_THAT(wire.ask(mapHalf(248, 7)), ElementsAre(248, 1, 0, 7));
    EXPECT_EQ(wire.ecu.set("refuse", "none", wire.now), "");
    EXPECT_THAT(wire.ask(mapHalf(248, 7)), ElementsAre(248, 1, 1, 7));
}

TEST(LineBehaviour, MutedHalvesAreTakenAndNotAcknowledged) {
    Wire wire("mute=F+A");
    EXPECT_THAT(wire.ask(mapHalf('F', 0xB9)), IsEmpty());
    EXPECT_THAT(wire.ask(mapHalf('A', 0xBE)), IsEmpty());
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[159], 159);
}

TEST(LineBehaviour, RestartsAfterSoManyBytes) {
    Wire wire("restart=100");
    wire.send({'g', 10, 10, 99, 99, 0x98});
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel)[10], 99);
    wire.send(mapHalf('F', 0xB9));  // the 94th byte of it is the last that is received
    EXPECT_THAT(wire.arrives(), ElementsAre(170, 0, 0x55));
    EXPECT_EQ(wire.ecu.workingMap(MapKind::Fuel), wire.ecu.storedMap(MapKind::Fuel));
    EXPECT_THAT(wire.ask(Bytes(200, 'c')), IsEmpty()) << "it restarts once";
}

TEST(LineBehaviour, CountsTheBytesFromTheMomentOfAsking) {
    Wire wire;
    wire.send({'c', 'c', 'c'});
    EXPECT_EQ(wire.ecu.set("restart", "2", wire.now), "");
    wire.send({'c'});
    EXPECT_THAT(wire.arrives(), IsEmpty());
    wire.send({'c'});
    EXPECT_THAT(wire.arrives(), ElementsAre(170, 0, 0x55));
}

TEST(LineBehaviour, ARestartDropsWhatWasUnderWay) {
    Wire wire;
    wire.ecu.receive('f', 0);
    wire.now = 2000;
    wire.send({'X', 0xA7});
    const Bytes bytes = wire.arrives();
    ASSERT_LT(bytes.size(), 25U);
    EXPECT_EQ(bytes[0], 'f');
    EXPECT_THAT(Bytes(bytes.end() - 3, bytes.end()), ElementsAre(170, 0, 0x55));
}

TEST(LineBehaviour, SendsTheAlarmNow) {
    Wire wire("alarm=1");
    wire.arrives(0);
    EXPECT_THAT(wire.arrives(), ElementsAre('!', 0, 0xDE));
    EXPECT_THAT(wire.arrives(), IsEmpty());
    EXPECT_EQ(wire.ecu.set("alarm", "0", wire.now), "");
    EXPECT_THAT(wire.arrives(), IsEmpty());
    EXPECT_EQ(wire.ecu.set("alarm", "1", wire.now), "");
    EXPECT_THAT(wire.arrives(), ElementsAre('!', 0, 0xDE));
}

TEST(LineBehaviour, IdentityAndPayloadMayChangeWhileItRuns) {
    Wire wire;
    for (const auto& [key, value] :
         {std::pair{"version", "1000"}, {"features", "2"}, {"identity", "4"}, {"payload", "13"}}) {
        EXPECT_EQ(wire.ecu.set(key, value, wire.now), "");
    }
    EXPECT_THAT(wire.ask({'y', 0, 0x86}), ElementsAre('y', 4, 0, 2, 0x03, 0xE8, 0x86));
    EXPECT_EQ(wire.poll().size(), 13U);
}

TEST(LineBehaviour, AnotherTypeIsAnotherBox) {
    Wire wire;
    wire.send({'W', 0xF5, 0x03, 200, 200, 0xA8});
    EXPECT_EQ(wire.ecu.set("type", "11", wire.now), "");
    EXPECT_EQ(wire.ecu.eeprom()[1013], 200) << "the same type changes nothing";
    EXPECT_EQ(wire.ecu.set("type", "14", wire.now), "");
    EXPECT_EQ(wire.ecu.eeprom()[1013], 0);
    EXPECT_EQ(wire.ask({247}).size(), 163U);
}

TEST(LineBehaviour, ABadKeyChangesNothing) {
    Wire wire;
    EXPECT_EQ(wire.ecu.set("payload", "99", wire.now), "payload takes 13 to 19, not \"99\"");
    EXPECT_NE(wire.ecu.set("nonsense", "1", wire.now), "");
    EXPECT_EQ(wire.poll().size(), 19U);
}

TEST(LineBehaviour, TimeMayBeginAnywhere) {
    Wire wire("drive=idle");
    wire.now = 1'700'000'000'000'000;
    EXPECT_EQ(wire.poll().size(), 19U);
    EXPECT_LT(wire.ecu.engine().runningSeconds, 1.0) << "the engine starts with the first call";
}

TEST(LineBehaviour, AMonthOfSilenceCostsNothing) {
    Wire wire;
    wire.poll();
    wire.pass(30 * 24 * 3600.0);
    EXPECT_EQ(wire.poll().size(), 19U);
}

}  // namespace
}  // namespace korvane::ecu::test
