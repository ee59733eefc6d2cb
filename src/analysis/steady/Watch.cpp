#include "analysis/steady/Watch.h"

#include <algorithm>
#include <array>

#include "analysis/steady/BurnHistory.h"
#include "analysis/steady/SampleGate.h"

namespace korvane::steady {

std::string_view wordsOf(StopReason reason) {
    constexpr std::array<std::string_view, static_cast<std::size_t>(StopReason::Count)> kWords = {
        "",
        "lean under load",
        "link late",
        "ECU restarted",
        "send refused",
        "lambda stuck",
        "lambda does not follow a fuel cut",
        "lambda stays lean after a fuel cut",
        "lambda at the lean end of its range",
        "lambda at the rich end of its range, or absent",
        "engine was warm and reads cold",
        "ECU corrects by lambda itself",
        "put back by the tuner",
    };
    return kWords.at(static_cast<std::size_t>(reason));
}

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

StopReason Watch::check(const Frame& frame, const SteadySetup& setup, Verdict reading, bool clear, double target) {
    constexpr double kLeanFor = 0.4;  // seconds
    constexpr double kEndFor = 3.0;
    constexpr double kStuckFor = 5.0;
    constexpr double kLinkGap = 2.0;
    constexpr double kColdBy = 5.0;  // degrees
    const double now = frame.seconds;
    const bool gap = last_ >= 0.0 && now - last_ > kLinkGap;
    last_ = now;
    warm_ = warm_ || frame.waterC >= setup.coldBelow;
    const bool cold = warm_ && frame.waterC < setup.coldBelow - kColdBy;
    const bool loaded = clear && frame.load >= setup.leanFromLoad && frame.lambda > setup.leanLimit * target;
    const bool ended = clear && reading != Verdict::Used;
    const bool high = frame.lambda > target;
    const std::array<std::pair<StopReason, bool>, 7> findings = {{
        {StopReason::LinkLate, gap},
        {StopReason::LeanUnderLoad, lean_.hold(loaded, now) > kLeanFor},
        {StopReason::LambdaLean, leanEnd_.hold(ended && high, now) > kEndFor},
        {StopReason::LambdaRich, richEnd_.hold(ended && !high && reading != Verdict::LambdaStuck, now) > kEndFor},
        {StopReason::LambdaStuck, stuck_.hold(clear && reading == Verdict::LambdaStuck, now) > kStuckFor},
        {StopReason::CoolantFell, cold_.hold(cold, now) > 1.0},
        {StopReason::LambdaControl, setup.lambdaControl},
    }};
    const auto* found = std::ranges::find_if(findings, [](const auto& finding) { return finding.second; });
    return found == findings.end() ? StopReason::None : found->first;
}

StopReason Watch::check(CutTrace::Outcome outcome) {
    switch (outcome) {
        case CutTrace::Outcome::NotLean:
            return StopReason::LambdaSilent;
        case CutTrace::Outcome::NotBack:
            return StopReason::LambdaNotBack;
        case CutTrace::Outcome::None:
        case CutTrace::Outcome::Proved:
            break;
    }
    return StopReason::None;
}

}  // namespace korvane::steady
