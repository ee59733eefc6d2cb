// Big readouts and the window to try the dial, from the press of the button to the painted window: model made, loaded,
// view built and shown.
#include <QApplication>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

#include "WindowRig.h"
#include "live/readout/FrmBigText.h"
#include "views/Events.h"

namespace {

using namespace korvane;  // NOLINT
using Clock = std::chrono::steady_clock;
using Millis = std::chrono::duration<double, std::milli>;

constexpr int kLarge = 1366 * 15;  // twips

// Counts the paintings of the widget of this name, in whichever window.
class Paintings : public QObject {
public:
    explicit Paintings(const char* name) : name_(QString::fromLatin1(name)) { qApp->installEventFilter(this); }
    [[nodiscard]] int count() const { return count_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        count_ += event->type() == QEvent::Paint && watched->objectName() == name_ ? 1 : 0;
        return false;
    }

private:
    QString name_;
    int count_ = 0;
};

void tell(benchmark::State& state, std::vector<double>& millis, const Paintings& paintings) {
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p95_ms"] = millis[millis.size() * 95 / 100];
    state.counters["worst_ms"] = millis.back();
    state.counters["paintings"] = static_cast<double>(paintings.count()) / static_cast<double>(millis.size());
}

void open(benchmark::State& state, controls::CommandButton live::FrmSarn2::*button, const char* painted) {
    WindowRig rig;
    rig.pump.wait(200);
    std::vector<double> millis;
    const Paintings paintings(painted);
    for (auto _ : state) {
        const auto begin = Clock::now();
        (rig.program.frmSarn2().*button).press();
        QApplication::processEvents();
        const Millis taken = Clock::now() - begin;
        static_cast<void>(rig.machine.windows.loaded().back()->unload());
        rig.pump.wait(1);
        state.SetIterationTime(taken.count() / 1000);
        millis.push_back(taken.count());
    }
    tell(state, millis, paintings);
}

void OpenBigText(benchmark::State& state) {
    open(state, &live::FrmSarn2::Command6, "Label1");
}

void OpenMeter(benchmark::State& state) {
    open(state, &live::FrmSarn2::Command8, "SarnMeter1");
}

// From the tick that brings another value to the painted figures, in a window as wide as a display.
void AnotherValue(benchmark::State& state) {
    WindowRig rig;
    rig.program.frmSarn2().Command6.press();
    auto& readout = *rig.program.readoutWindows().bigTexts().all().front();
    readout.Timer1.Enabled = false;
    readout.resize(kLarge, kLarge);
    rig.pump.wait(500);
    std::vector<double> millis;
    const Paintings paintings("Label1");
    for (auto _ : state) {
        rig.program.tables().liveValues[0].value = static_cast<double>(1000 + millis.size());
        const auto begin = Clock::now();
        readout.Timer1.Tick();
        rig.host.clock().tick();
        QApplication::processEvents();
        const Millis taken = Clock::now() - begin;
        state.SetIterationTime(taken.count() / 1000);
        millis.push_back(taken.count());
    }
    tell(state, millis, paintings);
}

BENCHMARK(OpenBigText)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(OpenMeter)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(AnotherValue)->Iterations(500)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
