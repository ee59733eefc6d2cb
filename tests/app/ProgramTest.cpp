#include <algorithm>
#include <gmock/gmock.h>

#include "core/tables/ModuleReg.h"
#include "program/Program.h"
#include "support/VirtualProgram.h"

namespace korvane::app {
namespace {

using controls::Picture;
using support::Bytes;
using support::VirtualMachine;
using support::VirtualProgram;
using testing::ElementsAre;
using testing::IsEmpty;

// A program that has not started yet, in a folder with no files.
struct Unstarted : VirtualMachine {
    void remember(const char* name, const char* text) { preferences.write(core::kSettingsKey, name, text); }
    program::Program program{machine};
    live::FrmSarn2& window = program.frmSarn2();
};

TEST(ProgramStart, ShowsTheMainWindowUnderItsTitle) {
    VirtualProgram program;
    EXPECT_TRUE(program.window.Visible);
    EXPECT_EQ(program.window.name(), "frmSarn2");
    EXPECT_EQ(program.window.Caption.get(), "Korvane Tuner v1.3 by Dulmer");
    EXPECT_THAT(program.log.lines, IsEmpty());
    EXPECT_THAT(program.dialogs.takeMessages(), IsEmpty());
}

TEST(ProgramStart, FillsTheTables) {
    VirtualProgram program;
    EXPECT_EQ(program.tables.Features, -1);
    EXPECT_FLOAT_EQ(program.tables.HwVersion, 3.1F);
    EXPECT_EQ(program.tables.SWType, 0);
    EXPECT_EQ(program.tables.BitMask[15], 32768);
    EXPECT_NEAR(program.tables.TickD, 0.0138889, 1e-7);
    EXPECT_EQ(program.tables.addresses.LAUNCHCONTROL_LO, 511);
    EXPECT_EQ(program.tables.liveValues[7].name, "name_7");
    EXPECT_EQ(program.tables.liveValues[7].description, "description");
}

TEST(ProgramStart, WithoutAChannelFileTellsOnceAndGoesOn) {
    Unstarted machine;
    machine.program.start();
    const auto messages = machine.dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].text, "Settings_par.ini file not found.\r\n\r\nUsing default parameter settings");
    EXPECT_TRUE(machine.window.Visible);
    EXPECT_EQ(machine.program.tables().liveValues[30].name, "name_30");
    EXPECT_EQ(machine.program.tables().OldInjectorSize, 450);
    EXPECT_EQ(machine.program.tables().NewInjectorSize, 550);
}

