#include "analysis/clsInjAnalyser.h"

#include <cmath>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "maps/grid/MapGeometry.h"
#include "platform/EventPump.h"

namespace korvane::analysis {

namespace {

constexpr float kDefaultSetpoint = 12.5F;
constexpr float kSlowest = 1000.0F;  // rpm: at or below it nothing is gathered
constexpr std::int16_t kOrdinarySize = maps::kOrdinaryMaps.cells();
constexpr maps::MapGeometry kGrid = maps::kOrdinaryMaps;  // of the arithmetic here, also for the large maps

// The mean of `count` samples with one more.
float withSample(float mean, float count, float sample) {
    return core::toSingle((mean * count + sample) / (count + 1.0F));
}

}  // namespace

clsInjAnalyser::clsInjAnalyser(platform::Machine& machine, core::MapImages& tables, controls::MSComm& port)
    : timerAgent(machine.pump, machine.log), machine_(machine), tables_(tables), port_(port) {
    setMapSize(kOrdinarySize);
    setpoints_.fill(kDefaultSetpoint);
    clsInjAnalyser::ClearTables();
    timerAgent.Interval = 300;
    timerAgent.TimerElapsed = [this] { timerAgent_Timer(); };
}

void clsInjAnalyser::setMapWindow(maps::TunedMap* window) {
    window_ = window;
    if (window_ == nullptr) {
        setAgentEnable(false);
    }
}

void clsInjAnalyser::Setpoint(float value, std::int32_t index) {
    core::checked(setpoints_, index) = value;
    if (window_ != nullptr) {
        window_->setSetpointToolTip(index, core::numberText(value).view());
    }
}

float clsInjAnalyser::Setpointget(std::int32_t index) const {
    return core::checked(setpoints_, index);
}

float clsInjAnalyser::Proposal(std::int32_t index) const {
    return core::checked(proposals_, index);
}

float clsInjAnalyser::LambdaAvg(std::int32_t index) const {
    return core::checked(CellStats, index).LambdaAvg;
}

float clsInjAnalyser::Hajonta(std::int32_t index) const {
    return core::checked(hajonta_, index);
}

void clsInjAnalyser::setAgentEnable(bool on) {
    agentEnable_ = on;
    if (on) {
        beginRun();
        timerAgent.StartTimer();
        return;
    }
    timerAgent.StopTimer();
    if (window_ != nullptr) {
        showLamp(controls::Picture::Grey);
    }
}

void clsInjAnalyser::addValues(float lambda, float cell, float rpm, float load) {
    if (rpm <= kSlowest || !logData_) {
        return;
    }
    const std::int32_t c = core::toInt32(static_cast<double>(cell));
    auto& stats = core::checked(CellStats, c);
    const float count = core::checked(SampleCount, c);
    stats.LambdaAvg = withSample(stats.LambdaAvg, count, core::toSingle(lambda * LambdaScale));
    const float aboveColumn = rpm - static_cast<float>(kGrid.rpmOf(c));
    stats.RpmOffsetAvg = withSample(stats.RpmOffsetAvg, count, std::fmax(aboveColumn, 0.0F));
    // A real division: the position of the cell within its row counts too.
    const float aboveRow = load - (static_cast<float>(c) / static_cast<float>(kGrid.columns) + 1.0F) * 0.1F;
    stats.LoadOffsetAvg = withSample(stats.LoadOffsetAvg, count, aboveRow);
    core::checked(SampleCount, c) = count + 1.0F;
    auto& squares = core::checked(SquareSum, c);
    squares = core::toSingle(squares + core::toSingle(lambda * lambda));
    core::checked(hajonta_, c) = core::toSingle(squares / (count + 1.0F) - stats.LambdaAvg * stats.LambdaAvg);
    core::checked(proposals_, c) = core::toSingle(stats.LambdaAvg - core::checked(setpoints_, c));
}

void clsInjAnalyser::ClearTables() {
    for (auto& stats : CellStats) {
        stats.LambdaAvg = 0.0F;
    }
    SampleCount.fill(0.0F);
}

void clsInjAnalyser::setMapSize(std::int16_t size) {
    mapSize = size;
    const auto& grid = size == kOrdinarySize ? maps::kOrdinaryMaps : maps::kLargeMaps;
    columns = static_cast<std::int16_t>(grid.columns);
    rows = static_cast<std::int16_t>(grid.rows);
}

}  // namespace korvane::analysis
