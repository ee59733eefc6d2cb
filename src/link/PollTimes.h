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
// seem late by an interval. What shows it is the shortest round trip of the connection:
//
// - A request is given up as lost when eight replies in a row could as well have answered a later one, which is one
// that
//   is open for at least the shortest round trip.
// - The first reply behind a restart with nothing under way belongs to the first request, unless a later one is just as
//   old as the shortest round trip. If that is the only one, the ECU answers slower now. With several it is known only
//   where the time of the frame is not: else a reply too many will show it.
// - A reply too many shows that requests were given up which the ECU has answered.
// - Frames of another kind, as after a connect or behind a transfer, keep the ECU busy, and it drops requests: what
//   is answered meanwhile says nothing about the shortest round trip. As long as it is not known, it is the time that
//   the frame takes on the line.
// - Requests that are sent faster than the line can bring replies are dropped all the time: each reply is then taken as
//   the answer of the newest that it can be of.
//
// Taking times allocates nothing.
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
    // The frame alone takes `frameTime` on the line.
    void answered(platform::Micros now, platform::Micros frameTime = 0);
    // A frame that is no answer has come.
    void otherFrame() { fromIdle_ = false; }
    // Forgets all: another connection begins.
    void reset();
    // The poll runs again after a pause.
    void restarted(platform::Micros now);
    // Forgets the open requests: no answer can come any more.
    void forgetOpen() { drop(open_); }

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
    void findLost(platform::Micros now, platform::Micros frameTime);
    void findLostInRow(std::size_t later);
    void learnFromIdle(platform::Micros now, platform::Micros frameTime);
    void learnFromSurplus(platform::Micros now);
    [[nodiscard]] bool isFasterThan(platform::Micros frameTime) const;
    void note(const Trip& trip);

    std::array<platform::Micros, 32> requests_{};  // a ring
    std::size_t oldest_ = 0;
    std::size_t open_ = 0;
    std::int64_t unanswered_ = 0;
    platform::Micros shortest_ = 0;  // round trip; 0: not known
    platform::Micros newest_ = 0;    // request
    bool restarted_ = false;         // and no request sent since
    bool fromIdle_ = false;          // the oldest open request was the first one, and nothing else came since
    std::size_t spare_ = 0;          // least number of later requests that each reply of this row could have answered
    int row_ = 0;
    std::vector<Trip> trips_;  // a ring once it is full
    std::size_t next_ = 0;
};

}  // namespace korvane::link
