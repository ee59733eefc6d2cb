// When the steady agent stops in the program, when it does not, and what it says of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "core/TimeText.h"
#include "program/SteadyRunBench.h"

namespace korvane::program {
namespace {

using core::LiveChannel;
using testing::HasSubstr;
using testing::Not;

class SteadyStopTest : public SteadyRunTest {
protected:
    using SteadyRunTest::SteadyRunTest;

    std::string logged() {
        return program_.folder.read("SteadyAgent" + core::dateText(program_.pump.wallTime()) + ".txt");
    }
};

TEST_F(SteadyStopTest, AChangedCalibrationStopsIt) {
    for (const auto channel : {LiveChannel::Pressure, LiveChannel::Throttle, LiveChannel::Lambda}) {
        for (const bool gain : {true, false}) {
            maps().chkSteadyAgent.press();
            ASSERT_EQ(agent().whyStopped(), "");
            auto& value = program_.tables.liveValues.at(core::indexOf(channel));
            (gain ? value.gain : value.offset) += 0.01;
            wait(kSecond);
            EXPECT_EQ(agent().whyStopped(), "the calibration of load, throttle or lambda was changed");
            EXPECT_EQ(map(), start_);
        }
    }
}

TEST_F(SteadyStopTest, AStopThatPutsNothingBackHasALineInTheLog) {
    maps().chkSteadyAgent.press();
    ASSERT_EQ(agent().whyStopped(), "");
    program_.window.btnConnect.press();
    wait(kSecond);
    ASSERT_EQ(agent().whyStopped(), "port closed");
    EXPECT_THAT(logged(), HasSubstr(" STOP port closed"));
}

TEST_F(SteadyStopTest, AStopWithNothingToPutBackHasOneLineInTheLog) {
    maps().chkSteadyAgent.press();
    program_.program.dispatcher().DoCommand(link::kDeviceStartedFrame, {});
    wait(5 * kSecond);
    const auto text = logged();
    EXPECT_THAT(text, HasSubstr(" STOP ECU restarted"));
    EXPECT_EQ(text.find("STOP"), text.rfind("STOP"));
}

// As the window does it with many cells: one after the other, 6 ms apart and more.
TEST_F(SteadyStopTest, AnUndoThatIsBeingSentDoesNotStopIt) {
    work();
    maps().chkOnlineChanges.press();
    static_cast<void>(program_.program.history().goTo(0));
    ASSERT_GT(unsent(), 0U);
    for (std::size_t cell = 0; cell < 160; ++cell) {
        if (program_.window.ecuMaps.fuel.working(cell) != map().at(cell)) {
            wait(300);
            ASSERT_EQ(agent().whyStopped(), "") << cell;
            program_.window.ecuMaps.fuel.changed(cell, map().at(cell));
        }
    }
    wait(2 * kSecond);
    EXPECT_EQ(agent().whyStopped(), "");
}

TEST_F(SteadyStopTest, AnUndoThatIsNotSentStopsItAndTheCellsAreNamed) {
    maps().chkSteadyAgent.press();
    for (std::size_t cell = 17; cell < 22; ++cell) {
        ++map().at(cell);
    }
    wait(kSecond);
    EXPECT_EQ(agent().whyStopped(), "cells of the fuel map were changed and not sent: 18, 19, 20 and 2 more");
}

TEST_F(SteadyStopTest, TheReasonsOfACellAreOfTheSamplesThatItCounts) {
    work();
    for (std::size_t cell = 0; cell < 160; ++cell) {
        std::uint64_t sum = 0;
        std::istringstream words(agent().cellReasons(static_cast<int>(cell)));
        for (std::string part; std::getline(words, part, ',');) {
            // A reason has commas of its own: "engine stopped, cranking or just started".
            sum += std::isdigit(static_cast<unsigned char>(part.at(part.front() == ' ' ? 1 : 0))) != 0
                       ? static_cast<std::uint64_t>(std::stoul(part))
                       : 0;
        }
        EXPECT_EQ(sum, agent().cell(cell).rejected) << cell;
    }
}

// A long transfer stands still for the agent's clock.
TEST_F(SteadyStopTest, APauseMakesAProofOld) {
    work();
    {
        const link::LinkState::Transfer transfer(&program_.window.linkState);
        program_.window.TimerRequestData.Enabled = false;
        wait(120 * kSecond);
        program_.window.TimerRequestData.Enabled = true;
    }
    wait(kSecond);
    EXPECT_EQ(agent().whyStopped(), "");
    EXPECT_EQ(state(), State::Unproved);
}

// The device takes and answers nothing for a while.
TEST_F(SteadyStopTest, OnADeadLineThePutBackWaitsUntilTheEcuAnswers) {
    work();
    ecu_.dead = true;
    wait(10 * kSecond);
    EXPECT_EQ(agent().whyStopped(), "link late");
    EXPECT_TRUE(maps().offerKey(kF8, 0));
    wait(30 * kSecond);
    EXPECT_EQ(map(), start_);
    EXPECT_EQ(agent().state(), "putting back: waits until the ECU answers");
    EXPECT_GT(unsent(), 0U);
    static_cast<void>(cellsSent());
    ecu_.dead = false;
    wait(10 * kSecond);
    EXPECT_GT(cellsSent(), 0U);
    EXPECT_EQ(unsent(), 0U);
    EXPECT_EQ(agent().state(), "stopped");
}

// Behind a lost byte it may take seconds until a frame is found whole again.
TEST_F(SteadyStopTest, FramesThatArriveBrokenAreALateLinkAfterTenSecondsOnly) {
    work();
    const auto stood = map();
    ecu_.garbles = true;
    wait(9 * kSecond);
    EXPECT_EQ(agent().whyStopped(), "");
    EXPECT_EQ(map(), stood) << "meanwhile nothing is changed";
    ecu_.garbles = false;
    wait(kSecond);
    EXPECT_EQ(agent().whyStopped(), "");
    ecu_.garbles = true;
    wait(14 * kSecond);
    EXPECT_EQ(agent().whyStopped(), "link late");
}

struct SteadyNoisyLine : SteadyStopTest {
    SteadyNoisyLine() : SteadyStopTest(",lose=0.0001") {}
};

// One in ten thousand, every five seconds or so.
TEST_F(SteadyNoisyLine, LostBytesDoNotStopIt) {
    maps().chkSteadyAgent.press();
    ASSERT_EQ(agent().whyStopped(), "");
    wait(2 * kLong);
    EXPECT_EQ(agent().whyStopped(), "");
    EXPECT_EQ(state(), State::Working);
}

}  // namespace
}  // namespace korvane::program
