// The ignition debug window in the whole program: how it opens and closes, and its poll against the virtual ECU.
#include <gmock/gmock.h>

#include "live/FrmIGNDebug.h"
#include "support/EcuDevice.h"
#include "support/PropertyWatch.h"
#include "support/VirtualProgram.h"

namespace korvane::program {
namespace {

using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNoWindow = "err docommand Object variable not set";
const Bytes kGoodWords{0x55, 0x55, 0xD0, 0x02, 0xAA, 0xAA, 0x3C, 0x00};

// Null when it is not open.
live::FrmIGNDebug* debugWindow(const support::VirtualMachine& machine) {
    for (auto* const window : machine.windows.loaded()) {
        if (auto* const found = dynamic_cast<live::FrmIGNDebug*>(window)) {
            return found;
        }
    }
    return nullptr;
}

struct DebugWindowTest : testing::Test, support::VirtualProgram {
    live::FrmIGNDebug& open() {
        window.Command5.press();
        return *debugWindow(*this);
    }
    [[nodiscard]] double newest(int trend, int series) { return program.trends().table(trend).value(series, 2); }
};

TEST_F(DebugWindowTest, OpensByItsButtonAndOnlyOnce) {
    auto& debug = open();
    EXPECT_TRUE(debug.Visible);
    EXPECT_EQ(program.windows().frmIGNDebug, &debug);
    EXPECT_EQ(&open(), &debug);
    EXPECT_EQ(windows.loaded().back(), &debug);
}

TEST_F(DebugWindowTest, AFrameIsShownAndDrawnAtOnce) {
    connect();
    auto& debug = open();
    int draws = 0;
    const support::PropertyWatch first(window.picTrend, window.picTrend.drawingProperty(), [&] { ++draws; });
    const support::PropertyWatch second(window.picTrend2, window.picTrend2.drawingProperty(), [&] { ++draws; });
    receiveFrame('S', kGoodWords);
    EXPECT_EQ(debug.lblIgnDeb.Caption.get(), "21845");
    EXPECT_EQ(newest(0, 0), 2184.5);
    EXPECT_EQ(newest(0, 1), 4369);
    EXPECT_EQ(newest(2, 0), 72);
    EXPECT_EQ(newest(2, 1), 6);
    EXPECT_EQ(draws, 2);
}

TEST_F(DebugWindowTest, AFrameFindsNoWindowBeforeItIsOpenAndAfterItsClose) {
    connect();
    receiveFrame('S', kGoodWords);
    EXPECT_THAT(log.lines, ElementsAre(kNoWindow));
    static_cast<void>(open().unload());
    EXPECT_EQ(program.windows().frmIGNDebug, nullptr);
    window.chkDatalog.press();
    receiveFrame('S', kGoodWords);
    EXPECT_THAT(log.lines, ElementsAre(kNoWindow, kNoWindow));
    EXPECT_EQ(newest(0, 0), 0);
    EXPECT_EQ(tables.logDataCount, 0);
}

TEST_F(DebugWindowTest, AShortFrameEndsWithALineInTheDebugLog) {
    connect();
    auto& debug = open();
    receiveFrame('S', {1, 2, 3});
    EXPECT_THAT(log.lines, ElementsAre("err docommand Subscript out of range"));
    EXPECT_EQ(debug.lblIgnDeb.Caption.get(), "513");
    EXPECT_EQ(newest(0, 0), 51.3);
}

TEST_F(DebugWindowTest, EachOpeningStartsAsDesigned) {
    connect();
    open();
    receiveFrame('S', {1, 0, 1, 0, 1, 0, 1, 0});
    static_cast<void>(debugWindow(*this)->unload());
    pump.wait(500);
    auto& again = open();
    EXPECT_EQ(again.lblIgnDeb.Caption.get(), "0");
    EXPECT_EQ(again.lblIgnErr.Caption.get(), "0");
    EXPECT_FALSE(again.TimerIGN.Enabled);
}

TEST_F(DebugWindowTest, AfterAClosePollsComeBackByConnectOrRefresh) {
    connect();
    open().Command1.press();
    static_cast<void>(debugWindow(*this)->unload());
    window.TimerGetSettings.Enabled = false;
    static_cast<void>(sent());
    pump.wait(1000);
    EXPECT_THAT(sent(), IsEmpty());
    window.ComboRefresh.choose(3);
    EXPECT_TRUE(window.TimerRequestData.Enabled);
    open().Command1.press();
    static_cast<void>(debugWindow(*this)->unload());
    window.btnConnect.press();
    window.btnConnect.press();
    EXPECT_TRUE(window.TimerRequestData.Enabled);
}

// Its rule holds for its own buttons: whatever else turns the live poll on does so here too.
TEST_F(DebugWindowTest, ALivePollThatStartsBesideItsOwnEndsWithTheNextStart) {
    connect();
    auto& debug = open();
    debug.Command1.press();
    window.ComboRefresh.choose(3);
    EXPECT_TRUE(debug.TimerIGN.Enabled);
    EXPECT_TRUE(window.TimerRequestData.Enabled);
    debug.Command1.press();
    EXPECT_TRUE(debug.TimerIGN.Enabled);
    EXPECT_FALSE(window.TimerRequestData.Enabled);
}

TEST_F(DebugWindowTest, TheEndOfTheProgramClosesIt) {
    connect();
    open().Command1.press();
    program.quit();
    EXPECT_TRUE(program.ended());
    EXPECT_THAT(windows.loaded(), IsEmpty());
}

struct DebuggedEcu {
    explicit DebuggedEcu(const ecu::EcuSettings& settings) : device(settings) {
        program.connect();
        program.window.ComboRefresh.choose(0);
        program.pump.wait(2000);
        program.window.Command5.press();
        debug = debugWindow(program);
    }

