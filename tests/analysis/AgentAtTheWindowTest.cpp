// The agent and frmMaps together: what a correction looks like at the window and on the line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "AnalysisBench.h"
#include "maps/Frm3Dmap.h"
#include "maps/FrmInjScale.h"
#include "maps/MapForm.h"
#include "maps/transfer/MapContext.h"

namespace korvane::analysis {
namespace {

using controls::Picture;
using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr controls::Color kBlue = 0xFF0000;
constexpr int kFirstTick = 300;  // ms
constexpr int kCorrection = 50;

// A map on which the smoothing finds nothing: level along the rows, 6 more in each row than in the one above.
class AgentAtTheWindow : public AnalysisBench {
protected:
    AgentAtTheWindow() {
        for (std::size_t cell = 0; cell < 320; ++cell) {
            tables_.FuelMapOut.at(cell) = static_cast<std::uint8_t>(50 + cell / 16 * 6);
        }
        tables_.FuelMapIn = tables_.FuelMapOut;
        maps_.show();
        machine_.pump.wait(1000);  // with the port closed the window reads nothing
        maps_.chkInjAnal.press();
    }

    void openPort() {
        main_.MSComm1.Settings = "57600,N,8,1";
        main_.MSComm1.setPortOpen(true);
    }
    // 41 samples 0.5 above the target, on the column and so far above the row. Not for column 0: 1000 rpm don't count.
    void gather(int cell, float loadOffset = 0.0F) {
        const auto rpm = static_cast<float>(1000 + 500 * (cell % 16));
        for (int i = 0; i < 41; ++i) {
            analyser_.addValues(13.0F, static_cast<float>(cell), rpm, 0.0F);
        }
        analyser_.CellStats.at(static_cast<std::size_t>(cell)).LoadOffsetAvg = loadOffset;
    }
    Bytes sent() { return machine_.recorder.takeBytes(); }
    int map(std::size_t cell) const { return tables_.FuelMapOut.at(cell); }
    void expectMap(const std::map<std::size_t, int>& counts) const {
        for (const auto& [cell, count] : counts) {
            EXPECT_EQ(map(cell), count) << cell;
        }
    }

    maps::Frm3Dmap frm3Dmap_{machine_.machine, tables_};
    maps::FrmInjScale frmInjScale_{machine_.machine, tables_};
    core::EepromAccess eeprom_{main_.MSComm1, machine_.pump, tables_};
    maps::MapContext context_{tables_, main_, analyser_, frm3Dmap_, frmInjScale_, eeprom_};
    maps::FrmMaps maps_{machine_.machine, context_};
};

TEST_F(AgentAtTheWindow, AStepIsBlueAndGoesToTheEngineAtOnce) {
    openPort();
    gather(20);
    maps_.chkUseTuningAgent.press();
    machine_.pump.wait(kFirstTick - 1);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_EQ(maps_.imgAgentLed.Shown.get(), Picture::Grey);
    machine_.pump.wait(2);
    EXPECT_EQ(maps_.imgAgentLed.Shown.get(), Picture::Red);
    machine_.pump.wait(2 * kCorrection);
    EXPECT_EQ(map(20), 57);
    EXPECT_EQ(maps_.fuel(20).ForeColor.get(), kBlue);
    EXPECT_NE(maps_.fuel(21).ForeColor.get(), kBlue);
    EXPECT_THAT(sent(), ElementsAre(0x67, 20, 20, 57, 57, 0x98));
    EXPECT_EQ(maps_.chkOnlineChanges.Value.get(), 0);
    EXPECT_EQ(maps_.imgAgentLed.Shown.get(), Picture::Red) << "until the next look";
    machine_.pump.wait(kFirstTick);
    EXPECT_EQ(maps_.imgAgentLed.Shown.get(), Picture::Green);
    maps_.chkUseTuningAgent.press();
    EXPECT_EQ(maps_.imgAgentLed.Shown.get(), Picture::Grey);
}

TEST_F(AgentAtTheWindow, WithThePortClosedOnlyTheMapChanges) {
    gather(20);
    maps_.chkUseTuningAgent.press();
    machine_.pump.wait(kFirstTick + 2 * kCorrection);
    EXPECT_EQ(map(20), 57);
    EXPECT_EQ(maps_.fuel(20).ForeColor.get(), kBlue);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_THAT(machine_.log.lines, IsEmpty());
}

TEST_F(AgentAtTheWindow, ABlockThatTheTunerHoldsTakesTheKey) {
    maps_.fuel.SelFirst = 100;  // cells count from 1 here: 99 to 101
    maps_.fuel.SelLast = 102;
    gather(20);
    maps_.chkUseTuningAgent.press();
    machine_.pump.wait(kFirstTick + 2 * kCorrection);
    expectMap({{20, 56}, {98, 86}, {99, 87}, {100, 87}, {101, 87}, {102, 86}});
}

// The share of cell 150 goes to cell 166, which the window does not have.
TEST_F(AgentAtTheWindow, TheLastRowIsCorrectedLikeAnyOther) {
    openPort();
    gather(150, 0.05F);
    gather(155);
    tables_.FuelMapOut[0] = 64;  // for the smoothing: 8 above the row below
    maps_.chkUseTuningAgent.press();
    machine_.pump.wait(kFirstTick + 4 * kCorrection);
    expectMap({{150, 105}, {155, 105}, {166, 110}, {16, 60}});
    EXPECT_EQ(analyser_.CellStats[150].LoadOffsetAvg, 0.0F);
    EXPECT_EQ(maps_.chkOnlineChanges.Value.get(), 0);
    EXPECT_THAT(machine_.log.lines, IsEmpty());
}

TEST_F(AgentAtTheWindow, TargetsBeyondTheWindowAreStored) {
    EXPECT_EQ(errorOf([&] { analyser_.Setpoint(12.0F, 160); }), 0);
    EXPECT_EQ(errorOf([&] { analyser_.Setpoint(11.0F, 320); }), 0);
    analyser_.Setpoint(13.0F, 159);
    EXPECT_EQ(analyser_.Setpointget(160), 12.0F);
    EXPECT_EQ(analyser_.Setpointget(320), 11.0F);
    EXPECT_EQ(maps_.analys(159).ToolTipText.get(), "13");
}

}  // namespace
}  // namespace korvane::analysis
