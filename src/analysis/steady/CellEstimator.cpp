#include "analysis/steady/CellEstimator.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace korvane::steady {

namespace {

constexpr double kPlaces = 0.1;       // of the spread of the places, squared, is not the same at each visit
constexpr double kForget = 0.05;      // what a sample counts in the spread of its cell,
constexpr double kForgetAll = 0.004;  // and in that of all
constexpr double kLargest = 0.04;     // what a sample differs by at most, for the spread of all
constexpr double kFromMean = 1.25;    // standard deviation of a bell by the mean of its distances
constexpr double kFirst = 0.02;       // guess of the spread
constexpr double kPerSample = 4.0;    // successive samples tell less than independent ones, by this factor
constexpr double kMapOff = 0.05;      // guess of how far the map is off,
constexpr double kMapRight = 0.005;   // and what a right map is off by at least
constexpr double kSure = 0.03;        // the standard error at which the confidence is a half

}  // namespace

void CellEstimator::Own::operator+=(const Own& other) {
    near += other.near;
    visits += other.visits;
    pure += other.pure;
    mean += other.mean;
    meanWet[0] += other.meanWet[0];
    meanWet[1] += other.meanWet[1];
    for (std::size_t i = 0; i < places.size(); ++i) {
        places[i] += other.places[i];
    }
}

void CellEstimator::reset(const SteadySetup& setup, const PulseMap& map) {
    grid_ = setup.grid;
    equations_.reset(grid_);
    known_.fill({});
    waiting_.fill({});
    film_.reset();
    stays_.fill({});
    seenAt_.fill(-1e9);
    for (std::size_t i = 0; i < kMostCells; ++i) {
        expected_[i] = map.oneByte(i) + std::log(static_cast<double>(setup.targets[i]));
    }
    need_ = expected_;
    square_.fill(kFirst * kFirst);
    spreads_.fill({});
    residual_ = kFirst;
    judged_ = {};
    mapSquare_ = kMapOff * kMapOff;
    waits_ = false;
}

void CellEstimator::addPlace(std::array<double, 9>& shares, std::size_t cell, const Corners& corners,
                             double weight) const {
    const int columns = grid_.columns;
    const int row = static_cast<int>(cell) / columns;
    const int column = static_cast<int>(cell) % columns;
    for (std::size_t i = 0; i < corners.cell.size(); ++i) {
        const int down = static_cast<int>(corners.cell[i]) / columns - row + 1;
        const int right = static_cast<int>(corners.cell[i]) % columns - column + 1;
        if (down >= 0 && down < 3 && right >= 0 && right < 3) {
            shares[static_cast<std::size_t>(3 * down + right)] += weight * corners.share[i];
        }
    }
}

void CellEstimator::add(const NeedSample& sample) {
    const Corners corners = grid_.linesOf(sample.place);
    const double dry = sample.need - at(sample.place);
    film_.add(sample.cell, sample.departures, dry, sample.weight);
    const double off = dry - film_.lackOf(sample.departures);
    equations_.add(corners, sample.weight, sample.need, sample.departures);
    addOwn(sample, corners, off);
    residual_ += kForgetAll * (std::min(std::fabs(off), kLargest) * kFromMean - residual_);
    waits_ = true;
}

void CellEstimator::Spread::add(double need) {
    constexpr int kMemory = 100;  // samples
    count = std::min(count + 1, kMemory);
    const double part = 1.0 / count;
    const double off = need - mean;
    mean += part * off;
    square += part * ((1.0 - part) * off * off - square);
}

double CellEstimator::Spread::beyondUsual() const {
    constexpr double kUsual = 0.03;
    return deviation() > kUsual ? deviation() : 0.0;
}

double CellEstimator::Spread::deviation() const {
    constexpr int kEnough = 30;  // samples; the estimate of the need itself moves before
    return count < kEnough ? 0.0 : std::sqrt(square);
}

