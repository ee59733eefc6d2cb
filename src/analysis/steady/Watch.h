// What the steady agent stops for.
#pragma once

#include <string_view>

#include "analysis/steady/CutTrace.h"
#include "analysis/steady/Frame.h"
#include "analysis/steady/SteadySetup.h"
#include "analysis/steady/Verdict.h"

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

[[nodiscard]] std::string_view wordsOf(StopReason reason);

class Watch {
public:
    void reset() { *this = Watch(); }
    // To be called for each frame, with what the gate says of its mixture and of its reading; `clear`: the gas at the
    // sensor is that of an engine with fuel; `target` is that of the place. Tells the first reason to stop.
    [[nodiscard]] StopReason check(const Frame& frame, const SteadySetup& setup, Verdict reading, bool clear,
                                   double target);
    // What a fuel cut has shown.
    [[nodiscard]] static StopReason check(CutTrace::Outcome outcome);

private:
    // For how long something has held without a break.
    class Lasting {
    public:
        double hold(bool holds, double seconds);

    private:
        bool held_ = false;
        double since_ = 0.0;
    };

    Lasting lean_;
    Lasting leanEnd_;
    Lasting richEnd_;
    Lasting stuck_;
    Lasting cold_;
    bool warm_ = false;
    double last_ = -1.0;
    double late_ = 0.0;
};

}  // namespace korvane::steady
