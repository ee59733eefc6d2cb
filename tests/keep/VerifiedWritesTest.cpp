// Sends that are read back: the program with the virtual ECU behind a line on which a test can change bytes.
#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <iterator>
#include <numeric>

#include "maps/FrmMaps_QV_ign.h"
#include "maps/FrmMaps_ign_limiter.h"
#include "maps/MapForm.h"
#include "maps/panes/MapStatus.h"
#include "settings/FrmMisc.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::StartsWith;

// The virtual ECU behind a line whose bytes pass through a test.
class Tampered : public platform::LineDevice {
public:
    explicit Tampered(const ecu::EcuSettings& settings) : ecu(settings) {}

    support::EcuDevice ecu;
    std::function<std::uint8_t(std::uint8_t)> toEcu = [](std::uint8_t byte) { return byte; };
    std::function<std::uint8_t(std::uint8_t)> toPc = [](std::uint8_t byte) { return byte; };
    bool deaf = false;  // the ECU hears nothing
    bool mute = false;  // the PC hears nothing
    struct Sent {
        int ms;
        int byte;
        friend bool operator==(const Sent&, const Sent&) = default;
    };
    std::vector<Sent> sent;

    void setBaud(int baud) override { ecu.setBaud(baud); }
    void receive(std::uint8_t byte, platform::Micros at) override {
        sent.push_back({static_cast<int>(at / platform::kMicrosPerMilli), byte});
        if (!deaf) {
            ecu.receive(toEcu(byte), at);
        }
    }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override { return ecu.nextDue(); }
    void take(platform::Micros at, std::vector<std::uint8_t>& out) override {
        std::vector<std::uint8_t> bytes;
        ecu.take(at, bytes);
        if (!mute) {
            std::ranges::transform(bytes, std::back_inserter(out), std::ref(toPc));
        }
    }
};

ecu::EcuSettings ofType(int type) {
    ecu::EcuSettings settings;
    settings.type = type;
    return settings;
}

class VerifiedWrites : public testing::Test {
protected:
    struct Run : Tampered, support::VirtualProgram {
        explicit Run(int type = 11) : Tampered(ofType(type)), VirtualProgram(this) {
            connect();
            pump.wait(1500);
            // Beside live data the line is quiet then.
            window.TimerRequestData.Interval = 60000;
        }

        template <class Kind>
        Kind& open() {
            program.mapWindows().open();
            pump.wait(3000);
            return dynamic_cast<Kind&>(*program.windows().curMapWindow);
        }
        settings::FrmMisc& openSettings() {
            auto& misc = program.frmMisc();
            misc.show();
            misc.TimerInitialGetData.Enabled = false;
            pump.wait(100);
            return misc;
        }
        void verify(bool on = true) { window.verify.On = on; }
        // The next byte `from` that goes to the ECU, behind `skipped` others, arrives as `to`.
        void change(int skipped, int to) {
            toEcu = [left = skipped, to](std::uint8_t byte) mutable {
                return left-- == 0 ? static_cast<std::uint8_t>(to) : byte;
            };
        }
        // One bit of the answer's byte behind `skipped` others is damaged on the line.
        void damageAnswer(int skipped) {
            toPc = [left = skipped](std::uint8_t byte) mutable {
                return static_cast<std::uint8_t>(left-- == 0 ? byte ^ 4 : byte);
            };
        }
    };

    static std::string resultOf(const maps::PaneWindow& window) { return window.verifyReport().Text; }
};

TEST_F(VerifiedWrites, TheChoiceIsRememberedAndOffAtFirst) {
    support::VirtualMachine machine;
    {
        korvane::program::Program program(machine.machine);
        EXPECT_FALSE(program.frmSarn2().verify.On);
        program.frmSarn2().verify.On = true;
    }
    korvane::program::Program program(machine.machine);
    EXPECT_TRUE(program.frmSarn2().verify.On);
}

