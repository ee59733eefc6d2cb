// What becomes of a live frame's lambda.
#pragma once

#include <cstddef>
#include <string_view>

namespace korvane::steady {

// Used, or the one reason why not. Where several hold, the first of them counts.
enum class Verdict {
    Used,
    LinkLate,
    Cranking,  // engine stopped, cranked, or just started
    EngineCold,
    WarmUp,  // start help or choke
    LambdaControl,
    RpmLimiter,  // or launch control
    FuelCut,
    ExhaustClearing,  // after a fuel cut
    OutsideMap,
    PlaceUnknown,  // the ECU names another cell than speed and load do
    AccelEnrichment,
    PulseOff,  // the injectors' duty does not fit the map: enrichment without the lamp
    LambdaAbsent,
    LambdaRailed,
    LambdaOutOfRange,
    LambdaStuck,
    FirmwareUnknown,  // not yet known whether the ECU interpolates
    NoProofOfLife,    // lambda has not been seen to follow a fuel cut
    Outlier,
    PuttingBack,  // the agent has stopped, and cells go back
    Count
};

inline constexpr std::size_t kVerdicts = static_cast<std::size_t>(Verdict::Count);

// The engine turns, and no frame is missing.
[[nodiscard]] constexpr bool turnsWithoutGap(Verdict mixture) {
    return mixture != Verdict::LinkLate && mixture != Verdict::Cranking;
}
// The same, and nothing of a cold engine adds fuel.
[[nodiscard]] constexpr bool isWarm(Verdict mixture) {
    return turnsWithoutGap(mixture) && mixture != Verdict::EngineCold && mixture != Verdict::WarmUp;
}

// In plain words.
[[nodiscard]] std::string_view wordsOf(Verdict verdict);

}  // namespace korvane::steady