TEST(ProgramStart, ChannelNamesAndScalesOfTheFileAreInUse) {
    Unstarted machine;
    std::string file;
    for (int i = 0; i < 31; ++i) {
        const auto number = std::to_string(i);
        file += "[Par" + number + "]\nChannel " + number + "\ntext\n2\n1\n500\n";
    }
    machine.folder.write("Settings_par.ini", file);
    machine.program.start();
    EXPECT_EQ(machine.window.lblValueMuxName(0).Caption.get(), "Channel 12");
    EXPECT_EQ(machine.window.lblValueMuxName(7).Caption.get(), "Channel 19");
    machine.window.btnConnect.press();
    machine.line.inject(support::frame('R', {0, 100, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    machine.pump.pump();
    EXPECT_EQ(machine.window.lblValue(0).Caption.get(), "202");
}

TEST(ProgramStart, GivesTheDialsTheirTypes) {
    VirtualProgram program;
    EXPECT_EQ(program.window.SarnMeterRpm.MeterType(), 1);
    EXPECT_EQ(program.window.SarnMeterRpm.Max.get(), 10000);
    EXPECT_EQ(program.window.SarnMeterboost.MeterType(), 0);
    EXPECT_EQ(program.window.SarnMeterboost.Max.get(), 3);
}

TEST(ProgramStart, LaysTheLampsOutAllGrey) {
    VirtualProgram program;
    for (int n = 0; n < 16; ++n) {
        EXPECT_EQ(program.window.imgLed(n).Shown.get(), Picture::Grey);
        EXPECT_EQ(program.window.imgLed(n).Top.get(), program.window.imgLed(0).Top + n * 275);
    }
    EXPECT_GE(program.window.Height.get(), program.window.FrameLeds.Height.get());
}

// Timers and the serial control are not seen.
TEST(ProgramStart, EveryControlThatIsSeenHasASizeInsideTheWindow) {
    VirtualProgram program;
    for (auto* control : program.window.controls()) {
        if (control->kind() == "timer" || control->kind() == "serial control") {
            continue;
        }
        EXPECT_GT(control->Width.get(), 0) << control->path();
        EXPECT_GT(control->Height.get(), 0) << control->path();
        const auto* const frame = control->container();
        const int room = frame != nullptr ? frame->Width.get() : program.window.Width.get();
        EXPECT_LE(control->Left + control->Width, room) << control->path();
        EXPECT_GE(control->Left.get(), 0) << control->path();
    }
}

TEST(ProgramStart, LampsAreGreyUntilTheFirstLiveFrame) {
    VirtualProgram program;
    program.connect();
    program.pump.wait(3000);
    EXPECT_EQ(program.window.imgLed(13).Shown.get(), Picture::Grey);
    program.receiveFrame('R', {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x20, 0});
    EXPECT_EQ(program.window.imgLed(13).Shown.get(), Picture::Green);
    program.connect();
    program.pump.wait(3000);
    EXPECT_EQ(program.window.imgLed(13).Shown.get(), Picture::Green) << "lamps keep their state after a disconnect";
}

TEST(ProgramSound, FollowsTheBox) {
    VirtualProgram program;
    EXPECT_EQ(program.window.chkUseSound.Caption.get(), "Use Sound alarms");
    EXPECT_EQ(program.window.chkUseSound.Value.get(), 0);
    EXPECT_FALSE(program.tables.useSound);
    program.window.chkUseSound.press();
    EXPECT_TRUE(program.tables.useSound);
    program.window.chkUseSound.press();
    EXPECT_FALSE(program.tables.useSound);
}

TEST(ProgramSound, IsRemembered) {
    Unstarted machine;
    machine.remember("UseSound", "1");
    machine.program.start();
    EXPECT_EQ(machine.window.chkUseSound.Value.get(), 1);
    EXPECT_TRUE(machine.program.tables().useSound);
    EXPECT_TRUE(machine.window.unload());
    EXPECT_EQ(machine.preferences.read(core::kSettingsKey, "UseSound"), "1");
}

TEST(ProgramSound, ItsTimerDoesNothing) {
    VirtualProgram program;
    program.window.chkUseSound.press();
    program.pump.wait(10000);
    EXPECT_THAT(program.log.lines, IsEmpty());
    EXPECT_THAT(program.dialogs.takeMessages(), IsEmpty());
    EXPECT_THAT(program.sent(), IsEmpty());
}

TEST(ProgramButtons, HaveTheirCaptions) {
    VirtualProgram program;
    auto& window = program.window;
    const std::vector<std::pair<controls::CommandButton*, std::string>> captions{
        {&window.btnKartat, "Kartat"},
        {&window.btnAsetukset, "Asetukset"},
        {&window.btnBackup, "Backup EEPROM"},
        {&window.btnUploadEEPROM, "Upload EEPROM"},
        {&window.btnDatalogTrend, "View datalog"},
        {&window.btnTuningHelp, "TuningHelper"},
        {&window.Command1, "open Largemap"},
        {&window.Command2, "Restart device"},
        {&window.Command5, "Ignition debug"},
        {&window.Command7, "openIgnLim"},
        {&window.Command8, "Command8"}};
    for (const auto& [button, caption] : captions) {
        EXPECT_EQ(button->Caption.get(), caption) << button->path();
    }
    EXPECT_EQ(window.FrameOptTest.Caption.get(), "Opt test");
    EXPECT_EQ(window.Command3.container(), &window.FrameOptTest);
    EXPECT_EQ(window.Command4.container(), &window.FrameOptTest);
    EXPECT_EQ(window.chkDatalog.Caption.get(), "Save data to");
}

TEST(ProgramButtons, ThoseOfTheConnectionAreUsable) {
    VirtualProgram program;
    for (auto* button :
         {&program.window.btnConnect, &program.window.Command2, &program.window.Command3, &program.window.Command4}) {
        EXPECT_TRUE(button->usable()) << button->path();
    }
}

TEST(ProgramLive, AnIdentityAndAFrameReachTheWindow) {
    VirtualProgram program;
    program.connect();
    program.receiveFrame('y', {255, 255, 13, 58, 11});
    program.receiveFrame('R', {9, 196, 130, 75, 138, 120, 50, 128, 55, 7, 33, 0x20, 0, 100, 200, 40, 85, 0, 9});
    auto& window = program.window;
    EXPECT_EQ(window.Caption.get(), "Korvane Tuner v1.3 by Dulmer  Korvane3 full engine control");
    EXPECT_EQ(window.lblValue(0).Caption.get(), "2500");
    EXPECT_EQ(window.lblValueMux(0).Caption.get(), "9");
    EXPECT_EQ(window.lblAccel.Caption.get(), "7");
    EXPECT_EQ(window.SarnMeterRpm.value(), 2500);
    EXPECT_EQ(window.SarnMeterboost.value(), 1.28);
    EXPECT_EQ(window.SarnGauge3.value(), 50);
    EXPECT_EQ(program.tables.MapPlace, 33);
}

TEST(ProgramLive, ChannelsThatAnOlderFirmwareDoesNotSendKeepTheirValues) {
    VirtualProgram program;
    program.connect();
    program.receiveFrame('R', {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 100, 200, 40, 85, 0, 9});
    program.receiveFrame('R', Bytes(13, 1));
    EXPECT_EQ(program.tables.liveValues[11].value, 17);
    EXPECT_EQ(program.window.lblValue(11).Caption.get(), "17");
}

// Decoded up to the byte that is missing, and not shown.
TEST(ProgramLive, AFourteenByteFrameSetsChannel8AndUpdatesNoDisplay) {
    VirtualProgram program;
    program.connect();
    Bytes payload(14, 0);
    payload[1] = 77;
    payload[13] = 5;
    program.receiveFrame('R', payload);
    EXPECT_EQ(program.tables.liveValues[8].value, 5);
    EXPECT_EQ(program.tables.liveValues[0].value, 77);
    EXPECT_EQ(program.window.lblValue(0).Caption.get(), "0");
    EXPECT_EQ(program.tables.IdlePidWord, 0);
}

TEST(ProgramEnd, ConnectToOpensThePort) {
    VirtualProgram program;
    program.program.connectTo(7);
    EXPECT_EQ(program.window.ComboPort.Text(), "COM7");
    EXPECT_EQ(program.window.MSComm1.CommPort.get(), 7);
    EXPECT_TRUE(program.window.MSComm1.PortOpen());
    program.program.connectTo(7);
    EXPECT_TRUE(program.window.MSComm1.PortOpen()) << "connected already: it stays so";
}

TEST(ProgramEnd, QuitClosesAnUnconnectedProgramAtOnce) {
    VirtualProgram program;
    program.program.quit();
    EXPECT_TRUE(program.program.ended());
    EXPECT_FALSE(program.window.isLoaded());
    EXPECT_EQ(program.pump.now(), 0);
}

TEST(ProgramEnd, QuitWaitsForTheOrderlyClose) {
    VirtualProgram program;
    program.connect();
    program.program.quit();
    EXPECT_TRUE(program.program.ended());
    EXPECT_FALSE(program.window.MSComm1.PortOpen());
    EXPECT_GE(program.pump.milliseconds(), 1000);
    EXPECT_LE(program.pump.milliseconds(), 1100);
}

TEST(ProgramEnd, The3DViewIsHiddenByItsOwnCloseAndGoesWithTheMainWindow) {
    VirtualProgram program;
    auto& view = program.program.frm3Dmap();
    EXPECT_TRUE(view.isLoaded());
    view.open();
    EXPECT_FALSE(view.unload());
    EXPECT_TRUE(view.isLoaded());
    view.open();
    EXPECT_TRUE(program.window.unload());
    EXPECT_FALSE(view.isLoaded());
}

TEST(ProgramEnd, WhileConnectedThe3DViewGoesASecondLater) {
    VirtualProgram program;
    auto& view = program.program.frm3Dmap();
    view.open();
    program.connect();
    static_cast<void>(program.window.unload());
    EXPECT_TRUE(view.isLoaded());
    program.pump.wait(1000);
    EXPECT_FALSE(program.window.isLoaded());
    EXPECT_FALSE(view.isLoaded());
}

TEST(ProgramEnd, ADestroyedProgramLeavesTheMachineUsable) {
    VirtualMachine machine;
    {
        program::Program program(machine.machine);
        program.start();
        program.connectTo(1);
    }
    const auto before = machine.pump.milliseconds();
    machine.pump.wait(5000);
    EXPECT_EQ(machine.pump.milliseconds(), before + 5000);
    EXPECT_THAT(machine.windows.loaded(), IsEmpty());
    EXPECT_THAT(machine.log.lines, IsEmpty());
}

}  // namespace
}  // namespace korvane::app
