// What the steady agent makes of a fuel map, and what it does when lambda can't be trusted: trials on the virtual
// engine, in virtual time.
//
//     bench_steady [SEEDS [HOURS [FIRST]]]     default 20 seeds from 1 on, and 10 hours of the long trials
//     bench_steady short                       6 seeds, one hour; seeds whose means meet the marks, as not all six do
//     bench_steady speed                       what a frame costs
//
// Prints CSV for tools/steady-proof. INTERPOLATE is the key of the virtual ECU; distances are of air-fuel ratios.
//
//     distance,TRIAL,INTERPOLATE,SEED,MINUTE,RMS,FLOOR,WORST
//                              after so many minutes of the agent, over the cells that were visited in the ten minutes
//                              before it; WORST is the largest distance of a cell
//     stopped,TRIAL,INTERPOLATE,SEED,REASON    it has stopped by itself, though nothing was wrong
//     limit,TRIAL,INTERPOLATE,SEED,COUNTS      by which a cell was beyond the authority at most
//     left,INTERPOLATE,SEED,LEFT,SHOWN         with the default authority, after half an hour: visited cells that would
//                              need two counts more than it gives, and those of them that are shown so
//     right,INTERPOLATE,SEED,VISITED,SELDOM,NEVER,FARTHEST,CELLS  a map that was right: counts by which a cell is off
//                              in the end, of those that were in use in the first ten minutes, and of others; cells
//                              that were changed though the engine has never been there; counts by which a cell was
//                              off at any time, and how many cells were by more than one
//     start,FAULT,INTERPOLATE,SEED,CHANGES     in ten minutes with a fault from the start
//     middle,FAULT,INTERPOLATE,SEED,FOUND,BACK,MOVED
//                              seconds until the fault was found, then until each cell that was changed since it began
//                              had a byte again that it had before; by how many per cent a cell was moved at most
//                              since then. FOUND and BACK are negative if that has never come
//     delay,INTERPOLATE,SEED,ZONE,TRUTH,ESTIMATE,UNCERTAINTY
//                              milliseconds on the hard lap; the last two are empty where the agent says that it does
//                              not know
//     speed,FRAMES,MICROSECONDS,ALLOCATIONS,CHANGES    microseconds of a frame; allocations in all frames
#include <bitset>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "CountedAllocations.h"
#include "SteadyRig.h"

namespace {

using namespace korvane;
using proof::Car;
using proof::kMinute;
using proof::Trial;

constexpr double kWarmUp = 10.0 * kMinute;
constexpr double kBefore = 10.0 * kMinute;

struct Drive {
    const char* name;
    bool hard = false;
    double wetting = 0.0;
    double enrichment = 0.0;
    ecu::MapFault mapFault = ecu::MapFault::Smooth;
    bool throttleKnown = true;
    double leanAuthority = 15.0;
    double throttleNoise = 0.0;
    bool coldStart = false;  // and the agent from then on
    double wettingTime = 0.5;
    bool lasts = false;  // for all the hours
};

constexpr std::array<Drive, 13> kDrives{
    {{.name = "lap", .lasts = true},
     {.name = "hard lap", .hard = true},
     {.name = "hard lap wetting 30", .hard = true, .wetting = 30.0},
     {.name = "hard lap wetting 30 of 0.25 s", .hard = true, .wetting = 30.0, .wettingTime = 0.25},
     {.name = "hard lap wetting 30 of 1 s", .hard = true, .wetting = 30.0, .wettingTime = 1.0},
     {.name = "hard lap enrichment 20", .hard = true, .enrichment = 20.0},
     {.name = "throttle not known", .throttleKnown = false},
     {.name = "hard lap throttle noise 1", .hard = true, .throttleNoise = 1.0},
     {.name = "cold start", .coldStart = true},
     {.name = "rich", .mapFault = ecu::MapFault::Rich},
     {.name = "lean", .mapFault = ecu::MapFault::Lean},
     {.name = "checker", .mapFault = ecu::MapFault::Checker},
     {.name = "default authority", .leanAuthority = 5.0}}};

struct Fault {
    const char* name;
    ecu::LambdaFault lambda;
};

constexpr std::array<Fault, 6> kFaults{{{"stuck", ecu::LambdaFault::Stuck},
                                        {"lean", ecu::LambdaFault::Lean},
                                        {"rich", ecu::LambdaFault::Rich},
                                        {"absent", ecu::LambdaFault::Absent},
                                        {"slow", ecu::LambdaFault::Slow},
                                        {"cold", ecu::LambdaFault::None}}};

Trial trialOf(const Drive& drive, bool interpolate, int seed) {
    Trial trial;
    trial.seed = static_cast<std::uint64_t>(seed);
    trial.mapFault = drive.mapFault;
    trial.throttleKnown = drive.throttleKnown;
    trial.leanAuthority = drive.leanAuthority;
    trial.conditions.interpolate = interpolate;
    trial.conditions.wetting = drive.wetting;
    trial.conditions.wettingTime = drive.wettingTime;
    trial.conditions.enrichment = drive.enrichment;
    trial.conditions.throttleNoise = drive.throttleNoise;
    trial.conditions.coldStart = drive.coldStart;
    if (drive.hard) {
        trial.conditions.lambdaDelay = ecu::TransportDelay{400.0, 80.0};
        trial.conditions.lambdaLagMs = 100.0;
        trial.conditions.lambdaNoise = 1.0;
    }
    return trial;
}

// A car with the agent on board.
class Run {
public:
    explicit Run(const Trial& trial) : car(trial) {}

