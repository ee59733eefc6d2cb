#include "analysis/steady/SampleGate.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

namespace {

constexpr double kRichEnd = 10.15;  // the sensor's range is 10 to 20
constexpr double kLeanEnd = 19.5;
constexpr double kRateOver = 0.05;  // seconds; over less, a single count of a sensor would look like a quick change

}  // namespace

void SampleGate::reset() {
    *this = SampleGate();
}

bool SampleGate::turning(const Frame& frame) {
    constexpr double kFiring = 500.0;
    return frame.rpm >= kFiring && !frame.lit(Lamp::Stopped);
}

bool SampleGate::cut(const Frame& frame) {
    return turning(frame) && (frame.lit(Lamp::MotorBrake) || frame.duty <= 0.0 ||
                              (frame.lit(Lamp::Running) && !frame.lit(Lamp::Injection)));
}

bool SampleGate::justStarted(const Frame& frame) {
    constexpr double kAfterStart = 20.0;  // seconds
    if (!turning(frame)) {
        turned_ = false;
        return true;
    }
    if (!turned_) {
        turned_ = true;
        startedAt_ = frame.seconds;
    }
    return frame.seconds - startedAt_ < kAfterStart;
}

bool SampleGate::enriched(const Frame& frame, const SteadySetup& setup) const {
    constexpr double kQuickThrottle = 70.0;  // per cent in a second
    constexpr double kQuickLoad = 100.0;
    const double gap = std::max(frame.seconds - rateFrom_.seconds, kRateOver);
    const double throttle = setup.throttleKnown ? frame.throttle - rateFrom_.throttle : 0.0;
    return frame.lit(Lamp::AccelPump) || throttle / gap > kQuickThrottle ||
           std::fabs(frame.load - rateFrom_.load) / gap > kQuickLoad;
}

Verdict SampleGate::running(const Frame& frame, const SteadySetup& setup) {
    if (justStarted(frame)) {
        return Verdict::Cranking;
    }
    if (frame.waterC < setup.coldBelow) {
        return Verdict::EngineCold;
    }
    if (frame.lit(Lamp::StartHelp) || frame.lit(Lamp::Choke)) {
        return Verdict::WarmUp;
    }
    if (setup.lambdaControl) {
        return Verdict::LambdaControl;
    }
    if (frame.lit(Lamp::RpmLimiter) || frame.lit(Lamp::Launch)) {
        return Verdict::RpmLimiter;
    }
    return cut(frame) ? Verdict::FuelCut : Verdict::Used;
}

Verdict SampleGate::mixture(const Frame& frame, const SteadySetup& setup, const Place& place) {
    const double gap = frame.seconds - last_.seconds;
    const bool late = !begun_ || gap > BurnHistory::kLongestGap || gap < 0.0;
    Verdict verdict = running(frame, setup);
    if (late) {
        verdict = Verdict::LinkLate;
    } else if (verdict == Verdict::Used) {
        if (!setup.grid.contains(place)) {
            verdict = Verdict::OutsideMap;
        } else if (frame.cell < 255 && !setup.grid.touches(place, frame.cell)) {
            verdict = Verdict::PlaceUnknown;
        } else if (enriched(frame, setup)) {
            verdict = Verdict::AccelEnrichment;
        }
    }
    remember(frame, late);
    return verdict;
}

void SampleGate::remember(const Frame& frame, bool late) {
    if (late || frame.seconds - rateFrom_.seconds >= kRateOver) {
        rateFrom_ = frame;
    }
    last_ = frame;
    begun_ = true;
}

// A quiet sensor may stand still for long while the engine does. No map is right to a step of the sensor over a whole
// cell, and none at all with the fuel off.
void SampleGate::watchStill(const Frame& frame) {
    constexpr double kFar = 1.0;  // cells
    const Place place = Grid::placeOf(frame.rpm, frame.load);
    if (frame.lambda != still_.lambda || !turning(frame)) {
        still_ = {.lambda = frame.lambda, .since = frame.seconds, .place = place, .movedAt = {}};
    }
    const bool moved = cut(frame) || std::fabs(place.column - still_.place.column) >= kFar ||
                       std::fabs(place.row - still_.place.row) >= kFar;
    if (moved && !still_.movedAt) {
        still_.movedAt = frame.seconds;
    }
}

Verdict SampleGate::reading(const Frame& frame) {
    constexpr double kStuck = 5.0;   // seconds
    constexpr double kLatest = 1.5;  // until a live sensor shows another mixture
    watchStill(frame);
    if (!std::isfinite(frame.lambda) || frame.lambda < 9.0 || frame.lambda > 20.5) {
        return Verdict::LambdaOutOfRange;
    }
    if (frame.lambda <= 10.0) {
        return Verdict::LambdaAbsent;
    }
    if (frame.lambda < kRichEnd || frame.lambda > kLeanEnd) {
        return Verdict::LambdaRailed;
    }
    const bool stuck =
        frame.seconds - still_.since > kStuck && still_.movedAt && frame.seconds - *still_.movedAt > kLatest;
    return stuck ? Verdict::LambdaStuck : Verdict::Used;
}

Verdict SampleGate::passed(const Smeared& burnt, double lag) {
    constexpr double kEnrichmentDecay = 0.2;  // seconds
    if (burnt.since < 3.0 * lag + kEnrichmentDecay && burnt.last != Verdict::FuelCut) {
        return burnt.last;
    }
    if (burnt.sinceCut < clearingTime(lag)) {
        return burnt.sinceCut > 0.0 ? Verdict::ExhaustClearing : Verdict::FuelCut;
    }
    return Verdict::Used;
}

}  // namespace korvane::steady
