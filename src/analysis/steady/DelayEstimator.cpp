#include "analysis/steady/DelayEstimator.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

namespace {

constexpr double kFirstGuess = 0.2;  // seconds
constexpr double kFirstSpread = 0.3;
constexpr double kNeighbours = 0.6;  // correlation of zones before anything is known
constexpr double kMeasured = 0.035;  // of one answer; frames alone give 0.022
constexpr double kDrift = 1e-7;      // by which the squared delay may change in a second: 19 ms in an hour
constexpr double kMost = 1.2;

double middleOf(std::size_t zone) {
    return 0.5 * (DelayEstimator::kBounds[zone] + DelayEstimator::kBounds[zone + 1]);
}

}  // namespace

void DelayEstimator::reset(const std::array<double, kZones>& fixedMs) {
    *this = DelayEstimator();
    delay_.fill(kFirstGuess);
    beginSpread();
    for (std::size_t i = 0; i < kZones; ++i) {
        fixed_[i] = fixedMs[i] / 1000.0;
    }
}

void DelayEstimator::beginSpread() {
    for (std::size_t i = 0; i < kZones; ++i) {
        for (std::size_t j = 0; j < kZones; ++j) {
            const double apart = std::fabs(static_cast<double>(i) - static_cast<double>(j));
            spread_[i][j] = kFirstSpread * kFirstSpread * std::pow(kNeighbours, apart);
        }
    }
}

// What was learnt holds no more; the answers from now on decide.
void DelayEstimator::doubt() {
    beginSpread();
    steps_.fill(0);
    outliers_ = 0;
}

DelayEstimator::Shares DelayEstimator::sharesOf(double row) {
    const double load = 10.0 * row;
    Shares shares{};
    const double step = kBounds[1] - kBounds[0];
    const double position = std::clamp((load - middleOf(0)) / step, 0.0, kZones - 1.0);
    const auto low = static_cast<std::size_t>(position);
    const std::size_t high = std::min(low + 1, kZones - 1);
    shares[low] += 1.0 - (position - static_cast<double>(low));
    shares[high] += position - static_cast<double>(low);
    return shares;
}

double DelayEstimator::between(const Shares& delays, double row) {
    const Shares shares = sharesOf(row);
    double seconds = 0.0;
    for (std::size_t i = 0; i < kZones; ++i) {
        seconds += shares[i] * delays[i];
    }
    return std::clamp(seconds, 0.02, kMost);
}

double DelayEstimator::estimated(double row) const {
    return between(delay_, row);
}

double DelayEstimator::transport(double row) const {
    Shares delays = delay_;
    for (std::size_t i = 0; i < kZones; ++i) {
        delays[i] = fixed_[i] > 0.0 ? std::max(fixed_[i] - lag_, 0.0) : delay_[i];
    }
    return between(delays, row);
}

// The less the answers have told of a zone, the more the guess counts there.
double DelayEstimator::transportNow(const BurnHistory& history, double rpm) const {
    const double guess = 0.08 + 250.0 / std::max(rpm, 600.0);
    if (!anyKnown()) {
        return guess;
    }
    Shares delays{};
    for (std::size_t i = 0; i < kZones; ++i) {
        const double doubt = std::clamp(spread_[i][i] / (kFirstSpread * kFirstSpread), 0.0, 1.0);
        const double learnt = known(i) ? delay_[i] : delay_[i] + doubt * (guess - delay_[i]);
        delays[i] = fixed_[i] > 0.0 ? std::max(fixed_[i] - lag_, 0.0) : learnt;
    }
    return history.age([&delays](double row) { return between(delays, row); });
}

void DelayEstimator::learnLag(const Answer& answer) {
    constexpr double kShortest = 0.02;
    constexpr double kLongest = 0.6;
    if (answer.lag > kShortest && answer.lag < kLongest) {
        lags_ = std::min(lags_ + 1, 40);
        lag_ += (answer.lag - lag_) / (lags_ + 1);
    }
}

