#include "analysis/steady/Decision.h"

namespace korvane::steady {

namespace {

constexpr std::size_t kStates = static_cast<std::size_t>(State::Count);
constexpr std::size_t kEvents = static_cast<std::size_t>(Event::Count);

using enum State;
using enum Action;

using Line = std::array<Decision, kEvents>;

// A row for each state; in it, for each event in order: SwitchOn, SwitchOff, Proved, ProofAged, Fault, PutBack, Done.
constexpr std::array<Line, kStates> kTable = {{
    // Off
    Line{{{Waiting, Begin}, {Off, None}, {Off, None}, {Off, None}, {Off, None}, {PuttingBack, PutBack}, {Off, None}}},
    // Waiting
    Line{{{Waiting, None},
          {Off, Forget},
          {Working, Forget},
          {Waiting, None},
          {PuttingBack, PutBack},
          {PuttingBack, PutBack},
          {Waiting, None}}},
    // Working
    Line{{{Working, None},
          {Off, Forget},
          {Working, Commit},
          {Unproved, None},
          {PuttingBack, PutBack},
          {PuttingBack, PutBack},
          {Working, None}}},
    // Unproved
    Line{{{Unproved, None},
          {Off, Forget},
          {Working, Forget},
          {Unproved, None},
          {PuttingBack, PutBack},
          {PuttingBack, PutBack},
          {Unproved, None}}},
    // PuttingBack
    Line{{{PuttingBack, None},
          {PuttingBack, None},
          {PuttingBack, None},
          {PuttingBack, None},
          {PuttingBack, None},
          {PuttingBack, PutBack},
          {Stopped, None}}},
    // Stopped
    Line{{{Waiting, Begin},
          {Off, None},
          {Stopped, None},
          {Stopped, None},
          {Stopped, None},
          {PuttingBack, PutBack},
          {Stopped, None}}},
}};

}  // namespace

Decision decide(State state, Event event) {
    return kTable.at(static_cast<std::size_t>(state)).at(static_cast<std::size_t>(event));
}

std::string_view wordsOf(State state) {
    constexpr std::array<std::string_view, kStates> kWords = {
        "off", "waiting for proof of life", "working", "waiting for a new proof of life", "putting back", "stopped",
    };
    return kWords.at(static_cast<std::size_t>(state));
}

}  // namespace korvane::steady
