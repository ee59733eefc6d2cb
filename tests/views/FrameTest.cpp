#include "views/FormBench.h"

namespace korvane::views {
namespace {

struct FrameTest : testing::Test, FormBench {};

TEST_F(FrameTest, AHundredChangesBetweenTwoFramesAreOnePainting) {
    show();
    frame();
    const PaintCounter counter(find("lblLive"));
    for (int i = 0; i < 100; ++i) {
        form.lblLive.Caption = std::to_string(i);
    }
    EXPECT_EQ(counter.count(), 0);
    frame();
    EXPECT_EQ(counter.count(), 1);
    EXPECT_EQ(find<Readout>("lblLive").text(), "99");
}

TEST_F(FrameTest, WhatHasNotChangedIsNotPainted) {
    show();
    frame();
    const PaintCounter counter(find("txtCell(17)"));
    form.lblLive.Caption = "5";
    frame();
    EXPECT_EQ(counter.count(), 0);
}

TEST_F(FrameTest, AChangeThatGoesBackIsNotPainted) {
    form.lblLive.Caption = "5";
    show();
    const PaintCounter counter(find("lblLive"));
    form.lblLive.Caption = "6";
    form.lblLive.Caption = "5";
    frame();
    EXPECT_EQ(counter.count(), 0);
}

TEST_F(FrameTest, TheClockRestsUntilSomethingChanges) {
    show();
    frame();
    EXPECT_FALSE(host.clock().isAwake());
    form.lblLive.Caption = "5";
    EXPECT_TRUE(host.clock().isAwake());
    frame();
    EXPECT_FALSE(host.clock().isAwake());
}

TEST(FrameClockTest, AFrameComesAtOnceAfterARestAndElseTwentyMillisecondsAfterTheLast) {
    EXPECT_EQ(FrameClock::pauseBefore(20, 0), 0);
    EXPECT_EQ(FrameClock::pauseBefore(3000, 9), 0);
    EXPECT_EQ(FrameClock::pauseBefore(0, 0), 20);
    EXPECT_EQ(FrameClock::pauseBefore(5, 10), 15);
}

TEST(FrameClockTest, ASlowPaintingLeavesAsMuchTimeFreeAsItTook) {
    EXPECT_EQ(FrameClock::pauseBefore(30, 30), 30);
    EXPECT_EQ(FrameClock::pauseBefore(70, 30), 0);
}

TEST(FrameClockTest, ATimeAsleepIsNoSlowPainting) {
    EXPECT_EQ(FrameClock::pauseBefore(0, 3'600'000), 400);
}

TEST_F(FrameTest, AHiddenWindowDoesNoWorkAndIsUpToDateWhenItComesBack) {
    show();
    frame();
    form.Visible = false;
    form.lblLive.Caption = "5";
    EXPECT_FALSE(host.clock().isAwake());
    frame();
    EXPECT_EQ(find<Readout>("lblLive").text(), "");
    form.Visible = true;
    EXPECT_EQ(find<Readout>("lblLive").text(), "5");
}

TEST_F(FrameTest, AMinimisedWindowWaitsToo) {
    show();
    frame();
    view().setWindowState(Qt::WindowMinimized);
    settle();
    form.lblLive.Caption = "5";
    EXPECT_FALSE(host.clock().isAwake());
    view().setWindowState(Qt::WindowNoState);
    settle();
    frame();
    EXPECT_EQ(find<Readout>("lblLive").text(), "5");
}

TEST_F(FrameTest, OneClockServesAllWindows) {
    Form other(machine);
    show();
    other.show();
    frame();
    form.lblLive.Caption = "1";
    other.lblLive.Caption = "2";
    frame();
    EXPECT_EQ(find<Readout>("lblLive").text(), "1");
    EXPECT_EQ(dynamic_cast<Readout&>(*host.viewOf(other)->findChild<QWidget*>("lblLive")).text(), "2");
}

}  // namespace
}  // namespace korvane::views
