// The analyser, the 3D view and the power estimate, by their names.
#include <gtest/gtest.h>

#include "console/ProgramBench.h"

namespace korvane::console {
namespace {

class AnalysisNames : public testing::Test, public ProgramBench {};

// Cell 17 is column 1, 1500 rpm. Readings 12 and 14: mean 13, sum of squares 340, variance 340 / 2 - 169 = 1.
TEST_F(AnalysisNames, SamplesGoInByBothNamesAndComeOutPerCell) {
    EXPECT_EQ(run("set clsInjAnalyser.LogData true"), "ok");
    EXPECT_EQ(run("call addValues 12 17 1700 0.25"), "ok");
    EXPECT_EQ(run("call clsInjAnalyser.addValues 14 17 1600 0.25"), "ok");
    EXPECT_EQ(run("get clsInjAnalyser.SampleCount(17)"), "ok 2");
    EXPECT_EQ(run("get clsInjAnalyser.SquareSum(17)"), "ok 340");
    EXPECT_EQ(run("get clsInjAnalyser.LambdaAvg(17)"), "ok 13");
    EXPECT_EQ(run("get clsInjAnalyser.CellStats(17).LambdaAvg"), "ok 13");
    EXPECT_EQ(run("get clsInjAnalyser.CellStats(17).RpmOffsetAvg"), "ok 150");
    EXPECT_EQ(run("get clsInjAnalyser.CellStats(17).LambdaBase"), "ok 0");
    EXPECT_EQ(run("get clsInjAnalyser.Hajonta(17)"), "ok 1");
    EXPECT_EQ(run("get clsInjAnalyser.Proposal(17)"), "ok 0.5");
}

TEST_F(AnalysisNames, TablesAreClearedByBothNames) {
    for (const auto* name : {"ClearTables", "clsInjAnalyser.ClearTables"}) {
        EXPECT_EQ(run("set clsInjAnalyser.SampleCount(320) 7"), "ok");
        EXPECT_EQ(run(std::string("call ") + name), "ok");
        EXPECT_EQ(run("get clsInjAnalyser.SampleCount(320)"), "ok 0");
    }
    EXPECT_EQ(run("call ClearTables 1"), "error ClearTables takes no arguments");
}

TEST_F(AnalysisNames, TheMapSizeIsSetByBothNamesAndOnlyRead) {
    EXPECT_EQ(run("get clsInjAnalyser.mapSize"), "ok 160");
    EXPECT_EQ(run("get clsInjAnalyser.columns"), "ok 16");
    EXPECT_EQ(run("get clsInjAnalyser.rows"), "ok 10");
    EXPECT_EQ(run("call setMapSize 320"), "ok");
    EXPECT_EQ(run("get clsInjAnalyser.mapSize"), "ok 320");
    EXPECT_EQ(run("get clsInjAnalyser.columns"), "ok 20");
    EXPECT_EQ(run("get clsInjAnalyser.rows"), "ok 16");
    EXPECT_EQ(run("call clsInjAnalyser.setMapSize 160"), "ok");
    EXPECT_EQ(run("get clsInjAnalyser.columns"), "ok 16");
    EXPECT_EQ(run("set clsInjAnalyser.columns 20"), "error clsInjAnalyser.columns can only be read");
    EXPECT_EQ(run("call setMapSize 40000"), "error setMapSize: the value must be a whole number from -32768 to 32767");
}

TEST_F(AnalysisNames, CellsCountTo320) {
    EXPECT_EQ(run("set clsInjAnalyser.LogData true"), "ok");
    EXPECT_EQ(run("call addValues 13 320 3000 0.2"), "ok");
    EXPECT_EQ(run("get clsInjAnalyser.SampleCount(320)"), "ok 1");
    EXPECT_EQ(run("call addValues 13 321 3000 0.2"), "error addValues: Subscript out of range");
    for (const auto* name : {"SampleCount(321)", "SquareSum(321)", "CellStats(321).LambdaAvg", "Proposal(321)",
                             "Hajonta(321)", "LambdaAvg(321)", "Setpoint(321)", "Setpointget(321)"}) {
        const auto path = std::string("clsInjAnalyser.") + name;
        EXPECT_EQ(run("get " + path), "error " + path + " does not exist: the index must be 0 to 320");
    }
    EXPECT_EQ(run("call addValues 13 5 3000"), "error addValues takes the arguments LAMBDA CELL RPM LOAD");
}

TEST_F(AnalysisNames, WhatIsComputedCanOnlyBeRead) {
    for (const auto* name : {"Proposal(5)", "Hajonta(5)", "LambdaAvg(5)", "Setpointget(5)", "timerAgent.Interval"}) {
        const auto path = std::string("clsInjAnalyser.") + name;
        EXPECT_EQ(run("set " + path + " 1"), "error " + path + " can only be read");
    }
    EXPECT_EQ(run("get clsInjAnalyser.timerAgent.Interval"), "ok 300");
}

TEST_F(AnalysisNames, ATargetIsStoredAndShownWhereTheWindowHasTheCell) {
    program->tables().SWType = 11;
    EXPECT_EQ(run("click frmSarn2.btnKartat"), "ok");
    EXPECT_EQ(run("get clsInjAnalyser.Setpoint(17)"), "ok 12.5");
    EXPECT_EQ(run("set clsInjAnalyser.Setpoint(17) 13.25"), "ok");
    EXPECT_EQ(run("get clsInjAnalyser.Setpointget(17)"), "ok 13.25");
    EXPECT_EQ(run("get frmMaps.txtInjAnalys(17).ToolTipText"), "ok \"13.25\"");
    for (const auto* cell : {"160", "200", "320"}) {
        EXPECT_EQ(run(std::string("set clsInjAnalyser.Setpoint(") + cell + ") 12"), "ok");
        EXPECT_EQ(run(std::string("get clsInjAnalyser.Setpoint(") + cell + ")"), "ok 12");
    }
}

TEST_F(AnalysisNames, SwitchesAreTrueOrFalse) {
    for (const auto* name : {"simpleMode", "LogData", "AgentEnable"}) {
        const auto path = std::string("clsInjAnalyser.") + name;
        EXPECT_EQ(run("get " + path), "ok false");
        EXPECT_EQ(run("set " + path + " true"), "ok");
        EXPECT_EQ(run("get " + path), "ok true");
        EXPECT_EQ(run("set " + path + " 1"), "error " + path + ": the value must be true or false");
    }
    EXPECT_TRUE(program->analyser().simpleMode() && program->analyser().LogData());
    EXPECT_TRUE(program->analyser().AgentEnable());
}

TEST_F(AnalysisNames, TheScaleReachesTheMean) {
    EXPECT_EQ(run("set clsInjAnalyser.LogData true"), "ok");
    EXPECT_EQ(run("set clsInjAnalyser.LambdaScale 2"), "ok");
    EXPECT_EQ(run("call addValues 7 3 3000 0.2"), "ok");
    EXPECT_EQ(run("get clsInjAnalyser.LambdaAvg(3)"), "ok 14");
}

// 550 / 10.51 * 0.5 / 0.6 * 4 * 10 = 1744.4..., cut, and a tenth of it.
TEST_F(AnalysisNames, ThePowerEstimateIsNullWhereItFails) {
    EXPECT_EQ(run("get NewInjectorSize"), "ok 550");
    EXPECT_EQ(run("call CalcPower 5 10"), "ok 174.4");
    EXPECT_EQ(run("call CalcPower 5 0"), "ok null");
    EXPECT_EQ(run("call CalcPower 0 0"), "ok null");
    EXPECT_EQ(run("call CalcPower 5"), "error CalcPower takes the arguments PULSE AVAILABLE");
    EXPECT_EQ(run("call CalcPower \"x\" 10"), "error CalcPower: the value must be a number");
}

class ChartNames : public AnalysisNames {
protected:
    ChartNames() { program->tables().SWType = 11; }

