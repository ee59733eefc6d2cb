#include <array>
#include <gtest/gtest.h>

#include "core/tables/LiveChannel.h"
#include "live/LiveDecode.h"
#include "platform/RuntimeError.h"

namespace korvane::live {
namespace {

using core::LiveChannel;

// The decode needs a payload and rules alone: no window, no tables.
struct DecodeAlone : testing::Test {
    [[nodiscard]] double value(LiveChannel channel) const { return channels.at(core::indexOf(channel)).value; }

    std::array<core::LiveValue, core::kChannelCount> channels;
    DecodeRules rules{1.13F, 20, 220};
};

TEST_F(DecodeAlone, APayloadBecomesChannelValues) {
    std::array<std::uint8_t, 19> payload{9, 196, 90, 40, 138, 0, 120, 0, 64, 3, 77, 1, 2, 5, 6, 100, 85, 0x31, 2};
    decodeLive(payload, rules, channels);
    EXPECT_EQ(value(LiveChannel::Rpm), 2500);
    EXPECT_EQ(value(LiveChannel::WaterTemperature), 90);
    EXPECT_EQ(value(LiveChannel::AirTemperature), 40);
    EXPECT_EQ(value(LiveChannel::Voltage), 13.8);
    EXPECT_EQ(value(LiveChannel::Throttle), 50);
    EXPECT_EQ(payload[6], 50);
    EXPECT_EQ(value(LiveChannel::Lambda), 10);
    EXPECT_EQ(value(LiveChannel::InjectionDuty), 64);
    EXPECT_EQ(value(LiveChannel::Accel), 3);
    EXPECT_EQ(value(LiveChannel::MapPlace), 77);
    EXPECT_EQ(value(LiveChannel::Flags), 258);
    EXPECT_EQ(value(LiveChannel::IdlePid), 5);
    EXPECT_EQ(value(LiveChannel::BoostPid), 6);
    EXPECT_EQ(value(LiveChannel::KType), 500);
    EXPECT_EQ(value(LiveChannel::IgnitionAdvance), 17);
    EXPECT_EQ(value(LiveChannel::Input3), 258);  // 1 * 256 + 2
    EXPECT_EQ(value(LiveChannel::UpdateSpeed), 16);
}

TEST_F(DecodeAlone, TheRulesDecideTheTemperaturesOffset) {
    std::array<std::uint8_t, 13> payload{0, 0, 90, 40};
    rules.HwVersion = 1.14F;
    decodeLive(payload, rules, channels);
    EXPECT_EQ(value(LiveChannel::WaterTemperature), 40);
    EXPECT_EQ(value(LiveChannel::AirTemperature), -10);
}

TEST_F(DecodeAlone, AShortPayloadSetsWhatItHasAndFails) {
    std::array<std::uint8_t, 3> payload{9, 196, 90};
    EXPECT_THROW(decodeLive(payload, rules, channels), platform::RuntimeError);
    EXPECT_EQ(value(LiveChannel::Rpm), 2500);
    EXPECT_EQ(value(LiveChannel::WaterTemperature), 90);
    EXPECT_EQ(value(LiveChannel::UpdateSpeed), 0);
}

}  // namespace
}  // namespace korvane::live
