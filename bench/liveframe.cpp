// One 'R' frame from its first byte to the last consumer, without a display: time and allocations in the steady state.
#include <benchmark/benchmark.h>
#include <random>

#include "CountedAllocations.h"
#include "support/VirtualProgram.h"

namespace {

using korvane::support::Bytes;
using korvane::support::frame;

// A drive: every channel moves from frame to frame.
std::vector<Bytes> drive() {
    std::vector<Bytes> frames;
    std::mt19937 random(3);
    for (int i = 0; i < 997; ++i) {
        Bytes payload(19);
        const int rpm = 900 + i * 6;
        payload[0] = static_cast<std::uint8_t>(rpm / 256);
        payload[1] = static_cast<std::uint8_t>(rpm % 256);
        for (std::size_t b = 2; b < 17; ++b) {
            payload[b] = static_cast<std::uint8_t>(60 + (random() % 64));
        }
        payload[17] = static_cast<std::uint8_t>((i % 8) * 16 + 1);
        payload[18] = static_cast<std::uint8_t>(random());
        frames.push_back(frame('R', payload));
    }
    return frames;
}

void LiveFrame(benchmark::State& state) {
    korvane::support::VirtualProgram rig;
    rig.connect();
    rig.window.TimerRequestData.Enabled = false;
    rig.window.TimerGetSettings.Enabled = false;
    const auto frames = drive();
    std::size_t next = 0;
    const auto step = [&] {
        rig.line.inject(frames[next]);
        rig.window.MSComm1.OnComm();
        next = next + 1 == frames.size() ? 0 : next + 1;
    };
    for (int i = 0; i < 5000; ++i) {
        step();
    }
    const auto before = allocations.load();
    for (auto _ : state) {
        step();
    }
    state.counters["allocations/frame"] =
        static_cast<double>(allocations.load() - before) / static_cast<double>(state.iterations());
    state.counters["frames/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

BENCHMARK(LiveFrame);

}  // namespace

BENCHMARK_MAIN();