// A byte is put out 2 ms behind the one before: 1 ms until that has left the machine, 1 ms of its own. It arrives
// 10 bits at 57600 baud later. Behind the last cell the complement follows at once, and 100 ms later the order to
// store.
TEST_F(VerifiedWrites, WithoutTheChoiceASendIsByteForByteAndMillisecondForMillisecondAsEver) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    std::iota(run.tables.FuelMapOut.begin(), run.tables.FuelMapOut.end(), std::uint8_t{3});
    run.Tampered::sent.clear();
    run.window.TimerRequestData.Enabled = false;
    const int start = static_cast<int>(run.pump.milliseconds());
    maps.btnWriteFuel.press();

    std::vector<Tampered::Sent> expected{{start, 'F'}};
    for (int cell = 0; cell < 160; ++cell) {
        expected.push_back({start + 2 * (cell + 1), cell + 3});
    }
    expected.push_back({start + 320, 0xB9});
    expected.push_back({start + 420, 'c'});
    EXPECT_THAT(run.Tampered::sent, ElementsAreArray(expected));
    EXPECT_EQ(run.pump.milliseconds(), start + 520);
    EXPECT_EQ(resultOf(maps), "");
}

TEST_F(VerifiedWrites, AMapIsReadBackBehindItsSendAndComparedApart) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    run.tables.FuelMapOut.fill(93);
    run.at(static_cast<int>(run.pump.milliseconds()) + 450, [&] { run.tables.FuelMapOut[5] = 7; });
    run.Tampered::sent.clear();
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: verified");
    EXPECT_FALSE(maps.verifyReport().Failed);
    EXPECT_EQ(maps.Caption.get(), "Fuel kartta lähetetty ja talletettu autoon");
    EXPECT_EQ(run.tables.FuelMapOut[5], 7);
    EXPECT_NE(run.tables.FuelMapIn[6], 93);  // the desk has not been told that anything was read
    EXPECT_EQ(run.window.ecuMaps.fuel.working(6), 93);
    ASSERT_EQ(run.Tampered::sent.size(), 164U);
    EXPECT_EQ(run.Tampered::sent[162].byte, 'c');
    EXPECT_EQ(run.Tampered::sent[163].byte, 'f');
    EXPECT_TRUE(run.window.TimerRequestData.Enabled);
    EXPECT_FALSE(run.window.linkState.isBusy());
}

TEST_F(VerifiedWrites, EachCellThatDiffersIsNamedAndSentAgainWithOnePress) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    run.tables.FuelMapOut.fill(93);
    run.change(1 + 18, 90);
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: cell 19 is 90, sent 93");
    EXPECT_TRUE(maps.verifyReport().Failed);
    EXPECT_EQ(run.tables.FuelMapOut[18], 93);
    maps.verifyReport().sendAgain();
    EXPECT_EQ(resultOf(maps), "Fuel: verified");
    EXPECT_FALSE(maps.verifyReport().Failed);
    EXPECT_EQ(run.window.ecuMaps.fuel.working(18), 93);
}

TEST_F(VerifiedWrites, ALargeMapIsReadBackInBothHalves) {
    Run run(14);
    auto& maps = run.open<maps::FrmMaps_Large>();
    run.verify();
    run.tables.IgnMapOut.fill(40);
    maps.btnWriteIgn.press();
    EXPECT_EQ(resultOf(maps), "Ignition: verified");
    // Opening byte, 160 cells and the complement of the first half; the opening byte of the second.
    run.change(162 + 1 + 40, 41);
    maps.btnWriteIgn.press();
    EXPECT_EQ(resultOf(maps), "Ignition: cell 201 is 41, sent 40");
}

