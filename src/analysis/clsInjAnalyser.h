// Lambda statistics for each map cell, and the agent that corrects the fuel map from them.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "controls/MSComm.h"
#include "controls/clsTimer.h"
#include "core/history/MapHistory.h"
#include "core/tables/MapImages.h"
#include "live/LiveUpdate.h"
#include "maps/panes/Analysis.h"
#include "platform/Machine.h"
#include "platform/Nesting.h"

namespace korvane::analysis {

inline constexpr std::size_t kAnalysedCells = 321;  // indices 0 to 320, whatever the map

struct CellStatistics {
    float LambdaAvg = 0.0F;      // as an air-fuel ratio, 10 to 20
    float RpmOffsetAvg = 0.0F;   // rpm above the cell's column
    float LoadOffsetAvg = 0.0F;  // bar above the cell's row
    float LambdaBase = 0.0F;     // never set by the program
};

// All arithmetic is in single precision; what it can't hold raises RuntimeError 6. Indices outside 0 to 320 raise
// RuntimeError 9.
class clsInjAnalyser : public maps::Analyser, public live::InjectionAnalyser {
public:
    clsInjAnalyser(platform::Machine& machine, core::MapImages& tables, controls::MSComm& port);

    // What the agent changes is noted in it.
    void setHistory(core::MapHistory& history) { history_ = &history; }

    void setMapWindow(maps::TunedMap* window) override;

    void Setpoint(float value, std::int32_t index) override;
    [[nodiscard]] float Setpointget(std::int32_t index) const override;
    [[nodiscard]] float Proposal(std::int32_t index) const override;
    [[nodiscard]] float LambdaAvg(std::int32_t index) const override;
    // The variance of the readings.
    [[nodiscard]] float Hajonta(std::int32_t index) const;

    void setSimpleMode(bool on) override { simpleMode_ = on; }
    void setLogData(bool on) override { logData_ = on; }
    void setAgentEnable(bool on) override;
    [[nodiscard]] bool simpleMode() const { return simpleMode_; }
    [[nodiscard]] bool LogData() const { return logData_; }
    [[nodiscard]] bool AgentEnable() const { return agentEnable_; }

    float LambdaScale = 1.0F;  // multiplies a reading for the mean

    // One sample: lambda, the map cell, rpm, load in bar. Only while LogData is on and above 1000 rpm.
    void addValues(float lambda, float cell, float rpm, float load) override;
    // Means and counts become 0; sums of squares, variances, offsets and proposals stay.
    void ClearTables() override;
    // 160 gives 16 columns and 10 rows, any other size 20 and 16.
    void setMapSize(std::int16_t size);

    // Appends a line to the log of the minute, "FuelTunerhh_mm.txt" in the program's folder.
    void SaveControlToFile(std::string_view line);

    // The state for each cell, as scripts read it.
    std::array<CellStatistics, kAnalysedCells> CellStats;
    std::array<float, kAnalysedCells> SampleCount{};
    std::array<float, kAnalysedCells> SquareSum{};
    std::array<float, kAnalysedCells> LastCount{};
    std::int16_t mapSize = 0;
    std::int16_t columns = 0;
    std::int16_t rows = 0;
    controls::clsTimer timerAgent;

    // One pass of the agent over all cells; the timer's event does both.
    void CorrectAllCells();
    void SmoothFuelMap();

private:
    void timerAgent_Timer();
    void showLamp(controls::Picture lamp);
    [[nodiscard]] float weightOf(int cell) const;
    [[nodiscard]] float neighbourWeight(int cell) const;
    void correct(int cell, int direction);
    void SimpleCorrection(int cell, int steps);
    void SplitByRpm(int cell, int steps);
    void SplitByLoad(int cell, int steps);
    void ApplyCellCorrection(int cell, int steps, float weight);
    void pressKey(int cell, int keyCode);
    void logCorrection(int cell, int steps, float weight);
    void setFuelCell(int cell, int byte);
    bool smoothAlongRow(int column, int cell);
    bool smoothDownColumn(int row, int cell);
    void SendFuelCell(int index);
    void beginRun();

    platform::Machine& machine_;
    core::MapImages& tables_;
    controls::MSComm& port_;
    maps::TunedMap* window_ = nullptr;
    core::MapHistory* history_ = nullptr;
    std::array<float, kAnalysedCells> setpoints_{};
    std::array<float, kAnalysedCells> proposals_{};
    std::array<float, kAnalysedCells> hajonta_{};
    bool logData_ = false;
    bool simpleMode_ = false;
    bool agentEnable_ = false;
    // A pass of the agent waits with each correction, and the next tick comes inside the wait. So passes nest while
    // corrections are made; a tick that would nest deeper is skipped.
    platform::Nesting passes_{20};
};

}  // namespace korvane::analysis
