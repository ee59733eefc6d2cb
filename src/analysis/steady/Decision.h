// What the steady agent does when: one table of states and events.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace korvane::steady {

enum class State {
    Off,
    Waiting,      // for lambda to be seen to follow a fuel cut
    Working,      // learns and corrects
    Unproved,     // lambda's last proof is too old: neither learns nor corrects
    PuttingBack,  // the cells that were changed last, or all; then it is off or stopped
    Stopped,      // by itself, with a reason
    Count
};

enum class Event {
    SwitchOn,
    SwitchOff,
    Proved,     // lambda has followed a fuel cut and come back
    ProofAged,  // that was too long ago
    Fault,      // something for which it has to stop
    PutBack,    // the tuner's key
    Done,       // the last cell has been put back
    Count
};

enum class Action {
    None,
    Begin,    // learn anew from the present map
    Commit,   // the samples that wait are good
    PutBack,  // as the reason of the stop has it
    Forget    // the samples that wait
};

struct Decision {
    State next = State::Off;
    Action action = Action::None;

    bool operator==(const Decision&) const = default;
};

[[nodiscard]] Decision decide(State state, Event event);

// As the console shows it.
[[nodiscard]] std::string_view wordsOf(State state);

}  // namespace korvane::steady
