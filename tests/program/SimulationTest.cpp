#include <gmock/gmock.h>

#include "support/VirtualProgram.h"

namespace korvane::link {
namespace {

using support::VirtualProgram;
using testing::ElementsAre;
using testing::IsEmpty;

class SimulationTest : public testing::Test {
protected:
    // Lets the identity through: 2000 ms, then its own pause of 300.
    void startByHand() {
        window_.Timerofflinefeat.Enabled = true;
        program_.pump.wait(2300);
    }
    [[nodiscard]] double channel(std::size_t number) const { return program_.tables.liveValues.at(number).value; }
    [[nodiscard]] double raw(std::size_t number) const { return program_.tables.liveValues.at(number).raw; }

    VirtualProgram program_;
    live::FrmSarn2& window_ = program_.window;
};

TEST_F(SimulationTest, SleepsUntilSomebodySwitchesItOn) {
    program_.pump.wait(60000);
    EXPECT_EQ(program_.tables.Features, -1);
    EXPECT_EQ(channel(0), 0);
}

TEST_F(SimulationTest, BeginsWithAnIdentityAfterTwoSeconds) {
    window_.Timerofflinefeat.Enabled = true;
    program_.pump.wait(1999);
    EXPECT_EQ(program_.tables.Features, -1);
    program_.pump.wait(301);
    EXPECT_EQ(program_.tables.Features, 257);
    EXPECT_EQ(window_.lblHWVer.Caption.get(), "hwVer: 3.386");
    EXPECT_EQ(program_.tables.SWType, 11);
    EXPECT_FALSE(window_.Timerofflinefeat.Enabled);
    EXPECT_TRUE(window_.TimerOffline.Enabled);
}

TEST_F(SimulationTest, TheFirstFrameComesHalfASecondLaterAndHasTheFixedBytes) {
    startByHand();
    program_.pump.wait(499);
    EXPECT_EQ(channel(0), 0);
    program_.pump.wait(1);
    EXPECT_EQ(channel(0), 5 * 256 + 5);
    EXPECT_EQ(channel(1), 112 - 50);
    EXPECT_EQ(channel(2), 72 - 50);
    EXPECT_EQ(channel(3), 12.5);
    EXPECT_EQ(raw(4), 120);
    EXPECT_EQ(raw(5), 3);
    EXPECT_EQ(raw(6), 130);
    EXPECT_EQ(channel(7), 55);
    EXPECT_EQ(channel(20), 0);
    EXPECT_EQ(channel(21), 34);
    EXPECT_EQ(channel(22), 34 * 256 + 34);
    EXPECT_EQ(channel(8), 34);
    EXPECT_EQ(channel(9), 34);
    EXPECT_EQ(channel(10), 34 * 5);
    EXPECT_EQ(channel(11), 6.8);
    EXPECT_EQ(channel(12 + 2), 2 * 256 + 34);
    EXPECT_EQ(window_.lblValue(0).Caption.get(), "1285");
}

TEST_F(SimulationTest, TheIntervalFollowsTheRefreshListAtEachTick) {
    startByHand();
    program_.pump.wait(500);
    EXPECT_EQ(window_.TimerOffline.Interval.get(), 10);
    window_.ComboRefresh.choose(8);
    program_.pump.wait(10);
    EXPECT_EQ(window_.TimerOffline.Interval.get(), 200);
}

// The decode writes the throttle's percentage back into the frame. Without a calibration a byte up to 100 stays as it
// is and a larger one becomes 100, so the ramp ends there.
TEST_F(SimulationTest, TheThrottleRisesByThreeUntilTheDecodeHoldsItAt100) {
    startByHand();
    program_.pump.wait(500);
    for (int i = 2; i <= 33; ++i) {
        program_.pump.wait(10);
        EXPECT_EQ(raw(5), 3 * i);
        EXPECT_EQ(channel(5), 3 * i);
    }
    program_.pump.wait(10);
    EXPECT_EQ(raw(5), 102);
    EXPECT_EQ(channel(5), 100);
    program_.pump.wait(10);
    EXPECT_EQ(raw(5), 103);
    EXPECT_EQ(channel(5), 100);
}

// With a decoder that does not change the frame the whole ramp is shown: above 250 it begins again at 2.
TEST_F(SimulationTest, TheRampBeginsAgainAt2Past250) {
    class Noting : public LiveDecoder {
    public:
        void decodeLivePacket(std::span<std::uint8_t> payload) override {
            throttle.push_back(payload[6]);
            lambda.push_back(payload[7]);
        }
        std::vector<int> throttle, lambda;
    };
    Noting noting;
    program_.program.dispatcher().setLiveDecoder(noting);
    startByHand();
    program_.pump.wait(500 + 90 * 10);
    ASSERT_EQ(noting.throttle.size(), 91U);
    for (int i = 0; i < 84; ++i) {
        EXPECT_EQ(noting.throttle[static_cast<std::size_t>(i)], 3 * (i + 1));
    }
    EXPECT_EQ(noting.throttle[83], 252);
    EXPECT_EQ(noting.throttle[84], 2);
    EXPECT_EQ(noting.throttle[85], 5);
    EXPECT_THAT(noting.lambda, testing::Each(130));
}

TEST_F(SimulationTest, SendsNothingAndCountsNoBytes) {
    startByHand();
    program_.pump.wait(2000);
    EXPECT_EQ(window_.bytesReceived, 0);
    EXPECT_THAT(program_.sent(), IsEmpty());
    EXPECT_THAT(program_.log.lines, IsEmpty());
}

}  // namespace
}  // namespace korvane::link
