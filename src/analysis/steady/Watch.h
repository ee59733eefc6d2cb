// What the steady agent stops for.
#pragma once

#include "analysis/steady/CutTrace.h"
#include "analysis/steady/Frame.h"
#include "analysis/steady/SteadySetup.h"
#include "analysis/steady/StopReason.h"
#include "analysis/steady/Verdict.h"

namespace korvane::steady {

// What is looked at with a frame.
struct Sight {
    Verdict reading = Verdict::Used;  // of the frame's lambda
    bool clear = false;               // the gas at the sensor is that of a warm engine with fuel
    double target = 0.0;              // of the place
    bool leaned = false;              // the agent has taken fuel away there
    CutTrace::Outcome cut = CutTrace::Outcome::None;
};

class Watch {
public:
    void reset() { *this = Watch(); }
    static constexpr double kLinkGap = 2.0;  // seconds without a frame

    // To be called for each frame. Tells the first reason to stop.
    [[nodiscard]] StopReason check(const Frame& frame, const SteadySetup& setup, const Sight& sight);

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
    Lasting leaned_;
    Lasting leanEnd_;
    Lasting richEnd_;
    Lasting stuck_;
    Lasting cold_;
    bool warm_ = false;
    double last_ = -1.0;
};

}  // namespace korvane::steady
