#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FaultyEcu.h"

namespace korvane::proof {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

constexpr platform::Micros kByteTime = 200;
const Bytes kWrite = {'W', 0xF5, 0x03, 0xF0, 0xF0, 0xA8};  // 240 into cell 1013, which has 0
const Bytes kAsk = {'R', 0xF5, 0x03, 0xAD};

class FaultyLine : public testing::Test {
protected:
    void arm(const Try& what) {
        device_.arm(what, now_, [this] { ++struck_; });
    }
    void send(const Bytes& bytes) {
        for (const std::uint8_t byte : bytes) {
            now_ += kByteTime;
            device_.receive(byte, now_);
        }
    }
    Bytes arrives(platform::Micros time = 1'000'000) {
        Bytes bytes;
        now_ += time;
        device_.take(now_, bytes);
        return bytes;
    }
    [[nodiscard]] int cell() { return cells()[1013]; }
    [[nodiscard]] std::span<const std::uint8_t> cells() { return device_.ecu().eeprom(); }

    FaultyEcu device_{ecu::EcuSettings{}};
    platform::Micros now_ = 0;
    int struck_ = 0;
};

TEST_F(FaultyLine, CountsTheBytesOfBothDirections) {
    send(kAsk);
    arm({});
    send(kAsk);
    EXPECT_THAT(arrives(), testing::SizeIs(12)) << "the answer to the first question too";
    EXPECT_EQ(device_.heard(), 4);
    device_.disarm();
    send(kAsk);
    EXPECT_EQ(device_.heard(), 4);
}

TEST_F(FaultyLine, NotesWhichByteStoresHowMuch) {
    arm({});
    send(kWrite);
    send({'d'});
    ASSERT_EQ(device_.storings().size(), 2U);
    EXPECT_EQ(device_.storings()[0].byte, 6);
    EXPECT_EQ(device_.storings()[0].cells, 1);
    EXPECT_EQ(device_.storings()[1].byte, 7);
    EXPECT_EQ(device_.storings()[1].cells, 9);
    EXPECT_EQ(device_.written().count(), 10U);
    EXPECT_TRUE(device_.written()[1013]);
}

TEST_F(FaultyLine, ByteByByteNothingElseIsLost) {
    for (long byte = 1; byte <= 6; ++byte) {
        arm({.fault = Fault::Lost, .byte = byte});
        send(kWrite);
        arrives();
        EXPECT_EQ(cell(), 0) << byte;
    }
    arm({.fault = Fault::Lost, .byte = 7});
    send(kWrite);
    EXPECT_EQ(cell(), 240);
}

// Byte 2 has its bit 2 inverted: 0xF5 becomes 0xF1, which is cell 1009.
TEST_F(FaultyLine, AFlippedByteHasOneOtherBit) {
    arm({.fault = Fault::Flipped, .byte = 2});
    send(kWrite);
    EXPECT_EQ(cell(), 0);
    EXPECT_EQ(cells()[1009], 240);
}

TEST_F(FaultyLine, APulledCableEndsWithItsByte) {
    for (const Fault fault : {Fault::Pulled, Fault::Killed}) {
        struck_ = 0;
        device_.plugIn();
        arm({.fault = fault, .byte = 5});
        send(kWrite);
        EXPECT_EQ(cell(), 0);
        EXPECT_EQ(struck_, 1);
        send(kAsk);
        EXPECT_THAT(arrives(), IsEmpty());
    }
    device_.plugIn();
    send(kAsk);
    EXPECT_EQ(arrives().size(), 6U);
}

TEST_F(FaultyLine, ThePowerIsCutInTheMiddleOfTheCell) {
    const Bytes old(cells().begin() + 2, cells().begin() + 11);
    arm({.fault = Fault::CutWhileStoring, .byte = 12, .cell = 3});
    send({'M', 1, 2, 3, 4, 5, 6, 7, 8, 9, 0xB2, 'd'});
    // Three cells of 3.4 ms, and three quarters of the fourth.
    EXPECT_EQ(device_.nextDue(), now_ + 3 * 3400 + 2550);
    arrives();
    const Bytes now(cells().begin() + 2, cells().begin() + 11);
    EXPECT_THAT(Bytes(now.begin(), now.begin() + 3), ElementsAre(1, 2, 3));
    EXPECT_EQ(now[3] & 4, 4) << "it is being programmed with 4";
    EXPECT_EQ(Bytes(now.begin() + 4, now.end()), Bytes(old.begin() + 4, old.end()));
}

TEST_F(FaultyLine, TheEcuRestartsBehindTheByte) {
    arm({.fault = Fault::Restarted, .byte = 5});
    send(kWrite);
    EXPECT_EQ(cell(), 0);
    EXPECT_THAT(arrives(), ElementsAre(170, 0, 0x55));
}

TEST_F(FaultyLine, TheEcuLosesItsPowerBehindTheByte) {
    arm({.fault = Fault::Cut, .byte = 4});
    send(kAsk);
    EXPECT_THAT(arrives(), IsEmpty());
}

TEST_F(FaultyLine, AnAnswerLosesOneByte) {
    arm({.fault = Fault::AnswerLost, .byte = 3});
    send(kAsk);
    EXPECT_THAT(arrives(), ElementsAre('T', 3, 0xF5, 0x03, 0xAB));
}

// Byte 3 has its bit 3 inverted.
TEST_F(FaultyLine, AnAnswerHasOneOtherBit) {
    arm({.fault = Fault::AnswerFlipped, .byte = 3});
    send(kAsk);
    EXPECT_THAT(arrives(), ElementsAre('T', 3, 8, 0xF5, 0x03, 0xAB));
}

TEST_F(FaultyLine, HalvesAreRefusedOrNotAcknowledged) {
    Bytes half(162, 7);
    half.front() = 'F';
    half.back() = 0xB9;
    arm({.fault = Fault::Refused, .halves = "F"});
    send(half);
    EXPECT_THAT(arrives(), ElementsAre('F', 1, 0, 0xB9));
    static_cast<void>(device_.ecu().set("refuse", "none", now_));
    arm({.fault = Fault::NotAcknowledged, .halves = "F"});
    send(half);
    EXPECT_THAT(arrives(), IsEmpty());
}

}  // namespace
}  // namespace korvane::proof
