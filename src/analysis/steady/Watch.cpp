#include "analysis/steady/Watch.h"

#include <algorithm>
#include <array>

#include "analysis/steady/BurnHistory.h"
#include "analysis/steady/SampleGate.h"

namespace korvane::steady {

double Watch::Lasting::hold(bool holds, double seconds) {
    if (!holds) {
        held_ = false;
        return 0.0;
    }
    if (!held_) {
        held_ = true;
        since_ = seconds;
    }
    return seconds - since_;
}

StopReason Watch::check(const Frame& frame, const SteadySetup& setup, const Sight& sight) {
    constexpr double kLeanFor = 0.4;    // seconds
    constexpr double kLeanedFor = 1.0;  // fuel that wets the walls is missing for less when the throttle opens
    constexpr double kEndFor = 3.0;
    constexpr double kColdBy = 5.0;  // degrees
    const double now = frame.seconds;
    const bool gap = last_ >= 0.0 && now - last_ > kLinkGap;
    last_ = now;
    warm_ = warm_ || frame.waterC >= setup.coldBelow;
    const bool cold = warm_ && frame.waterC < setup.coldBelow - kColdBy;
    const bool loaded = sight.clear && frame.load >= setup.leanFromLoad;
    const bool lean = loaded && frame.lambda > setup.leanLimit * sight.target;
    const bool leaned = loaded && sight.leaned && frame.lambda > setup.leanedLimit * sight.target;
    const bool stuck = sight.clear && sight.reading == Verdict::LambdaStuck;
    const bool ended = sight.clear && sight.reading != Verdict::Used && !stuck;
    const bool high = frame.lambda > sight.target;
    const std::array<std::pair<StopReason, bool>, 10> findings = {{
        {StopReason::LinkLate, gap},
        {StopReason::LeanUnderLoad, lean_.hold(lean, now) > kLeanFor},
        {StopReason::LeanUnderLoad, leaned_.hold(leaned, now) > kLeanedFor},
        {StopReason::LambdaLean, leanEnd_.hold(ended && high, now) > kEndFor},
        {StopReason::LambdaRich, richEnd_.hold(ended && !high, now) > kEndFor},
        {StopReason::LambdaStuck, stuck_.hold(stuck, now) > kEndFor},
        {StopReason::LambdaSilent, sight.cut == CutTrace::Outcome::NotLean},
        {StopReason::LambdaNotBack, sight.cut == CutTrace::Outcome::NotBack},
        {StopReason::CoolantFell, cold_.hold(cold, now) > 1.0},
        {StopReason::LambdaControl, setup.lambdaControl},
    }};
    const auto* found = std::ranges::find_if(findings, [](const auto& finding) { return finding.second; });
    return found == findings.end() ? StopReason::None : found->first;
}

}  // namespace korvane::steady
