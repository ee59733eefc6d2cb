// The test of a port from the main window: when it is offered, and its window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "doctor/FrmDoctor.h"
#include "platform/RuntimeError.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace korvane::doctor {
namespace {

using support::Bytes;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const Bytes kLive(19, 0);

struct TestPortTest : testing::Test, support::VirtualProgram {
    explicit TestPortTest(platform::LineDevice* device = nullptr) : VirtualProgram(device) {}

    FrmDoctor& open() {
        window.portDoubt.test();
        return dynamic_cast<FrmDoctor&>(*windows.loaded().back());
    }
    static std::vector<std::string> rowsOf(const controls::ListBox& list) {
        std::vector<std::string> rows;
        for (int row = 0; row < list.ListCount(); ++row) {
            rows.push_back(list.List(row));
        }
        return rows;
    }
};

TEST_F(TestPortTest, ItIsNotOfferedAtTheStart) {
    EXPECT_FALSE(window.portDoubt.Shown);
    pump.wait(60'000);
    EXPECT_FALSE(window.portDoubt.Shown);
}

TEST_F(TestPortTest, FiveSecondsOfSilenceOfferIt) {
    connect();
    pump.wait(4900);
    EXPECT_FALSE(window.portDoubt.Shown);
    pump.wait(200);
    EXPECT_TRUE(window.portDoubt.Shown);
}

TEST_F(TestPortTest, ALiveFrameTakesTheOfferBack) {
    connect();
    pump.wait(6000);
    receiveFrame('R', kLive);
    EXPECT_FALSE(window.portDoubt.Shown);
}

TEST_F(TestPortTest, AnEcuThatFallsSilentOffersItFiveSecondsAfterItsLastFrame) {
    connect();
    receiveFrame('R', kLive);
    pump.wait(4800);
    EXPECT_FALSE(window.portDoubt.Shown);
    pump.wait(400);
    EXPECT_TRUE(window.portDoubt.Shown);
}

TEST_F(TestPortTest, TheOfferStaysWhenTheSilentLineIsClosed) {
    connect();
    pump.wait(6000);
    window.btnConnect.press();
    EXPECT_FALSE(window.MSComm1.PortOpen());
    EXPECT_TRUE(window.portDoubt.Shown);
}

TEST_F(TestPortTest, ACableThatIsPulledOutIsToldAndOffersNoTest) {
    connect();
    receiveFrame('R', kLive);
    line.pullOut();
    pump.wait(10'000);
    EXPECT_FALSE(window.portDoubt.Shown);
}

TEST_F(TestPortTest, TimeInWhichNothingWasAskedIsNoSilence) {
    connect();
    receiveFrame('R', kLive);
    window.TimerRequestData.Enabled = false;
    pump.wait(20'000);
    EXPECT_FALSE(window.portDoubt.Shown);
    window.TimerRequestData.Enabled = true;
    pump.wait(4900);
    EXPECT_FALSE(window.portDoubt.Shown);
    pump.wait(200);
    EXPECT_TRUE(window.portDoubt.Shown);
}

TEST_F(TestPortTest, TheWindowLooksAndSendsNothing) {
    auto& test = open();
    pump.wait(5000);
    EXPECT_EQ(test.lblPort.Caption.get(), "COM1");
    EXPECT_THAT(rowsOf(test.lstFindings),
                testing::ElementsAre("Good: The port leads to the built-in virtual ECU and to no device.",
                                     "Good: Nothing arrives while nothing is asked, as it should be."));
    EXPECT_EQ(test.lblVerdict.Caption.get(), "Nothing has been sent so far.");
    EXPECT_TRUE(test.btnAsk.Enabled);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(TestPortTest, AskingTellsEachSpeedAndTheWhole) {
    auto& test = open();
    pump.wait(1500);
    test.btnAsk.press();
    EXPECT_FALSE(test.btnAsk.Enabled);
    EXPECT_EQ(test.lblVerdict.Caption.get(), "The test runs.");
    pump.wait(4000);
    EXPECT_EQ(test.lstSpeeds.ListCount(), 7);
    EXPECT_EQ(test.lstSpeeds.List(0), "9600 baud: nothing");
    EXPECT_THAT(test.lblVerdict.Caption.get(), StartsWith("Fault: Nothing answers at any speed"));
    EXPECT_TRUE(test.btnAsk.Enabled);
}

TEST_F(TestPortTest, WhileTheProgramHasThePortOpenNothingIsAsked) {
    connect();
    static_cast<void>(sent());
    auto& test = open();
    EXPECT_FALSE(test.btnAsk.Enabled);
    EXPECT_THAT(test.lblVerdict.Caption.get(), HasSubstr("press Disconnect in the main window"));
    window.btnConnect.press();
    EXPECT_TRUE(test.btnAsk.Enabled);
}

TEST_F(TestPortTest, AConnectInTheMiddleEndsTheTestAndKeepsTheLine) {
    auto& test = open();
    pump.wait(1500);
    test.btnAsk.press();
    pump.wait(700);
    connect();
    static_cast<void>(sent());
    window.TimerRequestData.Enabled = false;
    window.TimerGetSettings.Enabled = false;
    pump.wait(5000);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_TRUE(window.MSComm1.PortOpen());
    receiveFrame('R', kLive);
    EXPECT_EQ(window.linkState.counts().frames, 1);
}

TEST_F(TestPortTest, ClosingTheWindowEndsTheTest) {
    auto& test = open();
    pump.wait(1500);
    test.btnAsk.press();
    pump.wait(50);
    static_cast<void>(test.unload());
    pump.wait(5000);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(TestPortTest, ASecondPressShowsTheSameWindow) {
    auto& test = open();
    EXPECT_EQ(&open(), &test);
}

}  // namespace
}  // namespace korvane::doctor
