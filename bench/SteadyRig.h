// The steady agent on the virtual engine, in virtual time: a car that is driven, what the program sees of it, and what
// is true.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "analysis/steady/SteadyAgent.h"
#include "core/ParameterNames.h"
#include "ecu/Replies.h"
#include "ecu/engine/Calibration.h"
#include "ecu/engine/EngineModel.h"
#include "ecu/memory/FirmwareMemory.h"

namespace korvane::proof {

inline constexpr double kTarget = 12.5;
inline constexpr double kMinute = 60.0;
inline constexpr std::size_t kCells = 160;

struct Trial {
    std::uint64_t seed = 1;
    ecu::EngineConditions conditions;
    ecu::MapFault mapFault = ecu::MapFault::Smooth;
    bool throttleKnown = true;
    bool needByPlace = true;  // false: as the virtual ECU is by default, one need for all of a cell
    double richAuthority = 15.0;
    double leanAuthority = 15.0;
};

// How far the visited cells are from the target.
struct Distance {
    double rms = 0.0;
    double floor = 0.0;  // of a corrector that knows the truth
    double worst = 0.0;
    std::size_t worstCell = 0;
    std::size_t cells = 0;
};

class Car {
public:
    explicit Car(const Trial& trial)
        : trial_(trial),
          memory_(ecu::firmwareType(11), {}, trial.mapFault),
          engine_(trial.seed),
          sensors_(trial.seed ^ 0x53656E73U) {
        trial_.conditions.needByPlace = trial.needByPlace;
        engine_.setConditions(trial_.conditions);
        engine_.drive(ecu::Drive{});
        start_ = memory_.working(ecu::MapKind::Fuel);
    }

    // Drives until the next frame, and sees it.
    const steady::Frame& next() {
        constexpr int kSteps = 15;  // 75 ms
        if (revision_ != memory_.revision()) {
            calibration_ = ecu::calibrationOf(memory_);
            revision_ = memory_.revision();
        }
        for (int i = 0; i < kSteps; ++i) {
            engine_.step(calibration_);
            ++steps_;
        }
        see();
        note();
        return frame_;
    }

    void setFault(ecu::LambdaFault fault) {
        trial_.conditions.lambdaFault = fault;
        engine_.setConditions(trial_.conditions);
    }
    void setCold(bool cold) { cold_ = cold; }
    void take(std::span<const steady::CellChange> changes) {
        for (const auto& change : changes) {
            memory_.setCell(ecu::MapKind::Fuel, static_cast<int>(change.cell), change.to);
        }
    }

    [[nodiscard]] steady::SteadySetup setup() const {
        steady::SteadySetup setup;
        setup.richAuthority = trial_.richAuthority;
        setup.leanAuthority = trial_.leanAuthority;
        setup.throttleKnown = trial_.throttleKnown;
        return setup;
    }
    [[nodiscard]] std::span<const std::uint8_t> map() const { return memory_.working(ecu::MapKind::Fuel); }
    [[nodiscard]] const ecu::EngineModel& engine() const { return engine_; }
    [[nodiscard]] double seconds() const { return static_cast<double>(steps_) * ecu::EngineModel::kStep; }

    // Gives each cell that `other` has been in the best byte there, as if the map had always been right.
    void makeRight(const Car& other) {
        for (std::size_t cell = 0; cell < kCells; ++cell) {
            if (other.hasBeenIn(cell)) {
                memory_.setCell(ecu::MapKind::Fuel, static_cast<int>(cell),
                                static_cast<std::uint8_t>(other.bestByte(cell)));
            }
        }
        start_ = memory_.working(ecu::MapKind::Fuel);
    }
    [[nodiscard]] bool hasBeenIn(std::size_t cell) const { return visits_.at(cell).count > 0; }

    // From here on the visits count.
    void forgetVisits() { visits_.fill({}); }
    // In which the engine has been for 50 frames and more since forgetVisits().
    [[nodiscard]] std::vector<std::size_t> visited() const {
        std::vector<std::size_t> cells;
        for (std::size_t cell = 0; cell < kCells; ++cell) {
            if (visits_.at(cell).count >= 50) {
                cells.push_back(cell);
            }
        }
        return cells;
    }
    [[nodiscard]] std::uint8_t startByte(std::size_t cell) const { return start_.at(cell); }
    [[nodiscard]] std::uint8_t byte(std::size_t cell) const { return map()[cell]; }

