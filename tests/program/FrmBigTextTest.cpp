#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "core/Numbers.h"
#include "live/readout/FrmBigText.h"
#include "support/VirtualProgram.h"

namespace korvane::live {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct FrmBigTextTest : testing::Test, support::VirtualMachine {
    FrmBigTextTest() {
        table.liveValues[0].name = "RPM";
        table.liveValues[6].name = "Lambda";
        table.liveValues[30].name = "Last";
        window.show();
    }

    void tick() { pump.wait(200); }
    void choose(int channel, double value) {
        table.liveValues.at(static_cast<std::size_t>(channel)).value = value;
        window.Combo1.choose(channel);
        tick();
    }
    [[nodiscard]] std::string shown() const { return window.Label1.Caption; }
    [[nodiscard]] bool isRed() const { return window.Label1.ForeColor == controls::kRed; }

    core::LiveTable table;
    BigTexts bigTexts;
    FrmBigText window{machine, table, bigTexts};
};

TEST_F(FrmBigTextTest, ItsListHasTheChannelsNamesInTheirOrder) {
    ASSERT_EQ(window.Combo1.ListCount(), 31);
    EXPECT_EQ(window.Combo1.List(0), "RPM");
    EXPECT_EQ(window.Combo1.List(6), "Lambda");
    EXPECT_EQ(window.Combo1.List(7), "");
    EXPECT_EQ(window.Combo1.List(30), "Last");
    EXPECT_EQ(window.Combo1.ListIndex, 0);
}

TEST_F(FrmBigTextTest, ShowsItsDesignUntilTheFirstTick) {
    table.liveValues[0].value = 850;
    EXPECT_EQ(shown(), "9999");
    EXPECT_EQ(window.Check1.Caption.get(), "Alarms");
    EXPECT_EQ(window.Check1.Value, 0);
    pump.wait(199);
    EXPECT_EQ(shown(), "9999");
    pump.wait(1);
    EXPECT_EQ(shown(), "850");
}

TEST_F(FrmBigTextTest, FollowsTheChannelEvery200Milliseconds) {
    for (const double value : {850.0, 901.0, 14.7265625, -3.5, 0.0}) {
        table.liveValues[0].value = value;
        tick();
        EXPECT_EQ(core::val(shown()), value);
    }
}

TEST_F(FrmBigTextTest, TheTitleIsTheNameTwoBlanksAndTheValue) {
    choose(6, 14.7265625);
    EXPECT_EQ(shown(), "14.7265625");
    EXPECT_EQ(window.Caption.get(), "Lambda  14.7265625");
}

TEST_F(FrmBigTextTest, WithoutAChannelItShows999AndKeepsItsTitle) {
    choose(6, 14.5);
    window.Combo1.ListIndex = -1;
    tick();
    EXPECT_EQ(shown(), "999");
    EXPECT_EQ(window.Caption.get(), "Lambda  14.5");
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(FrmBigTextTest, AFailingTickIsLeftForTheNext) {
    choose(6, 14.5);
    window.Combo1.ListIndex = 31;
    tick();
    EXPECT_EQ(shown(), "14.5");
    choose(30, 7);
    EXPECT_EQ(shown(), "7");
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(FrmBigTextTest, AValueAboveTheLimitIsRedOnTheButtonFace) {
    table.liveValues[6].limit = 15;
    window.Check1.press();
    window.Label1.BackColor = controls::kYellow;
    choose(6, 15.1);
    EXPECT_TRUE(isRed());
    EXPECT_EQ(window.Label1.BackColor, controls::kButtonFace);
    choose(6, 14.9);
    EXPECT_EQ(window.Label1.ForeColor, controls::kButtonText);
    EXPECT_EQ(window.Label1.BackColor, controls::kButtonFace);
}

TEST_F(FrmBigTextTest, AValueEqualToTheLimitIsNoAlarm) {
    table.liveValues[6].limit = 15;
    window.Check1.press();
    choose(6, 15);
    EXPECT_FALSE(isRed());
}

TEST_F(FrmBigTextTest, WithTheBoxUntickedThereIsNoAlarm) {
    choose(0, 1e9);
    EXPECT_FALSE(isRed());
    window.Check1.press();
    tick();
    EXPECT_TRUE(isRed());
    window.Check1.press();
    tick();
    EXPECT_FALSE(isRed());
}

TEST_F(FrmBigTextTest, TwoOnDifferentChannelsUpdateOnTheirOwn) {
    FrmBigText other(machine, table, bigTexts);
    other.show();
    table.liveValues[6].limit = 10;
    other.Combo1.choose(6);
    other.Check1.press();
    choose(0, 3000);
    table.liveValues[6].value = 14.5;
    tick();
    EXPECT_EQ(shown(), "3000");
    EXPECT_EQ(other.Label1.Caption.get(), "14.5");
    EXPECT_EQ(other.Caption.get(), "Lambda  14.5");
    EXPECT_TRUE(other.Label1.ForeColor == controls::kRed);
    EXPECT_FALSE(isRed());
    other.resize(9000, 3000);
    EXPECT_EQ(window.Width, 7850);
}

TEST_F(FrmBigTextTest, TheOpenOnesAreKeptUnderTheTextOfTheirHandles) {
    FrmBigText other(machine, table, bigTexts);
    EXPECT_THAT(bigTexts.all(), ElementsAre(&window));
    other.show();
    EXPECT_THAT(bigTexts.all(), ElementsAre(&window, &other));
    EXPECT_NE(window.hWnd(), other.hWnd());
    EXPECT_EQ(bigTexts.find(std::to_string(other.hWnd())), &other);
    EXPECT_TRUE(window.unload());
    EXPECT_THAT(bigTexts.all(), ElementsAre(&other));
    EXPECT_EQ(bigTexts.find(std::to_string(window.hWnd())), nullptr);
    EXPECT_TRUE(other.unload());
    EXPECT_THAT(bigTexts.all(), IsEmpty());
}

TEST_F(FrmBigTextTest, KeepsTheSizeThatItWasLoadedWith) {
    window.resize(9000, 3000);
    EXPECT_EQ(window.initialWidth(), 7850);
    EXPECT_EQ(window.initialHeight(), 3750);
}

// As in the worked cases of the shape.
TEST_F(FrmBigTextTest, ADraggedWindowTakesOnItsShape) {
    window.resize(9000, 3000);
    EXPECT_EQ(window.Width, 5600);
    EXPECT_EQ(window.Height, 3000);
    EXPECT_EQ(window.Label1.Width, 5250);
    EXPECT_EQ(window.Label1.Height, 1750);
    EXPECT_EQ(window.Label1.FontSize, 87);
    window.resize(6000, 4000);
    EXPECT_EQ(window.Width, 6000);
    EXPECT_EQ(window.Height, 3133);
    EXPECT_EQ(window.Label1.Width, 5650);
    EXPECT_EQ(window.Label1.Height, 1883);
    EXPECT_EQ(window.Label1.FontSize, 94);
}

TEST_F(FrmBigTextTest, AnAssignedSizeDoesTheSame) {
    window.Height = 3000;
    EXPECT_EQ(window.Width, 5600);
    EXPECT_EQ(window.Label1.Width, 5250);
    window.Width = 3600;
    EXPECT_EQ(window.Height, 2333);
    EXPECT_EQ(window.Label1.Height, 1083);
}

TEST_F(FrmBigTextTest, TheTitleIsTheFiguresSizeUntilTheNextTick) {
    EXPECT_EQ(window.Caption.get(), "7500 x 2500");
    tick();
    EXPECT_EQ(window.Caption.get(), "RPM  0");
    window.resize(9000, 3000);
    EXPECT_EQ(window.Caption.get(), "5250 x 1750");
    tick();
    EXPECT_EQ(window.Caption.get(), "RPM  0");
}

}  // namespace
}  // namespace korvane::live
