// One thing that the port doctor found out.
#pragma once

#include <string>
#include <string_view>

namespace korvane::doctor {

struct Finding {
    enum class Weight {
        Good,   // as it should be
        Hint,   // it works so, and could be better, or needs a look
        Fault,  // it cannot work so
    };

    std::string topic;  // for tools, one lower-case word or several with a hyphen: "permission"
    Weight weight = Weight::Good;
    std::string text;  // one sentence; of a hint or fault with its remedy

    friend bool operator==(const Finding&, const Finding&) = default;
};

// "good", "hint", "fault".
[[nodiscard]] constexpr std::string_view nameOf(Finding::Weight weight) {
    switch (weight) {
        case Finding::Weight::Hint:
            return "hint";
        case Finding::Weight::Fault:
            return "fault";
        case Finding::Weight::Good:
            break;
    }
    return "good";
}

}  // namespace korvane::doctor
