// What the tuning agent makes of a fuel map: half an hour of it on the virtual ECU, in virtual time, in each of kModes.
//
//     bench_tuning [MINUTES]     how long the agent works; default 30
//
// Prints CSV for tools/agent-proof:
//
//     cells,MODE,N               cells that were visited in the ten minutes before, with 50 samples and more
//     measured,MODE,WHEN,RMS     of the means that the analyser gathers in the ten minutes before and after, the agent
//                                off, less the target
//     minute,MODE,M,RMS,MEAN     of the mixture that the ECU's map gives, less the target, M minutes after the start
//     worst,MODE,CELL,DISTANCE,REST  the cell with the largest distance at the end, and the RMS without it
//     keys,MODE,UP,DOWN          steps that the agent took by key
//     smoothed,MODE,COUNTS       by which the cells were raised beside the keys, together
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "controls/clsTimer.h"
#include "core/ParameterNames.h"
#include "ecu/VirtualEcu.h"
#include "ecu/engine/EngineNeed.h"
#include "maps/MapForm.h"
#include "support/VirtualProgram.h"

namespace {

using namespace korvane;

struct Mode {
    const char* name;
    bool simple = false;        // no share for the neighbours
    bool smooths = true;        // false: the agent's corrections alone, without the smoothing
    bool cutsFuel = true;       // the ECU does, with the throttle closed, as it comes from the factory
    bool knowsThrottle = true;  // the program has read the throttle's ends, without which it sees no overrun
};

constexpr std::array<Mode, 8> kModes{{{.name = "full"},
                                      {.name = "simple", .simple = true},
                                      {.name = "full unsmoothed", .smooths = false},
                                      {.name = "simple unsmoothed", .simple = true, .smooths = false},
                                      {.name = "full uncut", .cutsFuel = false},
                                      {.name = "simple uncut", .simple = true, .cutsFuel = false},
                                      {.name = "full blind", .knowsThrottle = false},
                                      {.name = "simple blind", .simple = true, .knowsThrottle = false}}};

constexpr int kMinute = 60 * 1000;
constexpr int kWarmUp = 10 * kMinute;
constexpr int kGathering = 10 * kMinute;
constexpr float kVisited = 50.0F;  // samples
constexpr double kTarget = 12.5;
constexpr int kCells = 160;
constexpr int kRefresh75 = 3;     // of ComboRefresh: a frame every 75 ms
constexpr int kEngineBrake = 10;  // of CheckMisc

class Device : public platform::LineDevice {
public:
    void setBaud(int baud) override { ecu.setBaud(baud); }
    void receive(std::uint8_t byte, platform::Micros at) override { ecu.receive(byte, at); }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override { return ecu.nextDue(); }
    void take(platform::Micros at, std::vector<std::uint8_t>& out) override { ecu.take(at, out); }

    ecu::VirtualEcu ecu;
};

// How far cells are from the target.
class Distances {
public:
    void add(int cell, double lambda) { distances_.emplace_back(lambda - kTarget, cell); }

    [[nodiscard]] double mean() const {
        double sum = 0.0;
        for (const auto& [distance, cell] : distances_) {
            sum += distance;
        }
        return sum / count();
    }
    [[nodiscard]] double rootMeanSquare() const {
        double sum = 0.0;
        for (const auto& [distance, cell] : distances_) {
            sum += distance * distance;
        }
        return std::sqrt(sum / count());
    }
    std::pair<double, int> takeWorst() {
        const auto worst = std::ranges::max_element(distances_, {}, [](auto& each) { return std::fabs(each.first); });
        const auto taken = *worst;
        distances_.erase(worst);
        return taken;
    }

private:
    [[nodiscard]] double count() const { return static_cast<double>(std::max<std::size_t>(distances_.size(), 1)); }

    std::vector<std::pair<double, int>> distances_;
};

class Proof {
public:
    explicit Proof(const Mode& mode) : mode_(mode), rig_(&device_) {
        rig_.connect();
        rig_.window.ComboRefresh.choose(kRefresh75);
        rig_.pump.wait(2000);
        rig_.window.btnKartat.press();
        rig_.pump.wait(2000);
        window_ = dynamic_cast<maps::FrmMaps*>(rig_.program.windows().curMapWindow);
        if (mode_.knowsThrottle) {
            rig_.tables.ThrottleMin = stored("MINTHR_OFF");
            rig_.tables.ThrottleMax = stored("MAXTHR_OFF");
        }
        if (!mode_.cutsFuel) {
            window_->CheckMisc(kEngineBrake).press();
            window_->btnSaveMisc.press();
        }
        window_->chkInjAnal.press();
        rig_.pump.wait(kWarmUp);
    }