TEST_F(VerifiedWrites, WhatWasNotToldToStoreIsNotCalledVerifiedAlone) {
    Run run(14);
    auto& maps = run.open<maps::FrmMaps_Large>();
    run.verify();
    run.tables.FuelMapOut.fill(93);
    // Of an acknowledgement that is missing the large window makes that nothing is stored.
    run.mute = true;
    run.at(static_cast<int>(run.pump.milliseconds()) + 2900, [&] { run.mute = false; });
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: verified, but not told to store it");
    EXPECT_TRUE(maps.verifyReport().Failed);
}

TEST_F(VerifiedWrites, ThePwmTableIsReadBackBehindTheRestart) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    run.tables.PwmMapOut.fill(55);
    maps.btnSavePWM.press();
    EXPECT_EQ(resultOf(maps), "PWM: verified");
    EXPECT_EQ(maps::statusOf(maps).store, "Sent PWM: stored, seen after a restart");
    // Command, cell, cell, value, value, complement: both values of the 10th cell, 70.
    run.toEcu = [left = 9 * 6 + 3](std::uint8_t byte) mutable {
        const int place = left--;
        return place == 0 || place == -1 ? std::uint8_t{56} : byte;
    };
    maps.btnSavePWM.press();
    EXPECT_EQ(resultOf(maps), "PWM: cell 71 is 56, sent 55");
    EXPECT_EQ(run.tables.PwmMapOut[70], 55);
}

// One inverted bit of 'P' makes it 'p', the order to tell the table: the answer replaces the edits that have not gone
// out.
TEST_F(VerifiedWrites, AReadThatComesInDuringTheSendIsNoSuccess) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    run.tables.PwmMapOut.fill(55);
    run.toEcu = [left = 2 * 6](std::uint8_t byte) mutable { return left-- == 0 ? std::uint8_t{'p'} : byte; };
    maps.btnSavePWM.press();
    EXPECT_EQ(resultOf(maps), "PWM: not verified: a read came in between, see the history (Ctrl+H)");
    EXPECT_TRUE(maps.verifyReport().Failed);
    EXPECT_NE(run.tables.PwmMapOut[150], 55);
    run.tables.PwmMapOut.fill(55);
    maps.verifyReport().sendAgain();
    EXPECT_EQ(resultOf(maps), "PWM: verified");
}

TEST_F(VerifiedWrites, TheMiscBlockIsReadBack) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    maps.txtMisc(0).Text = "7000";
    maps.btnSaveMisc.press();
    EXPECT_EQ(resultOf(maps), "Misc: verified");
    run.change(1, 0x59);  // the low byte of 7000, 0x1B58
    maps.btnSaveMisc.press();
    EXPECT_EQ(resultOf(maps), "Misc: RPM limit is 7001, sent 7000");
    EXPECT_EQ(maps.txtMisc(0).Text.get(), "7000");
}

// What is damaged is the answer alone, of the map behind its acknowledgement: a cell that the ECU has is not called
// another one.
TEST_F(VerifiedWrites, AnAnswerThatWasDamagedIsAskedForOnceMore) {
    constexpr int kFrame = 4;
    constexpr int kHead = 2;  // code and length
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    run.tables.FuelMapOut.fill(93);
    run.damageAnswer(kFrame + kHead + 18);
    maps.btnWriteFuel.press();
    EXPECT_EQ(run.window.ecuMaps.fuel.working(18), 93);
    EXPECT_EQ(resultOf(maps), "Fuel: verified");
    run.damageAnswer(kHead);
    maps.btnSaveMisc.press();
    EXPECT_EQ(resultOf(maps), "Misc: verified");
    run.tables.PwmMapOut.fill(55);
    run.toPc = [left = 1](std::uint8_t byte) mutable {
        return static_cast<std::uint8_t>(byte == 55 && left-- > 0 ? 54 : byte);
    };
    maps.btnSavePWM.press();
    EXPECT_EQ(resultOf(maps), "PWM: verified");
}

