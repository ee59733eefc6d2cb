#include <gtest/gtest.h>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "live/ChannelTable.h"

namespace korvane::live {
namespace {

TEST(ChannelTable, EachRowStandsAtItsChannelsNumber) {
    ASSERT_EQ(kChannels.size(), 31U);
    for (std::size_t number = 0; number < kChannels.size(); ++number) {
        EXPECT_EQ(core::indexOf(kChannels[number].channel), number);
    }
}

TEST(ChannelTable, TheNumbersAreThoseOfTheFirmwaresTable) {
    const std::vector<std::pair<LiveChannel, std::size_t>> numbers{
        {LiveChannel::Rpm, 0},       {LiveChannel::WaterTemperature, 1}, {LiveChannel::AirTemperature, 2},
        {LiveChannel::Voltage, 3},   {LiveChannel::Pressure, 4},         {LiveChannel::Throttle, 5},
        {LiveChannel::Lambda, 6},    {LiveChannel::InjectionDuty, 7},    {LiveChannel::IdlePid, 8},
        {LiveChannel::BoostPid, 9},  {LiveChannel::KType, 10},           {LiveChannel::IgnitionAdvance, 11},
        {LiveChannel::Input0, 12},   {LiveChannel::Input7, 19},          {LiveChannel::Accel, 20},
        {LiveChannel::MapPlace, 21}, {LiveChannel::Flags, 22},           {LiveChannel::UpdateSpeed, 23},
        {LiveChannel::Input12, 24},  {LiveChannel::Input15, 27},         {LiveChannel::Spare30, 30}};
    for (const auto& [channel, number] : numbers) {
        EXPECT_EQ(core::indexOf(channel), number);
    }
    EXPECT_EQ(core::inputChannel(0), LiveChannel::Input0);
    EXPECT_EQ(core::inputChannel(15), LiveChannel::Input15);
}

TEST(ChannelTable, DialsAndLampsHaveTheirChannels) {
    EXPECT_EQ(channelOf(ChannelDial::Rpm), LiveChannel::Rpm);
    EXPECT_EQ(channelOf(ChannelDial::Boost), LiveChannel::Pressure);
    EXPECT_EQ(channelOf(ChannelDial::Throttle), LiveChannel::Throttle);
    EXPECT_EQ(channelOfLamps(), LiveChannel::Flags);
}

TEST(ChannelTable, EverySeriesOfBothTrendsHasOneChannel) {
    std::set<std::pair<int, int>> places;
    for (const auto& place : kTrendPlaces) {
        EXPECT_TRUE(place.trend == 0 || place.trend == 2);
        EXPECT_TRUE(place.series >= 0 && place.series < 5);
        places.insert({place.trend, place.series});
    }
    EXPECT_EQ(places.size(), kTrendPlaces.size());
}

}  // namespace
}  // namespace korvane::live