    void run(int agentMinutes) {
        gather();
        findVisited();
        tellMeasured("before");
        startAgent();
        for (int minute = 0; minute < agentMinutes; ++minute) {
            tellMinute(minute);
            rig_.pump.wait(kMinute);
        }
        stopAgent();
        tellMinute(agentMinutes);
        tellWorst();
        tellSteps();
        gather();
        tellMeasured("after");
    }

private:
    analysis::clsInjAnalyser& analyser() { return rig_.program.analyser(); }
    [[nodiscard]] std::int16_t stored(std::string_view name) const {
        return device_.ecu.eeprom()[static_cast<std::size_t>(core::addressOf(name))];
    }

    void startAgent() {
        window_->chkSimplemode.Value = mode_.simple ? 1 : 0;
        analyser().ClearTables();
        if (mode_.smooths) {
            window_->chkUseTuningAgent.press();
            return;
        }
        correcting_.Interval = analyser().timerAgent.Interval;
        correcting_.TimerElapsed = [this] { analyser().CorrectAllCells(); };
        correcting_.StartTimer();
    }
    void stopAgent() {
        correcting_.StopTimer();
        window_->chkUseTuningAgent.Value = 0;
    }
    void gather() {
        analyser().ClearTables();
        rig_.pump.wait(kGathering);
    }
    [[nodiscard]] float samples(int cell) { return analyser().SampleCount.at(static_cast<std::size_t>(cell)); }
    void findVisited() {
        for (int cell = 0; cell < kCells; ++cell) {
            if (samples(cell) >= kVisited) {
                visited_.push_back(cell);
            }
        }
        std::printf("cells,%s,%zu\n", mode_.name, visited_.size());
    }

    void tellMeasured(const char* when) {
        Distances distances;
        for (const int cell : visited_) {
            if (samples(cell) > 0.0F) {
                distances.add(cell, static_cast<double>(analyser().LambdaAvg(cell)));
            }
        }
        std::printf("measured,%s,%s,%.4f\n", mode_.name, when, distances.rootMeanSquare());
    }
    void tellMinute(int minute) {
        const auto distances = givenByMap();
        std::printf("minute,%s,%d,%.4f,%.4f\n", mode_.name, minute, distances.rootMeanSquare(), distances.mean());
    }
    void tellWorst() {
        auto distances = givenByMap();
        const auto [distance, cell] = distances.takeWorst();
        std::printf("worst,%s,%d,%.4f,%.4f\n", mode_.name, cell, distance, distances.rootMeanSquare());
    }
    // What the ECU's working map gives, from the map that the engine needs.
    Distances givenByMap() {
        Distances distances;
        const auto& map = device_.ecu.workingMap(ecu::MapKind::Fuel);
        const auto needed = device_.ecu.trueFuelMap();
        for (const int cell : visited_) {
            const auto index = static_cast<std::size_t>(cell);
            distances.add(cell, ecu::kBestMixture * needed.at(index) / std::max<int>(map.at(index), 1));
        }
        return distances;
    }

    // From the agent's own log.
    void tellSteps() {
        std::array<int, kCells> keys{};
        int up = 0;
        int down = 0;
        for (const auto& file : std::filesystem::directory_iterator(rig_.folder.path())) {
            std::ifstream log(file.path());
            for (std::string line; std::getline(log, line);) {
                std::istringstream words(line);
                std::string word;
                std::size_t cell = 0;
                int step = 0;
                if (words >> word >> cell >> step && word == "INDX" && cell < kCells) {
                    keys.at(cell) += step;
                    ++(step > 0 ? up : down);
                }
            }
        }
        int smoothed = 0;
        for (std::size_t cell = 0; cell < kCells; ++cell) {
            smoothed += rig_.tables.FuelMapOut.at(cell) - rig_.tables.FuelMapIn.at(cell) - keys.at(cell);
        }
        std::printf("keys,%s,%d,%d\nsmoothed,%s,%d\n", mode_.name, up, down, mode_.name, smoothed);
    }

    const Mode& mode_;
    Device device_;
    support::VirtualProgram rig_;
    controls::clsTimer correcting_{rig_.pump, rig_.log};  // instead of the agent's timer
    maps::FrmMaps* window_ = nullptr;
    std::vector<int> visited_;
};

}  // namespace

int main(int argc, char** argv) {
    const int minutes = argc > 1 ? std::atoi(argv[1]) : 30;
    for (const Mode& mode : kModes) {
        Proof(mode).run(minutes);
    }
    return 0;
}
