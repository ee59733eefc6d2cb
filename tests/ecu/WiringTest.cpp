// A cable that joins its wires, an ECU at another speed, noise that nobody sent.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Wire.h"

namespace korvane::ecu::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const Bytes kAskIdentity{'y', 0, 0x86};
// The features 65535, version 3386 and type 11.
const Bytes kIdentity{'y', 5, 255, 255, 13, 58, 11, 0x86};

TEST(Wiring, AnEcuWithItsOwnSpeedIsUnderstoodAtThatSpeedAlone) {
    for (const int speed : {9600, 19200, 38400, 57600, 76800, 115200, 230400}) {
        Wire wire("speed=38400");
        wire.ecu.setBaud(speed);
        if (speed == 38400) {
            EXPECT_EQ(wire.ask(kAskIdentity), kIdentity);
        } else {
            EXPECT_NE(wire.ask(kAskIdentity), kIdentity) << speed;
        }
    }
}

TEST(Wiring, AtAnotherSpeedTheAnswerCannotBeRead) {
    Wire wire("speed=38400");
    wire.ecu.setBaud(38400);
    wire.send(kAskIdentity);
    // The answer is under way when the PC changes its speed.
    wire.ecu.setBaud(57600);
    const Bytes heard = wire.arrives();
    EXPECT_THAT(heard, SizeIs(kIdentity.size()));
    EXPECT_NE(heard, kIdentity);
}

TEST(Wiring, WithoutASpeedOfItsOwnItFollowsThePc) {
    Wire wire("speed=0");
    wire.ecu.setBaud(230400);
    EXPECT_EQ(wire.ask(kAskIdentity), kIdentity);
}

TEST(Wiring, OnJoinedWiresThePcHearsItselfAndTheEcuHearsNothing) {
    Wire wire("echo=1");
    EXPECT_EQ(wire.ask(kAskIdentity), kAskIdentity);
    EXPECT_EQ(wire.ecu.set("echo", "0", wire.now), "");
    EXPECT_EQ(wire.ask(kAskIdentity), kIdentity);
}

TEST(Wiring, StrayBytesComeWhileNothingIsAsked) {
    Wire wire("stray=10");
    EXPECT_THAT(wire.arrives(99'999), IsEmpty());
    EXPECT_THAT(wire.arrives(1), SizeIs(1));
    EXPECT_THAT(wire.arrives(1'000'000), SizeIs(10));
}

TEST(Wiring, StrayBytesAreDueOneByOne) {
    Wire wire("stray=10");
    EXPECT_EQ(wire.ecu.nextDue(), 100'000);
    EXPECT_THAT(wire.arrives(150'000), SizeIs(1));
    EXPECT_EQ(wire.ecu.nextDue(), 200'000);
}

TEST(Wiring, AfterALongPauseOnlyASecondOfStrayBytesIsMadeUpFor) {
    Wire wire("stray=10");
    EXPECT_THAT(wire.arrives(3'600'000'000), SizeIs(10));
}

TEST(Wiring, WithNoStrayBytesNothingIsDue) {
    Wire wire("stray=10");
    EXPECT_EQ(wire.ecu.set("stray", "0", wire.now), "");
    EXPECT_EQ(wire.ecu.nextDue(), std::nullopt);
    EXPECT_THAT(wire.arrives(), IsEmpty());
}

TEST(Wiring, ASpeedThatThePcCannotHaveIsRefused) {
    EXPECT_THROW(keys("speed=1200"), std::runtime_error);
    EXPECT_THROW(keys("speed=-1"), std::runtime_error);
    EXPECT_THROW(keys("stray=1001"), std::runtime_error);
    EXPECT_THROW(keys("echo=2"), std::runtime_error);
}

}  // namespace
}  // namespace korvane::ecu::test
