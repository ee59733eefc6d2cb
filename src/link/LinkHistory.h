// What the line did in each second of the last ten minutes.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "link/LinkState.h"
#include "platform/EventPump.h"

namespace korvane::link {

// Begins when the port is opened for the first time, and goes on from then. Seconds without a connection count too.
class LinkHistory : public controls::Object, private controls::Observer {
public:
    static constexpr std::size_t kSeconds = 600;

    struct Second {
        int frames = 0;                   // of any kind
        std::optional<double> roundTrip;  // median of its live polls in ms; nothing without one
        int faults = 0;                   // frames dropped, resynchronisations, polls not answered
    };

    LinkHistory(platform::EventPump& pump, LinkState& state);
    ~LinkHistory() override;

    // The oldest first.
    [[nodiscard]] std::span<const Second> seconds() const { return seconds_; }

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void takeSecond();

    platform::EventPump& pump_;
    LinkState& state_;
    std::unique_ptr<platform::Alarm> next_;
    bool runs_ = false;
    platform::Micros begin_ = 0;  // of the present second
    std::int64_t frames_ = 0;     // counted before it
    std::int64_t faults_ = 0;
    std::vector<Second> seconds_;
};

// Polls a second that are possible: what the interval asks for, and what the line carries if each poll waits for its
// answer, ten bits a byte. `answerBytes` of a whole live frame.
struct PollLimits {
    double asked;
    double carried;
};
[[nodiscard]] PollLimits pollLimits(int baud, int intervalMs, int answerBytes);

}  // namespace korvane::link
