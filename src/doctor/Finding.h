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
[[nodiscard]] std::string_view nameOf(Finding::Weight weight);
// "Good: ", "Hint: " or "Fault: " and the sentence.
[[nodiscard]] std::string rowOf(const Finding& finding);

}  // namespace korvane::doctor
