// A progress bar for as long as some work runs.
#pragma once

#include <deque>
#include <vector>

#include "controls/Controls.h"

namespace korvane::fields {

// One that was started inside another restores the outer one's values at its end.
class Progress {
public:
    Progress(controls::ProgressBar& bar, int steps);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void step() { bar_.Value = ++done_; }

private:
    controls::ProgressBar& bar_;
    int done_ = 0;
    bool outerVisible_;
    int outerMax_;
    int outerValue_;
};

// Several bars for the same work. They are restored in reverse order.
class ProgressBars {
public:
    ProgressBars(const std::vector<controls::ProgressBar*>& bars, int steps);
    ProgressBars(const ProgressBars&) = delete;
    ProgressBars& operator=(const ProgressBars&) = delete;
    ~ProgressBars();

    void step();

private:
    std::deque<Progress> bars_;
};

}  // namespace korvane::fields