    // The mixture less the target that a byte gives in the cell.
    [[nodiscard]] double offBy(std::size_t cell, int byte) const {
        const Visits& visits = visits_.at(cell);
        const double need = trial_.conditions.interpolate || !trial_.needByPlace || visits.count == 0
                                ? calibration_.need.at(cell)
                                : visits.need / static_cast<double>(visits.count);
        return kTarget * need / pulseOf(cell, byte) - kTarget;
    }
    [[nodiscard]] double offNow(std::size_t cell) const { return offBy(cell, map()[cell]); }

    [[nodiscard]] Distance distance(const std::vector<std::size_t>& cells) const {
        Distance distance{.cells = cells.size()};
        double floor = 0.0;
        double sum = 0.0;
        for (const std::size_t cell : cells) {
            const double off = offBy(cell, map()[cell]);
            sum += off * off;
            if (std::fabs(off) > std::fabs(distance.worst)) {
                distance.worst = off;
                distance.worstCell = cell;
            }
            floor += bestSquare(cell);
        }
        const auto count = static_cast<double>(std::max<std::size_t>(cells.size(), 1));
        distance.rms = std::sqrt(sum / count);
        distance.floor = std::sqrt(floor / count);
        return distance;
    }

private:
    struct Visits {
        long count = 0;
        double need = 0.0;
    };

    [[nodiscard]] double pulseOf(std::size_t cell, int byte) const {
        const double perCount = calibration_.pulse.at(cell) / std::max<int>(map()[cell], 1);
        return perCount * std::max(byte, 1);
    }
    [[nodiscard]] int bestByte(std::size_t cell) const {
        const auto range = steady::authorityOf(setup(), start_.at(cell));
        int best = range.least;
        for (int byte = range.least; byte <= range.most; ++byte) {
            if (std::fabs(offBy(cell, byte)) < std::fabs(offBy(cell, best))) {
                best = byte;
            }
        }
        return best;
    }
    [[nodiscard]] double bestSquare(std::size_t cell) const {
        const double off = offBy(cell, bestByte(cell));
        return off * off;
    }

    void see() {
        const auto channel = static_cast<ecu::MuxChannel>(0);
        const auto bytes = ecu::livePayload(engine_, calibration_, 3100, channel, sensors_);
        const double low = memory_.byteOf("MINTHR_OFF");
        const double high = memory_.byteOf("MAXTHR_OFF");
        const double throttle =
            std::clamp(std::round(100.0 * std::max(bytes[6] - low, 0.0) / (high - low)), 0.0, 100.0);
        const double bar = std::round((bytes[5] * 5.0 / 255.0 + 0.2) / 0.02) / 100.0;
        frame_ = {.seconds = seconds(),
                  .rpm = bytes[0] * 256.0 + bytes[1],
                  .load = 100.0 * bar,
                  .throttle = trial_.throttleKnown ? throttle : bytes[6],
                  .lambda = bytes[7] / 256.0 * 10.0 + 10.0,
                  .duty = static_cast<double>(bytes[8]),
                  .waterC = cold_ ? 20.0 : bytes[2] - 50.0,
                  .cell = bytes[10],
                  .lamps = bytes[11] * 256U + bytes[12]};
    }
    void note() {
        const ecu::EngineState& state = engine_.state();
        if (state.pulseMs > 0.0 && state.rpm > 1000.0 && state.loadPercent <= 100.0 && state.rpm < 9000.0) {
            Visits& visits = visits_.at(static_cast<std::size_t>(state.cell));
            ++visits.count;
            visits.need += engine_.truth().needMs;
        }
    }

    Trial trial_;
    ecu::FirmwareMemory memory_;
    ecu::EngineModel engine_;
    ecu::Noise sensors_;
    ecu::Calibration calibration_;
    std::optional<std::uint64_t> revision_;
    ecu::MapCells start_{};
    steady::Frame frame_;
    std::array<Visits, kCells> visits_{};
    long steps_ = 0;
    bool cold_ = false;
};

}  // namespace korvane::proof
