// From a key press in the fuel grid to the painted cells, at 200 % scale: a step of one cell with the grid painted
// anew, and + on a block of the whole map, which changes every number.
#include <QApplication>
#include <QKeyEvent>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

#include "Offscreen.h"
#include "WindowRig.h"
#include "core/Checked.h"
#include "maps/MapForm.h"
#include "views/Events.h"
#include "views/maps/MapGridView.h"

namespace {

using namespace korvane;  // NOLINT
using Clock = std::chrono::steady_clock;

constexpr int kWarmUp = 20;
constexpr int kWidth = 1366 * 15;  // twips
constexpr int kHeight = 728 * 15;

struct Rig : WindowRig {
    explicit Rig(bool large) {
        large ? program.mapWindows().openLarge() : program.mapWindows().open();
        maps = dynamic_cast<maps::MapForm*>(machineBelow.windows.loaded().back());
        for (int cell = 0; cell < maps->fuel.geometry.cells(); ++cell) {
            core::checked(program.tables().FuelMapOut, cell) = static_cast<std::uint8_t>(40 + cell * 7 % 200);
        }
        auto* const view = host.viewOf(*maps);
        maps->resize(kWidth, kHeight);
        view->activateWindow();
        pump.wait(200);
        grid = dynamic_cast<views::MapGridView*>(view->findChild<QWidget*>(QStringLiteral("txtFuel")));
        maps->setFocus(&maps->fuel(maps->fuel.geometry.cells() / 2));
        maps->populateFuelOUT();
        host.clock().tick();
        QApplication::processEvents();
    }

    void press(Qt::Key key) {
        QKeyEvent down(QEvent::KeyPress, key, {}, key == Qt::Key_Plus ? QStringLiteral("+") : QStringLiteral("-"));
        QApplication::sendEvent(grid, &down);
    }

    maps::MapForm* maps = nullptr;
    views::MapGridView* grid = nullptr;
};

template <class Prepare>
void measure(benchmark::State& state, Prepare prepare) {
    Rig rig(state.range(0) == 320);
    const views::PaintCounter paintings(*rig.grid);
    std::vector<double> millis;
    for (int i = -kWarmUp; i < 0 || state.KeepRunning(); ++i) {
        prepare(rig);
        const auto begin = Clock::now();
        rig.press(i % 2 == 0 ? Qt::Key_Plus : Qt::Key_Minus);
        QApplication::processEvents();
        const std::chrono::duration<double, std::milli> taken = Clock::now() - begin;
        if (i >= 0) {
            state.SetIterationTime(taken.count() / 1000);
            millis.push_back(taken.count());
        }
    }
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p95_ms"] = millis[millis.size() * 95 / 100];
    state.counters["paintings"] = static_cast<double>(paintings.count() - kWarmUp) / static_cast<double>(millis.size());
    state.counters["ratio"] = rig.grid->devicePixelRatioF();
}

void StepOfACell(benchmark::State& state) {
    measure(state, [](Rig& rig) { rig.grid->update(); });
}

void BlockOfTheWholeMap(benchmark::State& state) {
    measure(state, [](Rig& rig) {
        rig.maps->fuel.SelFirst = 1;
        rig.maps->fuel.SelLast = static_cast<std::int16_t>(rig.maps->fuel.geometry.cells());
    });
}

BENCHMARK(StepOfACell)->Arg(160)->Arg(320)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BlockOfTheWholeMap)->Arg(160)->Arg(320)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_SCALE_FACTOR", "2");
    return korvane::runBenchmarks(argc, argv);
}
