// What the tuning agent makes of a fuel map: half an hour of it on the virtual ECU, in virtual time, once with its
// neighbours' share and once in simple mode. Prints CSV for tools/agent-proof:
//
//     minute,MODE,M,RMS,MEAN  of the mixture that the map gives, less the target, over the visited cells, M minutes
//                             after the start
//     measured,MODE,WHEN,RMS  of the means that the sensor gives in ten minutes before and after, the agent off
//     cells,MODE,N            visited cells
//     keys,MODE,UP,DOWN       steps that the agent took by key
//     smoothed,MODE,COUNTS    by which the visited cells were raised beside the keys, together
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

#include "ecu/EngineNeed.h"
#include "ecu/VirtualEcu.h"
#include "maps/MapForm.h"
#include "support/VirtualProgram.h"

namespace {

using namespace korvane;

constexpr int kMinute = 60 * 1000;
constexpr int kWarmUp = 10 * kMinute;
constexpr int kGathering = 10 * kMinute;
constexpr int kAgentMinutes = 30;
constexpr float kVisited = 50.0F;  // samples
constexpr double kTarget = 12.5;
constexpr int kCells = 160;

class Device : public platform::LineDevice {
public:
    void setBaud(int baud) override { ecu.setBaud(baud); }
    void receive(std::uint8_t byte, platform::Micros at) override { ecu.receive(byte, at); }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override { return ecu.nextDue(); }
    void take(platform::Micros at, std::vector<std::uint8_t>& out) override { ecu.take(at, out); }

    ecu::VirtualEcu ecu;
};

double rootMeanSquare(const std::vector<int>& cells, const std::function<double(int)>& value) {
    const double sum = std::accumulate(cells.begin(), cells.end(), 0.0, [&](double before, int cell) {
        return before + std::pow(value(cell) - kTarget, 2.0);
    });
    return cells.empty() ? 0.0 : std::sqrt(sum / static_cast<double>(cells.size()));
}

double meanDistance(const std::vector<int>& cells, const std::function<double(int)>& value) {
    const double sum = std::accumulate(cells.begin(), cells.end(), 0.0,
                                       [&](double before, int cell) { return before + value(cell) - kTarget; });
    return cells.empty() ? 0.0 : sum / static_cast<double>(cells.size());
}

class Proof {
public:
    explicit Proof(const char* mode) : mode_(mode), rig_(&device_) {
        rig_.connect();
        rig_.window.ComboRefresh.choose(3);  // 75 ms
        rig_.pump.wait(2000);
        rig_.window.btnKartat.press();
        rig_.pump.wait(2000);
        window_ = dynamic_cast<maps::FrmMaps*>(rig_.program.windows().curMapWindow);
        window_->chkInjAnal.press();
        rig_.pump.wait(kWarmUp);
    }

    void run(bool simple) {
        gather();
        for (int cell = 0; cell < kCells; ++cell) {
            if (analyser().SampleCount.at(static_cast<std::size_t>(cell)) >= kVisited) {
                visited_.push_back(cell);
            }
        }
        std::printf("cells,%s,%zu\n", mode_, visited_.size());
        tellMeasured("before");
        if (simple) {
            window_->chkSimplemode.press();
        }
        analyser().ClearTables();
        window_->chkUseTuningAgent.press();
        for (int minute = 0; minute <= kAgentMinutes; ++minute) {
            const auto mixture = [&](int cell) { return given(cell); };
            std::printf("minute,%s,%d,%.4f,%.4f\n", mode_, minute, rootMeanSquare(visited_, mixture),
                        meanDistance(visited_, mixture));
            rig_.pump.wait(minute < kAgentMinutes ? kMinute : 0);
        }
        window_->chkUseTuningAgent.press();
        tellSteps();
        gather();
        tellMeasured("after");
    }

private:
    analysis::clsInjAnalyser& analyser() { return rig_.program.analyser(); }

    void gather() {
        analyser().ClearTables();
        rig_.pump.wait(kGathering);
    }
    void tellMeasured(const char* when) {
        std::vector<int> cells;
        for (const int cell : visited_) {
            if (analyser().SampleCount.at(static_cast<std::size_t>(cell)) > 0) {
                cells.push_back(cell);
            }
        }
        std::printf("measured,%s,%s,%.4f\n", mode_, when,
                    rootMeanSquare(cells, [&](int cell) { return static_cast<double>(analyser().LambdaAvg(cell)); }));
    }
    // From the agent's own log.
    void tellSteps() {
        std::array<int, kCells> keys{};
        int up = 0;
        int down = 0;
        for (const auto& file : std::filesystem::directory_iterator(rig_.folder.path())) {
            std::ifstream log(file.path());
            std::string word;
            int cell = 0;
            int step = 0;
            for (std::string line; std::getline(log, line);) {
                std::istringstream words(line);
                if (words >> word >> cell >> step && word == "INDX" && cell < kCells) {
                    keys.at(static_cast<std::size_t>(cell)) += step;
                    ++(step > 0 ? up : down);
                }
            }
        }
        int smoothed = 0;
        for (const int cell : visited_) {
            const auto index = static_cast<std::size_t>(cell);
            smoothed += rig_.tables.FuelMapOut.at(index) - rig_.tables.FuelMapIn.at(index) - keys.at(index);
        }
        std::printf("keys,%s,%d,%d\nsmoothed,%s,%d\n", mode_, up, down, mode_, smoothed);
    }
    // The mixture that the ECU's working map gives in a cell.
    double given(int cell) {
        const auto index = static_cast<std::size_t>(cell);
        const double counts = device_.ecu.workingMap(ecu::MapKind::Fuel).at(index);
        return ecu::kBestMixture * device_.ecu.trueFuelMap().at(index) / std::fmax(counts, 1.0);
    }

    const char* mode_;
    Device device_;
    support::VirtualProgram rig_;
    maps::FrmMaps* window_ = nullptr;
    std::vector<int> visited_;
};

}  // namespace

int main() {
    Proof("neighbours").run(false);
    Proof("simple").run(true);
    return 0;
}
