#include <gmock/gmock.h>

#include "core/tables/ModuleReg.h"
#include "support/VirtualProgram.h"

namespace korvane::link {
namespace {

using platform::kMicrosPerMilli;
using support::Bytes;
using support::frame;
using support::VirtualMachine;
using support::VirtualProgram;
using testing::ElementsAre;
using testing::Eq;
using testing::HasSubstr;
using testing::IsEmpty;

// A program whose preferences are set before it starts.
struct Remembering : VirtualMachine {
    void remember(const char* name, const char* text) { preferences.write(core::kSettingsKey, name, text); }
    [[nodiscard]] std::string remembered(const char* name) const {
        return preferences.read(core::kSettingsKey, name).value_or("nothing");
    }
    program::Program program{machine};
    live::FrmSarn2& window = program.frmSarn2();
};

TEST(ConnectionLists, HoldPortsSpeedsAndRefreshTimes) {
    VirtualProgram program;
    const auto rows = [](const controls::ComboBox& box) {
        std::vector<std::string> all;
        for (int i = 0; i < box.ListCount(); ++i) {
            all.push_back(box.List(i));
        }
        return all;
    };
    EXPECT_THAT(rows(program.window.ComboPort),
                ElementsAre("COM1", "COM2", "COM3", "COM4", "COM5", "COM6", "COM7", "COM8", "COM9", "COM10", "COM11",
                            "COM12", "COM13", "COM14", "COM15"));
    EXPECT_THAT(rows(program.window.ComboBaud),
                ElementsAre("9600", "19200", "38400", "57600", "76800", "115200", "230400"));
    EXPECT_THAT(rows(program.window.ComboRefresh),
                ElementsAre("10", "25", "50", "75", "100", "125", "150", "175", "200", "225", "250", "275"));
    EXPECT_THAT(program.window.baudSettings, ElementsAre("9600,N,8,1", "19200,N,8,1", "38400,N,8,1", "57600,N,8,1",
                                                         "76800,N,8,1", "115200,N,8,1", "230400,N,8,1"));
}

TEST(ConnectionStart, WithoutPreferencesIsCom1At57600Every10Milliseconds) {
    VirtualProgram program;
    EXPECT_EQ(program.window.ComboPort.ListIndex.get(), 0);
    EXPECT_EQ(program.window.ComboBaud.Text(), "57600");
    EXPECT_EQ(program.window.ComboRefresh.ListIndex.get(), 0);
    EXPECT_EQ(program.window.TimerRequestData.Interval.get(), 10);
}

TEST(ConnectionStart, TimersAreAsTheWindowsDesignHasThem) {
    VirtualProgram program;
    const auto& window = program.window;
    EXPECT_TRUE(window.Timer1.Enabled);
    EXPECT_EQ(window.Timer1.Interval.get(), 1000);
    EXPECT_FALSE(window.TimerRequestData.Enabled);
    EXPECT_FALSE(window.TimerGetSettings.Enabled);
    EXPECT_EQ(window.TimerGetSettings.Interval.get(), 1000);
    EXPECT_FALSE(window.TimerAlarm.Enabled);
    EXPECT_TRUE(window.Timersound.Enabled);
    EXPECT_EQ(window.Timersound.Interval.get(), 200);
    EXPECT_FALSE(window.TimerExit.Enabled);
    EXPECT_EQ(window.TimerExit.Interval.get(), 1000);
    EXPECT_FALSE(window.Timerofflinefeat.Enabled);
    EXPECT_EQ(window.Timerofflinefeat.Interval.get(), 2000);
    EXPECT_FALSE(window.TimerOffline.Enabled);
    EXPECT_EQ(window.TimerOffline.Interval.get(), 500);
}

TEST(ConnectionStart, PicksWhatThePreferencesRemember) {
    Remembering machine;
    machine.remember("Port", "4");
    machine.remember("Speed", "6");
    machine.remember("Refresh", "3");
    machine.program.start();
    EXPECT_EQ(machine.window.ComboPort.Text(), "COM5");
    EXPECT_EQ(machine.window.ComboBaud.Text(), "230400");
    EXPECT_EQ(machine.window.ComboRefresh.Text(), "75");
    EXPECT_EQ(machine.window.TimerRequestData.Interval.get(), 75);
    EXPECT_FALSE(machine.window.TimerRequestData.Enabled) << "only the tuner starts the polling";
}

TEST(ConnectionStart, ARememberedSpeedOfZeroShows57600) {
    Remembering machine;
    machine.remember("Speed", "0");
    machine.program.start();
    EXPECT_EQ(machine.window.ComboBaud.Text(), "57600");
}

class DamagedPreference : public testing::TestWithParam<const char*> {};

TEST_P(DamagedPreference, CountsAsNoneAtAll) {
    Remembering machine;
    for (const auto* name : {"Port", "Speed", "Refresh", "UseSound"}) {
        machine.remember(name, GetParam());
    }
    machine.program.start();
    EXPECT_EQ(machine.window.ComboPort.ListIndex.get(), 0);
    EXPECT_EQ(machine.window.ComboBaud.ListIndex.get(), 3);
    EXPECT_EQ(machine.window.ComboRefresh.ListIndex.get(), 0);
    EXPECT_EQ(machine.window.TimerRequestData.Interval.get(), 10);
    EXPECT_TRUE(machine.window.isLoaded());
}

INSTANTIATE_TEST_SUITE_P(Values, DamagedPreference,
                         testing::Values("", "words", "-5", "15.7", "99999999999", "1E300", "\xFF\xFE"));

TEST(ConnectionRefresh, TheIntervalIs25TimesTheRowAnd10ForTheFirst) {
    VirtualProgram program;
    for (int row = 11; row >= 0; --row) {
        program.window.ComboRefresh.choose(row);
        EXPECT_EQ(program.window.TimerRequestData.Interval.get(), row == 0 ? 10 : 25 * row);
    }
    program.window.ComboRefresh.choose(1);
    EXPECT_EQ(program.window.TimerRequestData.Interval.get(), 25);
}

TEST(ConnectionRefresh, AChangeStartsThePollingEvenWithThePortClosedButSendsNothing) {
    VirtualProgram program;
    program.window.ComboRefresh.choose(2);
    EXPECT_TRUE(program.window.TimerRequestData.Enabled);
    program.pump.wait(1000);
    EXPECT_THAT(program.sent(), IsEmpty());
    EXPECT_THAT(program.log.lines, IsEmpty());
}

TEST(ConnectionRefresh, PickingThePickedRowStartsNothing) {
    VirtualProgram program;
    program.window.ComboRefresh.choose(0);
    EXPECT_FALSE(program.window.TimerRequestData.Enabled);
}

// Notes each change of the properties that matter, in order.
class ConnectJournal : public controls::Observer {
public:
    explicit ConnectJournal(live::FrmSarn2& window)
        : window_(window),
          watched_{&window.MSComm1, &window.btnConnect, &window.TimerRequestData, &window.TimerGetSettings} {
        for (auto* object : watched_) {
            object->addObserver(*this);
        }
    }
    ~ConnectJournal() override {
        for (auto* object : watched_) {
            object->removeObserver(*this);
        }
    }
    ConnectJournal(const ConnectJournal&) = delete;
    ConnectJournal& operator=(const ConnectJournal&) = delete;

