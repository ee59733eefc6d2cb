// Settings files of the largest kind, saved and loaded: large maps, and a value at every address.
#include "core/files/SettingsFile.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <filesystem>
#include <memory>

#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "platform/QueuedDialogs.h"
#include "support/TempFolder.h"

namespace {

using namespace korvane;

// `rows` addresses hold a value, beside those that have a name only.
std::unique_ptr<core::SharedTables> filled(std::size_t rows) {
    auto tables = std::make_unique<core::SharedTables>();
    core::InitParams(*tables, 14);
    for (std::size_t i = 0; i < core::kMapSize; ++i) {
        tables->FuelMapOut[i] = static_cast<std::uint8_t>(i * 7);
        tables->IgnMapOut[i] = static_cast<std::uint8_t>(i * 5);
        tables->PwmMapOut[i] = static_cast<std::uint8_t>(i * 3);
    }
    for (std::size_t i = 1; i <= rows; ++i) {
        tables->EEParams.at(i).value = static_cast<std::uint8_t>(i * 11);
    }
    return tables;
}

void Save(benchmark::State& state) {
    const support::TempFolder folder;
    const auto file = folder / "tune.txt";
    const auto tables = filled(static_cast<std::size_t>(state.range(0)));
    platform::QueuedDialogs dialogs;
    for (auto _ : state) {
        core::SaveSettingsFile(file, *tables, 320, dialogs);
    }
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file));
}

void Load(benchmark::State& state) {
    const support::TempFolder folder;
    const auto file = folder / "tune.txt";
    const auto tables = filled(static_cast<std::size_t>(state.range(0)));
    platform::QueuedDialogs dialogs;
    core::SaveSettingsFile(file, *tables, 320, dialogs);
    std::int64_t sum = 0;
    const auto update = [&sum](std::int32_t value, std::int32_t, bool) { sum += value; };
    for (auto _ : state) {
        benchmark::DoNotOptimize(core::LoadSettingsFile(file, *tables, update, dialogs));
    }
    benchmark::DoNotOptimize(sum);
}

BENCHMARK(Save)->Arg(0)->Arg(2998)->Unit(benchmark::kMicrosecond);
BENCHMARK(Load)->Arg(0)->Arg(2998)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