    void driveAlone(double until) {
        while (car.seconds() < until) {
            car.next();
        }
    }
    void begin() { agent.start(car.setup(), car.map(), car.seconds()); }
    std::span<const steady::CellChange> frame() {
        const auto changes = agent.onFrame(car.next());
        car.take(changes);
        return changes;
    }
    void drive(double until) {
        while (car.seconds() < until) {
            frame();
        }
    }
    void fail(const Fault& fault) {
        car.setFault(fault.lambda);
        car.setCold(fault.lambda == ecu::LambdaFault::None);
    }

    Car car;
    steady::SteadyAgent agent;
};

int beyondAuthority(const Car& car) {
    int most = 0;
    for (std::size_t cell = 0; cell < proof::kCells; ++cell) {
        const auto range = steady::authorityOf(car.setup(), car.startByte(cell));
        most = std::max({most, car.byte(cell) - range.most, range.least - car.byte(cell)});
    }
    return most;
}

void tellDistance(const Drive& drive, bool interpolate, int seed, int minute, const proof::Distance& distance) {
    std::printf("distance,%s,%d,%d,%d,%.4f,%.4f,%.4f\n", drive.name, interpolate, seed, minute, distance.rms,
                distance.floor, distance.worst);
}

void tellDelays(bool interpolate, int seed, const steady::SteadyAgent& agent) {
    const ecu::TransportDelay delay{400.0, 80.0};
    for (std::size_t index = 0; index < steady::kZones; ++index) {
        const steady::Zone zone = agent.zone(index);
        const double middle = index == 0 ? 30.0 : 0.5 * (zone.loadFrom + zone.loadTo);
        std::printf("delay,%d,%d,%.0f-%.0f,%.1f,", interpolate, seed, zone.loadFrom, zone.loadTo,
                    delay.msAt(0.01 * middle) + 100.0);
        if (zone.delayMs && zone.uncertaintyMs) {
            std::printf("%.1f,%.1f\n", *zone.delayMs, *zone.uncertaintyMs);
        } else {
            std::printf(",\n");
        }
    }
}

// What the authority does not give.
void tellLeft(bool interpolate, int seed, const Run& run, const std::vector<std::size_t>& visited) {
    int left = 0;
    int shown = 0;
    for (const std::size_t cell : visited) {
        const auto range = authorityOf(run.car.setup(), run.car.startByte(cell));
        const int byte = run.car.byte(cell);
        const int beyond = byte == range.most ? byte + 2 : byte == range.least ? byte - 2 : byte;
        const bool wouldHelp = std::fabs(run.car.offBy(cell, beyond)) < std::fabs(run.car.offBy(cell, byte)) &&
                               std::signbit(run.car.offBy(cell, beyond)) == std::signbit(run.car.offBy(cell, byte));
        left += beyond != byte && wouldHelp ? 1 : 0;
        shown += beyond != byte && wouldHelp && run.agent.cell(cell).limited ? 1 : 0;
    }
    std::printf("left,%d,%d,%d,%d\n", interpolate, seed, left, shown);
}

void tryDrive(const Drive& drive, bool interpolate, int seed, int hours) {
    Run run(trialOf(drive, interpolate, seed));
    if (drive.coldStart) {
        run.begin();
    }
    run.drive(kWarmUp);
    run.car.forgetVisits();
    run.drive(kWarmUp + kBefore);
    const auto visited = run.car.visited();
    if (!drive.coldStart) {
        run.begin();
        tellDistance(drive, interpolate, seed, 0, run.car.distance(visited));
    }
    const double start = drive.coldStart ? 0.0 : run.car.seconds();
    std::vector<int> minutes = {10, 30};
    if (drive.lasts) {
        minutes = {1, 2, 3, 4, 5, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30};
    }
    for (int hour = 1; drive.lasts && hour <= hours; ++hour) {
        minutes.push_back(60 * hour);
    }
    if (drive.coldStart) {
        minutes = {40};
    }
    int beyond = 0;
    for (const int minute : minutes) {
        while (run.car.seconds() < start + minute * kMinute) {
            if (!run.frame().empty()) {
                beyond = std::max(beyond, beyondAuthority(run.car));
            }
        }
        tellDistance(drive, interpolate, seed, minute, run.car.distance(visited));
    }
    if (run.agent.stopReason() != steady::StopReason::None) {
        std::printf("stopped,%s,%d,%d,%d\n", drive.name, interpolate, seed, static_cast<int>(run.agent.stopReason()));
    }
    if (drive.leanAuthority < 15.0) {
        tellLeft(interpolate, seed, run, visited);
    }
    std::printf("limit,%s,%d,%d,%d\n", drive.name, interpolate, seed, beyond);
    if (drive.hard && drive.wetting + drive.enrichment + drive.throttleNoise == 0.0) {
        tellDelays(interpolate, seed, run.agent);
    }
}

void tryRight(bool interpolate, int seed, int hours) {
    Trial trial = trialOf(kDrives.front(), interpolate, seed);
    trial.mapFault = ecu::MapFault::None;
    const double end = kWarmUp + hours * 60.0 * kMinute;
    Run first(trial);
    first.driveAlone(kWarmUp);
    first.car.forgetVisits();
    first.driveAlone(kWarmUp + kBefore);
    const auto visited = first.car.visited();
    first.driveAlone(end);
    Run run(trial);
    run.car.makeRight(first.car);
    run.driveAlone(kWarmUp);
    run.begin();
    int farthestOff = 0;
    std::array<bool, proof::kCells> beyondOne{};
    while (run.car.seconds() < end) {
        for (const auto& change : run.frame()) {
            const int off = std::abs(change.to - run.car.startByte(change.cell));
            farthestOff = std::max(farthestOff, off);
            beyondOne.at(change.cell) = beyondOne.at(change.cell) || off > 1;
        }
    }
    int often = 0;
    int seldom = 0;
    int never = 0;
    for (std::size_t cell = 0; cell < proof::kCells; ++cell) {
        const int off = std::abs(run.car.byte(cell) - run.car.startByte(cell));
        const bool isVisited = std::ranges::find(visited, cell) != visited.end();
        int& most = isVisited ? often : seldom;
        if (first.car.hasBeenIn(cell)) {
            most = std::max(most, off);
        } else {
            never += off > 0 ? 1 : 0;
        }
    }
    std::printf("right,%d,%d,%d,%d,%d,%d,%d\n", interpolate, seed, often, seldom, never, farthestOff,
                static_cast<int>(std::ranges::count(beyondOne, true)));
}

void tryFromStart(const Fault& fault, bool interpolate, int seed) {
    Run run(trialOf(kDrives[1], interpolate, seed));
    run.driveAlone(kWarmUp);
    run.fail(fault);
    run.begin();
    std::size_t changes = 0;
    while (run.car.seconds() < kWarmUp + 10.0 * kMinute) {
        changes += run.frame().size();
    }
    std::printf("start,%s,%d,%d,%zu\n", fault.name, interpolate, seed, changes);
}

double farthest(const Car& car, const std::vector<int>& from) {
    double most = 0.0;
    for (std::size_t cell = 0; cell < from.size(); ++cell) {
        most = std::max(most, 100.0 * std::abs(car.byte(cell) - from[cell]) / from[cell]);
    }
    return most;
}

// The bytes that each cell has had.
using Held = std::array<std::bitset<256>, proof::kCells>;

void note(Held& held, const Car& car) {
    for (std::size_t cell = 0; cell < held.size(); ++cell) {
        held.at(cell).set(car.byte(cell));
    }
}

void tryInTheMiddle(const Fault& fault, bool interpolate, int seed) {
    Run run(trialOf(kDrives[1], interpolate, seed));
    run.driveAlone(kWarmUp);
    run.begin();
    // At another point of the lap with each seed, while there is still much to correct.
    const double begun = kWarmUp + 5.0 * kMinute + 37.0 * seed;
    Held held{};
    note(held, run.car);
    while (run.car.seconds() < begun) {
        if (!run.frame().empty()) {
            note(held, run.car);
        }
    }
    run.fail(fault);
    const std::vector<int> stood(run.car.map().begin(), run.car.map().begin() + proof::kCells);
    double found = -1.0;
    double back = -1.0;
    double moved = 0.0;
    std::array<bool, proof::kCells> changed{};
    while (run.agent.state() != steady::State::Stopped && run.car.seconds() < begun + 10.0 * kMinute) {
        const auto changes = run.frame();
        if (run.agent.stopReason() == steady::StopReason::None) {
            moved = std::max(moved, farthest(run.car, stood));
            std::ranges::for_each(changes, [&](const auto& change) { changed.at(change.cell) = true; });
            continue;
        }
        found = found < 0.0 ? run.car.seconds() - begun : found;
        bool all = true;
        for (std::size_t cell = 0; cell < changed.size(); ++cell) {
            all = all && (!changed.at(cell) || held.at(cell)[run.car.byte(cell)]);
        }
        back = all && back < 0.0 ? run.car.seconds() - begun - found : back;
    }
    std::printf("middle,%s,%d,%d,%.1f,%.1f,%.2f\n", fault.name, interpolate, seed, found, back, moved);
}

void trySpeed() {
    Run run(trialOf(kDrives[1], true, 1));
    run.driveAlone(kWarmUp);
    std::vector<steady::Frame> frames;
    run.begin();
    while (run.car.seconds() < kWarmUp + 30.0 * kMinute) {
        frames.push_back(run.car.next());
    }
    const auto allocated = allocations.load();
    const auto start = std::chrono::steady_clock::now();
    std::size_t changes = 0;
    for (const steady::Frame& frame : frames) {
        changes += run.agent.onFrame(frame).size();
    }
    const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - start;
    std::printf("speed,%zu,%.3f,%ld,%zu\n", frames.size(), took.count() / static_cast<double>(frames.size()),
                static_cast<long>(allocations.load() - allocated), changes);
}

void tryAll(bool interpolate, int seed, int hours) {
    for (const Drive& drive : kDrives) {
        tryDrive(drive, interpolate, seed, hours);
    }
    tryRight(interpolate, seed, hours);
    for (const Fault& fault : kFaults) {
        tryFromStart(fault, interpolate, seed);
        tryInTheMiddle(fault, interpolate, seed);
    }
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    const bool isShort = argc > 1 && std::strcmp(argv[1], "short") == 0;
    if (argc > 1 && std::strcmp(argv[1], "speed") == 0) {
        trySpeed();
        return 0;
    }
    const int seeds = isShort ? 6 : argc > 1 ? std::atoi(argv[1]) : 20;
    const int hours = isShort ? 1 : argc > 2 ? std::atoi(argv[2]) : 10;
    const int first = isShort ? 8 : argc > 3 ? std::atoi(argv[3]) : 1;
    for (int seed = first; seed < first + seeds; ++seed) {
        tryAll(false, seed, hours);
        tryAll(true, seed, hours);
    }
    return 0;
}