    void open3D() {
        EXPECT_EQ(run("click frmSarn2.btnKartat"), "ok");
        EXPECT_EQ(run("click frmMaps.btnShow3D"), "ok");
    }
};

TEST_F(ChartNames, BeforeTheViewHasBeenOpenedAnUpdateDoesNothing) {
    EXPECT_EQ(run("set FuelMapOut(0) 77"), "ok");
    EXPECT_EQ(run("call frm3Dmap.Update3D 1"), "ok");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.RowCount"), "ok 0");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.Data"), "error frm3Dmap.MSChart1.Data: Subscript out of range");
}

// Cell 17 is the second of the second row. Row and Column stay where the drawing left them: at the last cell.
TEST_F(ChartNames, RowAndColumnChooseTheCellThatIsRead) {
    open3D();
    EXPECT_EQ(run("set FuelMapOut(17) 77"), "ok");
    EXPECT_EQ(run("set IgnMapOut(17) 88"), "ok");
    EXPECT_EQ(run("call frm3Dmap.Update3D 1"), "ok");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.RowCount"), "ok 10");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.ColumnCount"), "ok 16");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.Row"), "ok 10");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.Column"), "ok 16");
    EXPECT_EQ(run("set frm3Dmap.MSChart1.Row 2"), "ok");
    EXPECT_EQ(run("set frm3Dmap.MSChart1.Column 2"), "ok");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.Data"), "ok \"77\"");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.RowLabel"), "ok \"10 - 20 %\"");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.ColumnLabel"), "ok \"1500 RPM\"");
    EXPECT_EQ(run("call frm3Dmap.Update3D 2"), "ok");
    EXPECT_EQ(run("set frm3Dmap.MSChart1.Row 2"), "ok");
    EXPECT_EQ(run("set frm3Dmap.MSChart1.Column 2"), "ok");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.Data"), "ok \"88\"");
}

