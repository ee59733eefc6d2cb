// How fast the receive machine takes bytes: well-formed frames, and noise.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <random>
#include <vector>

#include "link/ReceiveMachine.h"

namespace {

using korvane::link::ReceiveMachine;

constexpr std::size_t kStream = 1 << 20;

std::vector<std::uint8_t> wellFormed() {
    std::vector<std::uint8_t> bytes;
    std::mt19937 random(1);
    while (bytes.size() < kStream) {
        bytes.push_back('R');
        bytes.push_back(19);
        for (int i = 0; i < 19; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(random()));
        }
        bytes.push_back(0xFF - 'R');
    }
    return bytes;
}

std::vector<std::uint8_t> noise() {
    std::vector<std::uint8_t> bytes(kStream);
    std::mt19937 random(2);
    for (auto& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

void receive(benchmark::State& state, const std::vector<std::uint8_t>& bytes) {
    ReceiveMachine machine;
    std::size_t frames = 0;
    for (auto _ : state) {
        std::span<const std::uint8_t> rest(bytes);
        while (!rest.empty()) {
            rest = rest.subspan(machine.consume(rest));
            if (machine.rxReady()) {
                ++frames;
                machine.frameDone();
            }
        }
    }
    benchmark::DoNotOptimize(frames);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes.size()));
}

void WellFormedFrames(benchmark::State& state) {
    receive(state, wellFormed());
}
void Noise(benchmark::State& state) {
    receive(state, noise());
}

// As a slow line delivers it: byte by byte.
void WellFormedByteByByte(benchmark::State& state) {
    const auto bytes = wellFormed();
    ReceiveMachine machine;
    std::size_t frames = 0;
    for (auto _ : state) {
        for (const auto& byte : bytes) {
            static_cast<void>(machine.consume(std::span(&byte, 1)));
            if (machine.rxReady()) {
                ++frames;
                machine.frameDone();
            }
        }
    }
    benchmark::DoNotOptimize(frames);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes.size()));
}

BENCHMARK(WellFormedFrames);
BENCHMARK(Noise);
BENCHMARK(WellFormedByteByByte);

}  // namespace

BENCHMARK_MAIN();