// What the cell in which the place lies has of the sample.
void CellEstimator::addOwn(const NeedSample& sample, const Corners& corners, double off) {
    constexpr double kApart = 1.0;  // seconds
    const std::size_t here = grid_.cellAt(sample.place);
    Own& own = waiting_[here];
    own.near += sample.weight;
    own.visits += sample.seconds - seenAt_[here] > kApart ? 1.0 : 0.0;
    seenAt_[here] = sample.seconds;
    square_[here] += kForget * (off * off - square_[here]);
    spreads_[here].add(off + need_[here]);
    if (sample.pure) {
        Own& row = waiting_[sample.cell];
        row.pure += sample.weight;
        row.mean += sample.weight * sample.need;
        row.meanWet[0] += sample.weight * sample.departures[0];
        row.meanWet[1] += sample.weight * sample.departures[1];
        addPlace(row.places, sample.cell, corners, sample.weight);
    }
}

void CellEstimator::enginePassed(const Place& place, std::size_t cell) {
    constexpr int kMemory = 2000;  // frames
    Stay& stay = stays_[cell];
    addPlace(stay.places, cell, grid_.linesOf(place), 1.0);
    const double need = at(place) - need_[cell];
    stay.count = std::min(stay.count + 1, kMemory);
    stay.mean += (need - stay.mean) / stay.count;
    stay.square += (need * need - stay.square) / stay.count;
}

void CellEstimator::commit() {
    if (!waits_) {
        return;
    }
    for (std::size_t i = 0; i < grid_.cells(); ++i) {
        known_[i] += waiting_[i];
    }
    equations_.commit();
    film_.commit();
    discard();
}

void CellEstimator::discard() {
    equations_.discard();
    film_.discard();
    waiting_.fill({});
    waits_ = false;
}

std::size_t CellEstimator::neighbour(std::size_t index, int down, int right) const {
    const int row = std::clamp(static_cast<int>(index) / grid_.columns + down, 0, grid_.rows - 1);
    const int column = std::clamp(static_cast<int>(index) % grid_.columns + right, 0, grid_.columns - 1);
    return static_cast<std::size_t>(row * grid_.columns + column);
}

void CellEstimator::relax() {
    constexpr std::size_t kAtOnce = 24;
    judgeMap();
    const Departures shares = film_.shares();
    for (std::size_t i = 0; i < kAtOnce; ++i) {
        next_ = next_ + 1 < grid_.cells() ? next_ + 1 : 0;
        need_[next_] = equations_.solve(next_, need_, expected_[next_], shares);
    }
}

double CellEstimator::at(const Place& place) const {
    const Corners corners = grid_.linesOf(place);
    double need = 0.0;
    for (std::size_t i = 0; i < corners.cell.size(); ++i) {
        need += corners.share[i] * need_[corners.cell[i]];
    }
    return need;
}

double CellEstimator::around(std::size_t index, const std::array<double, 9>& shares) const {
    const double total = std::accumulate(shares.begin(), shares.end(), 0.0);
    double sum = 0.0;
    for (int i = 0; i < 9; ++i) {
        sum += shares[static_cast<std::size_t>(i)] * need_[neighbour(index, i / 3 - 1, i % 3 - 1)];
    }
    return total > 0.0 ? sum / total : need_[index];
}

// Over the places where the engine ran; what the smooth need leaves over comes from the cell's own samples.
double CellEstimator::meanNeed(std::size_t index) const {
    const Own& row = known_[index];
    const double over =
        row.pure > 0.0 ? (row.mean - film_.lackOf(row.meanWet)) / row.pure - around(index, row.places) : 0.0;
    return around(index, stays_[index].places) + over;
}

// Noise goes down with the samples, what a single visit has of its own only with the number of visits: errors of the
// delay, acceleration and, for one byte, the places it went through.
double CellEstimator::errorOf(std::size_t index, bool one) const {
    constexpr double kVisit = 0.01;
    constexpr double kLeastNoise = 0.01;
    const Own& row = known_[index];
    const double effective = (one ? row.pure : equations_.marginal(index)) / kPerSample;
    if (effective <= 0.0 || row.visits <= 0.0) {
        return 1.0;
    }
    const double own = spreads_[index].deviation();
    const double noise = std::max({residual_, kLeastNoise, own});
    const double visits = (kVisit * kVisit + (one ? kPlaces * placesSquare(index) : 0.0)) / row.visits;
    return std::sqrt(noise * noise / effective + visits);
}

