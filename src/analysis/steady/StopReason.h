// Why the steady agent stops by itself, and where the cells go then.
#pragma once

#include <string_view>

namespace korvane::steady {

enum class StopReason {
    None,
    LeanUnderLoad,
    LinkLate,
    EcuRestarted,
    SendRefused,
    LambdaStuck,    // it stays where it is
    LambdaSilent,   // it did not go lean with a fuel cut
    LambdaNotBack,  // it stayed lean when the fuel was back
    LambdaLean,     // at the lean end of its range
    LambdaRich,     // at the rich end, or absent
    CoolantFell,    // the engine was warm and reads cold
    LambdaControl,  // the ECU has begun to correct by lambda itself
    PutBack,        // the tuner's key
    Count
};

enum class WayBack {
    LastGood,  // what they were at the last proof, or a minute ago if that is earlier
    Richer,    // the same, or the baseline if that has more fuel
    Baseline,
};

[[nodiscard]] std::string_view wordsOf(StopReason reason);
[[nodiscard]] WayBack wayBackOf(StopReason reason);

}  // namespace korvane::steady
