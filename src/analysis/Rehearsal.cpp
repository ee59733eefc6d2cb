#include "analysis/Rehearsal.h"

#include <algorithm>
#include <cmath>

namespace korvane::analysis {

namespace {

using steady::Frame;
using steady::Grid;

constexpr double kRichEnd = 10.15;  // of the sensor: beyond them it says nothing of the mixture
constexpr double kLeanEnd = 19.5;

}  // namespace

Rehearsal::Rehearsal(const steady::SteadySetup& setup, std::span<const std::uint8_t> recorded,
                     std::span<const std::uint8_t> baseline)
    : setup_(setup), map_(recorded.begin(), recorded.end()), baseline_(baseline.begin(), baseline.end()) {
    map_.resize(setup.grid.cells());
    recorded_.reset(setup, map_);
    present_.reset(setup, map_);
}

void Rehearsal::begin(double seconds) {
    agent_.start(setup_, map_, seconds, baseline_);
    begun_ = true;
}

std::span<const std::uint8_t> Rehearsal::map() const {
    return std::span(present_.bytes()).first(map_.size());
}

std::size_t Rehearsal::changedCells() const {
    std::size_t changed = 0;
    for (std::size_t cell = 0; cell < map_.size(); ++cell) {
        changed += map()[cell] != map_[cell] ? 1 : 0;
    }
    return changed;
}

// Nothing is changed before it is known whether the ECU interpolates.
double Rehearsal::moreFuelAt(const Frame& frame) const {
    if (!hasChanged_ || !frame.sound()) {
        return 0.0;
    }
    const Grid& grid = setup_.grid;
    const auto told = Grid::placeOf(frame.rpm, frame.load);
    const auto place = grid.contains(told) ? grid.within(told, frame.cell) : grid.near(told);
    if (agent_.firmware() == steady::Firmware::FourBytes) {
        const auto corners = grid.cornersOf(place);
        return present_.fourBytes(corners) - recorded_.fourBytes(corners);
    }
    const auto cell = grid.cellAt(place);
    return present_.oneByte(cell) - recorded_.oneByte(cell);
}

// Seconds. Where the agent does not know it, its guess by engine speed and the usual lag.
double Rehearsal::delayOf(const Frame& frame) const {
    constexpr double kLowest = 20.0;  // per cent of load, of the first zone
    constexpr double kWidth = 20.0;
    const double zone = std::clamp((frame.load - kLowest) / kWidth, 0.0, static_cast<double>(steady::kZones) - 0.5);
    const auto known = agent_.zone(static_cast<std::size_t>(zone)).delayMs;
    return known ? *known / 1000.0 : 0.2 + 250.0 / std::max(frame.rpm, 600.0);
}

double Rehearsal::moreFuelBefore(double seconds) const {
    for (std::size_t back = 0; back < kMoments; ++back) {
        const auto& moment = moments_.at((newest_ + kMoments - back) % kMoments);
        if (moment.seconds <= seconds) {
            return moment.moreFuel;
        }
    }
    return 0.0;
}

// A recorded reading that does not move stays where it is, so that a stuck sensor is one here too.
double Rehearsal::lambdaOf(const Frame& frame) {
    if (frame.lambda != lastReading_) {
        const bool tells = frame.lambda > kRichEnd && frame.lambda < kLeanEnd;
        const double more = tells ? moreFuelBefore(frame.seconds - delayOf(frame)) : 0.0;
        lastReading_ = frame.lambda;
        lastTold_ = more == 0.0 ? frame.lambda : std::clamp(frame.lambda * std::exp(-more), 10.0, 20.0);
    }
    return lastTold_;
}

void Rehearsal::remember(const Moment& moment) {
    newest_ = (newest_ + 1) % kMoments;
    moments_.at(newest_) = moment;
}

bool Rehearsal::add(const Frame& frame) {
    if (!begun_) {
        begin(frame.seconds);
    }
    if (hasStopped() || !frame.sound()) {
        return !hasStopped();
    }
    last_ = frame.seconds;
    const double more = moreFuelAt(frame);
    remember({frame.seconds, more});
    Frame told = frame;
    told.duty *= std::exp(more);
    told.lambda = lambdaOf(frame);
    make(agent_.onFrame(told));
    return !hasStopped();
}

void Rehearsal::make(std::span<const steady::CellChange> changes) {
    for (const auto& change : changes) {
        present_.set(change.cell, change.to);
        hasChanged_ = true;
    }
}

void Rehearsal::finish() {
    while (agent_.state() == steady::State::PuttingBack) {
        last_ += 1.0;
        make(agent_.onTime(last_));
    }
}

}  // namespace korvane::analysis
