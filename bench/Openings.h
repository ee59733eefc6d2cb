// How long a window takes from the press of its button to the painted window.
#pragma once

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

#include "Offscreen.h"
#include "WindowRig.h"

namespace korvane {

using Clock = std::chrono::steady_clock;
using Millis = std::chrono::duration<double, std::milli>;

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

inline void tell(benchmark::State& state, std::vector<double>& millis, const Paintings& paintings) {
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p95_ms"] = millis[millis.size() * 95 / 100];
    state.counters["worst_ms"] = millis.back();
    state.counters["paintings"] = static_cast<double>(paintings.count()) / static_cast<double>(millis.size());
}

// `painted` names the widget whose paintings are counted: one for each opening, where nothing is painted twice.
inline void timeOpenings(benchmark::State& state, WindowRig& rig, controls::CommandButton live::FrmSarn2::*button,
                         const char* painted) {
    rig.pump.wait(200);
    const Paintings paintings(painted);
    std::vector<double> millis;
    for (auto _ : state) {
        const auto begin = Clock::now();
        (rig.program.frmSarn2().*button).press();
        QApplication::processEvents();
        const Millis taken = Clock::now() - begin;
        static_cast<void>(rig.machineBelow.windows.loaded().back()->unload());
        rig.pump.wait(150);
        state.SetIterationTime(taken.count() / 1000);
        millis.push_back(taken.count());
    }
    tell(state, millis, paintings);
}

}  // namespace korvane
