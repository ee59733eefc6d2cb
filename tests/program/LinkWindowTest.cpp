// The window of the line's quality, and the seconds that it shows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "doctor/FrmLink.h"
#include "support/VirtualProgram.h"

namespace korvane::doctor {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

const support::Bytes kLive(19, 0);

struct LinkWindowTest : testing::Test, support::VirtualProgram {
    // A poll every 200 ms, each answered 30 ms later, from the connect on.
    void run(int seconds) {
        for (int tick = 0; tick < seconds * 5; ++tick) {
            pump.wait(170);
            if (tick > 0) {
                receiveFrame('R', kLive);
            }
            pump.wait(30);
        }
    }
    FrmLink& open() {
        EXPECT_TRUE(window.offerKey(76, controls::kControlMask));
        return dynamic_cast<FrmLink&>(*windows.loaded().back());
    }
};

TEST_F(LinkWindowTest, NothingIsKeptBeforeTheFirstConnect) {
    pump.wait(5000);
    EXPECT_THAT(window.linkHistory.seconds(), IsEmpty());
}

TEST_F(LinkWindowTest, EachSecondHasItsFrames) {
    connect();
    window.TimerGetSettings.Enabled = false;
    for (int second = 0; second < 3; ++second) {
        for (int frame = 0; frame <= second; ++frame) {
            receiveFrame('R', kLive);
        }
        pump.wait(1000);
    }
    const auto seconds = window.linkHistory.seconds();
    ASSERT_THAT(seconds, SizeIs(3));
    EXPECT_EQ(seconds[0].frames, 1);
    EXPECT_EQ(seconds[1].frames, 2);
    EXPECT_EQ(seconds[2].frames, 3);
}

TEST_F(LinkWindowTest, ADroppedFrameIsAFaultOfItsSecond) {
    connect();
    window.TimerGetSettings.Enabled = false;
    window.TimerRequestData.Enabled = false;
    pump.wait(1000);
    auto broken = support::frame('R', kLive);
    broken.back() ^= 1U;
    receive(broken);
    pump.wait(1000);
    pump.wait(1000);
    const auto seconds = window.linkHistory.seconds();
    EXPECT_EQ(seconds[1].faults, 1);
    EXPECT_EQ(seconds[2].faults, 0);
}

TEST_F(LinkWindowTest, TenMinutesAreKept) {
    connect();
    pump.wait(700'000);
    EXPECT_THAT(window.linkHistory.seconds(), SizeIs(600));
}

TEST_F(LinkWindowTest, ANewConnectionCountsFromZeroAndTheHistoryGoesOn) {
    connect();
    window.TimerGetSettings.Enabled = false;
    receiveFrame('R', kLive);
    receiveFrame('R', kLive);
    pump.wait(1000);
    window.btnConnect.press();
    pump.wait(1000);
    connect();
    receiveFrame('R', kLive);
    pump.wait(1000);
    const auto seconds = window.linkHistory.seconds();
    ASSERT_THAT(seconds, SizeIs(3));
    EXPECT_EQ(seconds[1].frames, 0);
    EXPECT_EQ(seconds[2].frames, 1);
}

TEST_F(LinkWindowTest, TheWindowSaysWhatIsCountedAndSendsNothing) {
    auto& link = open();
    EXPECT_EQ(link.lblRoundTrip.Caption.get(), "From poll to answer: no answer in the last minute");
    EXPECT_EQ(link.lblFrames.Caption.get(), "Frames: 0 a second, 0 since the connect");
    EXPECT_EQ(link.lblFaults.Caption.get(),
              "Faults since the connect: 0 frames dropped, 0 resynchronisations, 0 polls not answered");
    pump.wait(5000);
    EXPECT_THAT(sent(), IsEmpty());
    connect();
    receiveFrame('R', kLive);
    pump.wait(1000);
    link.Timer1.Tick();
    EXPECT_EQ(link.lblFrames.Caption.get(),
              "Frames: 1 a second, 1 since the connect; the refresh asks for 100, 57600 baud carry at most 250.4 live "
              "frames (yellow: the lower of both)");
    // What counts is the speed of the open line, not the next one.
    window.ComboBaud.choose(0);
    pump.wait(1000);
    EXPECT_THAT(link.lblFrames.Caption.get(), testing::HasSubstr("57600 baud carry"));
}

TEST_F(LinkWindowTest, WhatIsPossibleIsALevelLineOfTheFrames) {
    auto& link = open();
    link.picFrames.Width = 6000;
    link.picFrames.Height = 2210;
    connect();
    window.TimerGetSettings.Enabled = false;
    receiveFrame('R', kLive);
    pump.wait(1000);
    link.Timer1.Tick();
    // The refresh asks for a hundred a second, which is the upper edge then.
    std::vector<controls::Point> limit;
    const auto& drawing = link.picFrames.drawing();
    for (const auto& shape : drawing.shapes()) {
        if (shape.kind == controls::Drawing::Kind::Polyline && shape.color == controls::kYellow) {
            const auto points = drawing.pointsOf(shape);
            limit.assign(points.begin(), points.end());
        }
    }
    EXPECT_THAT(limit, testing::ElementsAre(controls::Point{0, 0}, controls::Point{6000, 0}));
}

TEST_F(LinkWindowTest, ItsPicturesAreDrawnInTheirSize) {
    auto& link = open();
    link.picFrames.Width = 6000;
    link.picFrames.Height = 2210;
    connect();
    window.TimerGetSettings.Enabled = false;
    window.TimerRequestData.Enabled = false;
    receiveFrame('R', kLive);
    pump.wait(2000);
    link.Timer1.Tick();
    std::vector<controls::Point> last;
    const auto& drawing = link.picFrames.drawing();
    for (const auto& shape : drawing.shapes()) {
        if (shape.kind == controls::Drawing::Kind::Polyline && shape.color == controls::kGreen) {
            const auto points = drawing.pointsOf(shape);
            last.assign(points.begin(), points.end());
        }
    }
    // One frame in the second before, none in the last: 10 twips a second, the 100 that are possible at the upper edge.
    EXPECT_THAT(last, testing::ElementsAre(controls::Point{5990, 1980}, controls::Point{6000, 2000}));
}

}  // namespace
}  // namespace korvane::doctor
