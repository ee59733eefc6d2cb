// How long the ECU takes to answer the live poll, and how many polls it leaves unanswered.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/EventPump.h"

namespace korvane::link {

// A reply does not say which request it answers, and at a short interval several are under way. Replies keep the order
// of the requests, so each is taken as the answer of the oldest open one. Where one was lost, all later replies would
// seem late by an interval: a request is given up as lost when eight replies in a row could as well have answered a
// later one, which is one that is open for at least the shortest round trip since the poll was started. Taking times
// allocates nothing.
class PollTimes {
public:
    static constexpr platform::Micros kPatience = 250 * platform::kMicrosPerMilli;  // open for longer: unanswered
    static constexpr platform::Micros kMinute = 60'000 * platform::kMicrosPerMilli;

    struct RoundTrip {
        platform::Micros median;
        platform::Micros worst;
    };

    PollTimes();

    // Each with the moment at which it was.
    void sent(platform::Micros now);
    void answered(platform::Micros now);
    // Forgets all: another connection begins.
    void reset();
    // The poll runs again after a pause.
    void restarted(platform::Micros now);
    // Forgets the open requests: no answer can come any more.
    void forgetOpen() { open_ = 0; }

    // Requests since the reset that were given up.
    [[nodiscard]] std::int64_t unanswered(platform::Micros now) const;
    // Of the answers behind this moment, the newest 6000 of them; nothing without one.
    [[nodiscard]] std::optional<RoundTrip> since(platform::Micros moment) const;
    [[nodiscard]] std::optional<RoundTrip> lastMinute(platform::Micros now) const { return since(now - kMinute); }

private:
    struct Trip {
        platform::Micros end;
        platform::Micros length;
    };

    [[nodiscard]] platform::Micros request(std::size_t place) const;  // 0: the oldest that is open
    [[nodiscard]] std::size_t openBefore(platform::Micros moment) const;
    void giveUp(std::size_t count);
    void drop(std::size_t count);
    void findLost(platform::Micros now);
    void note(const Trip& trip);

    std::array<platform::Micros, 32> requests_{};  // a ring
    std::size_t oldest_ = 0;
    std::size_t open_ = 0;
    std::int64_t unanswered_ = 0;
    platform::Micros shortest_ = 0;  // round trip; 0 until there is one
    std::size_t spare_ = 0;          // least number of later requests that each reply of this row could have answered
    int row_ = 0;
    std::vector<Trip> trips_;  // a ring once it is full
    std::size_t next_ = 0;
};

}  // namespace korvane::link