// Of the need from place to place in the cell.
double CellEstimator::placesSquare(std::size_t index) const {
    const Stay& stay = stays_[index];
    return std::max(stay.square - stay.mean * stay.mean, 0.0);
}

// Square of the standard error of meanNeed(): after a few visits the places are not yet those of the drives to come.
double CellEstimator::placesError(std::size_t index) const {
    constexpr double kFew = 1.0;  // visits
    const double visits = std::max(known_[index].visits, 1.0);
    return placesSquare(index) * (kPlaces + kFew / visits) / visits;
}

// One cell after the other; in the end, how far the map is off is what is left of their distances from it when their
// own errors are taken out.
void CellEstimator::judgeMap() {
    constexpr double kTelling = 2.0;  // visits
    constexpr int kEnough = 6;        // cells
    const Own& row = known_[judged_.next];
    if (row.visits >= kTelling && row.pure > 0.0) {
        const double off = meanNeed(judged_.next) - expected_[judged_.next];
        judged_.sum += off * off - placesError(judged_.next);
        ++judged_.cells;
    }
    if (++judged_.next < grid_.cells()) {
        return;
    }
    if (judged_.cells >= kEnough) {
        mapSquare_ = std::max(judged_.sum / judged_.cells, kMapRight * kMapRight);
    }
    judged_ = {};
}

// Between what the map has given and the mean over the places so far, by how much each can be trusted.
double CellEstimator::likelyNeed(std::size_t index) const {
    const double share = mapSquare_ / (mapSquare_ + placesError(index));
    return expected_[index] + share * (meanNeed(index) - expected_[index]);
}

CellNeed CellEstimator::cell(std::size_t index, Firmware firmware) const {
    constexpr double kFewest = 3.0;  // samples of the cell
    constexpr double kUsual = 0.01;
    constexpr double kShort = 4.0;  // samples of a visit
    const Own& row = known_[index];
    const bool one = firmware == Firmware::OneByte;
    const double weight = one ? row.pure : row.near;
    const double error = errorOf(index, one);
    const bool passes = weight < kShort * row.visits;
    const double spread = weight > 0.0 ? std::sqrt(square_[index]) : 0.0;
    return {.need = one ? likelyNeed(index) : need_[index],
            .weight = weight,
            .visits = row.visits,
            .spread = spread,
            .error = error,
            .doubt = std::max(passes ? spread - kUsual : 0.0, spreads_[index].beyondUsual()),
            .confidence = weight < kFewest ? 0.0 : 1.0 / (1.0 + error * error / (kSure * kSure))};
}

CellNeed CellEstimator::carried(std::size_t index, Firmware firmware) const {
    constexpr double kWell = 0.7;
    constexpr std::array<std::pair<int, int>, 4> kBeside = {{{-1, 0}, {1, 0}, {0, -1}, {0, 1}}};
    CellNeed need{.need = 0.0, .confidence = 1.0};
    int found = 0;
    for (const auto& [down, right] : kBeside) {
        const std::size_t other = neighbour(index, down, right);
        const CellNeed beside = cell(other, firmware);
        if (other != index && beside.confidence >= kWell) {
            ++found;
            need.need += beside.need - expected_[other];
            need.weight += beside.weight;
            need.visits += beside.visits;
            need.error = std::max(need.error, beside.error);
            need.doubt = std::max(need.doubt, beside.doubt);
            need.confidence = std::min(need.confidence, beside.confidence);
        }
    }
    if (found < 2) {
        return {};
    }
    need.need = expected_[index] + need.need / found;
    return need;
}

}  // namespace korvane::steady
