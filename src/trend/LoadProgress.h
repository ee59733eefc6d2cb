// Tells how far a load has come, once it takes long.
#pragma once

#include <cstdint>

#include "controls/Controls.h"
#include "platform/EventPump.h"

namespace korvane::trend {

// A short load shows nothing. During a long one the bar appears, and the windows are painted now and then; no handler
// of the program runs.
class LoadProgress {
public:
    LoadProgress(controls::ProgressBar& bar, platform::EventPump& pump);
    LoadProgress(const LoadProgress&) = delete;
    LoadProgress& operator=(const LoadProgress&) = delete;
    ~LoadProgress() { bar_.stop(); }

    void report(std::uintmax_t done, std::uintmax_t whole);

private:
    controls::ProgressBar& bar_;
    platform::EventPump& pump_;
    platform::Micros next_;  // when something is to be shown
};

}  // namespace korvane::trend