    void propertyChanged(controls::Object& object, const void* property) override {
        auto& port = window_.MSComm1;
        if (property == &port.OutBufferSize) {
            lines.push_back("OutBufferSize " + std::to_string(port.OutBufferSize));
        } else if (property == &port.Settings) {
            lines.push_back("Settings " + port.Settings.get());
        } else if (property == &port.CommPort) {
            lines.push_back("CommPort " + std::to_string(port.CommPort));
        } else if (property == &port.RThreshold) {
            lines.push_back("RThreshold " + std::to_string(port.RThreshold));
        } else if (property == &port.InputLen) {
            lines.push_back("InputLen " + std::to_string(port.InputLen));
        } else if (property == port.portOpenProperty()) {
            lines.push_back(std::string("PortOpen ") + (port.PortOpen() ? "True" : "False") +
                            (window_.isConnected ? " connected" : ""));
        } else if (property == &window_.btnConnect.Caption) {
            lines.push_back("Caption " + window_.btnConnect.Caption.get() + (window_.isConnected ? " connected" : ""));
        } else {
            const auto& timer = dynamic_cast<controls::Timer&>(object);
            lines.push_back(std::string(timer.name()) + (timer.Enabled ? " on" : " off"));
        }
    }
    std::vector<std::string> lines;

private:
    live::FrmSarn2& window_;
    std::vector<controls::Object*> watched_;
};

TEST(ConnectButton, SetsUpAndOpensThePortInOrder) {
    VirtualProgram program;
    program.window.ComboPort.choose(2);
    ConnectJournal journal(program.window);
    program.window.btnConnect.press();
    EXPECT_THAT(journal.lines, ElementsAre("OutBufferSize 16", "Settings 57600,N,8,1", "CommPort 3", "RThreshold 1",
                                           "InputLen 1", "PortOpen True", "Caption Disconnect connected",
                                           "TimerRequestData on", "TimerGetSettings on"));
    EXPECT_TRUE(program.window.isConnected);
}

TEST(ConnectButton, ClosesInOrderAndLeavesTheIdentityTimer) {
    VirtualProgram program;
    program.connect();
    ConnectJournal journal(program.window);
    program.window.btnConnect.press();
    EXPECT_THAT(journal.lines, ElementsAre("PortOpen False", "Caption Connect", "TimerRequestData off"));
    EXPECT_FALSE(program.window.isConnected);
    EXPECT_TRUE(program.window.TimerGetSettings.Enabled);
}

TEST(ConnectButton, StartsAsConnect) {
    VirtualProgram program;
    EXPECT_EQ(program.window.btnConnect.Caption.get(), "Connect");
    EXPECT_FALSE(program.window.isConnected);
    EXPECT_FALSE(program.window.MSComm1.PortOpen());
}

TEST(ConnectSpeed, UpTo57600TheSettingsAreEnough) {
    const std::vector<int> rates{9600, 19200, 38400, 57600};
    for (std::size_t row = 0; row < rates.size(); ++row) {
        VirtualProgram program;
        program.window.ComboBaud.ListIndex = static_cast<int>(row);
        program.connect();
        EXPECT_THAT(program.recorder.bauds, ElementsAre(rates[row]));
    }
}

TEST(ConnectSpeed, FasterRatesAreForcedOnTheOpenPort) {
    const std::vector<int> rates{76800, 115200, 230400};
    for (std::size_t i = 0; i < rates.size(); ++i) {
        VirtualProgram program;
        program.window.ComboBaud.ListIndex = static_cast<int>(4 + i);
        program.connect();
        EXPECT_EQ(program.window.MSComm1.Settings.get(), std::to_string(rates[i]) + ",N,8,1");
        EXPECT_THAT(program.recorder.bauds, ElementsAre(rates[i], rates[i])) << "once by Settings, once by force";
        EXPECT_THAT(program.dialogs.takeMessages(), IsEmpty());
    }
}

class ConnectedTest : public testing::Test {
protected:
    ConnectedTest() { program_.window.ComboPort.choose(2); }

