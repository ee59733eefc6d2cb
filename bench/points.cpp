// Restore points: the list of ten thousand, one that is written, and one that is read. PointLimitsTest fails beyond
// the marks.
#include <benchmark/benchmark.h>
#include <filesystem>

#include "keep/PointSamples.h"
#include "keep/point/PointStore.h"
#include "support/TempFolder.h"

namespace {

using namespace korvane;

constexpr int kMany = 10000;

keep::Snapshot pointAt(int number) {
    auto point = keep::fullPoint();
    point.time.minute = number / 60 % 60;
    point.time.second = number % 60;
    point.time.hour = number / 3600;
    return point;
}

struct ManyPoints {
    ManyPoints() {
        for (int i = 0; i < kMany; ++i) {
            store.add(pointAt(i));
        }
    }

    support::TempFolder folder;
    keep::PointStore store{folder / "restore"};
};

// Each list is made anew from the files, which the system has in its memory.
void List(benchmark::State& state) {
    const ManyPoints many;
    for (auto _ : state) {
        benchmark::DoNotOptimize(many.store.list());
    }
    std::uintmax_t bytes = 0;
    constexpr std::uintmax_t kBlock = 4096;
    for (const auto& file : std::filesystem::directory_iterator(many.store.folder())) {
        bytes += (file.file_size() + kBlock - 1) / kBlock * kBlock;
    }
    state.counters["bytes on disk"] = static_cast<double>(bytes);
}

void Names(benchmark::State& state) {
    const ManyPoints many;
    for (auto _ : state) {
        benchmark::DoNotOptimize(many.store.names());
    }
}

// Without the wait for the disk.
void Add(benchmark::State& state) {
    const support::TempFolder folder;
    keep::PointStore store(folder / "restore");
    const auto point = keep::fullPoint();
    for (auto _ : state) {
        store.add(point);
    }
}

void Decode(benchmark::State& state) {
    const auto bytes = keep::encodePoint(keep::fullPoint());
    for (auto _ : state) {
        benchmark::DoNotOptimize(keep::decodePoint(bytes));
    }
}

BENCHMARK(List)->Unit(benchmark::kMillisecond);
BENCHMARK(Names)->Unit(benchmark::kMillisecond);
BENCHMARK(Add)->Unit(benchmark::kMicrosecond)->Iterations(500);
BENCHMARK(Decode)->Unit(benchmark::kMicrosecond);

}  // namespace
