// Stops the live poll.
#pragma once

#include <optional>

#include "controls/Timer.h"

namespace korvane::fields {

// At the end the poll runs, whether or not it did before. With an `interval` (ms) it has that one meanwhile, in case it
// is started in between, and its own again at the end.
class PollStop {
public:
    explicit PollStop(controls::Timer& poll, std::optional<int> interval = {}) : poll_(poll) {
        poll_.Enabled = false;
        if (interval) {
            outer_ = poll_.Interval;
            poll_.Interval = *interval;
        }
    }
    PollStop(const PollStop&) = delete;
    PollStop& operator=(const PollStop&) = delete;
    ~PollStop() {
        poll_.Enabled = true;
        if (outer_) {
            poll_.Interval = *outer_;
        }
    }

private:
    controls::Timer& poll_;
    std::optional<int> outer_;
};

}  // namespace korvane::fields
