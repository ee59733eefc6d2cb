#include "link/PollTimes.h"

#include <algorithm>

namespace korvane::link {

namespace {

constexpr std::size_t kTrips = 6000;  // a minute at the shortest interval
constexpr int kRow = 8;               // replies
constexpr std::size_t kGap = 16;      // that many open requests were not sent to an ECU that answers
constexpr platform::Micros kSame = platform::kMicrosPerMilli;  // round trips that differ by no more

}  // namespace

PollTimes::PollTimes() {
    trips_.reserve(kTrips);
}

void PollTimes::reset() {
    forgetOpen();
    unanswered_ = 0;
    shortest_ = 0;
    fromIdle_ = false;
    row_ = 0;
    trips_.clear();
    next_ = 0;
}

void PollTimes::restarted(platform::Micros now) {
    giveUp(openBefore(now - kPatience));
    restarted_ = true;
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
    fromIdle_ = fromIdle_ && count == 0;
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
    fromIdle_ = fromIdle_ || (open_ == 0 && (restarted_ || shortest_ == 0));
    restarted_ = false;
    newest_ = now;
    requests_[(oldest_ + open_) % requests_.size()] = now;
    ++open_;
}

void PollTimes::answered(platform::Micros now, platform::Micros frameTime) {
    giveUp(openBefore(now - kPatience));
    if (open_ == 0) {
        learnFromSurplus(now);
        return;
    }
    findLost(now, frameTime);
    const Trip trip{now, now - request(0)};
    drop(1);
    note(trip);
}

void PollTimes::findLost(platform::Micros now, platform::Micros frameTime) {
    if (fromIdle_ && !isFasterThan(frameTime)) {
        learnFromIdle(now, frameTime);
    }
    const std::size_t possible = openBefore(now - (shortest_ == 0 ? frameTime : shortest_));
    const std::size_t later = possible == 0 ? 0 : possible - 1;
    if (later >= kGap || isFasterThan(frameTime)) {
        giveUp(later);
        row_ = 0;
    } else {
        findLostInRow(later);
    }
}

void PollTimes::findLostInRow(std::size_t later) {
    spare_ = row_ == 0 ? later : std::min(spare_, later);
    if (++row_ == kRow) {
        giveUp(spare_);
        row_ = 0;
    }
}

void PollTimes::learnFromIdle(platform::Micros now, platform::Micros frameTime) {
    for (std::size_t place = 0; place < open_ && shortest_ != 0; ++place) {
        if (const auto age = now - request(place); age >= shortest_ - kSame && age <= shortest_ + kSame) {
            giveUp(place);
            return;
        }
    }
    if (open_ == 1 || frameTime == 0) {
        shortest_ = now - request(0);
    }
}

void PollTimes::learnFromSurplus(platform::Micros now) {
    if (const auto age = now - newest_; age < kPatience) {
        shortest_ = std::max(shortest_, age);
    }
}

bool PollTimes::isFasterThan(platform::Micros frameTime) const {
    return open_ > 1 && newest_ - request(open_ - 2) < frameTime;
}

void PollTimes::note(const Trip& trip) {
    shortest_ = std::min(shortest_, trip.length);
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
