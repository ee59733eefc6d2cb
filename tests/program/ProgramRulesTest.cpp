#include <algorithm>
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/tables/ModuleReg.h"
#include "link/W32Comms.h"
#include "support/VirtualProgram.h"

namespace korvane::link {
namespace {

using platform::RuntimeError;
using support::Bytes;
using support::VirtualMachine;
using support::VirtualProgram;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A line that opens and reports its rate only as long as a test allows it.
class MoodyLine : public platform::MemoryLine {
public:
    explicit MoodyLine(platform::EventPump& pump) : MemoryLine(pump, nullptr) {}
    void open(int port, int baud, platform::LineListener& listener) override {
        if (!opens) {
            throw RuntimeError(8002, "no such device");
        }
        MemoryLine::open(port, baud, listener);
    }
    [[nodiscard]] int baud() const override { return tellsRate ? MemoryLine::baud() : 0; }
    [[nodiscard]] bool setBaud(int baud) override {
        ++settings;
        return MemoryLine::setBaud(baud);
    }

    [[nodiscard]] std::string deviceOf(int port) override { return devices[port]; }

    std::map<int, std::string> devices;
    bool opens = true;
    bool tellsRate = true;
    int settings = 0;
};

// A program that has not started yet.
struct Unstarted : VirtualMachine {
    MoodyLine moody{pump};
    platform::Machine own{pump, moody, dialogs, preferences, log, windows, folder.path(), '.', {}};
    program::Program program{own};
    live::FrmSarn2& window = program.frmSarn2();
};

std::vector<std::string> textsOf(platform::QueuedDialogs& dialogs) {
    std::vector<std::string> texts;
    for (const auto& message : dialogs.takeMessages()) {
        texts.push_back(message.text);
    }
    return texts;
}

TEST(ConnectWithoutAChoice, NoSpeedIsToldAndNothingIsOpened) {
    VirtualProgram program;
    program.window.ComboBaud.ListIndex = -1;
    program.connect();
    EXPECT_THAT(textsOf(program.dialogs), ElementsAre("  Error 9 Subscript out of range"));
    EXPECT_FALSE(program.window.MSComm1.PortOpen());
    EXPECT_EQ(program.window.MSComm1.OutBufferSize.get(), 16);
    EXPECT_FALSE(program.window.isConnected);
}

TEST(ConnectWithoutAChoice, NoPortIsToldAndNothingIsOpened) {
    VirtualProgram program;
    program.window.ComboPort.ListIndex = -1;
    program.connect();
    EXPECT_THAT(textsOf(program.dialogs), ElementsAre(HasSubstr("8002")));
    EXPECT_FALSE(program.window.MSComm1.PortOpen());
    EXPECT_FALSE(program.window.TimerRequestData.Enabled);
}

TEST(SetCustomBaudTest, ReadsTheStateOfThePortBeforeItForcesTheRate) {
    Unstarted machine;
    auto& port = machine.window.MSComm1;
    port.Settings = "57600,N,8,1";
    port.setPortOpen(true);
    machine.moody.tellsRate = false;
    machine.moody.settings = 0;
    try {
        SetCustomBaud(port, 230400);
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 8021);
        EXPECT_STREQ(error.what(), "Could not read current state of the port");
    }
    EXPECT_EQ(machine.moody.settings, 0);
}

TEST(Quit, EndsTheProgramThoughAPortClosedPastTheButtonCannotBeOpenedAgain) {
    Unstarted machine;
    machine.program.start();
    machine.window.btnConnect.press();
    machine.window.MSComm1.setPortOpen(false);
    machine.moody.opens = false;
    machine.program.quit();
    EXPECT_TRUE(machine.program.ended());
    EXPECT_FALSE(machine.window.isLoaded());
}

TEST(ProgramStart, FillsTheTablesFromPreferencesAndFiles) {
    Unstarted machine;
    machine.preferences.write(core::kSettingsKey, "InjOff_type", "1");
    machine.preferences.write(core::kSettingsKey, "Inj8ms_mode", "1");
    machine.folder.write("Settings.ini", "[OldInjector]\n380\n[NewInjector]\n630\n");
    machine.program.tables().HwVersion = 0;
    machine.program.start();
    const auto& tables = machine.program.tables();
    EXPECT_EQ(tables.InjOff_type, 1);
    EXPECT_EQ(tables.Inj8ms_mode, 1);
    EXPECT_EQ(tables.OldInjectorSize, 380.0F);
    EXPECT_EQ(tables.NewInjectorSize, 630.0F);
    EXPECT_EQ(tables.HwVersion, 3.1F);
    EXPECT_DOUBLE_EQ(tables.TickD, 1.0 / 72.0);
    EXPECT_EQ(tables.Features, -1);
    EXPECT_EQ(tables.SWType, 0);
    EXPECT_EQ(tables.SWTypeNames.at(30), "Mirel Ignition");
    EXPECT_EQ(tables.addresses.CYL_COUNT_OFF, 1960);
}

TEST(ProgramStart, MissesTheChannelNamesWithOneMessageAndGoesOn) {
    Unstarted machine;
    machine.program.start();
    EXPECT_THAT(textsOf(machine.dialogs),
                ElementsAre("Settings_par.ini file not found.\r\n\r\nUsing default parameter settings"));
    EXPECT_EQ(machine.program.tables().liveValues.at(30).name, "name_30");
    EXPECT_EQ(machine.window.SarnMeterRpm.MeterType(), 1);
    EXPECT_EQ(machine.window.SarnMeterboost.MeterType(), 0);
    EXPECT_THAT(machine.log.lines, IsEmpty());
}

TEST(ProgramStart, ShowsTheWindowAndOffersOnlyWhatThereIs) {
    VirtualProgram program;
    EXPECT_EQ(program.window.Caption.get(), "Korvane Tuner v1.3 by Dulmer");
    EXPECT_TRUE(program.window.Visible);
    EXPECT_THAT(program.windows.loaded(), ElementsAre(&program.window, &program.program.frm3Dmap()));
    EXPECT_FALSE(program.program.frm3Dmap().Visible);
    EXPECT_EQ(program.program.frm3Dmap().Tag.get(), "");
    for (const auto* button : {&program.window.btnConnect, &program.window.Command2, &program.window.Command3,
                               &program.window.Command4, &program.window.btnKartat, &program.window.btnAsetukset,
                               &program.window.btnBackup, &program.window.btnUploadEEPROM, &program.window.Command1,
                               &program.window.btnDatalogTrend, &program.window.Command5, &program.window.Command6,
                               &program.window.Command7, &program.window.Command8, &program.window.btnTuningHelp}) {
        EXPECT_TRUE(button->Enabled) << button->name();
    }
}

TEST(ProgramStart, ItsButtonsBearTheirCaptions) {
    VirtualProgram program;
    const auto& window = program.window;
    std::vector<std::string> captions;
    for (const auto* button :
         {&window.btnConnect, &window.btnKartat, &window.btnAsetukset, &window.btnBackup, &window.btnUploadEEPROM,
          &window.btnDatalogTrend, &window.btnTuningHelp, &window.Command1, &window.Command2, &window.Command5,
          &window.Command7, &window.Command8}) {
        captions.push_back(button->Caption);
    }
    EXPECT_THAT(captions, ElementsAre("Connect", "Kartat", "Asetukset", "Backup EEPROM", "Upload EEPROM",
                                      "View datalog", "TuningHelper", "open Largemap", "Restart device",
                                      "Ignition debug", "openIgnLim", "Command8"));
    EXPECT_EQ(window.chkDatalog.Caption.get(), "Save data to");
    EXPECT_EQ(window.chkUseSound.Caption.get(), "Use Sound alarms");
    EXPECT_EQ(window.FrameOptTest.Caption.get(), "Opt test");
    EXPECT_EQ(window.Command3.container(), &window.FrameOptTest);
    EXPECT_EQ(window.Command4.container(), &window.FrameOptTest);
}

class RememberedSound : public testing::TestWithParam<std::pair<const char*, bool>> {};

TEST_P(RememberedSound, SetsTheBoxAndTheProgramsOwnMind) {
    Unstarted machine;
    machine.preferences.write(core::kSettingsKey, "UseSound", GetParam().first);
    machine.program.start();
    EXPECT_EQ(machine.window.chkUseSound.Value.get(), GetParam().second ? 1 : 0);
    EXPECT_EQ(machine.program.tables().useSound, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Texts, RememberedSound,
                         testing::Values(std::pair("1", true), std::pair("True", true), std::pair("true", true),
                                         std::pair("-1", true), std::pair("0", false), std::pair("False", false),
                                         std::pair("", false)));

TEST(PortList, NamesTheDeviceOfEachPortAndLooksAgainWhenItIsEntered) {
    Unstarted machine;
    machine.moody.devices[3] = "/dev/ttyUSB0, USB UART";
    machine.program.start();
    auto& list = machine.window.ComboPort;
    EXPECT_EQ(list.itemToolTip(2), "/dev/ttyUSB0, USB UART");
    EXPECT_EQ(list.itemToolTip(0), "No device");
    EXPECT_EQ(list.itemToolTip(14), "No device");
    machine.moody.devices = {{1, "/dev/ttyUSB1"}};
    machine.window.setFocus(&list);
    EXPECT_EQ(list.itemToolTip(0), "/dev/ttyUSB1");
    EXPECT_EQ(list.itemToolTip(2), "No device");
}

class NestedFrames : public testing::Test {
protected:
    NestedFrames() {
        program_.connect();
        program_.window.TimerRequestData.Enabled = false;
        program_.window.TimerGetSettings.Enabled = false;
    }
    // Lets bytes arrive so many milliseconds from now, inside whatever is running then.
    void injectAfter(int milliseconds, const Bytes& bytes) {
        alarms_.push_back(program_.pump.makeAlarm([this, bytes] { program_.line.inject(bytes); }));
        alarms_.back()->callAt(program_.pump.now() + milliseconds * platform::kMicrosPerMilli);
    }

    VirtualProgram program_;
    std::vector<std::unique_ptr<platform::Alarm>> alarms_;
};

TEST_F(NestedFrames, OfTwoIdentitiesTheLaterDecidesTheLayout) {
    injectAfter(100, support::frame('y', {0, 0, 0, 0, 30}));
    program_.receiveFrame('y', {0, 0, 0, 0, 10});
    program_.pump.wait(300);
    EXPECT_EQ(program_.tables.SWType, 30);
    EXPECT_EQ(program_.tables.addresses.LAUNCHCONTROL_LO, 500);
}

// The event lets other events run once before it ends.
TEST_F(NestedFrames, WhatIsDueWhenTheBufferIsEmptyRunsInsideTheEvent) {
    bool busy = false;
    const auto due = program_.pump.makeAlarm([&] { busy = program_.window.isBusy(); });
    program_.line.inject(Bytes{0});
    due->callAt(program_.pump.now());
    program_.pump.pump();
    EXPECT_TRUE(busy);
    EXPECT_EQ(program_.window.bytesReceived, 1);
}

TEST_F(NestedFrames, HandlersThatWaitStackUpToADepthAndLoseNoFrame) {
    class Waiting : public LiveDecoder {
    public:
        explicit Waiting(platform::EventPump& pump) : pump_(pump) {}
        void decodeLivePacket(std::span<std::uint8_t>) override {
            ++frames;
            deepest = std::max(deepest, ++depth_);
            pump_.wait(1000);
            --depth_;
        }
        int frames = 0;
        int deepest = 0;

    private:
        platform::EventPump& pump_;
        int depth_ = 0;
    };
    Waiting decoder(program_.pump);
    program_.program.dispatcher().setLiveDecoder(decoder);
    for (int i = 0; i < 200; ++i) {
        injectAfter(i, support::frame('R', {1}));
    }
    program_.pump.wait(300'000);
    EXPECT_EQ(decoder.frames, 200);
    EXPECT_EQ(decoder.deepest, 40);
}

// The fuel map begins at address 16.
TEST(ProgramEeprom, WhatIsWrittenCountsAsKeptByTheEcu) {
    VirtualProgram program;
    program.connect();
    program.receiveFrame('f', Bytes(160, 50));
    program.program.eeprom().WriteEE(21, 51);
    EXPECT_EQ(program.window.ecuMaps.fuel.kept(5), 51);
    EXPECT_EQ(program.window.ecuMaps.fuel.working(5), 50);
    EXPECT_EQ(program.window.ecuMaps.fuel.kept(6), 50);
}

// It may have restarted unheard, so that it has lost what it had not stored.
TEST(ProgramEeprom, AfterAnotherConnectTheEcuHasWhatItHadStored) {
    VirtualProgram program;
    program.connect();
    program.receiveFrame('f', Bytes(160, 50));
    program.window.ecuMaps.fuel.changed(5, 51);
    program.connect();
    EXPECT_EQ(program.window.ecuMaps.fuel.working(5), 51);
    program.connect();
    EXPECT_EQ(program.window.ecuMaps.fuel.working(5), 50);
}

}  // namespace
}  // namespace korvane::link