TEST_F(VerifiedWrites, ASilentEcuEndsTheWait) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    run.mute = true;
    const auto start = run.pump.milliseconds();
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: not verified: no answer");
    // 520 ms for the send; two attempts of two seconds.
    EXPECT_NEAR(static_cast<double>(run.pump.milliseconds() - start), 520 + 4000, 30);
    maps.btnSavePWM.press();
    EXPECT_EQ(resultOf(maps), "PWM: not verified: the ECU has not restarted");
    maps.btnSaveMisc.press();
    EXPECT_EQ(resultOf(maps), "Misc: not verified: no answer");
}

TEST_F(VerifiedWrites, AnAnswerThatIsLateActsNowhereUntilTheTunerReads) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    run.mute = true;
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: not verified: no answer");
    run.mute = false;
    run.tables.FuelMapOut.fill(12);
    run.receiveFrame('f', support::Bytes(160, 99));
    EXPECT_EQ(run.tables.FuelMapOut[0], 12);
    EXPECT_EQ(run.window.ecuMaps.fuel.working(0), 99);
    maps.btnReadFuel.press();
    run.pump.wait(500);
    EXPECT_EQ(run.tables.FuelMapOut[0], run.tables.FuelMapIn[0]);
    EXPECT_NE(run.tables.FuelMapOut[0], 12);
}

TEST_F(VerifiedWrites, APortThatClosesARestartAndAWindowThatClosesEndIt) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    run.at(static_cast<int>(run.pump.milliseconds()) + 525, [&] { run.program.disconnect(); });
    run.mute = true;
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: not verified: the port is closed");
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: not verified: the port is closed");
    run.connect();
    run.pump.wait(100);
    run.at(static_cast<int>(run.pump.milliseconds()) + 600, [&] { run.receiveFrame(170, {0}); });
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: not verified: the ECU restarted");
    run.at(static_cast<int>(run.pump.milliseconds()) + 600, [&] { static_cast<void>(maps.unload()); });
    const auto start = run.pump.milliseconds();
    maps.btnWriteFuel.press();
    EXPECT_LT(run.pump.milliseconds() - start, 5000);
}

// Both reads are under way at the same time; the second send is not compared with what the first one was.
TEST_F(VerifiedWrites, ASendInsideAVerificationTakesItsPlace) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    run.tables.FuelMapOut.fill(93);
    run.mute = true;
    run.at(static_cast<int>(run.pump.milliseconds()) + 600, [&] {
        run.mute = false;
        run.tables.FuelMapOut.fill(94);
        maps.btnWriteFuel.press();
        EXPECT_EQ(resultOf(maps), "Fuel: verified");
    });
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: verified");
    EXPECT_EQ(run.window.ecuMaps.fuel.working(0), 94);
}

TEST_F(VerifiedWrites, AGroupOfSettingsIsReadBackCellByCell) {
    Run run;
    auto& misc = run.openSettings();
    run.verify();
    misc.txtIdleAdv(0).Text = "10";
    misc.txtIdleAdv(1).Text = "11";
    misc.btnSaveIdleAdv.press();
    EXPECT_EQ(misc.verifyReport().Text.get(), "Idle Ignition: verified");
    EXPECT_THAT(misc.saveReport().Text.get(), HasSubstr("5 came back the same"));
    EXPECT_EQ(misc.boxMarks().of(misc.txtIdleAdv(0)), fields::Mark::None);
    // 'W', two bytes of the address, the value twice, the complement: both values of the second cell.
    run.toEcu = [place = 0](std::uint8_t byte) mutable {
        ++place;
        return place == 6 + 4 || place == 6 + 5 ? std::uint8_t{13} : byte;
    };
    misc.txtIdleAdv(1).Text = "12";
    misc.btnSaveIdleAdv.press();
    EXPECT_THAT(misc.verifyReport().Text.get(), HasSubstr(" is 13, sent 12"));
    EXPECT_TRUE(misc.verifyReport().Failed);
    EXPECT_EQ(misc.txtIdleAdv(1).Text.get(), "12");
    EXPECT_EQ(run.tables.EEImage[393], 13);
    misc.verifyReport().sendAgain();
    EXPECT_EQ(misc.verifyReport().Text.get(), "Idle Ignition: verified");
    EXPECT_EQ(run.tables.EEImage[393], 12);
}