    support::EcuDevice device;
    support::VirtualProgram program{&device};
    live::FrmIGNDebug* debug = nullptr;
};

ecu::EcuSettings steadyEngine() {
    ecu::EcuSettings settings;
    settings.drive = ecu::Drive{ecu::DriveKind::Bench, 3000, 50.0, 20.0};
    return settings;
}

TEST(DebugWindowOnTheVirtualEcu, AHealthyBoxShowsItsPatternsAndNoErrors) {
    DebuggedEcu bench(steadyEngine());
    auto& program = bench.program;
    bench.debug->Command1.press();
    program.pump.wait(100);
    int draws = 0;
    const support::PropertyWatch watch(program.window.picTrend, program.window.picTrend.drawingProperty(),
                                       [&] { ++draws; });
    program.pump.wait(1000);
    EXPECT_EQ(draws, 100) << "a frame for each tick";
    EXPECT_THAT(bench.debug->lblIgnDeb.Caption.get(), testing::AnyOf("21845", "43690"));
    // Half a turn at 3000 is 10 ms, 720 counts of 1/72 ms.
    EXPECT_EQ(bench.debug->lblRPMticks.Caption.get(), "720");
    EXPECT_EQ(bench.debug->lblIgnErr.Caption.get(), "0");
    EXPECT_EQ(bench.debug->lblSparkErr.Caption.get(), "0");
    EXPECT_THAT(program.log.lines, IsEmpty());
}

TEST(DebugWindowOnTheVirtualEcu, AFaultyBoxCountsErrors) {
    auto settings = steadyEngine();
    settings.ignitionFault = 1;
    DebuggedEcu bench(settings);
    bench.debug->Command1.press();
    bench.program.pump.wait(1005);
    bench.debug->Command2.press();
    bench.program.pump.wait(100);
    EXPECT_EQ(bench.debug->lblIgnErr.Caption.get(), "100");
    EXPECT_EQ(bench.debug->lblSparkErr.Caption.get(), "100");
}

TEST(DebugWindowOnTheVirtualEcu, PlugsAreFiredByTheHundred) {
    DebuggedEcu bench(steadyEngine());
    bench.debug->txtSparks.Text = "25";
    bench.debug->btnCleanSparkPlugs.press();
    bench.program.pump.wait(100);
    EXPECT_EQ(bench.device.sparksFired(), 2500);
}

}  // namespace
}  // namespace korvane::program
