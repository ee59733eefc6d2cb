// What the next step of a cell is, and why there is none.
#pragma once

#include <cstdint>
#include <string_view>

#include "analysis/steady/Authority.h"
#include "analysis/steady/CellEstimator.h"
#include "analysis/steady/PulseMap.h"

namespace korvane::steady {

enum class WhyHeld {
    No,            // it is about to be changed
    NoSamples,     // never visited
    NoConfidence,  // too few samples, or they differ too much
    OnTarget,      // within the dead band
    AtItsLimit,    // of the authority, or of the keys
    Waiting,       // for the speed limit
    FewVisits,     // too few to take fuel away
    EditedByHand,  // by the tuner
    NotWorking,    // the agent as a whole does not correct now
};

[[nodiscard]] std::string_view wordsOf(WhyHeld held);

struct Correction {
    int step = 0;               // counts; 0 unless `held` is No
    double errorPercent = 0.0;  // of fuel that the cell lacks
    bool limited = false;       // the authority ends before the target
    WhyHeld held = WhyHeld::NoSamples;

    // The same, not carried out.
    [[nodiscard]] Correction heldBack(WhyHeld why) const;
    // To the nearest byte of the range instead, whatever the cell needs.
    [[nodiscard]] Correction into(const ByteRange& range, std::uint8_t byte) const;
};

// A step is a part of what is missing, a whole count at least, and only where more than a half count and a margin are
// missing: after a step to the nearest count the rest is always inside of that, so that it can't go to and fro.
class Corrector {
public:
    static constexpr double kGain = 0.7;
    static constexpr double kDeadBand = 0.57;    // counts, both ways
    static constexpr double kDeadPercent = 0.3;  // of fuel, both ways
    static constexpr double kLeastConfidence = 0.5;
    static constexpr double kErrors = 0.8;  // standard errors are left
    // What must have been seen of a cell before fuel is taken away: a single pass may have been enriched.
    static constexpr double kLeanVisits = 2.0;
    static constexpr double kLeanWeight = 6.0;

    // For a cell whose byte is `byte` and may be in `range`; `target` is its lambda.
    [[nodiscard]] static Correction correct(const PulseMap& map, const CellNeed& need, std::uint8_t byte,
                                            const ByteRange& range, double target);
};

}  // namespace korvane::steady
