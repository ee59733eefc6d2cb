// The tuning helper on the screen: from the press of its button to the painted window.
#include <QApplication>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

#include "WindowRig.h"
#include "performance/FrmPowerCalc.h"

namespace {

using namespace korvane;  // NOLINT
using Clock = std::chrono::steady_clock;
using Millis = std::chrono::duration<double, std::milli>;

// Counts the paintings of the list, which does not exist yet when the counting begins.
class ListPaintings : public QObject {
public:
    ListPaintings() { qApp->installEventFilter(this); }
    [[nodiscard]] int count() const { return count_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool inList = watched->parent() != nullptr && watched->parent()->objectName() == QStringLiteral("List1");
        count_ += event->type() == QEvent::Paint && inList ? 1 : 0;
        return false;
    }

private:
    int count_ = 0;
};

controls::Window& opened(WindowRig& rig) {
    return *rig.machineBelow.windows.loaded().back();
}

void Open(benchmark::State& state) {
    WindowRig rig;
    rig.pump.wait(200);
    const ListPaintings paintings;
    std::vector<double> millis;
    for (auto _ : state) {
        const auto begin = Clock::now();
        rig.program.frmSarn2().btnTuningHelp.press();
        QApplication::processEvents();
        const Millis taken = Clock::now() - begin;
        static_cast<void>(opened(rig).unload());
        rig.pump.wait(150);
        state.SetIterationTime(taken.count() / 1000);
        millis.push_back(taken.count());
    }
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["worst_ms"] = millis.back();
    state.counters["paintings"] = static_cast<double>(paintings.count()) / static_cast<double>(millis.size());
}

BENCHMARK(Open)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);

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
