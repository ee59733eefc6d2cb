// The steady agent in the whole program, on the virtual ECU.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "link/Frames.h"
#include "program/SteadyRunBench.h"

namespace korvane::program {
namespace {

using controls::kKeyPlus;

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

TEST_F(SteadyRunTest, EachCellThatItChangesIsSentAndBehindAStopNoneIs) {
    work();
    EXPECT_GT(cellsSent(), 0U);
    maps().chkSteadyAgent.press();
    wait(kSecond);
    static_cast<void>(cellsSent());
    wait(kLong);
    EXPECT_EQ(cellsSent(), 0U);
}

TEST_F(SteadyRunTest, TheErrorsOfTheRunAreNotedForEitherAgent) {
    work();
    EXPECT_EQ(agent().errors().agent(), "Steady agent");
    const auto points = agent().errors().points();
    ASSERT_GE(points.size(), 10U);
    EXPECT_LT(points.back().mean, points.front().mean);
    EXPECT_GE(points.back().worst, points.back().mean);
    maps().chkUseTuningAgent.press();
    wait(200 * kSecond);
    EXPECT_EQ(agent().errors().agent(), "Tuning agent");
    EXPECT_GE(agent().errors().points().size(), 10U);
}

TEST_F(SteadyRunTest, TheReasonsOfACellAreThoseOfTheFramesInIt) {
    maps().chkSteadyAgent.press();
    wait(10 * kSecond);
    const int place = program_.tables.MapPlace;
    EXPECT_THAT(agent().cellReasons(place), testing::HasSubstr("engine stopped, cranking or just started"));
    EXPECT_EQ(agent().cellReasons(159), "");
    EXPECT_EQ(agent().cellReasons(-1), "");
    EXPECT_EQ(agent().cellReasons(320), "");
}

// It runs all the time.
TEST_F(SteadyRunTest, AnEngineThatIsWatchedForLongHasNotJustStarted) {
    maps().chkSteadyAgent.press();
    wait(25 * kSecond);
    const auto reasons = agent().cellReasons(program_.tables.MapPlace);
    EXPECT_THAT(reasons, testing::HasSubstr("engine stopped, or not yet seen to run for 20 s"));
    EXPECT_THAT(reasons, testing::Not(testing::HasSubstr("just started")));
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

// Put back in the program alone, the engine still has the agent's map; after a new connection nobody knows what it has.
TEST_F(SteadyRunTest, F8WithTheLineClosedSaysSoAndSendsAllCellsOnceItIsOpen) {
    work();
    program_.window.btnConnect.press();
    wait(kSecond);
    EXPECT_THAT(agent().putBack(maps::kOrdinaryMaps), testing::EndsWith(", in the program only: the port is closed"));
    wait(5 * kSecond);
    EXPECT_EQ(map(), start_);
    program_.connect();
    wait(2 * kSecond);
    static_cast<void>(cellsSent());
    EXPECT_THAT(agent().putBack(maps::kOrdinaryMaps), testing::EndsWith(": 0 cells"));
    wait(10 * kSecond);
    EXPECT_EQ(cellsSent(), 160U);
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

TEST_F(SteadyRunTest, AFixedDelayIsTakenAtOnceAndGivenUpAtOnce) {
    maps().chkSteadyAgent.press();
    agent().choices().FixedDelayMs[1] = 210.0;
    EXPECT_EQ(agent().agent().zone(1).delayMs, 210.0);
    EXPECT_EQ(agent().zoneWords(1), "40 to 60 %: 210 ms, fixed");
    agent().choices().FixedDelayMs[1] = 0.0;
    EXPECT_EQ(agent().zoneWords(1), "40 to 60 %: not known yet");
}

TEST_F(SteadyRunTest, ChangedSettingsOfTheInjectionOrTheLoadStopIt) {
    for (const bool load : {true, false}) {
        maps().chkSteadyAgent.press();
        ASSERT_EQ(agent().whyStopped(), "");
        if (load) {
            eeprom(program_.tables.addresses.MAPGAIN_OFF, 12);
        } else {
            auto bytes = *program_.window.ecuMisc.bytes();
            bytes[6] = static_cast<std::uint8_t>(bytes[6] + 3);
            program_.window.ecuMisc.has(bytes);
        }
        wait(kSecond);
        EXPECT_EQ(agent().whyStopped(), "settings of the injection or of the load were changed") << load;
        EXPECT_EQ(maps().chkSteadyAgent.Value.get(), 0);
        EXPECT_EQ(map(), start_);
    }
}

TEST_F(SteadyRunTest, F8FromEachStateEndsAtTheBaseline) {
    const auto f8 = [this](State from) {
        ASSERT_EQ(state(), from);
        EXPECT_TRUE(maps().offerKey(kF8, 0));
        EXPECT_EQ(state(), State::PuttingBack);
        EXPECT_TRUE(maps().offerKey(kF8, 0)) << "once more meanwhile";
        wait(5 * kSecond);
        EXPECT_EQ(state(), State::Stopped);
        EXPECT_EQ(agent().whyStopped(), "put back by the tuner");
        EXPECT_EQ(map(), start_);
        EXPECT_EQ(unsent(), 0U);
    };
    maps().chkSteadyAgent.press();
    f8(State::Waiting);
    f8(State::Stopped);
    work();
    f8(State::Working);
    maps().chkSteadyAgent.press();
    wait(kLong);
    maps().chkSteadyAgent.press();
    ASSERT_NE(map(), start_);
    f8(State::Off);
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
    EXPECT_EQ(agent().whyStopped(), "the load calculation has not been read from the ECU since it was connected");
}

TEST_F(SteadyRunTest, ItRefusesOnADamagedBaselineUntilThereIsANewOne) {
    program_.folder.write("steady-11-3386.baseline", "nonsense");
    maps().chkSteadyAgent.press();
    EXPECT_EQ(agent().whyStopped(), "the baseline can't be used: it is damaged");
    EXPECT_EQ(agent().putBack(maps::kOrdinaryMaps), "Nothing is put back: the baseline can't be used: it is damaged");
    EXPECT_EQ(agent().rehearsalStart(maps::kOrdinaryMaps).missing, "the baseline can't be used: it is damaged");
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
    EXPECT_EQ(cellsSent(), 0U);
    EXPECT_EQ(agent().agent().counted(steady::Verdict::Used), 0U);
    EXPECT_EQ(program_.program.history().count(), 0U);
    EXPECT_FALSE(std::filesystem::exists(program_.folder.path() / "steady-11-3386.baseline"));
}

// A program on a line that takes no cell any more.
class RefusingLine : public platform::MemoryLine {
public:
    using MemoryLine::MemoryLine;

    void write(std::span<const std::uint8_t> bytes) override {
        if (refuses && !bytes.empty() && bytes.front() == 'g') {
            throw platform::RuntimeError(8018, "the device has gone");
        }
        MemoryLine::write(bytes);
    }

    bool refuses = false;
};

struct RefusingProgram : support::VirtualMachine {
    explicit RefusingProgram(platform::LineDevice& device) : VirtualMachine(&device), refusing(pump, &device) {
        program.connection().loadSettings = nullptr;
        program.start();
        program.frmSarn2().btnConnect.press();
        pump.wait(2 * kSecond);
        program.frmSarn2().btnKartat.press();
        pump.wait(3 * kSecond);
    }

    RefusingLine refusing;
    platform::Machine other = with(refusing);
    Program program{other};
};

TEST(SteadyRefusalTest, ASendThatTheLineRefusesStopsItAndItPutsBack) {
    support::EcuDevice ecu(lap());
    RefusingProgram machine(ecu);
    auto& panel = machine.program.frmSarn2();
    auto& tables = machine.program.tables();
    auto& agent = machine.program.steadyAgent();
    panel.ecuEeprom.told(tables.addresses.LOAD_MODE, 0);
    panel.ecuEeprom.told(tables.addresses.MAPGAIN_OFF, 10);
    panel.ecuEeprom.told(tables.addresses.MAPOFFSET_OFF, 0);
    const auto start = tables.FuelMapOut;
    ASSERT_TRUE(agent.start(maps::kOrdinaryMaps, &machine)) << agent.whyStopped();
    machine.refusing.refuses = true;
    machine.pump.wait(kLong);
    EXPECT_EQ(agent.state(), "stopped");
    EXPECT_EQ(agent.whyStopped(), "send refused");
    EXPECT_EQ(tables.FuelMapOut, start) << "what was not taken is not in the map either";
}

// A large map has 16 rows of 20 cells, and a command names a cell by a byte: twelve whole rows.
TEST(SteadyLargeTest, InTheLargeWindowItWorksOnTheCellsThatACommandCanName) {
    ecu::EcuSettings settings;
    ASSERT_EQ(ecu::parseKeyList(settings, "type=15,drive=lap"), "");
    support::EcuDevice ecu(settings);
    support::VirtualProgram program(&ecu);
    program.connect();
    program.pump.wait(2 * kSecond);
    program.window.btnKartat.press();
    program.pump.wait(5 * kSecond);
    ASSERT_EQ(program.tables.SWType, 15);
    const auto& places = program.tables.addresses;
    for (const auto& [address, byte] :
         {std::pair(places.LOAD_MODE, 0), std::pair(places.MAPGAIN_OFF, 10), std::pair(places.MAPOFFSET_OFF, 0),
          std::pair(places.INJ_MODE_OFFSET, 0), std::pair(places.INJ_MULTIPLIER_OFF, 0)}) {
        program.window.ecuEeprom.told(address, static_cast<std::uint8_t>(byte));
    }
    auto& form = dynamic_cast<maps::FrmMaps_Large&>(*program.windows.loaded().back());
    form.chkInjAnal.press();
    const auto start = program.tables.FuelMapOut;
    form.chkSteadyAgent.press();
    auto& agent = program.program.steadyAgent();
    ASSERT_EQ(agent.whyStopped(), "");
    EXPECT_EQ(agent.agent().setup().grid.columns, maps::kLargeMaps.columns);
    EXPECT_EQ(agent.agent().setup().grid.cells(), 240U);
    program.pump.wait(2 * kLong);
    EXPECT_EQ(agent.whyStopped(), "");
    EXPECT_NE(program.tables.FuelMapOut, start);
    EXPECT_TRUE(std::equal(start.begin() + 240, start.end(), program.tables.FuelMapOut.begin() + 240));
    EXPECT_TRUE(form.offerKey(kF8, 0));
    program.pump.wait(5 * kSecond);
    EXPECT_EQ(program.tables.FuelMapOut, start);
}

}  // namespace
}  // namespace korvane::program
