// The ignition debug window on the screen: from the press of its button to the painted window; and one frame of its
// poll, shown, pushed to both trends and drawn, without what the toolkit paints of it.
#include <QApplication>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

#include "Offscreen.h"
#include "WindowRig.h"

namespace {

using namespace korvane;  // NOLINT
using Clock = std::chrono::steady_clock;
using Millis = std::chrono::duration<double, std::milli>;

// Counts the paintings of the words, which do not exist yet when the counting begins.
class WordPaintings : public QObject {
public:
    WordPaintings() { qApp->installEventFilter(this); }
    [[nodiscard]] int count() const { return count_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        count_ += event->type() == QEvent::Paint && watched->objectName() == QStringLiteral("lblIgnDeb") ? 1 : 0;
        return false;
    }

private:
    int count_ = 0;
};

void Open(benchmark::State& state) {
    WindowRig rig;
    rig.pump.wait(200);
    const WordPaintings paintings;
    std::vector<double> millis;
    for (auto _ : state) {
        const auto begin = Clock::now();
        rig.program.frmSarn2().Command5.press();
        QApplication::processEvents();
        const Millis taken = Clock::now() - begin;
        static_cast<void>(rig.machineBelow.windows.loaded().back()->unload());
        rig.pump.wait(150);
        state.SetIterationTime(taken.count() / 1000);
        millis.push_back(taken.count());
    }
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["worst_ms"] = millis.back();
    state.counters["paintings"] = static_cast<double>(paintings.count()) / static_cast<double>(millis.size());
}

// Both patterns in turn, so that the trends fill with lines from top to bottom.
void Frame(benchmark::State& state) {
    support::VirtualProgram program;
    program.window.Command5.press();
    auto& debug = *program.program.windows().frmIGNDebug;
    const support::Bytes frames[] = {{0x55, 0x55, 0xD0, 0x02, 0x55, 0x55, 0x3C, 0x00},
                                     {0xAA, 0xAA, 0xD0, 0x02, 0xAA, 0xAA, 0x3C, 0x00}};
    std::size_t turn = 0;
    for (auto _ : state) {
        debug.showDebugFrame(frames[turn++ % 2]);
    }
}

BENCHMARK(Open)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Frame)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    return korvane::runBenchmarks(argc, argv);
}
