// The log viewer: a page of many rows drawn by the model alone, the same page from a redraw to its painted picture at
// 1920 by 1080, a load to its first painted picture, and a replay in virtual time without a display.
#include <QApplication>
#include <QImage>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "Offscreen.h"
#include "WindowRig.h"
#include "support/LogText.h"
#include "views/trend/LogPlot.h"

namespace {

using namespace korvane;  // NOLINT
using Clock = std::chrono::steady_clock;
using Millis = std::chrono::duration<double, std::milli>;

// A drive: every channel moves from row to row, ten rows a second.
std::string drive(int rows) {
    support::LogText log;
    std::mt19937 random(3);
    for (int n = 0; n < rows; ++n) {
        const auto rpm = std::to_string(900 + n % 6000);
        const auto pressure = "0." + std::to_string(10 + random() % 90);
        const auto throttle = std::to_string(random() % 100);
        const auto lambda = "12." + std::to_string(1000 + random() % 9000);
        const auto injection = std::to_string(random() % 256);
        log.row(n / 10, {{1, rpm}, {5, pressure}, {6, throttle}, {7, lambda}, {8, injection}});
    }
    return log.text();
}

// Half of them and nearly all of them took no longer.
void tell(benchmark::State& state, std::vector<double>& millis) {
    std::sort(millis.begin(), millis.end());
    state.counters["p50_ms"] = millis[millis.size() / 2];
    state.counters["p95_ms"] = millis[millis.size() * 95 / 100];
}

template <class Action>
void measure(benchmark::State& state, Action action) {
    std::vector<double> millis;
    for (auto _ : state) {
        const auto begin = Clock::now();
        action();
        millis.push_back(Millis(Clock::now() - begin).count());
    }
    tell(state, millis);
}

void choosePage(trend::FrmTrend_txt& viewer, int rows) {
    viewer.Combopoints.choose(rows == 50'000 ? 6 : 4);
}

// Each draw with another scale, so that none is the one before.
void redraw(trend::FrmTrend_txt& viewer) {
    viewer.Combo6.choose(viewer.Combo6.ListIndex == 8 ? 9 : 8);
}

void Draw(benchmark::State& state) {
    support::VirtualProgram run;
    run.program.logViewer().open(run.folder.write("log.txt", drive(100'000)));
    auto& viewer = *run.program.logViewer().window();
    choosePage(viewer, static_cast<int>(state.range(0)));
    viewer.Picture1.Width = 1920 * 15;
    viewer.Picture1.Height = 1080 * 15;
    measure(state, [&] { redraw(viewer); });
}

// The viewer with a plot of 1920 by 1080.
class Screen {
public:
    Screen() {
        rig_.program.logViewer().open();
        auto& view = *rig_.host.viewOf(viewer());
        plot_ = dynamic_cast<views::LogPlot*>(view.findChild<QWidget*>(QStringLiteral("Picture1")));
        view.resize(view.size() + QSize(1920, 1080) - plot_->size());
        QApplication::processEvents();
        image_ = QImage(plot_->size(), QImage::Format_RGB32);
    }

    [[nodiscard]] trend::FrmTrend_txt& viewer() { return *rig_.program.logViewer().window(); }
    [[nodiscard]] std::filesystem::path write(const std::string& log) {
        return rig_.machineBelow.folder.write("log.txt", log);
    }
    void paint() {
        rig_.host.clock().tick();
        plot_->render(&image_);
    }
    void tellSize(benchmark::State& state) const {
        state.counters["width"] = plot_->width();
        state.counters["height"] = plot_->height();
    }

private:
    WindowRig rig_;
    views::LogPlot* plot_ = nullptr;
    QImage image_;
};

void RedrawToPainted(benchmark::State& state) {
    Screen screen;
    screen.viewer().open(screen.write(drive(100'000)));
    choosePage(screen.viewer(), static_cast<int>(state.range(0)));
    QApplication::processEvents();
    measure(state, [&] {
        redraw(screen.viewer());
        screen.paint();
    });
    screen.tellSize(state);
}

void LoadToPainted(benchmark::State& state) {
    Screen screen;
    const auto file = screen.write(drive(static_cast<int>(state.range(0))));
    measure(state, [&] {
        screen.viewer().open(file);
        screen.paint();
    });
    screen.tellSize(state);
}

void Replay(benchmark::State& state) {
    support::VirtualProgram run;
    const int rows = static_cast<int>(state.range(0));
    run.program.logViewer().open(run.folder.write("log.txt", drive(rows)));
    auto& viewer = *run.program.logViewer().window();
    for (auto _ : state) {
        viewer.btnSimulate.press();
        while (viewer.TimerSim.Enabled) {
            run.pump.wait(1'000'000);
        }
    }
}

BENCHMARK(Draw)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond)->Iterations(300);
BENCHMARK(RedrawToPainted)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond)->Iterations(300);
BENCHMARK(LoadToPainted)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(Replay)->Arg(60'000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

int main(int argc, char** argv) {
    return korvane::runBenchmarks(argc, argv);
}