TEST_F(ChartNames, OutsideTheChartThereIsNothing) {
    open3D();
    for (const auto* row : {"0", "11", "-1"}) {
        EXPECT_EQ(run(std::string("set frm3Dmap.MSChart1.Row ") + row), "ok");
        EXPECT_EQ(run("get frm3Dmap.MSChart1.Data"), "error frm3Dmap.MSChart1.Data: Subscript out of range") << row;
        EXPECT_EQ(run("get frm3Dmap.MSChart1.RowLabel"), "error frm3Dmap.MSChart1.RowLabel: Subscript out of range");
    }
    EXPECT_EQ(run("set frm3Dmap.MSChart1.Row 10"), "ok");
    EXPECT_EQ(run("set frm3Dmap.MSChart1.Column 17"), "ok");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.ColumnLabel"), "error frm3Dmap.MSChart1.ColumnLabel: Subscript out of range");
}

TEST_F(ChartNames, TheLayoutHoldsFromTheNextUpdateOn) {
    open3D();
    EXPECT_EQ(run("call frm3Dmap.setMapSizes 20 16"), "ok");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.ColumnCount"), "ok 16");
    EXPECT_EQ(run("call frm3Dmap.Update3D 99"), "ok");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.ColumnCount"), "ok 20");
    EXPECT_EQ(run("get frm3Dmap.MSChart1.RowCount"), "ok 16");
    EXPECT_EQ(run("call frm3Dmap.setMapSizes 40000 16"),
              "error frm3Dmap.setMapSizes: the value must be a whole number from -32768 to 32767");
    EXPECT_EQ(run("call frm3Dmap.setMapSizes 20"), "error frm3Dmap.setMapSizes takes the arguments COLUMNS ROWS");
    EXPECT_EQ(run("call frm3Dmap.Update3D"), "error frm3Dmap.Update3D takes the arguments MAPNUMBER");
}

}  // namespace
}  // namespace korvane::console
