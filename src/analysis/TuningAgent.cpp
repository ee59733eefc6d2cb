// The tuning agent: what the analyser does to the fuel map by itself. Continues clsInjAnalyser, whose samples and
// controls it uses; collecting samples is kept apart from what acts on the engine.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "analysis/clsInjAnalyser.h"
#include "controls/Control.h"
#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/TimeText.h"
#include "core/files/AppendText.h"
#include "core/files/TextFile.h"
#include "link/Commands.h"
#include "maps/grid/MapGeometry.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"

namespace korvane::analysis {

namespace {

constexpr int kColumns = maps::kOrdinaryMaps.columns;  // of the arithmetic here, also for the large maps
constexpr int kLimit = maps::kLargeMaps.cells();

constexpr int kHalfTurn = 25;  // ms, twice for each step

constexpr float kLean = 0.3F;  // above: more fuel; below: less
constexpr float kEnoughWeight = 20.0F;

// Realtime changes, ticked while the object exists; the window may close meanwhile.
class Realtime {
public:
    explicit Realtime(maps::TunedMap*& window) : window_(window) { window_->setOnlineChanges(true); }
    Realtime(const Realtime&) = delete;
    Realtime& operator=(const Realtime&) = delete;
    ~Realtime() {
        if (window_ != nullptr) {
            window_->setOnlineChanges(false);
        }
    }

private:
    maps::TunedMap*& window_;
};

int directionOf(float proposal, float weight) {
    if (weight <= kEnoughWeight) {
        return 0;
    }
    return proposal > kLean ? 1 : proposal < kLean ? -1 : 0;
}

// How far a cell is raised towards a neighbour that is well above it.
int lift(int from, int to) {
    constexpr int kMost = 10;
    return std::min(core::toInt32((from - to) / 2.0), kMost);
}

}  // namespace

void clsInjAnalyser::timerAgent_Timer() {
    const platform::Nesting::Level level(passes_);
    if (window_ == nullptr || !level) {
        return;
    }
    showLamp(controls::Picture::Green);
    CorrectAllCells();
    SmoothFuelMap();
}

// Grey while the agent is stopped, also for the rest of a pass that is under way then.
void clsInjAnalyser::showLamp(controls::Picture lamp) {
    window_->setAgentLamp(agentEnable_ ? lamp : controls::Picture::Grey);
}

void clsInjAnalyser::CorrectAllCells() {
    for (int cell = 0; cell < static_cast<int>(kAnalysedCells); ++cell) {
        const int direction = directionOf(Proposal(cell), std::fabs(weightOf(cell)));
        if (direction != 0) {
            correct(cell, direction);
        }
        core::checked(LastCount, cell) = core::checked(SampleCount, cell);
    }
}

void clsInjAnalyser::correct(int cell, int direction) {
    if (simpleMode_) {
        SimpleCorrection(cell, direction);
    } else {
        SplitByRpm(cell, direction);
        SplitByLoad(cell, direction);
    }
}

float clsInjAnalyser::weightOf(int cell) const {
    return core::checked(SampleCount, cell) * Proposal(cell);
}

// A neighbour without samples of its own is corrected all the same.
float clsInjAnalyser::neighbourWeight(int cell) const {
    const float weight = weightOf(cell);
    return weight != 0.0F ? weight : 1.0F;
}

void clsInjAnalyser::SimpleCorrection(int cell, int steps) {
    ApplyCellCorrection(cell, steps, weightOf(cell));
}

void clsInjAnalyser::SplitByRpm(int cell, int steps) {
    constexpr float kNear = 125.0F;  // rpm; the columns lie 500 apart
    constexpr float kFar = 375.0F;
    const float offset = core::checked(CellStats, cell).RpmOffsetAvg;
    const bool lastColumn = cell % kColumns >= kColumns - 1;
    if (offset <= kFar || lastColumn) {
        ApplyCellCorrection(cell, steps, weightOf(cell));
    }
    if (offset >= kNear && !lastColumn) {
        ApplyCellCorrection(cell + 1, steps, neighbourWeight(cell + 1));
    }
    core::checked(CellStats, cell).RpmOffsetAvg = 0.0F;
}

void clsInjAnalyser::SplitByLoad(int cell, int steps) {
    constexpr float kNear = 0.03F;  // bar; the rows lie 0.1 apart
    constexpr float kFar = 0.07F;
    const float offset = core::checked(CellStats, cell).LoadOffsetAvg;
    const bool lastRow = cell + kColumns >= kLimit;
    if (offset <= kFar || lastRow) {
        ApplyCellCorrection(cell, steps, weightOf(cell));
    }
    if (offset >= kNear && !lastRow) {
        ApplyCellCorrection(cell + kColumns, steps, neighbourWeight(cell + kColumns));
    }
    core::checked(CellStats, cell).LoadOffsetAvg = 0.0F;
}

// The agent presses the keys + and -, so that limits, redraw and sending are those of the keys. The window may close
// in the waits.
void clsInjAnalyser::ApplyCellCorrection(int cell, int steps, float weight) {
    if (window_ == nullptr) {
        return;
    }
    const Realtime realtime(window_);
    showLamp(controls::Picture::Red);
    if (weight != 0.0F) {
        auto& stats = core::checked(CellStats, cell);
        stats.LambdaAvg = stats.LambdaBase;
        core::checked(SampleCount, cell) = 0.0F;
        logCorrection(cell, steps, weight);
        for (int turn = 0; turn < std::abs(steps) && window_ != nullptr; ++turn) {
            pressKey(cell, steps > 0 ? controls::kKeyPlus : controls::kKeyMinus);
        }
    }
}

void clsInjAnalyser::pressKey(int cell, int keyCode) {
    window_->pressFuelKey(cell, keyCode, 0);
    machine_.pump.wait(kHalfTurn);
    machine_.pump.pump();
    machine_.pump.wait(kHalfTurn);
}

void clsInjAnalyser::logCorrection(int cell, int steps, float weight) {
    const auto& stats = core::checked(CellStats, cell);
    const float cut = std::floor(weight * 100.0F) / 100.0F;
    const auto number = [this](float value) { return core::withDecimal(core::textOf(value), machine_.decimal); };
    SaveControlToFile("INDX " + core::textOf(cell) + " " + core::textOf(steps) + " " + number(cut) + " " +
                      number(stats.RpmOffsetAvg) + " " + number(stats.LoadOffsetAvg) + " " +
                      core::timeText(machine_.pump.wallTime()));
}

void clsInjAnalyser::SaveControlToFile(std::string_view line) {
    const auto name = "FuelTuner" + core::hourMinuteFileText(machine_.pump.wallTime()) + ".txt";
    try {
        core::appendText(machine_.folder / name, std::string(line).append(core::kLineEnd));
    } catch (const platform::RuntimeError& failure) {
        machine_.dialogs.show({"", std::string("Error saveFuelTunerData: ") + failure.what()});
    }
}

// A map's fuel should rise with load everywhere and fall with speed only by little. The bounds are also used for the
// large maps.
void clsInjAnalyser::SmoothFuelMap() {
    bool changed = false;
    for (int row = 0; row < maps::kOrdinaryMaps.rows - 1; ++row) {
        for (int column = 0; column < kColumns - 1; ++column) {
            const int cell = row * kColumns + column;
            changed = smoothAlongRow(column, cell) || changed;
            changed = smoothDownColumn(row, cell) || changed;
        }
    }
    if (changed && window_ != nullptr) {
        window_->populateFuelOUT();
    }
}

bool clsInjAnalyser::smoothAlongRow(int column, int cell) {
    constexpr int kLowColumns = 5;
    const int here = core::checked(tables_.FuelMapOut, cell);
    const int next = core::checked(tables_.FuelMapOut, cell + 1);
    if (column < kLowColumns ? here <= next + 5 : here <= next + 3) {
        return false;
    }
    setFuelCell(cell + 1, column < kLowColumns ? next + lift(here, next) : here);
    return true;
}

bool clsInjAnalyser::smoothDownColumn(int row, int cell) {
    constexpr int kFirstRows = 2;
    const int here = core::checked(tables_.FuelMapOut, cell);
    const int below = core::checked(tables_.FuelMapOut, cell + kColumns);
    if (row < kFirstRows ? here <= below + 5 : here <= below) {
        return false;
    }
    setFuelCell(cell + kColumns, row < kFirstRows ? below + lift(here, below) : here + 5);
    return true;
}

void clsInjAnalyser::setFuelCell(int cell, int byte) {
    {
        const core::MapHistory::Change change(history_, {core::Cause::Kind::Agent});
        core::checked(tables_.FuelMapOut, cell) = core::toByte(byte);
    }
    SendFuelCell(cell);
}

void clsInjAnalyser::beginRun() {
    if (history_ != nullptr) {
        history_->agentBegins();
    }
}

void clsInjAnalyser::SendFuelCell(int index) {
    if (!port_.PortOpen()) {
        return;
    }
    port_.Output(
        link::cellCommand(link::kFuelMap.changeCell, core::toByte(index), core::checked(tables_.FuelMapOut, index)));
    if (history_ != nullptr) {
        history_->reachedEngine({core::EditedMap::Fuel, static_cast<std::size_t>(index)});
    }
}

}  // namespace korvane::analysis
