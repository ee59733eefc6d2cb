#include "fields/Progress.h"

namespace korvane::fields {

Progress::Progress(controls::ProgressBar& bar, int steps)
    : bar_(bar), outerVisible_(bar.Visible), outerMax_(bar.Max), outerValue_(bar.Value) {
    bar_.start(steps);
}

Progress::~Progress() {
    if (outerVisible_) {
        bar_.Max = outerMax_;
        bar_.Value = outerValue_;
    } else {
        bar_.stop();
    }
}

ProgressBars::ProgressBars(const std::vector<controls::ProgressBar*>& bars, int steps) {
    for (auto* bar : bars) {
        bars_.emplace_back(*bar, steps);
    }
}

ProgressBars::~ProgressBars() {
    while (!bars_.empty()) {
        bars_.pop_back();
    }
}

void ProgressBars::step() {
    for (auto& bar : bars_) {
        bar.step();
    }
}

}  // namespace korvane::fields
