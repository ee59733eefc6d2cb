// Log files: a row, a batch of 101 rows, and the load of 100,000 rows with the columns that the viewer shows first. The
// file is made by the program from the virtual ECU's lap. Beside it: what mawk takes to sum five columns of that file.
#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include "CountedAllocations.h"
#include "logs/LogFindings.h"
#include "logs/LogWriter.h"
#include "logs/clsTXTdata.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"

namespace {

using namespace korvane;

constexpr int kRows = 100'000;
constexpr std::array kFirstColumns{1, 5, 6, 7, 8};  // that the viewer shows

struct Log {
    Log() {
        rig.emplace(&device);
        rig->window.ComboRefresh.choose(0);
        rig->window.txtDatalogFile.Text = std::string("lap");
        rig->window.chkDatalog.press();
        rig->connect();
        while (rig->window.logCounts.onDisk.get() < kRows) {
            rig->pump.wait(10'000);
        }
        rig->window.chkDatalog.press();
        const std::filesystem::path path = rig->folder / "lap.txt";
        std::filesystem::resize_file(path, std::uintmax_t{272} * kRows);
        file = path.string();
    }

    support::EcuDevice device;  // drives laps
    std::optional<support::VirtualProgram> rig;
    std::string file;
};

const Log& lap() {
    static const Log log;
    return log;
}

// The writer beside a folder and values that move, without a line.
struct Rows {
    Rows() {
        rig.window.txtDatalogFile.Text = std::string("rows");
        for (std::size_t i = 0; i < 24; ++i) {
            rig.tables.liveValues[i].value = 1000.0 / static_cast<double>(i + 3);
        }
    }
    support::VirtualProgram rig;
    logs::LogWriter& writer = rig.program.logWriter();
};

void Row(benchmark::State& state) {
    Rows rows;
    const auto before = allocations.load();
    for (auto _ : state) {
        rows.rig.tables.logDataCount = 7;
        rows.writer.writeLiveRow();
    }
    state.counters["allocations"] = static_cast<double>(allocations.load() - before);
}

void Batch(benchmark::State& state) {
    Rows rows;
    for (auto _ : state) {
        rows.rig.tables.logDataCount = 101;
        rows.writer.saveLogData();
    }
}

double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    }
    return 0;
}

void Load(benchmark::State& state) {
    const std::string& file = lap().file;
    core::LiveTable live;
    for (auto _ : state) {
        logs::clsTXTdata log(live, '.');
        log.LoadFromFile(file);
        benchmark::DoNotOptimize(log.ItemCount());
    }
}

void loadAndConvert(logs::clsTXTdata& log) {
    log.LoadFromFile(lap().file);
    for (const int column : kFirstColumns) {
        benchmark::DoNotOptimize(log.column(column, logs::CellReading::Number).values.back());
    }
}

// Called before any other load, whose memory this one could reuse.
double megabytesOfALoad() {
    static_cast<void>(lap());
    core::LiveTable live;
    logs::clsTXTdata log(live, '.');
    const double before = residentMegabytes();
    loadAndConvert(log);
    return residentMegabytes() - before;
}

void LoadAndColumns(benchmark::State& state) {
    core::LiveTable live;
    for (auto _ : state) {
        logs::clsTXTdata log(live, '.');
        loadAndConvert(log);
    }
}

void Memory(benchmark::State& state) {
    static const double megabytes = megabytesOfALoad();
    for (auto _ : state) {
    }
    state.counters["MB"] = megabytes;
}

void Findings(benchmark::State& state) {
    core::LiveTable live;
    logs::clsTXTdata log(live, '.');
    log.LoadFromFile(lap().file);
    for (auto _ : state) {
        benchmark::DoNotOptimize(logs::findingsOf(log));
    }
    state.SetLabel(logs::findingsOf(log));
}

void Replay(benchmark::State& state) {
    core::LiveTable live;
    logs::clsTXTdata log(live, '.');
    log.LoadFromFile(lap().file);
    for (auto _ : state) {
        benchmark::DoNotOptimize(log.getNextSimDataPacket());
    }
}

void Mawk(benchmark::State& state) {
    const std::string command =
        "mawk '{a+=$2;b+=$6;c+=$7;d+=$8;e+=$9} END {print a,b,c,d,e}' '" + lap().file + "' >/dev/null";
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError("no mawk");
        }
    }
}

BENCHMARK(Memory)->Iterations(1);
BENCHMARK(Row);
BENCHMARK(Batch)->Unit(benchmark::kMicrosecond);
BENCHMARK(Load)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadAndColumns)->Unit(benchmark::kMillisecond);
BENCHMARK(Findings)->Unit(benchmark::kMillisecond);
BENCHMARK(Replay);
BENCHMARK(Mawk)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