    // What has reached the device, as "ms byte", each byte one byte time of 57600 baud after it was sent.
    [[nodiscard]] std::vector<std::pair<std::int64_t, int>> arrivals() {
        program_.pump.runUntil(program_.pump.now() + 900);
        std::vector<std::pair<std::int64_t, int>> all;
        for (const auto& arrival : program_.recorder.arrivals) {
            all.emplace_back(arrival.at / kMicrosPerMilli, arrival.byte);
        }
        program_.recorder.arrivals.clear();
        return all;
    }
    void answerIdentity() { program_.receiveFrame('y', {0, 1, 13, 58}); }

    VirtualProgram program_;
    live::FrmSarn2& window_ = program_.window;
};

TEST_F(ConnectedTest, TheLivePollSendsXAtEachInterval) {
    window_.ComboRefresh.choose(4);
    program_.connect();
    window_.TimerGetSettings.Enabled = false;
    program_.pump.wait(350);
    EXPECT_THAT(arrivals(), ElementsAre(std::pair(100, 'x'), std::pair(200, 'x'), std::pair(300, 'x')));
}

TEST_F(ConnectedTest, ThePollDoesNotWaitForReplies) {
    program_.connect();
    window_.TimerGetSettings.Enabled = false;
    program_.pump.wait(1000);
    EXPECT_EQ(arrivals().size(), 100U);
}

TEST_F(ConnectedTest, TheIdentityIsAskedForOnceASecondUntilItIsAnswered) {
    program_.connect();
    window_.TimerRequestData.Enabled = false;
    program_.pump.wait(2500);
    EXPECT_THAT(arrivals(), ElementsAre(std::pair(1000, 'y'), std::pair(1000, 0), std::pair(1000, 0x86),
                                        std::pair(2000, 'y'), std::pair(2000, 0), std::pair(2000, 0x86)));
    answerIdentity();
    program_.pump.wait(5000);
    EXPECT_THAT(arrivals(), IsEmpty());
}

TEST_F(ConnectedTest, AReconnectAsksForTheIdentityAgain) {
    program_.connect();
    answerIdentity();
    program_.connect();
    program_.connect();
    window_.TimerRequestData.Enabled = false;
    program_.pump.wait(1500);
    EXPECT_EQ(program_.sent(), (Bytes{'y', 0, 0x86}));
}

TEST_F(ConnectedTest, AShorterAnswerOfAnotherEcuLeavesTheType) {
    program_.connect();
    program_.receiveFrame('y', {0, 1, 13, 58, 14});
    program_.connect();
    program_.connect();
    answerIdentity();
    EXPECT_EQ(program_.tables.SWType, 14);
}

TEST_F(ConnectedTest, AfterADisconnectNothingIsSent) {
    program_.connect();
    program_.pump.wait(500);
    program_.connect();
    static_cast<void>(arrivals());
    program_.pump.wait(10000);
    EXPECT_THAT(arrivals(), IsEmpty());
}

TEST_F(ConnectedTest, TheTestButtonsSendTheirBytes) {
    program_.connect();
    window_.TimerRequestData.Enabled = false;
    window_.Command2.press();
    EXPECT_EQ(program_.sent(), (Bytes{'X', 0xA7}));
    window_.Command3.press();
    EXPECT_EQ(program_.sent(), (Bytes{'p'}));
    window_.Command4.press();
    EXPECT_EQ(program_.sent(), (Bytes{'o'}));
}

TEST_F(ConnectedTest, RestartingTheDeviceNeitherStopsThePollNorWaits) {
    program_.connect();
    window_.Command2.press();
    EXPECT_TRUE(window_.TimerRequestData.Enabled);
    EXPECT_EQ(program_.pump.now(), 0);
    program_.receiveFrame(170, {});
    EXPECT_EQ(window_.Caption.get(), "Korvane Tuner v1.3 by Dulmer,   Device started 12:00:00");
}

TEST_F(ConnectedTest, OnAClosedPortTheTestButtonsSendNothingAndTheProgramGoesOn) {
    for (auto* button : {&window_.Command2, &window_.Command3, &window_.Command4}) {
        button->press();
    }
    program_.connect();
    window_.TimerRequestData.Enabled = false;
    EXPECT_THAT(program_.sent(), IsEmpty());
    EXPECT_THAT(program_.dialogs.takeMessages(), IsEmpty());
}

TEST_F(ConnectedTest, TheStateLineNamesPortAndRate) {
    EXPECT_EQ(window_.lblState.Caption.get(), "Not connected");
    program_.connect();
    program_.pump.wait(999);
    EXPECT_EQ(window_.lblState.Caption.get(), "Not connected");
    program_.pump.wait(1);
    EXPECT_EQ(window_.lblState.Caption.get(), "COM3; 57600 Connected");
}

TEST_F(ConnectedTest, TheStateLineKeepsItsTextWhenThePortIsClosed) {
    program_.connect();
    program_.pump.wait(1000);
    program_.connect();
    program_.pump.wait(5000);
    EXPECT_EQ(window_.lblState.Caption.get(), "COM3; 57600 Connected");
}

TEST_F(ConnectedTest, TheByteCountIsShownOnceASecondOpenOrClosed) {
    program_.connect();
    program_.receive(Bytes(300, 0));
    EXPECT_EQ(window_.lblBytesRec.Caption.get(), "0");
    program_.connect();
    program_.pump.wait(1000);
    EXPECT_EQ(window_.lblBytesRec.Caption.get(), "300");
}

TEST_F(ConnectedTest, AnAlarmFlashesFor100Milliseconds) {
    program_.connect();
    window_.TimerRequestData.Enabled = false;
    program_.receiveFrame('!', {});
    EXPECT_EQ(window_.BackColor.get(), 255U);
    program_.pump.runUntil(100 * kMicrosPerMilli - 1);
    EXPECT_EQ(window_.BackColor.get(), 255U);
    program_.pump.runUntil(100 * kMicrosPerMilli);
    EXPECT_EQ(window_.BackColor.get(), 0x8000000FU);
    EXPECT_FALSE(window_.TimerAlarm.Enabled);
}

TEST_F(ConnectedTest, TwoAlarms50MillisecondsApartGiveOneFlashThatEnds100AfterTheSecond) {
    program_.connect();
    program_.receiveFrame('!', {});
    program_.pump.wait(50);
    program_.receiveFrame('!', {1, 2});
    program_.pump.runUntil(150 * kMicrosPerMilli - 1);
    EXPECT_EQ(window_.BackColor.get(), 255U);
    program_.pump.runUntil(150 * kMicrosPerMilli);
    EXPECT_EQ(window_.BackColor.get(), 0x8000000FU);
    program_.pump.wait(1000);
    EXPECT_EQ(window_.BackColor.get(), 0x8000000FU);
}

}  // namespace
}  // namespace korvane::link
