// The steady agent in the whole program, on the virtual ECU.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "ecu/VirtualEcu.h"
#include "link/Frames.h"
#include "maps/MapForm.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace korvane::program {
namespace {

using controls::kKeyPlus;
using steady::State;

constexpr int kSecond = 1000;
constexpr int kLong = 800 * kSecond;  // some rounds of the drive, the first ones cold
constexpr int kF8 = 119;

ecu::EcuSettings lap() {
    ecu::EcuSettings settings;
    EXPECT_EQ(ecu::parseKeyList(settings, "type=11,drive=lap"), "");
    return settings;
}

class SteadyRunTest : public testing::Test {
protected:
    SteadyRunTest() {
        program_.connect();
        wait(2 * kSecond);
        program_.window.btnKartat.press();
        wait(3 * kSecond);
        // What the read of all settings would tell.
        const auto& places = program_.tables.addresses;
        eeprom(places.LOAD_MODE, 0);
        eeprom(places.MAPGAIN_OFF, 10);
        eeprom(places.MAPOFFSET_OFF, 0);
        maps().chkInjAnal.press();
        start_ = map();
    }

    void wait(int milliseconds) { program_.pump.wait(milliseconds); }
    void eeprom(int address, std::uint8_t byte) { program_.window.ecuEeprom.told(address, byte); }
    maps::FrmMaps& maps() {
        for (auto* const window : program_.windows.loaded()) {
            if (auto* const found = dynamic_cast<maps::FrmMaps*>(window)) {
                return *found;
            }
        }
        throw std::runtime_error("no map window");
    }
    core::MapImage& map() { return program_.tables.FuelMapOut; }
    analysis::clsSteadyAgent& agent() { return program_.program.steadyAgent(); }
    State state() { return agent().agent().state(); }
    // Ticked, and driven until it has changed something.
    void work() {
        maps().chkSteadyAgent.press();
        ASSERT_EQ(agent().whyStopped(), "");
        wait(kLong);
        ASSERT_EQ(state(), State::Working);
        ASSERT_NE(map(), start_);
    }
    std::size_t unsent() {
        std::size_t cells = 0;
        for (std::size_t cell = 0; cell < 160; ++cell) {
            cells += program_.window.ecuMaps.fuel.working(cell) != map().at(cell) ? 1 : 0;
        }
        return cells;
    }

