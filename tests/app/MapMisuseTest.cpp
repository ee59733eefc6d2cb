// Map windows with input that no careful user types and no working ECU sends.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/Process.h"
#include "maps/MapForm.h"
#include "support/TempFolder.h"
#include "support/VirtualProgram.h"

namespace korvane::app {
namespace {

using support::Bytes;
using testing::Each;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// The replies to a script at an open map window, on a line without a device. An ECU with
// all features has told who it is and sent a misc block: 8500 and 9000 turns a minute, bits 0, 5 and 15, offsets 10 and
// 153, the longer opening.
std::vector<std::string> repliesAtMaps(const std::string& script) {
    const support::TempFolder folder;
    folder.write("Settings_par.ini", "");
    const std::string opening =
        "choose frmSarn2.ComboPort 2\n"
        "click frmSarn2.btnConnect\n"
        "wait 1000\n"
        "receive 7905ffff0d3a0b86\n"
        "wait 1000\n"
        "click frmSarn2.btnKartat\n"
        "wait 1000\n"
        "receive 6d093421282321800a990692\n"
        "wait 500\n";
    const auto outcome = runProgram(
        "korvane-tuner", {"--headless", "--virtual-time", "--folder", folder.path().string(), "--ecu", "none"},
        opening + script);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    auto replies = linesOf(outcome.output);
    EXPECT_THAT(replies, Each(StartsWith("ok")));
    replies.erase(replies.begin(), replies.begin() + std::min<std::ptrdiff_t>(9, std::ssize(replies)));
    return replies;
}

// 10000 is 10 27; all else goes out as it came.
TEST(MapMisuse, ASpeedBeyondTheLimitGoesOutAsTheLimit) {
    const auto replies = repliesAtMaps(
        "type frmMaps.txtMisc(0) \"70000\"\n"
        "get frmMaps.txtMisc(0).Text\n"
        "sent\n"
        "click frmMaps.btnSaveMisc\n"
        "sent\n"
        "get frmMaps.txtMisc(0).Text\n"
        "get frmSarn2.TimerRequestData.Enabled\n");
    ASSERT_THAT(replies, SizeIs(7));
    EXPECT_EQ(replies[1], "ok \"70000\"");
    EXPECT_EQ(replies[4], "ok \"4d1027282321800a9906b264\"");
    EXPECT_EQ(replies[5], "ok \"10000\"");
    EXPECT_EQ(replies[6], "ok true");
}

// An offset that is no byte either: 300 becomes 255.
TEST(MapMisuse, AnOffsetBeyondAByteGoesOutAsTheHighest) {
    const auto replies = repliesAtMaps(
        "type frmMaps.txtMisc(2) \"300\"\n"
        "sent\n"
        "click frmMaps.btnSaveMisc\n"
        "sent\n");
    ASSERT_THAT(replies, SizeIs(4));
    EXPECT_EQ(replies[3], "ok \"4d342128232180ff9906b264\"");
}

// An open map window on a line that is quiet: no polls between the frames.
class MapFrames : public testing::Test, public support::VirtualProgram {
protected:
    maps::MapForm& open(int swType) {
        tables.SWType = swType;
        connect();
        window.btnKartat.press();
        pump.wait(1000);
        window.TimerRequestData.Enabled = false;
        window.TimerGetSettings.Enabled = false;
        pump.wait(100);
        static_cast<void>(sent());
        return dynamic_cast<maps::MapForm&>(*windows.loaded().back());
    }
    static Bytes half(int value) { return Bytes(160, static_cast<std::uint8_t>(value)); }
    static std::vector<int> cells(const core::MapImage& image, int first) {
        return {image.begin() + first, image.begin() + first + 160};
    }
};

TEST_F(MapFrames, AMapThatComesTwiceStandsAsItDid) {
    auto& maps = open(11);
    for (int time = 0; time < 2; ++time) {
        receiveFrame('a', half(50));
        EXPECT_THAT(cells(tables.IgnMapIn, 0), Each(50));
        EXPECT_THAT(cells(tables.IgnMapOut, 0), Each(50));
        EXPECT_EQ(maps.ign(159).Text.get(), "10");  // 50 * 0.2 degrees
        EXPECT_EQ(maps.ign(159).ForeColor.get(), controls::kBlack);
        EXPECT_THAT(maps.Caption.get(), StartsWith("Received Ignition map "));
        EXPECT_THAT(sent(), IsEmpty());
    }
}

TEST_F(MapFrames, TheSecondCopyOfAMapTakesBackAnEdit) {
    auto& maps = open(11);
    receiveFrame('a', half(50));
    maps.ign(17).keyDown(controls::kKeyPlus, 0);
    ASSERT_EQ(tables.IgnMapOut[17], 51);
    receiveFrame('a', half(50));
    EXPECT_EQ(tables.IgnMapOut[17], 50);
    EXPECT_EQ(maps.ign(17).ForeColor.get(), controls::kBlack);
}

TEST_F(MapFrames, TwoFramesInOneBurstAreBothTaken) {
    auto& maps = open(11);
    Bytes burst = support::frame('a', half(50));
    const Bytes second = support::frame('f', half(60));
    burst.insert(burst.end(), second.begin(), second.end());
    burst.insert(burst.end(), second.begin(), second.end());
    receive(burst);
    pump.wait(100);
    EXPECT_THAT(cells(tables.IgnMapIn, 0), Each(50));
    EXPECT_THAT(cells(tables.FuelMapOut, 0), Each(60));
    EXPECT_THAT(maps.Caption.get(), StartsWith("Received 50% Fuel map "));
}

TEST_F(MapFrames, EachCopyOfALargeMapsFirstHalfAsksForTheSecond) {
    open(14);
    receiveFrame('f', half(60));
    receiveFrame('f', half(60));
    EXPECT_EQ(sent(), (Bytes{245, 245}));
    receiveFrame('a', half(50));
    receiveFrame('a', half(50));
    EXPECT_EQ(sent(), (Bytes{247, 247}));
}

TEST_F(MapFrames, ASecondHalfMayComeBeforeTheFirst) {
    auto& maps = open(14);
    tables.IgnMapIn.fill(1);
    tables.IgnMapOut.fill(1);
    receiveFrame(247, half(70));
    EXPECT_THAT(cells(tables.IgnMapIn, 160), Each(70));
    EXPECT_THAT(cells(tables.IgnMapOut, 160), Each(70));
    EXPECT_THAT(cells(tables.IgnMapIn, 0), Each(1));
    EXPECT_EQ(maps.ign(160).Text.get(), "14");
    EXPECT_THAT(maps.Caption.get(), StartsWith("Received Ignition map "));
    receiveFrame('a', half(50));
    EXPECT_THAT(cells(tables.IgnMapIn, 0), Each(50));
    EXPECT_THAT(cells(tables.IgnMapIn, 160), Each(70));
    EXPECT_EQ(maps.ign(159).Text.get(), "10");
    EXPECT_EQ(maps.ign(160).Text.get(), "14");
    receiveFrame(245, half(80));
    EXPECT_THAT(cells(tables.FuelMapIn, 160), Each(80));
    EXPECT_THAT(maps.Caption.get(), StartsWith("Received 100% Fuel map "));
    receiveFrame('f', half(60));
    EXPECT_THAT(cells(tables.FuelMapIn, 0), Each(60));
    EXPECT_THAT(cells(tables.FuelMapIn, 160), Each(80));
    EXPECT_THAT(maps.Caption.get(), StartsWith("Received 50% Fuel map "));
}

TEST_F(MapFrames, ASecondHalfThatNoWindowShowsIsKeptAndHurtsNothing) {
    auto& maps = open(11);
    receiveFrame('a', half(50));
    receiveFrame(247, half(70));
    EXPECT_THAT(cells(tables.IgnMapIn, 160), Each(70));
    EXPECT_EQ(maps.ign(159).Text.get(), "10");
    EXPECT_THAT(cells(tables.IgnMapOut, 0), Each(50));
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_THAT(dialogs.takeMessages(), IsEmpty());
}

TEST_F(MapFrames, AMiscBlockThatComesTwiceEndsWithThePollRunning) {
    auto& maps = open(11);
    Bytes burst = support::frame('m', {0x34, 0x21, 0x28, 0x23, 0x21, 0x80, 10, 153, 6});
    const Bytes second = support::frame('m', {0x35, 0x21, 0x28, 0x23, 0x21, 0x80, 10, 153, 6});
    burst.insert(burst.end(), second.begin(), second.end());
    receive(burst);
    pump.wait(500);
    EXPECT_EQ(maps.txtMisc(0).Text.get(), "8501");
    EXPECT_EQ(maps.txtMisc(3).Text.get(), "2.5");  // (153 - 128) / 10
    EXPECT_EQ(maps.Caption.get(), "Misc datan haku onnistui");
    EXPECT_TRUE(window.TimerRequestData.Enabled);
    EXPECT_FALSE(maps.TimeOutTimer.Enabled);
}

TEST_F(MapFrames, AnswersToWritesThatNobodyMadeAreOnlyCounted) {
    auto& maps = open(14);
    receiveFrame(246, {1});
    EXPECT_EQ(tables.FuelSendAcks, 10);
    EXPECT_THAT(maps.Caption.get(), StartsWith("Sent 100% of Inj map "));
    receiveFrame('F', {1});
    receiveFrame('F', {1});
    EXPECT_EQ(tables.FuelSendAcks, 12);
    EXPECT_THAT(maps.Caption.get(), StartsWith("Sent 50% of Inj map "));
    EXPECT_THAT(sent(), IsEmpty());
}

}  // namespace
}  // namespace korvane::app
