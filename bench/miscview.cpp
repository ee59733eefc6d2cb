// The settings window on the screen: opened, its model made, loaded and its view built with all nine pages, and
// painted; then from a click on a tab to the painted page, one page after another.
#include "views/settings/MiscView.h"

#include <QApplication>
#include <QTabBar>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>
#include <vector>

#include "Offscreen.h"
#include "WindowRig.h"
#include "views/Events.h"

namespace {

using namespace korvane;  // NOLINT
using Clock = std::chrono::steady_clock;
using Millis = std::chrono::duration<double, std::milli>;

constexpr int kWidth = 1366 * 15;  // twips
constexpr int kHeight = 728 * 15;
constexpr int kFilled = 255;

struct Rig : WindowRig {
    Rig() { pump.wait(200); }
};

// A settings window of its own, which is made while the clock runs. Its full read never begins.
struct Opened {
    explicit Opened(Rig& rig)
        : eeprom(rig.program.frmSarn2().MSComm1, rig.pump, rig.program.tables()),
          window(rig.machine, rig.program.tables(), rig.program.frmSarn2(), eeprom) {
        window.show();
        window.TimerInitialGetData.Enabled = false;
        QApplication::processEvents();
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    ~Opened() { window.leave(); }

    core::EepromAccess eeprom;
    settings::FrmMisc window;
};

// Counts the paintings of the pages, which do not exist yet when the counting begins. The ground behind them is never
// painted, as they cover it.
class PagePaintings : public QObject {
public:
    PagePaintings() { qApp->installEventFilter(this); }
    [[nodiscard]] int count() const { return count_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->objectName().startsWith(QStringLiteral("picOptions("))) {
            ++count_;
        }
        return false;
    }

private:
    int count_ = 0;
};

void tell(benchmark::State& state, std::vector<double>& millis) {
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p95_ms"] = millis[millis.size() * 95 / 100];
    state.counters["worst_ms"] = millis.back();
}

void Open(benchmark::State& state) {
    Rig rig;
    std::vector<double> millis;
    const PagePaintings paintings;
    for (auto _ : state) {
        const auto begin = Clock::now();
        auto opened = std::make_unique<Opened>(rig);
        const Millis taken = Clock::now() - begin;
        opened.reset();
        rig.pump.wait(1);
        state.SetIterationTime(taken.count() / 1000);
        millis.push_back(taken.count());
    }
    tell(state, millis);
    state.counters["paintings"] = static_cast<double>(paintings.count()) / static_cast<double>(millis.size());
}

// Every box is full of digits.
void ChangeOfPage(benchmark::State& state) {
    Rig rig;
    Opened opened(rig);
    opened.window.resize(kWidth, kHeight);
    for (auto* const control : opened.window.controls()) {
        if (auto* const box = dynamic_cast<controls::TextBox*>(control)) {
            box->Text = std::to_string(kFilled);
        }
    }
    auto& view = *rig.host.viewOf(opened.window);
    auto& tabs = dynamic_cast<QTabBar&>(*view.findChild<QWidget*>(QStringLiteral("tbsOptions")));
    const auto turnTo = [&](int page) {
        views::click(tabs, tabs.tabRect(page).center());
        rig.host.clock().tick();
        QApplication::processEvents();
    };
    for (int page = 0; page < settings::kPages; ++page) {
        turnTo(page);
    }
    const PagePaintings paintings;
    std::vector<double> millis;
    for (auto _ : state) {
        const int page = static_cast<int>(millis.size()) % settings::kPages;
        const auto begin = Clock::now();
        turnTo(page);
        const Millis taken = Clock::now() - begin;
        state.SetIterationTime(taken.count() / 1000);
        millis.push_back(taken.count());
    }
    tell(state, millis);
    state.counters["paintings"] = static_cast<double>(paintings.count()) / static_cast<double>(millis.size());
    state.counters["ratio"] = view.devicePixelRatioF();
}

BENCHMARK(Open)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ChangeOfPage)->Iterations(450)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return korvane::runBenchmarks(argc, argv);
}
