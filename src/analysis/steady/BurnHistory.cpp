#include "analysis/steady/BurnHistory.h"

#include <algorithm>
#include <cmath>

#include "analysis/steady/WallFilm.h"

namespace korvane::steady {

void BurnHistory::reset() {
    begun_ = false;
    filled_ = 0;
}

void BurnHistory::setLag(double seconds) {
    follow_ = 1.0 - std::exp(-kStep / std::max(seconds, kStep));
}

void BurnHistory::begin(double seconds, const Burn& burn) {
    begun_ = true;
    newest_ = 0;
    filled_ = 1;
    ticks_[0] = {.place = burn.place,
                 .oneByte = burn.oneByte,
                 .fourBytes = burn.fourBytes,
                 .cell = burn.cell,
                 .purity = 0.0,
                 .row = burn.place.row,
                 .films = {burn.rate, burn.rate},
                 .last = Verdict::LinkLate,
                 .sinceCut = 0.0};
    time_ = seconds;
}

void BurnHistory::add(double seconds, const Burn& burn) {
    if (!begun_ || seconds - latestSeconds_ > kLongestGap || seconds < latestSeconds_) {
        begin(seconds, burn);
    }
    const double gap = std::max(seconds - latestSeconds_, kStep);
    while (time_ + kStep <= seconds) {
        time_ += kStep;
        tick(between(burn, std::clamp((time_ - latestSeconds_) / gap, 0.0, 1.0)));
    }
    latest_ = burn;
    latestSeconds_ = seconds;
}

// The nearer frame tells all that can't be divided; a bad mixture counts for the whole time between the frames.
Burn BurnHistory::between(const Burn& to, double share) const {
    const auto mix = [share](double a, double b) { return a + (b - a) * share; };
    Burn burn = share < 0.5 ? latest_ : to;
    burn.place = {mix(latest_.place.column, to.place.column), mix(latest_.place.row, to.place.row)};
    burn.fourBytes = mix(latest_.fourBytes, to.fourBytes);
    burn.rate = latest_.rate > 0.0 && to.rate > 0.0 ? mix(latest_.rate, to.rate) : burn.rate;
    if (burn.verdict == Verdict::Used) {
        burn.verdict = to.verdict != Verdict::Used ? to.verdict : latest_.verdict;
    }
    return burn;
}

void BurnHistory::tick(const Burn& burn) {
    const Smeared& old = ticks_[newest_];
    newest_ = (newest_ + 1) % kTicks;
    filled_ = std::min(filled_ + 1, kTicks);
    const auto smear = [this](double a, double b) { return a + (b - a) * follow_; };
    const bool same = burn.cell == old.cell;
    constexpr double kPaceShare = 0.05;
    const double pace = old.pace + (std::fabs(burn.place.row - old.row) / kStep - old.pace) * kPaceShare;
    Departures films{};
    Departures departures{};
    for (std::size_t i = 0; i < films.size(); ++i) {
        films[i] = old.films[i] + (burn.rate - old.films[i]) * kStep / (kStep + WallFilm::kSeconds[i]);
        const double departure = burn.rate > 0.0 ? std::clamp(1.0 - films[i] / burn.rate, -1.5, 1.0) : 0.0;
        departures[i] = smear(old.departures[i], departure);
    }
    const bool bad = burn.verdict != Verdict::Used;
    ticks_[newest_] = {.place = {smear(old.place.column, burn.place.column), smear(old.place.row, burn.place.row)},
                       .oneByte = smear(old.oneByte, burn.oneByte),
                       .fourBytes = smear(old.fourBytes, burn.fourBytes),
                       .cell = burn.cell,
                       .purity = same ? smear(old.purity, 1.0) : follow_,
                       .row = burn.place.row,
                       .films = films,
                       .departures = departures,
                       .pace = pace,
                       .last = bad ? burn.verdict : old.last,
                       .since = bad ? 0.0 : old.since + kStep,
                       .sinceCut = burn.verdict == Verdict::FuelCut ? 0.0 : old.sinceCut + kStep};
}

const Smeared& BurnHistory::before(double seconds) const {
    const auto back = static_cast<std::size_t>(std::lround(std::max(seconds, 0.0) / kStep));
    const std::size_t reach = std::min(back, std::max<std::size_t>(filled_, 1) - 1);
    return ticks_[(newest_ + kTicks - reach) % kTicks];
}

}  // namespace korvane::steady
