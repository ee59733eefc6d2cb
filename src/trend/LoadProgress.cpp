#include "trend/LoadProgress.h"

#include <algorithm>

namespace korvane::trend {

namespace {

constexpr platform::Micros kPatience = 100 * platform::kMicrosPerMilli;
constexpr platform::Micros kStep = 50 * platform::kMicrosPerMilli;
constexpr int kSteps = 1000;
constexpr int kPaint = 1;  // ms, in which windows are painted

}  // namespace

LoadProgress::LoadProgress(controls::ProgressBar& bar, platform::EventPump& pump)
    : bar_(bar), pump_(pump), next_(pump.now() + kPatience) {}

void LoadProgress::report(std::uintmax_t done, std::uintmax_t whole) {
    if (pump_.now() <= next_) {
        return;
    }
    if (!bar_.Visible) {
        bar_.start(kSteps);
    }
    const double share = whole == 0 ? 0 : static_cast<double>(done) / static_cast<double>(whole);
    bar_.Value = static_cast<int>(std::min(share, 1.0) * kSteps);
    pump_.sleep(kPaint);
    next_ = pump_.now() + kStep;
}

}  // namespace korvane::trend