    support::EcuDevice ecu_{lap()};
    support::VirtualProgram program_{&ecu_};
    core::MapImage start_{};
};

TEST_F(SteadyRunTest, ItChangesCellsWithinTheAuthorityAndTheEngineHasThem) {
    work();
    EXPECT_EQ(unsent(), 0U);
    for (std::size_t cell = 0; cell < 160; ++cell) {
        EXPECT_GE(map().at(cell), start_.at(cell) - start_.at(cell) * 5 / 100) << cell;
        EXPECT_LE(map().at(cell), start_.at(cell) + start_.at(cell) * 15 / 100) << cell;
        EXPECT_EQ(agent().baselineOf(cell), start_.at(cell));
    }
    EXPECT_EQ(program_.program.history().count(), 1U);
    EXPECT_TRUE(program_.program.history().step(1).words().starts_with("Fuel: steady agent, "));
    EXPECT_EQ(maps().chkOnlineChanges.Value.get(), 0);
    EXPECT_EQ(maps().chkSteadyAgent.Value.get(), 1);
}

TEST_F(SteadyRunTest, ABlockThatTheTunerHoldsIsNotTouched) {
    maps().fuel.SelFirst = 1;
    maps().fuel.SelLast = 3;
    work();
    EXPECT_EQ(maps().fuel.SelFirst, 1);
    EXPECT_EQ(maps().fuel.SelLast, 3);
    for (std::size_t cell = 0; cell < 3; ++cell) {
        EXPECT_EQ(map().at(cell), start_.at(cell)) << "the engine never runs there";
    }
}

TEST_F(SteadyRunTest, F8PutsTheMapAndTheEngineBackAsAStepOfItsOwn) {
    work();
    EXPECT_TRUE(maps().offerKey(kF8, 0));
    wait(5 * kSecond);
    EXPECT_EQ(map(), start_);
    EXPECT_EQ(unsent(), 0U);
    EXPECT_EQ(agent().state(), "stopped");
    EXPECT_EQ(agent().whyStopped(), "put back by the tuner");
    EXPECT_EQ(maps().chkSteadyAgent.Value.get(), 0);
    EXPECT_EQ(program_.program.history().count(), 2U);
}

TEST_F(SteadyRunTest, TheBaselineStaysOverAStopAndF8WorksBehindIt) {
    work();
    maps().chkSteadyAgent.press();
    EXPECT_EQ(state(), State::Off);
    const auto corrected = map();
    maps().chkSteadyAgent.press();
    EXPECT_EQ(state(), State::Waiting);
    EXPECT_EQ(map(), corrected) << "a start changes nothing";
    for (std::size_t cell = 0; cell < 160; ++cell) {
        EXPECT_EQ(agent().baselineOf(cell), start_.at(cell));
    }
    maps().chkSteadyAgent.press();
    EXPECT_TRUE(maps().offerKey(kF8, 0));
    wait(5 * kSecond);
    EXPECT_EQ(map(), start_);
}

TEST_F(SteadyRunTest, ANewBaselineIsTakenOnlyWhileItRests) {
    work();
    EXPECT_EQ(agent().newBaseline(maps::kOrdinaryMaps), "The baseline stays while the steady agent works");
    maps().chkSteadyAgent.press();
    EXPECT_EQ(agent().newBaseline(maps::kOrdinaryMaps), "The baseline is the map as it is now");
    const auto corrected = map();
    EXPECT_TRUE(maps().offerKey(kF8, 0));
    wait(5 * kSecond);
    EXPECT_EQ(map(), corrected);
}

TEST_F(SteadyRunTest, ARestartOfTheEcuStopsIt) {
    work();
    program_.program.dispatcher().DoCommand(link::kDeviceStartedFrame, {});
    wait(5 * kSecond);
    EXPECT_EQ(agent().state(), "stopped");
    EXPECT_EQ(agent().whyStopped(), "ECU restarted");
}

TEST_F(SteadyRunTest, AClosedPortStopsItAndTheMapStays) {
    work();
    const auto corrected = map();
    program_.window.btnConnect.press();
    wait(3 * kSecond);
    EXPECT_EQ(agent().state(), "stopped");
    EXPECT_EQ(agent().whyStopped(), "port closed");
    EXPECT_EQ(map(), corrected);
    EXPECT_EQ(maps().chkSteadyAgent.Value.get(), 0);
}

TEST_F(SteadyRunTest, AnotherEcuStopsIt) {
    maps().chkSteadyAgent.press();
    program_.tables.HwVersion = 4.0F;
    wait(kSecond);
    EXPECT_EQ(agent().whyStopped(), "another ECU");
}

TEST_F(SteadyRunTest, TheOtherAgentStopsIt) {
    maps().chkSteadyAgent.press();
    program_.program.analyser().setAgentEnable(true);
    wait(kSecond);
    EXPECT_EQ(agent().whyStopped(), "the tuning agent was switched on");
}

TEST_F(SteadyRunTest, TheEcusOwnLambdaControlStopsItAndKeepsItFromStarting) {
    maps().chkSteadyAgent.press();
    auto bytes = *program_.window.ecuMisc.bytes();
    bytes[5] |= 0x02;
    program_.window.ecuMisc.has(bytes);
    wait(kSecond);
    EXPECT_EQ(agent().whyStopped(), "ECU corrects by lambda itself");
    maps().chkSteadyAgent.press();
    EXPECT_EQ(maps().chkSteadyAgent.Value.get(), 0);
    EXPECT_EQ(agent().state(), "stopped");
}

TEST_F(SteadyRunTest, TheEcusOwnLambdaControlPutsBackWhatCameSinceTheLastProof) {
    work();
    const auto corrected = map();
    auto bytes = *program_.window.ecuMisc.bytes();
    bytes[5] |= 0x02;
    program_.window.ecuMisc.has(bytes);
    wait(5 * kSecond);
    EXPECT_EQ(agent().state(), "stopped");
    EXPECT_EQ(unsent(), 0U);
    for (std::size_t cell = 0; cell < 160; ++cell) {
        EXPECT_LE(std::abs(map().at(cell) - start_.at(cell)), std::abs(corrected.at(cell) - start_.at(cell))) << cell;
    }
}

TEST_F(SteadyRunTest, AnEditThatWasSentIsTakenAndOneThatWasNotStopsIt) {
    maps().chkSteadyAgent.press();
    maps().chkOnlineChanges.press();
    maps().fuel(17).KeyDown(kKeyPlus, 0);
    wait(kSecond);
    EXPECT_EQ(agent().agent().map().at(17), start_.at(17) + 1);
    EXPECT_EQ(agent().whyStopped(), "");
    maps().chkOnlineChanges.press();
    maps().fuel(17).KeyDown(kKeyPlus, 0);
    wait(kSecond);
    EXPECT_EQ(agent().whyStopped(), "cells of the fuel map were changed and not sent");
}

TEST_F(SteadyRunTest, F8RightBehindAnEditPutsThatBackAsWell) {
    maps().chkSteadyAgent.press();
    ASSERT_EQ(agent().whyStopped(), "");
    map().at(17) = static_cast<std::uint8_t>(start_.at(17) + 1);
    EXPECT_TRUE(maps().offerKey(kF8, 0));
    wait(5 * kSecond);
    EXPECT_EQ(map(), start_);
    EXPECT_EQ(agent().whyStopped(), "put back by the tuner");
}

TEST_F(SteadyRunTest, F8SendsWhatTheEngineLostOnItsWay) {
    maps().chkSteadyAgent.press();
    ASSERT_EQ(agent().whyStopped(), "");
    program_.window.ecuMaps.fuel.changed(17, static_cast<std::uint8_t>(start_.at(17) + 2));
    ASSERT_EQ(unsent(), 1U);
    EXPECT_TRUE(maps().offerKey(kF8, 0));
    wait(5 * kSecond);
    EXPECT_EQ(unsent(), 0U);
}

// A quarter more is beyond what the agent may do.
TEST_F(SteadyRunTest, AMapThatIsNotTheBaselinesIsNeitherCorrectedNorPutBackWithoutASecondPress) {
    maps().chkSteadyAgent.press();
    ASSERT_EQ(agent().whyStopped(), "");
    maps().chkSteadyAgent.press();
    for (const std::size_t cell : {40U, 41U}) {
        map().at(cell) = static_cast<std::uint8_t>(start_.at(cell) * 5 / 4);
        program_.window.ecuMaps.fuel.changed(cell, map().at(cell));
    }
    maps().chkSteadyAgent.press();
    EXPECT_THAT(agent().whyStopped(), testing::StartsWith("2 cells farther from the baseline of "));
    EXPECT_THAT(agent().putBack(maps::kOrdinaryMaps), testing::StartsWith("2 cells farther from the baseline of "));
    wait(11 * kSecond);
    EXPECT_NE(map(), start_);
    EXPECT_THAT(agent().putBack(maps::kOrdinaryMaps), testing::StartsWith("2 cells farther from the baseline of "));
    EXPECT_THAT(agent().putBack(maps::kOrdinaryMaps), testing::StartsWith("Put back to the baseline of "));
    wait(5 * kSecond);
    EXPECT_EQ(map(), start_);
}

TEST_F(SteadyRunTest, ATargetThatIsNoMixtureKeepsItFromStarting) {
    auto& analyser = program_.program.analyser();
    for (const float target : {0.0F, -1.0F, 147.0F, std::numeric_limits<float>::quiet_NaN()}) {
        analyser.Setpoint(target, 150);
        maps().chkSteadyAgent.press();
        EXPECT_EQ(agent().whyStopped(), "the target of cell 151 is not from 10 to 16") << target;
        EXPECT_FALSE(agent().isOn(&maps()));
    }
}

TEST_F(SteadyRunTest, ANewTargetIsTaken) {
    maps().chkSteadyAgent.press();
    program_.program.analyser().Setpoint(13.5F, 40);
    wait(kSecond);
    EXPECT_EQ(agent().agent().setup().targets.at(40), 13.5F);
}

TEST_F(SteadyRunTest, TheAuthorityIsTakenAtOnce) {
    maps().chkSteadyAgent.press();
    agent().choices().RichAuthority = 3.0;
    EXPECT_EQ(agent().agent().setup().richAuthority, 3.0);
}

TEST_F(SteadyRunTest, ItRefusesWhereTheMapIsNotTheEngines) {
    ++map().at(3);
    maps().chkSteadyAgent.press();
    EXPECT_EQ(maps().chkSteadyAgent.Value.get(), 0);
    EXPECT_EQ(agent().state(), "stopped");
    EXPECT_EQ(agent().whyStopped(), "1 cell of the fuel map not sent to the ECU");
}

TEST_F(SteadyRunTest, ItRefusesWithoutTheLoadCalculation) {
    program_.window.ecuEeprom.lost(program_.tables.addresses.MAPGAIN_OFF);
    maps().chkSteadyAgent.press();
    EXPECT_EQ(agent().whyStopped(), "the load calculation has not been read from the ECU");
}

TEST_F(SteadyRunTest, ItRefusesOnADamagedBaselineUntilThereIsANewOne) {
    program_.folder.write("steady-11-3386.baseline", "nonsense");
    maps().chkSteadyAgent.press();
    EXPECT_EQ(agent().whyStopped(), "the baseline can't be used: it is damaged");
    EXPECT_EQ(agent().putBack(maps::kOrdinaryMaps), "Nothing is put back: the baseline can't be used: it is damaged");
    EXPECT_EQ(agent().newBaseline(maps::kOrdinaryMaps), "The baseline is the map as it is now");
    maps().chkSteadyAgent.press();
    EXPECT_EQ(agent().whyStopped(), "");
}

TEST_F(SteadyRunTest, F8WithoutABaselineSaysSo) {
    EXPECT_TRUE(maps().offerKey(kF8, 0));
    EXPECT_EQ(maps().HistoryNote.get(), "Nothing to put back: no baseline is kept for this ECU");
    EXPECT_EQ(map(), start_);
}

TEST_F(SteadyRunTest, F8NeedsNoLiveData) {
    work();
    program_.window.TimerRequestData.Enabled = false;
    wait(kSecond);
    EXPECT_TRUE(maps().offerKey(kF8, 0));
    wait(5 * kSecond);
    EXPECT_EQ(map(), start_);
    EXPECT_EQ(agent().state(), "stopped");
}

// The poll rests while somebody reads or sends.
TEST_F(SteadyRunTest, ATransferIsNoLateLink) {
    maps().chkSteadyAgent.press();
    wait(10 * kSecond);
    {
        const link::LinkState::Transfer transfer(&program_.window.linkState);
        program_.window.TimerRequestData.Enabled = false;
        wait(30 * kSecond);
        program_.window.TimerRequestData.Enabled = true;
    }
    wait(10 * kSecond);
    EXPECT_EQ(agent().whyStopped(), "");
    EXPECT_EQ(state(), State::Waiting);
}

TEST_F(SteadyRunTest, TheCloseOfItsWindowStopsIt) {
    maps().chkSteadyAgent.press();
    EXPECT_TRUE(maps().unload());
    EXPECT_EQ(state(), State::Off);
}

TEST_F(SteadyRunTest, WhileItIsOffNothingIsLearntOrChanged) {
    wait(400 * kSecond);
    EXPECT_EQ(map(), start_);
    EXPECT_EQ(agent().agent().counted(steady::Verdict::Used), 0U);
    EXPECT_EQ(program_.program.history().count(), 0U);
    EXPECT_FALSE(std::filesystem::exists(program_.folder.path() / "steady-11-3386.baseline"));
}

}  // namespace
}  // namespace korvane::program
