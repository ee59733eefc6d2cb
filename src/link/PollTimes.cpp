#include "link/PollTimes.h"

#include <algorithm>

namespace korvane::link {

namespace {

constexpr std::size_t kTrips = 6000;  // a minute at the shortest interval
constexpr int kRow = 8;               // replies
constexpr std::size_t kGap = 16;      // that many open requests were not sent to an ECU that answers

}  // namespace

PollTimes::PollTimes() {
    trips_.reserve(kTrips);
}

void PollTimes::reset() {
    forgetOpen();
    unanswered_ = 0;
    shortest_ = 0;
    row_ = 0;
    trips_.clear();
    next_ = 0;
}

void PollTimes::restarted(platform::Micros now) {
    giveUp(openBefore(now - kPatience));
    shortest_ = 0;
    row_ = 0;
}

platform::Micros PollTimes::request(std::size_t place) const {
    return requests_[(oldest_ + place) % requests_.size()];
}

std::size_t PollTimes::openBefore(platform::Micros moment) const {
    std::size_t count = 0;
    while (count < open_ && request(count) <= moment) {
        ++count;
    }
    return count;
}

void PollTimes::drop(std::size_t count) {
    oldest_ = (oldest_ + count) % requests_.size();
    open_ -= count;
}

void PollTimes::giveUp(std::size_t count) {
    unanswered_ += static_cast<std::int64_t>(count);
    drop(count);
}

void PollTimes::sent(platform::Micros now) {
    giveUp(openBefore(now - kPatience));
    if (open_ == requests_.size()) {
        giveUp(1);
    }
    requests_[(oldest_ + open_) % requests_.size()] = now;
    ++open_;
}

void PollTimes::answered(platform::Micros now) {
    giveUp(openBefore(now - kPatience));
    findLost(now);
    if (open_ == 0) {
        return;
    }
    const Trip trip{now, now - request(0)};
    drop(1);
    note(trip);
}

void PollTimes::findLost(platform::Micros now) {
    const std::size_t possible = openBefore(now - shortest_);
    const std::size_t later = possible == 0 ? 0 : possible - 1;
    spare_ = row_ == 0 ? later : std::min(spare_, later);
    if (++row_ == kRow || later >= kGap) {
        giveUp(later >= kGap ? later : spare_);
        row_ = 0;
    }
}

void PollTimes::note(const Trip& trip) {
    shortest_ = shortest_ == 0 ? trip.length : std::min(shortest_, trip.length);
    if (trips_.size() < kTrips) {
        trips_.push_back(trip);
        return;
    }
    trips_[next_] = trip;
    next_ = (next_ + 1) % kTrips;
}

std::int64_t PollTimes::unanswered(platform::Micros now) const {
    return unanswered_ + static_cast<std::int64_t>(openBefore(now - kPatience));
}

std::optional<PollTimes::RoundTrip> PollTimes::since(platform::Micros moment) const {
    std::vector<platform::Micros> lengths;
    for (const Trip& trip : trips_) {
        if (trip.end > moment) {
            lengths.push_back(trip.length);
        }
    }
    if (lengths.empty()) {
        return {};
    }
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    const auto median = *middle;
    return RoundTrip{median, *std::max_element(lengths.begin(), lengths.end())};
}

}  // namespace korvane::link
