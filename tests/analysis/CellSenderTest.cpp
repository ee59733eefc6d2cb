// How the steady agent's cells reach the engine.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AnalysisBench.h"
#include "analysis/CellSender.h"
#include "link/Frames.h"

namespace korvane::analysis {
namespace {

using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class CellSenderTest : public AnalysisBench {
protected:
    CellSenderTest() {
        tables_.FuelMapOut[5] = 50;
        tables_.FuelMapOut[9] = 90;
        history_.look();
    }

    void openPort() {
        main_.MSComm1.Settings = "57600,N,8,1";
        main_.MSComm1.setPortOpen(true);
    }

    // Cells that have gone out, whatever else has.
    std::ptrdiff_t cellsSent() { return std::ranges::count(machine_.recorder.takeBytes(), std::uint8_t{'g'}); }

    core::MapHistory history_{tables_, machine_.pump};
    CellSender sender_{tables_, main_, history_, machine_.pump};
};

TEST_F(CellSenderTest, ACellGoesOutAsTheKeysSendIt) {
    openPort();
    sender_.add(5);
    sender_.send();
    machine_.pump.wait(100);
    EXPECT_THAT(machine_.recorder.takeBytes(), ElementsAre('g', 5, 5, 50, 50, 0x98));
    EXPECT_TRUE(history_.step(1).cells.front().reachedEngine());
}

// A command has six bytes, and the ECU takes one in a millisecond.
TEST_F(CellSenderTest, CellsKeepTheirDistance) {
    openPort();
    sender_.add(9);
    sender_.add(5);
    sender_.add(5);
    sender_.send();
    machine_.pump.wait(200);
    const auto& arrivals = machine_.recorder.arrivals;
    ASSERT_THAT(arrivals, SizeIs(12));
    EXPECT_EQ(arrivals[1].byte, 5);
    EXPECT_EQ(arrivals[7].byte, 9);
    EXPECT_GE(arrivals[6].at - arrivals[0].at, 6000);
}

TEST_F(CellSenderTest, TheByteIsThatOfTheMomentAtWhichItGoesOut) {
    openPort();
    sender_.add(5);
    sender_.add(9);
    sender_.send();
    tables_.FuelMapOut[9] = 91;
    machine_.pump.wait(200);
    EXPECT_EQ(machine_.recorder.arrivals.at(9).byte, 91);
}

TEST_F(CellSenderTest, WithThePortClosedNothingWaits) {
    sender_.add(5);
    sender_.send();
    EXPECT_TRUE(sender_.isEmpty());
    openPort();
    machine_.pump.wait(200);
    EXPECT_THAT(machine_.recorder.takeBytes(), IsEmpty());
}

TEST_F(CellSenderTest, ATransferGoesFirst) {
    openPort();
    {
        const link::LinkState::Transfer transfer(&main_.linkState);
        sender_.add(5);
        sender_.send();
        machine_.pump.wait(3000);
        EXPECT_THAT(machine_.recorder.takeBytes(), IsEmpty());
    }
    machine_.pump.wait(100);
    EXPECT_THAT(machine_.recorder.takeBytes(), SizeIs(6));
}

// A live frame, as the connection reports it.
TEST_F(CellSenderTest, WhatWasAddedWhileTheEcuIsLateGoesOutTwiceOnceItIsHeard) {
    openPort();
    main_.TimerRequestData.Enabled = true;
    main_.linkState.frameReceived(link::kLiveDataFrame, machine_.pump.now());
    ASSERT_TRUE(main_.linkState.isHeard());
    machine_.pump.wait(5000);
    ASSERT_EQ(main_.linkState.state(), link::LinkState::State::Late);
    static_cast<void>(cellsSent());
    sender_.add(5);
    sender_.send();
    machine_.pump.wait(30000);
    EXPECT_EQ(cellsSent(), 0);
    EXPECT_TRUE(sender_.isHeldUp());
    main_.linkState.frameReceived(link::kLiveDataFrame, machine_.pump.now());
    machine_.pump.wait(300);
    EXPECT_EQ(cellsSent(), 2);
    EXPECT_TRUE(sender_.isEmpty());
}

TEST_F(CellSenderTest, WhatWasSentBeforeTheFirstFrameGoesOutOnceMoreBehindIt) {
    openPort();
    sender_.add(5);
    sender_.send();
    machine_.pump.wait(1000);
    EXPECT_THAT(machine_.recorder.takeBytes(), SizeIs(6));
    EXPECT_FALSE(sender_.isEmpty());
    main_.linkState.frameReceived(link::kLiveDataFrame, machine_.pump.now());
    machine_.pump.wait(300);
    EXPECT_THAT(machine_.recorder.takeBytes(), SizeIs(6));
    EXPECT_TRUE(sender_.isEmpty());
}

}  // namespace
}  // namespace korvane::analysis