TEST_F(VerifiedWrites, AWordIsComparedInBothItsCells) {
    Run run;
    auto& misc = run.openSettings();
    run.verify();
    misc.txtMotorBrakeLow.Text = "1500";
    misc.txtMotorBrakeHigh.Text = "2000";
    misc.btnSaveMotorbrake.press();
    EXPECT_EQ(misc.verifyReport().Text.get(), "Motorbrake: verified");
    EXPECT_EQ(int{run.ecu.eeprom()[507]} + 256 * run.ecu.eeprom()[508], 1500);
}

TEST_F(VerifiedWrites, ARawWriteIsReadBack) {
    Run run;
    auto& misc = run.openSettings();
    run.verify();
    misc.TextOs.Text = "600";
    misc.TextArvo.Text = "300";  // the low byte is 44
    misc.Command1.press();
    EXPECT_EQ(misc.verifyReport().Text.get(), "EEPROM: verified");
    EXPECT_EQ(misc.TextArvo.Text.get(), "300");
    run.deaf = true;
    misc.TextArvo.Text = "45";
    misc.Command1.press();
    EXPECT_EQ(misc.verifyReport().Text.get(), "EEPROM: not verified: no answer");
}

TEST_F(VerifiedWrites, TheIgnitionBoxAndTheLimiterReadBackTheirGroups) {
    {
        Run run(30);
        auto& box = run.open<maps::FrmMaps_QV_ign>();
        run.pump.wait(5000);
        run.verify();
        box.idleIgnition.btnSave.press();
        EXPECT_EQ(resultOf(box), "Idle Ignition: verified");
    }
    Run run(112);
    auto& limiter = run.open<maps::FrmMaps_ign_limiter>();
    run.pump.wait(5000);
    run.verify();
    limiter.btnSendSettings.press();
    EXPECT_EQ(limiter.verifyReport().Text.get(), "limiter settings: verified");
    EXPECT_EQ(limiter.Caption.get(), "Data sent and stored to device.");
}

// With the choice off no save of settings asks for anything.
TEST_F(VerifiedWrites, WithoutTheChoiceNoSaveIsReadBack) {
    Run run;
    auto& misc = run.openSettings();
    run.window.TimerRequestData.Enabled = false;
    run.Tampered::sent.clear();
    misc.txtStart.Tag = "1";
    misc.btnSaveChargeTime.press();
    misc.TextOs.Text = "600";
    misc.TextArvo.Text = "44";
    misc.Command1.press();
    run.pump.wait(1000);
    ASSERT_EQ(run.Tampered::sent.size(), 12U);
    EXPECT_EQ(run.Tampered::sent[0].byte, 'W');
    EXPECT_EQ(run.Tampered::sent[6].byte, 'W');
    EXPECT_EQ(misc.verifyReport().Text.get(), "");
}

TEST_F(VerifiedWrites, ARealtimeStepEndsWhatWasVerified) {
    Run run;
    auto& maps = run.open<maps::FrmMaps>();
    run.verify();
    maps.btnWriteFuel.press();
    maps.btnWriteIgn.press();
    run.pump.wait(100);
    EXPECT_EQ(resultOf(maps), "Ignition: verified");
    maps.btnWriteFuel.press();
    EXPECT_EQ(resultOf(maps), "Fuel: verified");
    run.window.linkState.frameReceived('R', run.pump.now());
    maps.chkOnlineChanges.Value = 1;
    maps.setFocus(&maps.fuel(3));
    maps.fuel(3).keyDown(controls::kKeyPlus, 0);
    EXPECT_EQ(resultOf(maps), "Fuel: verified before the last changes");
}

}  // namespace
}  // namespace korvane::keep