void DelayEstimator::pass(double seconds) {
    const double passed = std::max(seconds - time_, 0.0);
    for (std::size_t i = 0; i < kZones && time_ > 0.0; ++i) {
        spread_[i][i] = std::min(spread_[i][i] + kDrift * passed, kFirstSpread * kFirstSpread);
    }
    constexpr double kGap = 0.5;
    constexpr double kPart = 0.02;
    frames_ += passed < kGap ? kPart * (passed - frames_) : 0.0;
    time_ = seconds;
}

void DelayEstimator::learn(const Answer& answer, const BurnHistory& history) {
    learnLag(answer);
    const double travelled = answer.delay - lag_;
    if (travelled <= 0.0 || travelled > kMost) {
        return;
    }
    // From the step on through the pipe: what each zone has contributed to the way.
    Shares slope{};
    double way = 0.0;
    const double begun = history.time() - answer.changedAt;
    double under = 0.0;
    while (way < 1.0 && under < kMost && under <= begun) {
        const double row = history.before(begun - under).row;
        const double here = estimated(row);
        const Shares shares = sharesOf(row);
        const double part = std::min(BurnHistory::kStep / here, 1.0 - way);
        for (std::size_t i = 0; i < kZones; ++i) {
            slope[i] += part * shares[i];
        }
        way += part;
        under += part * here;
    }
    if (way >= 1.0 - 1e-9) {
        update(slope, travelled - under);
    }
}

void DelayEstimator::update(const Shares& slope, double error) {
    Shares gain{};
    double variance = kMeasured * kMeasured;
    for (std::size_t i = 0; i < kZones; ++i) {
        for (std::size_t j = 0; j < kZones; ++j) {
            gain[i] += spread_[i][j] * slope[j];
        }
        variance += slope[i] * gain[i];
    }
    constexpr double kFar = 16.0;  // four standard deviations, squared
    constexpr int kTooMany = 4;
    if (error * error > kFar * variance) {
        if (++outliers_ == kTooMany) {
            doubt();
        }
        return;
    }
    outliers_ = 0;
    for (std::size_t i = 0; i < kZones; ++i) {
        delay_[i] = std::clamp(delay_[i] + gain[i] / variance * error, 0.01, kMost);
        steps_[i] += slope[i] > 0.5 ? 1 : 0;
    }
    for (std::size_t i = 0; i < kZones; ++i) {
        for (std::size_t j = 0; j < kZones; ++j) {
            spread_[i][j] -= gain[i] * gain[j] / variance;
        }
    }
}

bool DelayEstimator::known(std::size_t index) const {
    constexpr int kEnough = 4;
    constexpr double kSure = 0.04;  // seconds
    return steps_[index] >= kEnough && spread_[index][index] < kSure * kSure;
}

bool DelayEstimator::anyKnown() const {
    for (std::size_t i = 0; i < kZones; ++i) {
        if (fixed_[i] > 0.0 || known(i)) {
            return true;
        }
    }
    return false;
}

bool DelayEstimator::isKnownAt(double row) const {
    const Shares shares = sharesOf(row);
    for (std::size_t i = 0; i < kZones; ++i) {
        if (shares[i] > 0.0 && fixed_[i] <= 0.0 && !known(i)) {
            return false;
        }
    }
    return true;
}

// What no number of answers takes away, seconds: the shape of the lag, and frames that are far apart.
double DelayEstimator::common() const {
    constexpr double kLeast = 0.012;
    constexpr double kOfLag = 0.16;
    constexpr double kUsualFrames = 0.075;
    constexpr double kOfFrames = 1.2;
    return std::hypot(kLeast, kOfLag * lag_, kOfFrames * std::max(frames_ - kUsualFrames, 0.0));
}

Zone DelayEstimator::zone(std::size_t index) const {
    Zone zone;
    zone.loadFrom = index == 0 ? 0.0 : kBounds.at(index);
    zone.loadTo = kBounds.at(index + 1);
    zone.steps = steps_[index];
    if (fixed_[index] > 0.0) {
        zone.fixed = true;
        zone.delayMs = 1000.0 * fixed_[index];
        zone.uncertaintyMs = 0.0;
    } else if (known(index)) {
        zone.delayMs = 1000.0 * (delay_[index] + lag_);
        zone.uncertaintyMs = 1000.0 * std::hypot(1.96 * std::sqrt(std::max(spread_[index][index], 0.0)), common());
    }
    return zone;
}

}  // namespace korvane::steady
